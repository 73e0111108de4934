#pragma once

#include <cstdint>

/// The value types of drawing, as panes and layouts use them.

/// Three components, 0 to 65535 each.
struct RGBColor {
    std::uint16_t red = 0;
    std::uint16_t green = 0;
    std::uint16_t blue = 0;

    bool operator==(const RGBColor&) const = default;
};

inline constexpr RGBColor kBlack{0, 0, 0};
inline constexpr RGBColor kWhite{0xFFFF, 0xFFFF, 0xFFFF};

/// A point of the grid that runs between the pixels; vertical first.
struct Point {
    std::int16_t v = 0;
    std::int16_t h = 0;

    bool operator==(const Point&) const = default;
};

/// A rectangle between grid lines: it holds the pixels from `left` to `right` - 1 and from `top` to `bottom` - 1.
struct Rect {
    std::int16_t top = 0;
    std::int16_t left = 0;
    std::int16_t bottom = 0;
    std::int16_t right = 0;

    [[nodiscard]] int Width() const { return right - left; }
    [[nodiscard]] int Height() const { return bottom - top; }

    bool operator==(const Rect&) const = default;
};
