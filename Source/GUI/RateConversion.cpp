#include "GUI/RateConversion.h"

float MBPSForReadout(std::uint32_t rateKBps) {
    const double megabytes = rateKBps / 1024.0;
    const auto hundredths = static_cast<std::int64_t>(megabytes * 100);
    if (hundredths == 0) {
        return 0.0F;
    }
    const auto whole = static_cast<std::int64_t>(megabytes);
    return static_cast<float>(static_cast<double>(whole) + static_cast<double>(hundredths - whole * 100) * 0.01);
}
