#include "GUI/LEditPopupView.h"

#include "Framework/Base/LException.h"
#include "Framework/UI/Drawing.h"
#include "Framework/UI/LStream.h"
#include "GUI/EditPopupMessages.h"
#include "GUI/LColorEditView.h"
#include "GUI/LEditPopupMenu.h"

#include <memory>
#include <string>

namespace {

constexpr RGBColor kFieldBackground{52428, 52428, 52428};
constexpr SBindings kAllSides{.left = true, .top = true, .right = true, .bottom = true};

SPaneInfo PopupInfo(const Rect& frame) {
    return {.paneID = LEditPopupView::kPopupID,
            .left = 1,
            .top = 1,
            .width = static_cast<std::int16_t>(frame.Width() - 2),
            .height = static_cast<std::int16_t>(frame.Height() - 3),
            .bindings = kAllSides};
}

/// The field leaves a strip of 20 pixels on the right, where the popup's arrow shows.
SPaneInfo FieldInfo(const Rect& frame, const std::string& accessibleName) {
    return {.paneID = LEditPopupView::kFieldID,
            .left = 2,
            .top = 3,
            .width = static_cast<std::int16_t>(frame.Width() - 22),
            .height = static_cast<std::int16_t>(frame.Height() - 6),
            .bindings = kAllSides,
            .accessibleName = accessibleName};
}

void AppendItems(LStdPopupMenu& popup, std::string_view items) {
    while (!items.empty()) {
        const std::string_view item = items.substr(0, items.find('|'));
        popup.AppendItem(LStr255(item));
        items.remove_prefix(std::min(items.size(), item.size() + 1));
    }
}

}  // namespace

LEditPopupView::LEditPopupView(LStream* stream) : LView(stream) {
    const Rect frame = CalcLocalFrameRect();
    auto popup = std::make_unique<LEditPopupMenu>(PopupInfo(frame), kPopupItemPicked);
    popup->SetAccessibleName(GetAccessibleName().empty() ? "" : GetAccessibleName() + ", suggestions");
    AppendItems(*popup, stream->Text("items"));
    AddSubPane(std::move(popup));
    auto field = std::make_unique<LColorEditView>(FieldInfo(frame, GetAccessibleName()));
    field->SetBackColor(kFieldBackground);
    AddSubPane(std::move(field));
}

LEditPopupMenu& LEditPopupView::Popup() {
    return *ThrowIfNil(FindPane<LEditPopupMenu>(*this, kPopupID), "the popup of an edit-popup field");
}

LColorEditView& LEditPopupView::Field() {
    return *ThrowIfNil(FindPane<LColorEditView>(*this, kFieldID), "the text of an edit-popup field");
}

void LEditPopupView::FinishCreateSelf() {
    Popup().AddListener(this);
    Field().AddListener(this);
    Field().TabTo(Popup());  // the popup lies below the field, but its arrow comes after it
}

void LEditPopupView::ListenToMessage(MessageT message, void* /*ioParam*/) {
    switch (message) {
        case kNextItem:
            StepItem(1);
            break;
        case kPreviousItem:
            StepItem(-1);
            break;
        case kMatchPopupToField:
            TickMatchingItem();
            break;
        case kPopupItemPicked:
            TakePickedItem();
            break;
        default:
            break;
    }
}

/// Wraps at both ends.
void LEditPopupView::StepItem(int step) {
    LEditPopupMenu& popup = Popup();
    const std::int32_t value = popup.GetValue();
    if (step > 0) {
        popup.SetValue(value == popup.GetMaxValue() ? 1 : value + 1);
    } else {
        popup.SetValue(value == popup.GetMinValue() ? popup.GetMaxValue() : value - 1);
    }
}

/// The last matching item wins; without one nothing is ticked.
void LEditPopupView::TickMatchingItem() {
    LEditPopupMenu& popup = Popup();
    LColorEditView& field = Field();
    const LStr255 text = field.GetDescriptor();
    std::int32_t matching = 0;
    for (std::int32_t item = popup.GetMinValue(); item <= popup.GetMaxValue(); ++item) {
        if (popup.GetItemText(item) == text) {
            matching = item;
        }
    }
    if (matching == 0) {
        popup.SetMinValue(0);
    }
    popup.SetValue(matching);
    field.SetDescriptor(text);
    field.SelectAll();
}

void LEditPopupView::TakePickedItem() {
    LEditPopupMenu& popup = Popup();
    LColorEditView& field = Field();
    field.SetDescriptor(popup.GetValue() != 0 ? popup.GetItemText(popup.GetValue()) : field.GetDescriptor());
    field.SelectAll();
}

void LEditPopupView::DrawSelf() {
    const Drawing::StateSaver saved;
    const Rect frame = CalcLocalFrameRect();
    Drawing::RGBForeColor(kWhite);
    Drawing::PenNormal();
    Drawing::FrameRect(Drawing::SetRect(0, 0, frame.Width(), frame.Height() - 1));
}
