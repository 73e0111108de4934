#pragma once

#include "Framework/Base/LBroadcaster.h"
#include "Framework/UI/LPane.h"

/// A pane with a value that broadcasts its value message, with a pointer to the value (`std::int32_t*`) as parameter,
/// when the user or the program changes it; buttons broadcast when pressed.
///
/// Attributes of its record besides a pane's: "message" (0: nothing is broadcast), "value", "min", "max", "text".
class LControl : public LPane, public LBroadcaster {
public:
    explicit LControl(LStream* stream);
    /// For panes that other panes make themselves.
    LControl(const SPaneInfo& info, MessageT valueMessage);

    [[nodiscard]] std::int32_t GetValue() const override { return m_value; }
    /// Takes the value, held between minimum and maximum, and broadcasts when that changed it.
    void SetValue(std::int32_t value) override;

    [[nodiscard]] std::int32_t GetMinValue() const { return m_minValue; }
    [[nodiscard]] std::int32_t GetMaxValue() const { return m_maxValue; }
    /// Change a bound; a value outside is moved to the bound without being broadcast.
    void SetMinValue(std::int32_t minValue);
    void SetMaxValue(std::int32_t maxValue);

    [[nodiscard]] MessageT GetValueMessage() const { return m_valueMessage; }
    void SetValueMessage(MessageT message) { m_valueMessage = message; }
    void BroadcastValueMessage();

    void SetDescriptor(const LStr255& text) override;
    [[nodiscard]] LStr255 GetDescriptor() const override { return m_text; }

protected:
    void UpdatePeer() override;

    /// Brings the peer up to the control's value, bounds and text; called only when there is a peer.
    virtual void PushState() {}

    /// The user has moved the peer to `value`.
    void PeerChangedValue(std::int32_t value);

private:
    void PushToPeer();

    std::int32_t m_value;
    std::int32_t m_minValue;
    std::int32_t m_maxValue;
    MessageT m_valueMessage;
    LStr255 m_text;
};
