#include "GUI/CScroll.h"

#include "GUI/JumpToClick.h"

void CScroll::ClickSelf(const SMouseDownEvent& event) {
    const JumpToClick::Track track{.minimum = GetMinValue(),
                                   .maximum = GetMaxValue(),
                                   .value = GetValue(),
                                   .width = static_cast<std::int16_t>(CalcLocalFrameRect().Width())};
    using JumpToClick::ArrowLayout;
    const ArrowLayout arrows = GetArrowLayout() == 1 ? ArrowLayout::kBothEnds : ArrowLayout::kTogether;
    if (const auto jump = JumpToClick::ScrollJump(track, arrows, event.whereLocal.h)) {
        SetValue(*jump);
    }
    LScrollBar::ClickSelf(event);
}
