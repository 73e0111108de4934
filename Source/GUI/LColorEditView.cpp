#include "GUI/LColorEditView.h"

#include "GUI/EditPopupMessages.h"

namespace {

/// Dark on the light field: the contrast is 12 to 1.
constexpr RGBColor kTextColor{0x1400, 0x1400, 0x1400};

}  // namespace

LColorEditView::LColorEditView(LStream* stream) : LTextEditView(stream) {}

LColorEditView::LColorEditView(const SPaneInfo& info) : LTextEditView(info) {}

void LColorEditView::SetBackColor(const RGBColor& color) {
    m_backColor = color;
    SetTextColors(kTextColor, m_backColor);
}

bool LColorEditView::HoldsOneSpace() const {
    return LTextEditView::GetDescriptor().View() == " ";
}

LStr255 LColorEditView::GetDescriptor() const {
    return HoldsOneSpace() ? LStr255() : LTextEditView::GetDescriptor();
}

bool LColorEditView::HandleKeyPress(EditKey key) {
    if (HoldsOneSpace() && GetSelection().end > 0) {
        DeleteBackward();
    }
    if (key == EditKey::DownArrow) {
        BroadcastMessage(kNextItem);
    } else if (key == EditKey::UpArrow) {
        BroadcastMessage(kPreviousItem);
    }
    return LTextEditView::HandleKeyPress(key);
}

void LColorEditView::UserChangedText() {
    BroadcastMessage(kFieldEdited);
}
