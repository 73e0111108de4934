#pragma once

#include "GUI/GraphPoint.h"
#include "Platform/DrawingTypes.h"

#include <cstdint>
#include <span>
#include <vector>

class Axis;

/// One line of the chart: colour, thickness, the legend's text, and its points in the order in which they were added.
/// Main thread only.
class Series {
public:
    /// Has room for so many points from the beginning, about four days and nights of samples, and grows by one after
    /// that. Memory that holds no points yet costs addresses, and nothing else.
    static constexpr int kInitialCapacity = 100000;

    Series();

    [[nodiscard]] const RGBColor& get_seriesColor() const { return m_seriesColor; }
    void set_seriesColor(const RGBColor& color) { m_seriesColor = color; }
    /// Of the pen, in pixels.
    [[nodiscard]] int get_lineThickness() const { return m_lineThickness; }
    void set_lineThickness(int thickness) { m_lineThickness = thickness; }
    /// Not copied: the text has to stay as long as the series does.
    [[nodiscard]] const char* get_seriesText() const { return m_seriesText; }
    void set_seriesText(const char* text) { m_seriesText = text != nullptr ? text : ""; }

    [[nodiscard]] int get_pointsCount() const { return static_cast<int>(m_points.size()); }
    /// Forgets the points from the index `count` on; a larger count than there are points changes nothing.
    void set_pointsCount(int count);
    [[nodiscard]] int get_capacity() const { return static_cast<int>(m_points.capacity()); }
    /// The points; good until one is added.
    [[nodiscard]] std::span<const GraphPoint> getPtArray() const { return m_points; }

    /// Appends the point and answers its index.
    int addPoints(const GraphPoint& point);
    /// Gives all points and their memory back.
    void clearSeries();

    /// Marks and joins the points whose X value lies within the X axis, ends included, in the current colour. The
    /// corners of the plot area are relative to the frame's top left.
    void drawSeries(const Rect& frame, Point topLeft, Point bottomRight, const Axis* xAxis, const Axis* yAxis) const;

private:
    RGBColor m_seriesColor;
    std::int32_t m_lineThickness = 1;
    const char* m_seriesText = "";
    std::vector<GraphPoint> m_points;
};
