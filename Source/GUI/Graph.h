#pragma once

#include "Framework/UI/LView.h"
#include "GUI/Axis.h"
#include "GUI/Legend.h"
#include "GUI/Series.h"

#include <array>
#include <cstdint>
#include <memory>
#include <span>

class GraphPoint;

/// The chart: series of points on two axes that choose their own ranges, two dashed reference lines, and a legend. How
/// it is drawn depends on `Stage::iStage`.
///
/// The owner gives it geometry, colours, series and points, and refreshes it; setters draw nothing. Points of the plot
/// area and the legend are relative to the frame's top left corner. Main thread only.
class Graph final : public LView {
public:
    static constexpr int kMostSeries = 10;

    explicit Graph(const SPaneInfo& info);
    explicit Graph(LStream* stream);
    ~Graph() override;

    // They stay the chart's.
    [[nodiscard]] Axis* get_xaxis() { return &m_xaxis; }
    [[nodiscard]] Axis* get_yaxis() { return &m_yaxis; }
    [[nodiscard]] Legend* get_Legend() { return &m_legend; }

    /// Throws `LException` when the chart holds `kMostSeries` already.
    void addSeries(std::unique_ptr<Series> series);
    /// Null when there is none at the index. Stays the chart's.
    [[nodiscard]] Series* get_Series(int index);
    [[nodiscard]] int get_seriesCount() const { return m_seriesCount; }
    /// How many series take part in ranges and drawing: as many as were added at most.
    void set_seriesCount(int count);
    /// Nothing happens when there is no such series.
    void addSeriesPoints(const GraphPoint& point, int series);
    void removeAllSeries();

    /// The points in view when the X range is fixed, as indexes into the series; both are in view.
    [[nodiscard]] std::int32_t get_beginPoint() const { return m_beginPoint; }
    void set_beginPoint(std::int32_t index) { m_beginPoint = index; }
    [[nodiscard]] std::int32_t get_endPoint() const { return m_endPoint; }
    void set_endPoint(std::int32_t index) { m_endPoint = index; }
    /// 0 for the fixed X range; anything else for one that grows from 0 to the first series' last point.
    [[nodiscard]] std::int32_t get_flagInfiniteX() const { return m_flagInfiniteX; }
    void set_flagInfiniteX(std::int32_t flag) { m_flagInfiniteX = flag; }

    [[nodiscard]] Point get_ptRelativeTopLeft() const { return m_ptRelativeTopLeft; }
    void set_ptRelativeTopLeft(Point point) { m_ptRelativeTopLeft = point; }
    [[nodiscard]] Point get_ptRelativeBottomRight() const { return m_ptRelativeBottomRight; }
    void set_ptRelativeBottomRight(Point point) { m_ptRelativeBottomRight = point; }
    [[nodiscard]] const RGBColor& get_backColor() const { return m_backColor; }
    void set_backColor(const RGBColor& color) { m_backColor = color; }
    [[nodiscard]] const RGBColor& get_graphAreaBackColor() const { return m_graphAreaBackColor; }
    void set_graphAreaBackColor(const RGBColor& color) { m_graphAreaBackColor = color; }

    // The reference lines: Y values, where 0 draws no line, colours, and pen sizes in pixels.

    [[nodiscard]] float get_constLine1Value() const { return m_constLine1.value; }
    void set_constLine1Value(float value) { m_constLine1.value = value; }
    [[nodiscard]] const RGBColor& get_constLine1Color() const { return m_constLine1.color; }
    void set_constLine1Color(const RGBColor& color) { m_constLine1.color = color; }
    [[nodiscard]] std::int32_t get_constLine1Thickness() const { return m_constLine1.thickness; }
    void set_constLine1Thickness(std::int32_t thickness) { m_constLine1.thickness = thickness; }
    [[nodiscard]] float get_constLine2Value() const { return m_constLine2.value; }
    void set_constLine2Value(float value) { m_constLine2.value = value; }
    [[nodiscard]] const RGBColor& get_constLine2Color() const { return m_constLine2.color; }
    void set_constLine2Color(const RGBColor& color) { m_constLine2.color = color; }
    [[nodiscard]] std::int32_t get_constLine2Thickness() const { return m_constLine2.thickness; }
    void set_constLine2Thickness(std::int32_t thickness) { m_constLine2.thickness = thickness; }

    /// Makes the legend's box fit the series; for the owner, after the series have been set up.
    void FitLegendToSeries();

    /// Gives the plot area and the legend the distances to the frame's edges that they had in the frame for which they
    /// were set: the plot area follows the right and bottom edge, the legend the right one. Called when the frame has
    /// changed.
    void FitToFrame();

    // The ranges, worked out before each draw.

    /// X from the fixed range of points of the last series, as far as it has them; Y from all series' points in the
    /// range.
    void calcXYRange();
    void calcXYRangeInfiniteX();
    /// `largest` is the largest Y value, not negative. Above 1,000,000 the axis stays as it is.
    void setYRange(float largest);
    /// The first multiple of `unit` from `value`, rounded up, on.
    [[nodiscard]] static std::int32_t calcNearestYDivisor(std::int32_t unit, float value);
    /// The first multiple of `divisor` from `start` on.
    [[nodiscard]] static std::int32_t calcNearestDivisor(std::int32_t divisor, std::int32_t start);

    /// Composes the chart in an off-screen image and copies that to the port. Throws `LException` when there is no
    /// memory for the image.
    void DrawSelf() override;
    /// Draws the chart straight into the port.
    void drawGraph();
    /// The reference lines; `frame` is the frame's top left corner.
    void drawDottedLines(Point frame);

protected:
    void FrameChanged() override;

private:
    struct ConstLine {
        float value = 0.0F;
        std::int32_t thickness = 1;
        RGBColor color;
    };

    [[nodiscard]] std::span<const std::unique_ptr<Series>> SeriesInUse() const;
    void DrawDashes(Point frame, const ConstLine& line, float shownValue, int distance) const;

    std::array<std::unique_ptr<Series>, kMostSeries> m_series;
    std::int32_t m_seriesCount = 0;
    Axis m_xaxis;
    Axis m_yaxis;
    Legend m_legend;
    Point m_ptRelativeTopLeft;
    Point m_ptRelativeBottomRight;
    std::int32_t m_flagInfiniteX = 1;
    RGBColor m_backColor;
    RGBColor m_graphAreaBackColor;
    std::int32_t m_endPoint = 0;
    std::int32_t m_beginPoint = 0;
    ConstLine m_constLine1;
    ConstLine m_constLine2;
    Rect m_fittedFrame;  ///< the frame that the plot area and the legend belong to
};
