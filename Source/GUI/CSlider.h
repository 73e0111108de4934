#pragma once

#include "Framework/UI/LSlider.h"

/// A slider that jumps to a click away from its thumb at once.
class CSlider final : public LSlider {
public:
    using LSlider::LSlider;

    void ClickSelf(const SMouseDownEvent& event) override;
};
