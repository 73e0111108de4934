#include "Framework/UI/LEditField.h"

#include "Framework/UI/LStream.h"

LEditField::LEditField(LStream* stream) : LTextEditView(stream), m_message(stream->Number("message")) {}

void LEditField::UserChangedText() {
    if (m_message != 0) {
        BroadcastMessage(m_message);
    }
}
