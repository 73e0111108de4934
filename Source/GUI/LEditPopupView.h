#pragma once

#include "Framework/Base/LListener.h"
#include "Framework/UI/LView.h"

class LColorEditView;
class LEditPopupMenu;

/// A text field over a popup menu of suggested values, kept in agreement: picking an item fills the field, and the item
/// that equals the field's text is ticked, or none is.
///
/// Attributes of its record besides a pane's: "items", texts separated by '|'.
class LEditPopupView final : public LView, public LListener {
public:
    static constexpr PaneIDT kPopupID = 1000;
    static constexpr PaneIDT kFieldID = 2000;

    explicit LEditPopupView(LStream* stream);

    void ListenToMessage(MessageT message, void* ioParam) override;
    void DrawSelf() override;

    // They stay this view's.
    [[nodiscard]] LEditPopupMenu& Popup();
    [[nodiscard]] LColorEditView& Field();

protected:
    void FinishCreateSelf() override;

private:
    void TakePickedItem();
    void TickMatchingItem();
    void StepItem(int step);
};
