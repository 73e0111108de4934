#pragma once

#include "Framework/UI/LControl.h"

#include <cstdint>
#include <memory>

class ThumbDrag;

/// How a value and the place of a thumb on its track belong together. Lengths in units of the pane.
namespace TrackGeometry {

struct Track {
    int length = 0;
    int thumbLength = 0;
    std::int32_t minimum = 0;
    std::int32_t maximum = 0;
};

/// Where the thumb begins, from the track's beginning.
[[nodiscard]] int ThumbBegin(const Track& track, std::int32_t value);

/// The value whose thumb begins nearest to `begin`, which may lie outside the track.
[[nodiscard]] std::int32_t ValueOfThumb(const Track& track, int begin);

}  // namespace TrackGeometry

/// A control whose thumb moves along a horizontal track: what sliders and scroll bars have in common.
///
/// A press anywhere on it takes hold of the thumb, which then moves as the pointer does; arrow keys move it by 1, Page
/// Up and Page Down by the page step. A class that wants more of a press overrides `ClickSelf` and calls the inherited
/// one at the end.
///
/// Attributes of its record besides a control's: "pageStep" (default: a tenth of the range).
class LTrackControl : public LControl {
public:
    explicit LTrackControl(LStream* stream);
    ~LTrackControl() override;

    /// 0 for a tenth of the range.
    void SetPageStep(std::int32_t step);

    void ClickSelf(const SMouseDownEvent& event) override;

    /// How long the thumb is now, in a pane that has a peer.
    [[nodiscard]] virtual int ThumbLength() const = 0;

    /// The pane's own track as it is now.
    [[nodiscard]] TrackGeometry::Track Track() const;

protected:
    void UpdatePeer() override;
    void PushState() override;

    [[nodiscard]] std::int32_t PageStep() const;

private:
    std::int32_t m_pageStep;
    std::unique_ptr<ThumbDrag> m_drag;
};
