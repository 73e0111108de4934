#pragma once

#include "Framework/UI/LScrollBar.h"

/// A scroll bar that jumps to a click away from its thumb at once.
class CScroll final : public LScrollBar {
public:
    using LScrollBar::LScrollBar;

    void ClickSelf(const SMouseDownEvent& event) override;
};
