#pragma once

#include <cstdint>
#include <optional>

/// Where a click on the track of a slider or a scroll bar sends the value: to the clicked place at once, unless it is
/// so near the thumb that it means to drag it.
namespace JumpToClick {

/// A control and its frame along the track. Places are horizontal coordinates, in pixels.
struct Track {
    std::int32_t minimum = 0;
    std::int32_t maximum = 0;
    std::int32_t value = 0;
    std::int32_t left = 0;  ///< of the control's frame
    std::int16_t width = 0;
};

/// How near the thumb a click is one on the thumb, on either side of it.
constexpr int kSliderReach = 15;
constexpr int kScrollReach = 30;

/// Where a scroll bar's arrows are left out of its track.
enum class ArrowLayout {
    kBothEnds = 1,  ///< 12 pixels on the left are no track
    kTogether = 2,  ///< 24 pixels on the right are no track
};

/// The thumb's place; the left edge for a track without a range.
[[nodiscard]] std::int64_t ThumbPosition(const Track& track);
[[nodiscard]] bool IsNearThumb(const Track& track, std::int32_t clicked, int reach);

/// The value that the clicked place stands for, between minimum and maximum; the minimum on a track without a length.
[[nodiscard]] std::int32_t SliderValueAt(const Track& track, std::int32_t clicked);
[[nodiscard]] std::int32_t ScrollValueAt(const Track& track, ArrowLayout arrows, std::int32_t clicked);

/// The value to set before the click is handled as usual; none when it is to stay: near the thumb, or without a range.
[[nodiscard]] std::optional<std::int32_t> SliderJump(const Track& track, std::int32_t clicked);
[[nodiscard]] std::optional<std::int32_t> ScrollJump(const Track& track, ArrowLayout arrows, std::int32_t clicked);

}  // namespace JumpToClick
