#pragma once

#include "Framework/UI/LPane.h"

/// A line around a part of the window. Clicks go through it.
class LBorderAttachment : public LPane {
public:
    using LPane::LPane;

    void DrawSelf() override;

protected:
    void UpdatePeer() override;
};
