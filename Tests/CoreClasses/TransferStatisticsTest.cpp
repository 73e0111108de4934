#include "CoreClasses/TransferStatistics.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <vector>

using testing::ElementsAre;

namespace {

constexpr std::uint64_t kTwelveDays = std::uint64_t{1} << 40;

/// Values spread evenly over the orders of magnitude from `smallest` to `largest`.
std::vector<std::uint64_t> Spread(double smallest, double largest) {
    std::vector<std::uint64_t> values(5000);
    for (std::size_t i = 0; i < values.size(); ++i) {
        values[i] = static_cast<std::uint64_t>(smallest * std::pow(largest / smallest, static_cast<double>(i) / 4999));
    }
    return values;
}

}  // namespace

TEST(TransferTimeHistogramTest, PercentilesAreWithinOnePercentOfTheExactOnes) {
    const std::vector<std::uint64_t> samples[] = {// in ascending order all
                                                  {0},
                                                  {0, 1, 127, 128, 129, 255, 256, 257},
                                                  {(kTwelveDays >> 1) - 1, kTwelveDays >> 1, kTwelveDays - 1},
                                                  {5, kTwelveDays, kTwelveDays * 4, ~std::uint64_t{0}},
                                                  Spread(1, 1e12),
                                                  Spread(8000, 8100)};
    for (const std::vector<std::uint64_t>& values : samples) {
        TransferTimeHistogram histogram;
        std::for_each(values.rbegin(), values.rend(), [&](std::uint64_t value) { histogram.Add(value); });
        EXPECT_EQ(histogram.Count(), values.size());
        EXPECT_EQ(histogram.Percentile(1.0), values.back());
        for (const double fraction : {0.0, 0.25, 0.5, 0.75, 0.9, 0.95, 0.99, 0.999}) {
            const double rank = std::max(std::ceil(fraction * static_cast<double>(values.size())), 1.0);
            const std::uint64_t exact = values[static_cast<std::size_t>(rank) - 1];
            // The last bucket holds all that lasts longer.
            const auto expected = static_cast<double>(exact == values.back() ? exact : std::min(exact, kTwelveDays));
            const double allowed = exact < 128 ? 0 : expected / 100;
            EXPECT_NEAR(static_cast<double>(histogram.Percentile(fraction)), expected, allowed) << fraction;
        }
    }
    EXPECT_EQ(TransferTimeHistogram().Percentile(0.5), 0U);
}

TEST(DeadlineStatisticsTest, AddsUpWhatAPlayerWouldHaveToRideOut) {
    DeadlineStatistics deadlines;
    const auto after = [&deadlines](std::uint64_t duration) {
        deadlines.Add(duration, 100);
        return std::vector{deadlines.late, deadlines.longestRun, deadlines.worstLatenessUS, deadlines.currentBacklogUS,
                           deadlines.largestBacklogUS};
    };
    EXPECT_THAT(after(100), ElementsAre(0, 0, 0, 0, 0)) << "in time to the microsecond";
    EXPECT_THAT(after(0), ElementsAre(0, 0, 0, 0, 0));
    EXPECT_THAT(after(101), ElementsAre(1, 1, 1, 1, 1)) << "time in hand does not count later on";
    EXPECT_THAT(after(150), ElementsAre(2, 2, 50, 51, 51));
    EXPECT_THAT(after(80), ElementsAre(2, 2, 50, 31, 51));
    EXPECT_THAT(after(300), ElementsAre(3, 2, 200, 231, 231));
    EXPECT_THAT(after(101), ElementsAre(4, 2, 200, 232, 232));
    deadlines.BeginPhase();
    EXPECT_THAT(after(110), ElementsAre(5, 2, 200, 10, 232));
}
