#pragma once

#include "Framework/UI/LControl.h"

#include <vector>

/// A list of texts of which one is chosen. Its value is the number of the chosen row, counted from 1; 0 when none is.
///
/// Attributes of its record besides a control's: "items", texts separated by '|'. The maximum is the number of rows.
class LListBox : public LControl {
public:
    explicit LListBox(LStream* stream);

    /// Raises the maximum with the number of rows. The value stays.
    void AppendItem(const LStr255& text);
    /// The value and the maximum become 0.
    void RemoveAllItems();
    [[nodiscard]] std::int32_t CountItems() const;
    /// The text of a row, counted from 1; empty when there is none.
    [[nodiscard]] LStr255 GetItemText(std::int32_t row) const;

protected:
    [[nodiscard]] std::unique_ptr<QWidget> MakePeer(QWidget* parent) override;
    void PushState() override;

private:
    std::vector<LStr255> m_items;
};
