#include "GUI/ChartRanges.h"

#include "GUI/Truncation.h"

#include <algorithm>
#include <array>
#include <utility>

namespace ChartRanges {

namespace {

constexpr int kFewestSteps = 7;
constexpr int kMostSteps = 15;

struct SmallRange {
    float maximum;
    int divisions;
};
constexpr std::array<SmallRange, 6> kSmallYRanges{
    {{0.06F, 7}, {0.1F, 11}, {0.5F, 11}, {1.0F, 11}, {2.5F, 11}, {5.0F, 11}}};

constexpr std::array<std::int32_t, 16> kYSteps{10,   20,    50,    100,   200,    500,    1000,   2000,
                                               5000, 10000, 20000, 50000, 100000, 200000, 500000, 1000000};
constexpr int kUnitsInYStep = 10;

constexpr std::array<std::int32_t, 16> kXSteps{75,    150,   300,    750,    1500,   3000,    7500,    15000,
                                               30000, 75000, 150000, 300000, 750000, 1500000, 3000000, 7500000};
constexpr int kUnitsInXStep = 15;
/// Below this there is no need for units: one of seven successive numbers divides into whole steps.
constexpr std::int32_t kFirstLongX = 35;

AxisRange UpTo(std::int32_t maximum, int divisions) {
    return {.minimum = 0.0F, .maximum = static_cast<float>(maximum), .divisions = divisions};
}

AxisRange ShortXRange(std::int32_t last) {
    for (std::int32_t end = last; end < last + kFewestSteps; ++end) {
        for (int steps = kFewestSteps; steps <= kMostSteps; ++steps) {
            if (end % steps == 0) {
                return UpTo(end, steps + 1);
            }
        }
    }
    return UpTo(last, kFewestSteps + 1);  // not reached: one of the seven is a multiple of seven
}

}  // namespace

std::int32_t NearestMultiple(std::int32_t divisor, std::int32_t start) {
    const std::int32_t rest = start % divisor;
    return rest == 0 ? start : start - rest + (rest > 0 ? divisor : 0);
}

std::int32_t NearestMultipleFrom(std::int32_t unit, float value) {
    const auto exact = static_cast<double>(value);
    const std::int32_t whole = TruncateToInt32(exact);
    return NearestMultiple(unit, exact - whole > 0.001 ? whole + 1 : whole);
}

std::optional<AxisRange> YRangeFor(float largest) {
    for (const SmallRange& range : kSmallYRanges) {
        if (largest <= range.maximum) {
            return AxisRange{.minimum = 0.0F, .maximum = range.maximum, .divisions = range.divisions};
        }
    }
    const auto* step =
        std::ranges::find_if(kYSteps, [&](int candidate) { return largest <= static_cast<float>(candidate); });
    if (step == kYSteps.end()) {
        return std::nullopt;
    }
    const std::int32_t unit = *step / kUnitsInYStep;
    const std::int32_t maximum = NearestMultipleFrom(unit, largest);
    const int divisions = maximum / unit + 1;
    return divisions == 6 ? UpTo(maximum + unit, 7) : UpTo(maximum, divisions);
}

AxisRange FixedXRangeFor(std::int32_t start, std::int32_t end) {
    // 64 bits, because widening may go past the largest 32-bit number.
    std::int64_t first = std::min(start, end);
    std::int64_t last = std::max(start, end);
    for (; first >= 0; --first, ++last) {
        for (int steps = kMostSteps; steps >= kFewestSteps; --steps) {
            if ((last - first) % steps == 0) {
                return {
                    .minimum = static_cast<float>(first), .maximum = static_cast<float>(last), .divisions = steps + 1};
            }
        }
    }
    return {.minimum = 0.0F, .maximum = static_cast<float>(last), .divisions = kFewestSteps};
}

std::optional<AxisRange> GrowingXRangeFor(std::int32_t last) {
    if (last < kFirstLongX) {
        return ShortXRange(last);
    }
    const auto* step = std::ranges::find_if(kXSteps, [&](int candidate) { return last <= candidate; });
    if (step == kXSteps.end()) {
        return std::nullopt;
    }
    const std::int32_t unit = *step / kUnitsInXStep;
    const std::int32_t maximum = NearestMultiple(unit, last);
    return UpTo(maximum, maximum / unit + 1);
}

}  // namespace ChartRanges
