#pragma once

#include "Platform/DrawingTypes.h"

#include <memory>
#include <span>

class Series;

/// The chart's legend: a box with a shadow, and a row of marker and text for each series. Points are relative to the
/// frame's top left. Main thread only.
class Legend {
public:
    [[nodiscard]] Point get_ptRelativeTopLeft() const { return m_ptRelativeTopLeft; }
    void set_ptRelativeTopLeft(Point point) { m_ptRelativeTopLeft = point; }
    [[nodiscard]] Point get_ptRelativeBottomRight() const { return m_ptRelativeBottomRight; }
    void set_ptRelativeBottomRight(Point point) { m_ptRelativeBottomRight = point; }

    /// Of the box.
    [[nodiscard]] const RGBColor& get_backColor() const { return m_backColor; }
    void set_backColor(const RGBColor& color) { m_backColor = color; }
    /// For the owner's use: texts are always black.
    [[nodiscard]] const RGBColor& get_foreColor() const { return m_foreColor; }
    void set_foreColor(const RGBColor& color) { m_foreColor = color; }

    /// Makes the box, from its top left corner, as wide as the longest text asks and a row high for each series.
    void FitTo(std::span<const std::unique_ptr<Series>> series);

    /// Fills the frame from the box's left edge on with the chart's `backColor` and draws the box over it: with black
    /// markers in the blank stage, with markers in the colours of their series in the live one. Draws nothing in any
    /// other.
    void drawLegend(const Rect& frame, std::span<const std::unique_ptr<Series>> series, const RGBColor& backColor,
                    int stage) const;

private:
    Point m_ptRelativeTopLeft;
    Point m_ptRelativeBottomRight;
    RGBColor m_backColor;
    RGBColor m_foreColor;
};
