#include "Framework/UI/LControl.h"

#include "Framework/UI/LStream.h"

#include <algorithm>

LControl::LControl(LStream* stream)
    : LPane(stream), m_value(stream->Number("value")), m_minValue(stream->Number("min")),
      m_maxValue(stream->Number("max", 1)), m_valueMessage(stream->Number("message")),
      m_text(std::string_view(stream->Text("text"))) {}

LControl::LControl(const SPaneInfo& info, MessageT valueMessage)
    : LPane(info), m_value(0), m_minValue(0), m_maxValue(1), m_valueMessage(valueMessage) {}

void LControl::SetValue(std::int32_t value) {
    const std::int32_t held = std::max(m_minValue, std::min(value, m_maxValue));
    if (held == m_value) {
        return;
    }
    m_value = held;
    PushToPeer();
    BroadcastValueMessage();
}

void LControl::SetMinValue(std::int32_t minValue) {
    m_minValue = minValue;
    m_value = std::max(m_value, m_minValue);
    PushToPeer();
}

void LControl::SetMaxValue(std::int32_t maxValue) {
    m_maxValue = maxValue;
    m_value = std::min(m_value, m_maxValue);
    PushToPeer();
}

void LControl::BroadcastValueMessage() {
    if (m_valueMessage != 0) {
        std::int32_t value = m_value;
        BroadcastMessage(m_valueMessage, &value);
    }
}

void LControl::SetDescriptor(const LStr255& text) {
    m_text = text;
    PushToPeer();
}

void LControl::UpdatePeer() {
    LPane::UpdatePeer();
    PushState();
}

void LControl::PushToPeer() {
    if (Peer() != nullptr) {
        PushState();
    }
}

void LControl::PeerChangedValue(std::int32_t value) {
    if (value != m_value) {
        m_value = value;
        BroadcastValueMessage();
    }
}
