#pragma once

#include "Framework/UI/LControl.h"

#include <cstdint>
#include <vector>

/// A button that shows the current one of several texts and lets the user choose another. Its value is the number of
/// the current item, counted from 1; 0 when no item is ticked. The wheel changes it only while it has the keyboard.
///
/// Attributes of its record besides a control's: "items", texts separated by '|'. The minimum is 1 and the maximum the
/// number of items unless the record says otherwise; the first item is current when it gives no value.
class LStdPopupMenu : public LControl {
public:
    explicit LStdPopupMenu(LStream* stream);
    /// For panes that other panes make themselves: no items yet, and the first that comes is current.
    LStdPopupMenu(const SPaneInfo& info, MessageT valueMessage);

    /// Raises the maximum to the number of items when it is lower. The value stays.
    void AppendItem(const LStr255& text);
    /// The value and the maximum become 0.
    void RemoveAllItems();
    [[nodiscard]] std::int32_t CountItems() const;
    /// The text of an item, counted from 1; empty when there is none. `SetItemText` then does nothing.
    [[nodiscard]] LStr255 GetItemText(std::int32_t item) const;
    void SetItemText(std::int32_t item, const LStr255& text);

    /// Opens the list; returns at once.
    void ClickSelf(const SMouseDownEvent& event) override;

    /// The list has been closed and what the user chose in it, if anything, been broadcast. Called by the framework.
    virtual void ClickEnded() {}

protected:
    [[nodiscard]] std::unique_ptr<QWidget> MakePeer(QWidget* parent) override;
    void PushState() override;

private:
    std::vector<LStr255> m_items;
};
