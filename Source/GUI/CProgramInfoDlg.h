#pragma once

#include "Framework/Base/LListener.h"
#include "Framework/UI/LWindow.h"

/// What the program is, in four texts of its string list, and a button that closes the window.
class CProgramInfoDlg final : public LDialogBox, public LListener {
public:
    explicit CProgramInfoDlg(LStream* stream);

    void ListenToMessage(MessageT message, void* ioParam) override;

protected:
    void FinishCreateSelf() override;
};
