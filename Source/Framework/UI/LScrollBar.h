#pragma once

#include "Framework/UI/LTrackControl.h"

#include <cstdint>

/// A horizontal scroll bar without arrows of its own: windows that want arrows have buttons beside it.
///
/// Attributes of its record besides a track's: "arrowLayout", see `GetArrowLayout`.
class LScrollBar : public LTrackControl {
public:
    explicit LScrollBar(LStream* stream);

    /// Where the window has its arrows: 1 at each end, any other number both at the right end. Says nothing about the
    /// bar itself.
    [[nodiscard]] std::int32_t GetArrowLayout() const { return m_arrowLayout; }
    void SetArrowLayout(std::int32_t arrowLayout) { m_arrowLayout = arrowLayout; }

    /// How many of what is scrolled through can be seen at once: the page step, and by its share of the whole the
    /// thumb's length.
    void SetVisibleCount(std::int32_t count) { SetPageStep(count); }

    /// At most 60, so that a press on the thumb is one near the place that its value stands for.
    [[nodiscard]] int ThumbLength() const override;

protected:
    [[nodiscard]] std::unique_ptr<QWidget> MakePeer(QWidget* parent) override;

private:
    std::int32_t m_arrowLayout;
};
