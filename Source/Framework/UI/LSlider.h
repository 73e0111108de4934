#pragma once

#include "Framework/UI/LTrackControl.h"

/// A slider with a horizontal track.
class LSlider : public LTrackControl {
public:
    using LTrackControl::LTrackControl;

    [[nodiscard]] int ThumbLength() const override;

protected:
    [[nodiscard]] std::unique_ptr<QWidget> MakePeer(QWidget* parent) override;
};
