#pragma once

#include "Platform/DrawingTypes.h"

#include <span>

/// Draws single segments and dots of a seven-segment character, in the current foreground colour. A short-lived value,
/// made during a draw.
///
/// Segments: 0 top, 1 upper left, 2 upper right, 3 middle, 4 lower left, 5 lower right, 6 bottom. The left and the
/// right ones are not mirror images of each other.
class DigiSegment {
public:
    static constexpr int kSegments = 7;
    static constexpr int kDots = 3;

    DigiSegment() = default;
    explicit DigiSegment(Point initial) : m_ptInitial(initial) {}

    /// The character cell's top left corner.
    void setPtInitial(Point initial) { m_ptInitial = initial; }
    [[nodiscard]] Point getPtInitial() const { return m_ptInitial; }

    /// The point with this horizontal and this vertical coordinate.
    [[nodiscard]] static constexpr Point createPoint(int horizontal, int vertical) {
        return {.v = static_cast<std::int16_t>(vertical), .h = static_cast<std::int16_t>(horizontal)};
    }

    /// An index outside 0 to 6 draws nothing.
    void drawSegment(int segment) const;
    /// A dot of the colon (0 the upper, 1 the lower) or of the decimal point (2); any other position draws nothing.
    void drawSemiColombi(int position) const;
    /// Fills the closed polygon; its corners are relative to the cell's corner.
    void drawPolygon(std::span<const Point> corners) const;

private:
    Point m_ptInitial;
};
