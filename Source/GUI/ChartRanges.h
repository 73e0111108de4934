#pragma once

#include <cstdint>
#include <optional>

/// How the chart's axes choose their ends and divisions from the data.
namespace ChartRanges {

struct AxisRange {
    float minimum = 0.0F;
    float maximum = 0.0F;
    int divisions = 0;  ///< labelled values, both ends included

    bool operator==(const AxisRange&) const = default;
};

/// The first of `start`, `start` + 1, ... that is a multiple of `divisor`, which is positive.
[[nodiscard]] std::int32_t NearestMultiple(std::int32_t divisor, std::int32_t start);

/// The same from `value` on, rounded up when it is more than 0.001 above a whole number.
[[nodiscard]] std::int32_t NearestMultipleFrom(std::int32_t unit, float value);

/// From 0 to a round number that takes `largest` in. None above 1,000,000.
[[nodiscard]] std::optional<AxisRange> YRangeFor(float largest);

/// From about `start` to about `end`, widened until the span divides into 7 to 15 whole steps.
[[nodiscard]] AxisRange FixedXRangeFor(std::int32_t start, std::int32_t end);

/// From 0 to `last` or a little further, so that the divisions are whole numbers. None above 7,500,000.
[[nodiscard]] std::optional<AxisRange> GrowingXRangeFor(std::int32_t last);

}  // namespace ChartRanges
