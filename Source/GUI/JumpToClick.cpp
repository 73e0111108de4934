#include "GUI/JumpToClick.h"

#include <algorithm>

namespace JumpToClick {

namespace {

constexpr std::int64_t kLeftArrowWidth = 12;
constexpr std::int64_t kTwoArrowsWidth = 24;

/// In 64 bits, because the ends may be 32 bits apart.
std::int64_t Span(const Track& track) {
    return std::int64_t{track.maximum} - track.minimum;
}

/// A half goes down, and everything below 0 towards 0; the latter is raised to the minimum anyway.
std::int64_t Round(float value) {
    constexpr float farthest = 1e18F;  // still a 64-bit number, and beyond every maximum
    const auto whole = static_cast<std::int64_t>(std::clamp(value, -farthest, farthest));
    return value > static_cast<float>(whole) + 0.5F ? whole + 1 : whole;
}

/// The value at `clicked` on a track that begins at `origin`.
std::int32_t ValueAt(const Track& track, std::int64_t origin, std::int64_t length, std::int32_t clicked) {
    if (length <= 0) {
        return track.minimum;
    }
    const double part = static_cast<double>(clicked - origin) / static_cast<double>(length);
    const auto offset = static_cast<float>(part * static_cast<double>(Span(track)));
    const std::int64_t value = Round(offset) + track.minimum;
    return static_cast<std::int32_t>(
        std::min<std::int64_t>(std::max<std::int64_t>(value, track.minimum), track.maximum));
}

bool HasRange(const Track& track) {
    return track.maximum != track.minimum;
}

}  // namespace

std::int64_t ThumbPosition(const Track& track) {
    if (!HasRange(track)) {
        return track.left;
    }
    const double product = static_cast<double>(track.width) * (static_cast<double>(track.value) - track.minimum);
    return track.left + static_cast<std::int64_t>(static_cast<float>(product / static_cast<double>(Span(track))));
}

bool IsNearThumb(const Track& track, std::int32_t clicked, int reach) {
    const std::int64_t distance = clicked - ThumbPosition(track);
    return -reach <= distance && distance <= reach;
}

std::int32_t SliderValueAt(const Track& track, std::int32_t clicked) {
    return ValueAt(track, track.left, track.width, clicked);
}

std::int32_t ScrollValueAt(const Track& track, ArrowLayout arrows, std::int32_t clicked) {
    const std::int64_t left = track.left;
    if (arrows == ArrowLayout::kBothEnds) {
        const std::int64_t origin = left + kLeftArrowWidth;
        return ValueAt(track, origin, clicked > origin ? track.width - kLeftArrowWidth : track.width, clicked);
    }
    const std::int64_t length = track.width - kTwoArrowsWidth;
    return ValueAt(track, clicked >= left + length ? left + length : left, length, clicked);
}

std::optional<std::int32_t> SliderJump(const Track& track, std::int32_t clicked) {
    if (!HasRange(track) || IsNearThumb(track, clicked, kSliderReach)) {
        return std::nullopt;
    }
    return SliderValueAt(track, clicked);
}

std::optional<std::int32_t> ScrollJump(const Track& track, ArrowLayout arrows, std::int32_t clicked) {
    if (!HasRange(track) || IsNearThumb(track, clicked, kScrollReach)) {
        return std::nullopt;
    }
    return ScrollValueAt(track, arrows, clicked);
}

}  // namespace JumpToClick
