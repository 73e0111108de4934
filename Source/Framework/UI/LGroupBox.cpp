#include "Framework/UI/LGroupBox.h"

#include "Framework/UI/LStream.h"
#include "Framework/UI/PeerCasts.h"
#include "Framework/UI/WidgetTexts.h"

#include <QGroupBox>

LGroupBox::LGroupBox(LStream* stream) : LView(stream), m_text(std::string_view(stream->Text("text"))) {}

void LGroupBox::SetDescriptor(const LStr255& text) {
    m_text = text;
    if (auto* box = PeerIfAny<QGroupBox>(*this)) {
        box->setTitle(WidgetTexts::Face(m_text.View(), {}));
    }
}

std::unique_ptr<QWidget> LGroupBox::MakePeer(QWidget* parent) {
    return std::make_unique<QGroupBox>(parent);
}

void LGroupBox::UpdatePeer() {
    LView::UpdatePeer();
    SetDescriptor(LStr255(m_text));
}
