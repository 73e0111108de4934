#pragma once

#include "Platform/DrawingTypes.h"

#include <cstdint>

/// Draws one character cell of a seven-segment readout: everything unlit first, then what is lit over it. A short-lived
/// value, made during a draw.
///
/// A pattern is a number whose seven lowest decimal digits are the flags of segments 0 to 6, that of segment 6 in the
/// units digit. A 1 lights the segment; digits above the seventh mean nothing.
class DigiChar {
public:
    DigiChar() = default;
    explicit DigiChar(Point leftStarting) : m_leftStartingPosition(leftStarting) {}

    /// The cell's top left corner, in the pane's local coordinates.
    void setLeftStartingPosition(Point position) { m_leftStartingPosition = position; }
    [[nodiscard]] Point getLeftStartingPosition() const { return m_leftStartingPosition; }

    /// A digit outside 0 to 9 leaves a cell of unlit segments.
    void setNumber(int digit, const RGBColor& lit, const RGBColor& unlit) const;
    /// One of "-FLOP.:"; any other character draws nothing.
    void setChar(char character, const RGBColor& lit, const RGBColor& unlit) const;
    /// Draws the pattern's segments in the current foreground colour.
    void drawDelegate(std::int32_t pattern) const;

private:
    void DrawPattern(std::int32_t pattern, const RGBColor& lit, const RGBColor& unlit) const;

    Point m_leftStartingPosition;
};
