#pragma once

#include "Framework/UI/LControl.h"

#include <string>

/// A push button with a text. It broadcasts its message when pressed.
///
/// Attributes of its record besides a control's: "key", a key combination that presses it, e.g. "Ctrl+R"; one with Alt
/// and a letter of the text underlines that letter, any other is told by the tool tip. "default", it is shown as what
/// Enter presses.
class LStdButton : public LControl {
public:
    explicit LStdButton(LStream* stream);

    /// Its key combination as the record has it; may be empty.
    [[nodiscard]] const std::string& Key() const { return m_key; }

    /// Shows the button as what Enter presses; the window does the pressing.
    void SetDefaultLook(bool isDefault);

protected:
    [[nodiscard]] std::unique_ptr<QWidget> MakePeer(QWidget* parent) override;
    void UpdatePeer() override;
    void PushState() override;

private:
    std::string m_key;
    bool m_isDefault;
};
