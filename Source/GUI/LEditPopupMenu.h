#pragma once

#include "Framework/UI/LStdPopupMenu.h"

/// The popup of an edit-popup field: before and after every click it announces that field and popup must be brought
/// into agreement.
class LEditPopupMenu final : public LStdPopupMenu {
public:
    using LStdPopupMenu::LStdPopupMenu;

    void ClickSelf(const SMouseDownEvent& event) override;
    void ClickEnded() override;
};
