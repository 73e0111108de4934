#pragma once

#include "Platform/DrawingTypes.h"

#include <cstdint>
#include <string>
#include <vector>

/// The range and the divisions of one axis of the chart, and its drawing. Main thread only.
class Axis {
public:
    static constexpr int kXAxis = 1;
    static constexpr int kYAxis = 2;
    static constexpr int kTextSize = 10;  ///< of all numbers beside the chart

    [[nodiscard]] float get_minValue() const { return m_minValue; }
    void set_minValue(float value) { m_minValue = value; }
    [[nodiscard]] float get_maxValue() const { return m_maxValue; }
    void set_maxValue(float value) { m_maxValue = value; }
    /// The number of labelled values, both ends included: one more than there are intervals.
    [[nodiscard]] int get_noOfDivisions() const { return m_noOfDivisions; }
    void set_noOfDivisions(int divisions) { m_noOfDivisions = divisions; }

    /// False for an axis whose ends are the same value. Everything then lies at its minimum, and one label says it all.
    [[nodiscard]] bool HasRange() const { return m_maxValue != m_minValue; }

    /// Never less than 1.
    [[nodiscard]] int Intervals() const { return m_noOfDivisions > 2 ? m_noOfDivisions - 1 : 1; }

    /// How many pixels of an axis `extent` pixels long one unit is; 0 without a range.
    [[nodiscard]] float PixelsPerUnit(int extent) const {
        return HasRange() ? static_cast<float>(extent) / (m_maxValue - m_minValue) : 0.0F;
    }

    /// The values of the labels, summed up from the minimum in single precision; the last one of a Y axis is exact. One
    /// value for an axis without a range.
    [[nodiscard]] std::vector<float> LabelValues(int kind) const;

    /// The value with two decimals, cut off: "5.05".
    [[nodiscard]] static std::string LabelText(float value);

    /// How far left of the Y axis a label begins, by the digits before its point.
    [[nodiscard]] static int YLabelIndent(float value);

    /// Draws line, ticks, grid and labels. The corners of the plot area are relative to the frame's top left; `kind` is
    /// `kXAxis` or `kYAxis`. Pen, colours and text state are as before when it is done.
    void drawAxis(const Rect& frame, Point topLeft, Point bottomRight, int kind) const;

    // The labels, in the current colour and font. The first point is the frame's top left corner.

    void writeXValues(Point frame, Point topLeft, Point bottomRight) const;
    /// `gridStep` is the distance between two grid lines, in pixels.
    void writeYValues(Point frame, Point topLeft, Point bottomRight, float gridStep) const;

private:
    void DrawXAxis(const Rect& frame, Point topLeft, Point bottomRight) const;
    void DrawYAxis(const Rect& frame, Point topLeft, Point bottomRight) const;

    float m_minValue = 0.0F;
    float m_maxValue = 1.0F;
    std::int32_t m_noOfDivisions = 11;
};
