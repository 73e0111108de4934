#include "GUI/CSlider.h"

#include "GUI/JumpToClick.h"

void CSlider::ClickSelf(const SMouseDownEvent& event) {
    const JumpToClick::Track track{.minimum = GetMinValue(),
                                   .maximum = GetMaxValue(),
                                   .value = GetValue(),
                                   .width = static_cast<std::int16_t>(CalcLocalFrameRect().Width())};
    if (const auto jump = JumpToClick::SliderJump(track, event.whereLocal.h)) {
        SetValue(*jump);
    }
    LSlider::ClickSelf(event);
}
