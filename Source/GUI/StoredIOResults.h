#pragma once

#include <cstdint>

/// One chart sample. Rates in KB/s, times in ms.
struct StoredIOResults {
    std::int32_t readAverage = 0;
    std::int32_t readRecent = 0;
    std::int32_t readPeakTime = 0;
    std::int32_t writeAverage = 0;
    std::int32_t writeRecent = 0;
    std::int32_t writePeakTime = 0;
    std::int32_t phase = 0;  ///< a `TestPhase`
    std::int32_t elapsedSeconds = 0;
};
