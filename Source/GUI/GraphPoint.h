#pragma once

#include "GUI/Axis.h"
#include "GUI/Truncation.h"
#include "Platform/DrawingTypes.h"

#include <algorithm>
#include <cstdint>

/// How far a point lies from the plot area's bottom left corner: to the right and up, in pixels.
struct PixelOffset {
    int dx = 0;
    int dy = 0;

    bool operator==(const PixelOffset&) const = default;
};

/// Turns values into pixel offsets within a plot area: extent / (maximum - minimum) * (value - minimum), in single
/// precision and truncated.
class PlotScale {
public:
    PlotScale(Point topLeft, Point bottomRight, const Axis& xAxis, const Axis& yAxis)
        : m_x{.minimum = xAxis.get_minValue(), .pixelsPerUnit = xAxis.PixelsPerUnit(bottomRight.h - topLeft.h)},
          m_y{.minimum = yAxis.get_minValue(), .pixelsPerUnit = yAxis.PixelsPerUnit(bottomRight.v - topLeft.v)} {}

    [[nodiscard]] PixelOffset OffsetOf(float xValue, float yValue) const {
        return {.dx = Truncated(m_x.pixelsPerUnit * (xValue - m_x.minimum)),
                .dy = Truncated(m_y.pixelsPerUnit * (yValue - m_y.minimum))};
    }

private:
    struct AxisScale {
        float minimum;
        float pixelsPerUnit;
    };

    /// Values off any screen stay within 2^24 pixels, where sums of coordinates do not overflow.
    [[nodiscard]] static int Truncated(float pixels) {
        constexpr int farthest = 1 << 24;
        if (pixels > -static_cast<float>(farthest) && pixels < static_cast<float>(farthest)) {
            return static_cast<int>(pixels);
        }
        return std::clamp(TruncateToInt32(static_cast<double>(pixels)), -farthest, farthest);
    }

    AxisScale m_x;
    AxisScale m_y;
};

/// One point of a series. A value of 12 bytes, as a chart holds many.
class GraphPoint {
public:
    [[nodiscard]] float get_xValue() const { return m_xValue; }
    void set_xValue(float value) { m_xValue = value; }
    [[nodiscard]] float get_yValue() const { return m_yValue; }
    void set_yValue(float value) { m_yValue = value; }
    /// Of the round mark, in pixels; 0 for none.
    [[nodiscard]] int get_ptRadius() const { return m_ptRadius; }
    void set_ptRadius(int radius) { m_ptRadius = radius; }

    /// Paints the mark in the current colour and answers where the point lies. The corners of the plot area are
    /// relative to the frame's top left.
    PixelOffset drawPointMark(const Rect& frame, Point topLeft, Point bottomRight, const Axis* xAxis,
                              const Axis* yAxis) const;

    /// Paints a mark round the local point (h, v).
    static void DrawMark(int h, int v, int radius);

private:
    float m_xValue = 0.0F;
    float m_yValue = 0.0F;
    std::int32_t m_ptRadius = 0;
};
