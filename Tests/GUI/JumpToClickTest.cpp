#include "GUI/JumpToClick.h"

#include <gtest/gtest.h>

#include <optional>
#include <tuple>

namespace JumpToClick {
namespace {

constexpr std::optional<std::int32_t> kStays = std::nullopt;

TEST(JumpToClickTest, SliderJumpsToTheClickUnlessItIsOnTheThumb) {
    constexpr std::int32_t largest = 2'147'483'647;
    // Minimum, maximum, value, left and width.
    const Track fiveToHundredFive{5, 105, 55, 30, 200};
    const std::tuple<Track, std::int32_t, std::optional<std::int32_t>> cases[] = {
        {fiveToHundredFive, 145, kStays},                              // the thumb's place: 30 + 200 * 50 / 100
        {fiveToHundredFive, 114, 47},     {fiveToHundredFive, 31, 5},  // half a value rounds down
        {fiveToHundredFive, 33, 6},                                    // 1.5 values
        {fiveToHundredFive, 20, 5},                                    // left of the track
        {fiveToHundredFive, 400, 105},    {{5, 5, 5, 0, 100}, 90, kStays},
        {{0, 10, 0, 0, 0}, 50, 0},        {{-largest, largest, 0, 0, 100}, largest, largest}};
    for (const auto& [track, clicked, expected] : cases) {
        EXPECT_EQ(SliderJump(track, clicked), expected) << "click at " << clicked;
    }
}

TEST(JumpToClickTest, ScrollBarLeavesItsArrowsOut) {
    const Track track{0, 100, 50, 10, 112};
    const std::tuple<Track, ArrowLayout, std::int32_t, std::optional<std::int32_t>> cases[] = {
        // The thumb is at 10 + 56; the track begins at 22 and is 100 long.
        {track, ArrowLayout::kBothEnds, 36, kStays},
        {track, ArrowLayout::kBothEnds, 35, 13},
        {track, ArrowLayout::kBothEnds, 122, 100},
        // The track begins at 10 and is 88 long; from 98 on there are the arrows.
        {track, ArrowLayout::kTogether, 97, 99},
        {track, ArrowLayout::kTogether, 98, 0},
        {{7, 7, 7, 0, 112}, ArrowLayout::kTogether, 80, kStays},
        {{3, 100, 100, 0, 24}, ArrowLayout::kTogether, 60, 3}};
    for (const auto& [bar, arrows, clicked, expected] : cases) {
        EXPECT_EQ(ScrollJump(bar, arrows, clicked), expected) << "click at " << clicked;
    }
}

}  // namespace
}  // namespace JumpToClick
