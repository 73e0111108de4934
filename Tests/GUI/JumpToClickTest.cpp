#include "GUI/JumpToClick.h"

#include <gtest/gtest.h>

#include <optional>

namespace JumpToClick {
namespace {

constexpr std::optional<std::int32_t> kStays = std::nullopt;

TEST(JumpToClickTest, SliderJumpsToTheClickUnlessItIsOnTheThumb) {
    const Track fiveToHundredFive{.minimum = 5, .maximum = 105, .value = 55, .left = 30, .width = 200};
    const struct {
        Track track;
        std::int32_t clicked;
        std::optional<std::int32_t> expected;
    } cases[] = {
        {fiveToHundredFive, 145, kStays},  // the thumb's place: 30 + 200 * 50 / 100
        {fiveToHundredFive, 114, 47},
        {fiveToHundredFive, 146, 63},
        {fiveToHundredFive, 31, 5},  // half a value rounds down
        {fiveToHundredFive, 33, 6},  // 1.5 values
        {fiveToHundredFive, 20, 5},  // left of the track
        {fiveToHundredFive, 400, 105},
        {{.minimum = -50, .maximum = 50, .value = -50, .left = 0, .width = 100}, 100, 50},
        {{.minimum = 5, .maximum = 5, .value = 5, .left = 0, .width = 100}, 90, kStays},
        {{.minimum = 0, .maximum = 10, .value = 0, .left = 0, .width = 0}, 50, 0},
        {{.minimum = -2'147'483'647, .maximum = 2'147'483'647, .value = 0, .left = 0, .width = 100},
         2'147'483'647,
         2'147'483'647},
    };
    for (const auto& row : cases) {
        EXPECT_EQ(SliderJump(row.track, row.clicked), row.expected) << "click at " << row.clicked;
    }
}

TEST(JumpToClickTest, ScrollBarLeavesItsArrowsOut) {
    const Track track{.minimum = 0, .maximum = 100, .value = 50, .left = 10, .width = 112};
    const Track narrow{.minimum = 3, .maximum = 100, .value = 100, .left = 0, .width = 24};
    const struct {
        Track track;
        ArrowLayout arrows;
        std::int32_t clicked;
        std::optional<std::int32_t> expected;
    } cases[] = {
        // The thumb is at 10 + 56; the track begins at 22 and is 100 long.
        {track, ArrowLayout::kBothEnds, 36, kStays},
        {track, ArrowLayout::kBothEnds, 35, 13},
        {track, ArrowLayout::kBothEnds, 22, 0},
        {track, ArrowLayout::kBothEnds, 122, 100},
        // The track begins at 10 and is 88 long; from 98 on there are the arrows.
        {track, ArrowLayout::kTogether, 97, 99},
        {track, ArrowLayout::kTogether, 98, 0},
        {track, ArrowLayout::kTogether, 120, 25},
        {{.minimum = 7, .maximum = 7, .value = 7, .left = 0, .width = 112}, ArrowLayout::kTogether, 80, kStays},
        {narrow, ArrowLayout::kTogether, 60, 3},
    };
    for (const auto& row : cases) {
        EXPECT_EQ(ScrollJump(row.track, row.arrows, row.clicked), row.expected) << "click at " << row.clicked;
    }
}

}  // namespace
}  // namespace JumpToClick
