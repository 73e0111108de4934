#include "GUI/LEditPopupMenu.h"

#include "GUI/EditPopupMessages.h"

void LEditPopupMenu::ClickSelf(const SMouseDownEvent& event) {
    BroadcastMessage(kMatchPopupToField);
    LStdPopupMenu::ClickSelf(event);
}

void LEditPopupMenu::ClickEnded() {
    BroadcastMessage(kMatchPopupToField);
}
