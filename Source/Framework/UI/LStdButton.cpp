#include "Framework/UI/LStdButton.h"

#include "Framework/UI/LStream.h"
#include "Framework/UI/LayoutAttributes.h"
#include "Framework/UI/PeerCasts.h"
#include "Framework/UI/WidgetTexts.h"

#include <QKeyEvent>
#include <QKeySequence>
#include <QPushButton>

namespace {

class ButtonWidget final : public QPushButton {
public:
    using QPushButton::QPushButton;

protected:
    /// Enter presses the button that has the keyboard, before it presses the window's default button.
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
            click();
        } else {
            QPushButton::keyPressEvent(event);
        }
    }
};

}  // namespace

LStdButton::LStdButton(LStream* stream)
    : LControl(stream), m_key(LayoutAttributes::Key(*stream)), m_isDefault(stream->Flag("default")) {}

void LStdButton::SetDefaultLook(bool isDefault) {
    m_isDefault = isDefault;
    if (auto* button = PeerIfAny<QPushButton>(*this)) {
        button->setDefault(isDefault);
    }
}

std::unique_ptr<QWidget> LStdButton::MakePeer(QWidget* parent) {
    auto button = std::make_unique<ButtonWidget>(parent);
    button->setFocusPolicy(Qt::StrongFocus);
    QObject::connect(button.get(), &QPushButton::clicked, button.get(), [this] { BroadcastValueMessage(); });
    return button;
}

void LStdButton::UpdatePeer() {
    LControl::UpdatePeer();
    auto& button = PeerOf<QPushButton>(*this);
    button.setDefault(m_isDefault);
    button.setToolTip(WidgetTexts::ToolTip(button.toolTip().toStdString(), m_key));
}

void LStdButton::PushState() {
    auto& button = PeerOf<QPushButton>(*this);
    button.setText(WidgetTexts::Face(GetDescriptor().View(), m_key));
    // A new text brings a key of its own with it, or none.
    button.setShortcut(QKeySequence(WidgetTexts::FromPane(m_key), QKeySequence::PortableText));
}
