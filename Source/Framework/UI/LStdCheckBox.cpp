#include "Framework/UI/LStdCheckBox.h"

#include "Framework/UI/LRadioGroupView.h"
#include "Framework/UI/LayoutAttributes.h"
#include "Framework/UI/PeerCasts.h"
#include "Framework/UI/WidgetTexts.h"

#include <QCheckBox>
#include <QKeySequence>
#include <QRadioButton>

LStdCheckBox::LStdCheckBox(LStream* stream) : LControl(stream), m_key(LayoutAttributes::Key(*stream)) {}

void LStdCheckBox::SetValue(std::int32_t value) {
    LControl::SetValue(value);
    TellGroup();
}

std::unique_ptr<QWidget> LStdCheckBox::MakePeer(QWidget* parent) {
    std::unique_ptr<QAbstractButton> button;
    if (dynamic_cast<LRadioGroupView*>(GetSuperView()) != nullptr) {
        button = std::make_unique<QRadioButton>(parent);
        button->setAutoExclusive(false);  // the group sees to that, with and without peers
    } else {
        button = std::make_unique<QCheckBox>(parent);
    }
    button->setFocusPolicy(Qt::StrongFocus);
    QObject::connect(button.get(), &QAbstractButton::clicked, button.get(), [this](bool isOn) { TakeClick(isOn); });
    return button;
}

void LStdCheckBox::PushState() {
    auto& button = PeerOf<QAbstractButton>(*this);
    button.setText(WidgetTexts::Face(GetDescriptor().View(), m_key));
    button.setShortcut(QKeySequence(WidgetTexts::FromPane(m_key), QKeySequence::PortableText));
    button.setChecked(GetValue() != 0);
}

void LStdCheckBox::TakeClick(bool isOn) {
    const bool isRadioButton = dynamic_cast<LRadioGroupView*>(GetSuperView()) != nullptr;
    if (isRadioButton && !isOn) {
        PushState();  // a radio button is switched off by another and not by its own click
        return;
    }
    PeerChangedValue(isOn ? 1 : 0);
    TellGroup();
}

void LStdCheckBox::TellGroup() {
    auto* group = dynamic_cast<LRadioGroupView*>(GetSuperView());
    if (group != nullptr && GetValue() != 0) {
        group->TakeChoice(*this);
    }
}
