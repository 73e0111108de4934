#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

/// `value` without its fraction; the nearest 32-bit number when it is larger or smaller than these are, 0 when it is
/// none.
[[nodiscard]] inline std::int32_t TruncateToInt32(double value) {
    using Limits = std::numeric_limits<std::int32_t>;
    if (!(value >= Limits::min() || value <= Limits::max())) {
        return 0;  // not a number
    }
    return static_cast<std::int32_t>(std::clamp<double>(value, Limits::min(), Limits::max()));
}
