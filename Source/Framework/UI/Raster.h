#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

/// Which pixels the figures of the drawing operations cover, in device pixels and without any library: a pixel belongs
/// to a figure when its centre lies inside it or on a left edge. All sums are exact.
///
/// The functions hand each row of a figure to `fillRow(y, left, right)`, which is to fill the pixels from `left` to
/// `right` - 1 of row y. Coordinates lie within `kFarthest` on both sides of 0.
namespace Raster {

/// Keeps the products below within 64 bits, and lies thousands of screens away.
constexpr int kFarthest = 1 << 24;

/// A point of the grid between the device pixels.
struct Corner {
    int x = 0;
    int y = 0;
};

struct Area {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    [[nodiscard]] int Width() const { return right - left; }
    [[nodiscard]] int Height() const { return bottom - top; }
    [[nodiscard]] bool IsEmpty() const { return left >= right || top >= bottom; }
    [[nodiscard]] Area CutTo(const Area& limit) const {
        return {.left = std::max(left, limit.left),
                .top = std::max(top, limit.top),
                .right = std::min(right, limit.right),
                .bottom = std::min(bottom, limit.bottom)};
    }
};

/// The least whole number not below `dividend` / `divisor`, for a positive divisor.
[[nodiscard]] constexpr std::int64_t DivideUp(std::int64_t dividend, std::int64_t divisor) {
    return dividend > 0 ? (dividend - 1) / divisor + 1 : -(-dividend / divisor);
}

/// The area that a pen of this size, which hangs below and to the right of its path, sweeps on its way between two
/// points: the hull of the pen at both ends. Rows outside `limit` are left out.
template <typename FillRow>
void FillLine(Corner from, Corner to, int penWidth, int penHeight, const Area& limit, FillRow fillRow) {
    if (from.y > to.y) {
        std::swap(from, to);
    }
    const std::int64_t dx = to.x - from.x;
    const std::int64_t dy = to.y - from.y;
    const int end = std::min(to.y + penHeight, limit.bottom);
    for (int y = std::max(from.y, limit.top); y < end; ++y) {
        if (dx == 0 || dy == 0) {
            fillRow(y, std::min(from.x, to.x), std::max(from.x, to.x) + penWidth);
            continue;
        }
        // The part of the way on which the pen meets the row's centre, in units of 1 / (2 dy).
        const std::int64_t begun = std::max<std::int64_t>(0, 2 * (y - from.y - penHeight) + 1);
        const std::int64_t ended = std::min<std::int64_t>(2 * dy, 2 * (y - from.y) + 1);
        const std::int64_t left = DivideUp(dx * (dx > 0 ? begun : ended) - dy, 2 * dy);
        const std::int64_t right = DivideUp(dx * (dx > 0 ? ended : begun) - dy, 2 * dy);
        fillRow(y, from.x + static_cast<int>(left), from.x + penWidth + static_cast<int>(right));
    }
}

/// The inside of the closed polygon, by the even-odd rule. Rows outside `limit` are left out. `crossings` is scratch
/// memory.
template <typename FillRow>
void FillPolygon(std::span<const Corner> corners, const Area& limit, std::vector<int>& crossings, FillRow fillRow) {
    if (corners.empty()) {
        return;
    }
    const auto [highest, lowest] = std::ranges::minmax(corners, {}, &Corner::y);
    const int end = std::min(lowest.y, limit.bottom);
    for (int y = std::max(highest.y, limit.top); y < end; ++y) {
        crossings.clear();
        Corner previous = corners.back();
        for (const Corner& corner : corners) {
            const auto [upper, lower] = std::minmax(previous, corner, [](auto a, auto b) { return a.y < b.y; });
            if (upper.y <= y && y < lower.y) {
                const std::int64_t dy = lower.y - upper.y;
                const std::int64_t dx = lower.x - upper.x;
                const std::int64_t distance = DivideUp(dx * (2 * (y - upper.y) + 1) - dy, 2 * dy);
                crossings.push_back(upper.x + static_cast<int>(distance));
            }
            previous = corner;
        }
        std::ranges::sort(crossings);
        for (std::size_t i = 0; i + 1 < crossings.size(); i += 2) {
            fillRow(y, crossings[i], crossings[i + 1]);
        }
    }
}

/// A rectangle whose corners are quarters of an oval; an oval when these are as large as the rectangle. Its shape is
/// worked out once and serves for every place.
class RoundShape {
public:
    RoundShape() = default;
    RoundShape(int width, int height, int ovalWidth, int ovalHeight);

    [[nodiscard]] bool Is(int width, int height, int ovalWidth, int ovalHeight) const {
        return width == m_width && height == m_height && ovalWidth == m_ovalWidth && ovalHeight == m_ovalHeight;
    }
    [[nodiscard]] int Width() const { return m_width; }
    [[nodiscard]] int Height() const { return m_height; }

    /// For each row, how many pixels are missing on the left, and as many on the right.
    [[nodiscard]] std::span<const int> Insets() const { return m_insets; }

private:
    int m_width = 0;
    int m_height = 0;
    int m_ovalWidth = 0;
    int m_ovalHeight = 0;
    std::vector<int> m_insets;
};

}  // namespace Raster
