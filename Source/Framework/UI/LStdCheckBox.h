#pragma once

#include "Framework/UI/LControl.h"

#include <string>

/// A box that is ticked (1) or not (0), with a text. Inside a radio group it is a radio button, of which one at most is
/// on.
///
/// Attributes of its record besides a control's: "key", see `LStdButton`.
class LStdCheckBox : public LControl {
public:
    explicit LStdCheckBox(LStream* stream);

    void SetValue(std::int32_t value) override;

protected:
    [[nodiscard]] std::unique_ptr<QWidget> MakePeer(QWidget* parent) override;
    void PushState() override;

private:
    void TakeClick(bool isOn);
    void TellGroup();

    std::string m_key;
};
