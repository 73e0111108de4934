#pragma once

#include <cstdint>

/// A rate in KB/s as the MB/s that a readout shows: two decimals, truncated and never rounded, so that a path is not
/// shown faster than it is. Below 0.01 MB/s it is 0.
[[nodiscard]] float MBPSForReadout(std::uint32_t rateKBps);
