#include "Framework/UI/LListBox.h"

#include "Framework/UI/LayoutAttributes.h"
#include "Framework/UI/PeerCasts.h"
#include "Framework/UI/WidgetTexts.h"

#include <QListWidget>
#include <QSignalBlocker>

LListBox::LListBox(LStream* stream) : LControl(stream), m_items(LayoutAttributes::Items(*stream)) {
    SetMaxValue(CountItems());
}

void LListBox::AppendItem(const LStr255& text) {
    m_items.push_back(text);
    if (auto* list = PeerIfAny<QListWidget>(*this)) {
        list->addItem(WidgetTexts::FromPane(text.View()));
    }
    SetMaxValue(CountItems());
}

void LListBox::RemoveAllItems() {
    m_items.clear();
    if (auto* list = PeerIfAny<QListWidget>(*this)) {
        const QSignalBlocker quiet(list);
        list->clear();
    }
    SetMaxValue(0);
}

std::int32_t LListBox::CountItems() const {
    return static_cast<std::int32_t>(m_items.size());
}

LStr255 LListBox::GetItemText(std::int32_t row) const {
    return row >= 1 && row <= CountItems() ? m_items[static_cast<std::size_t>(row - 1)] : LStr255();
}

std::unique_ptr<QWidget> LListBox::MakePeer(QWidget* parent) {
    auto list = std::make_unique<QListWidget>(parent);
    for (const LStr255& item : m_items) {
        list->addItem(WidgetTexts::FromPane(item.View()));
    }
    QObject::connect(list.get(), &QListWidget::currentRowChanged, list.get(),
                     [this](int row) { PeerChangedValue(row + 1); });
    return list;
}

void LListBox::PushState() {
    auto& list = PeerOf<QListWidget>(*this);
    const QSignalBlocker quiet(list);
    list.setCurrentRow(GetValue() - 1);
}
