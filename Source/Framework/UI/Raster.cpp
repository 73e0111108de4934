#include "Framework/UI/Raster.h"

namespace Raster {

namespace {

/// Larger than any image, and small enough for the sum of squares below: 2 * (2^15)^4 fits 64 bits.
constexpr int kLargestOval = 1 << 15;

}  // namespace

RoundShape::RoundShape(int width, int height, int ovalWidth, int ovalHeight)
    : m_width(width), m_height(height), m_ovalWidth(ovalWidth), m_ovalHeight(ovalHeight) {
    const std::int64_t across = std::clamp(ovalWidth, 0, std::clamp(width, 0, kLargestOval));
    const std::int64_t down = std::clamp(ovalHeight, 0, std::clamp(height, 0, kLargestOval));
    m_insets.assign(static_cast<std::size_t>(std::max(height, 0)), 0);
    // A pixel's centre (x, y), doubled and from the oval's centre, is inside when (x / across)^2 + (y / down)^2 <= 1.
    std::int64_t inset = across / 2;
    for (std::int64_t row = 0; row < (down + 1) / 2; ++row) {
        const std::int64_t y = (2 * row + 1 - down) * across;
        const auto isInside = [&](std::int64_t column) {
            const std::int64_t x = (2 * column + 1 - across) * down;
            return x * x + y * y <= across * across * down * down;
        };
        while (inset > 0 && isInside(inset - 1)) {
            --inset;
        }
        const auto upper = static_cast<std::size_t>(row);
        m_insets[upper] = static_cast<int>(inset);
        m_insets[m_insets.size() - 1 - upper] = static_cast<int>(inset);
    }
}

}  // namespace Raster
