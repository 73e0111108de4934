#pragma once

#include "Framework/Base/LBroadcaster.h"
#include "Framework/UI/LTextEditView.h"

/// A text field that broadcasts its message, without a parameter, at each change that the user makes.
///
/// Attributes of its record besides a text's: "message" (0: nothing is broadcast).
class LEditField : public LTextEditView, public LBroadcaster {
public:
    explicit LEditField(LStream* stream);

protected:
    void UserChangedText() override;

private:
    MessageT m_message;
};
