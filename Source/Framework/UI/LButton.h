#pragma once

#include "Framework/UI/LControl.h"

/// A small button with an arrow. It broadcasts its message when pressed, and again and again while it is held.
///
/// Attributes of its record besides a control's: "arrow", "left", "right" (the default), "up" or "down".
class LButton : public LControl {
public:
    explicit LButton(LStream* stream);

protected:
    [[nodiscard]] std::unique_ptr<QWidget> MakePeer(QWidget* parent) override;

private:
    enum class Arrow { Left, Right, Up, Down };

    Arrow m_arrow;
};
