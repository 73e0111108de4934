#include "Framework/UI/LStdPopupMenu.h"

#include "Framework/UI/LStream.h"
#include "Framework/UI/LayoutAttributes.h"
#include "Framework/UI/PeerCasts.h"
#include "Framework/UI/WidgetTexts.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QTimer>
#include <QWheelEvent>

#include <algorithm>

namespace {

class PopupWidget final : public QComboBox {
public:
    PopupWidget(LStdPopupMenu& pane, QWidget* parent) : QComboBox(parent), m_pane(pane) {
        setFocusPolicy(Qt::StrongFocus);  // the wheel alone does not take the focus
        setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);  // the layout says how wide it is
    }

    /// The pane's click opens the list, whether it comes from the mouse or the keyboard, so that a pane can do
    /// something before.
    void showPopup() override {
        if (count() > 0) {
            m_pane.ClickSelf({});
        }
    }

    void OpenList() {
        view()->setMinimumWidth(view()->sizeHintForColumn(0));  // the longest text may be wider than the button
        QComboBox::showPopup();
    }

    void hidePopup() override {
        const bool wasOpen = view()->isVisible();
        QComboBox::hidePopup();
        if (wasOpen) {
            // The choice is told after the list has gone, in the same event.
            QTimer::singleShot(0, this, [this] { m_pane.ClickEnded(); });
        }
    }

protected:
    void wheelEvent(QWheelEvent* event) override {
        if (hasFocus()) {
            QComboBox::wheelEvent(event);
        } else {
            event->ignore();
        }
    }

private:
    LStdPopupMenu& m_pane;
};

}  // namespace

LStdPopupMenu::LStdPopupMenu(LStream* stream) : LControl(stream), m_items(LayoutAttributes::Items(*stream)) {
    SetMaxValue(stream->Number("max", CountItems()));
    SetMinValue(stream->Number("min", stream->Has("value") ? std::min(1, GetValue()) : 1));
}

LStdPopupMenu::LStdPopupMenu(const SPaneInfo& info, MessageT valueMessage) : LControl(info, valueMessage) {
    SetMaxValue(0);
    SetMinValue(1);
}

void LStdPopupMenu::AppendItem(const LStr255& text) {
    m_items.push_back(text);
    if (auto* popup = PeerIfAny<QComboBox>(*this)) {
        popup->addItem(WidgetTexts::FromPane(text.View()));
    }
    SetMaxValue(std::max(GetMaxValue(), CountItems()));
}

void LStdPopupMenu::RemoveAllItems() {
    m_items.clear();
    if (auto* popup = PeerIfAny<QComboBox>(*this)) {
        popup->clear();
    }
    SetMaxValue(0);
}

std::int32_t LStdPopupMenu::CountItems() const {
    return static_cast<std::int32_t>(m_items.size());
}

LStr255 LStdPopupMenu::GetItemText(std::int32_t item) const {
    return item >= 1 && item <= CountItems() ? m_items[static_cast<std::size_t>(item - 1)] : LStr255();
}

void LStdPopupMenu::SetItemText(std::int32_t item, const LStr255& text) {
    if (item < 1 || item > CountItems()) {
        return;
    }
    m_items[static_cast<std::size_t>(item - 1)] = text;
    if (auto* popup = PeerIfAny<QComboBox>(*this)) {
        popup->setItemText(item - 1, WidgetTexts::FromPane(text.View()));
    }
}

void LStdPopupMenu::ClickSelf(const SMouseDownEvent& /*event*/) {
    if (auto* popup = PeerIfAny<PopupWidget>(*this)) {
        popup->OpenList();
    }
}

std::unique_ptr<QWidget> LStdPopupMenu::MakePeer(QWidget* parent) {
    auto popup = std::make_unique<PopupWidget>(*this, parent);
    for (const LStr255& item : m_items) {
        popup->addItem(WidgetTexts::FromPane(item.View()));
    }
    QObject::connect(popup.get(), &QComboBox::activated, popup.get(),
                     [this](int index) { PeerChangedValue(index + 1); });
    return popup;
}

void LStdPopupMenu::PushState() {
    PeerOf<QComboBox>(*this).setCurrentIndex(GetValue() - 1);  // 0 ticks none
}
