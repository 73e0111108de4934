#include "GUI/Graph.h"

#include "Framework/Base/LException.h"
#include "Framework/UI/Drawing.h"
#include "Framework/UI/GWorld.h"
#include "GUI/ChartRanges.h"
#include "GUI/GraphPoint.h"
#include "GUI/Stage.h"
#include "GUI/Truncation.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace {

// Dashes of the reference lines, in pixels.
constexpr int kDashLength = 3;
constexpr int kDashDistance1 = 9;
constexpr int kDashDistance2 = 7;

constexpr ChartRanges::AxisRange kBlankX{.minimum = 0.0F, .maximum = 1.0F, .divisions = 10};
constexpr ChartRanges::AxisRange kBlankY{.minimum = 0.0F, .maximum = 1.0F, .divisions = 11};

void SetRange(Axis& axis, const ChartRanges::AxisRange& range) {
    axis.set_minValue(range.minimum);
    axis.set_maxValue(range.maximum);
    axis.set_noOfDivisions(range.divisions);
}

/// The largest Y value of the points, or `atLeast`.
float LargestY(std::span<const GraphPoint> points, float atLeast) {
    for (const GraphPoint& point : points) {
        atLeast = std::max(atLeast, point.get_yValue());
    }
    return atLeast;
}

/// Those of the points that have the indexes from `begin` to `end`.
std::span<const GraphPoint> PointsBetween(std::span<const GraphPoint> points, std::int64_t begin, std::int64_t end) {
    const auto count = static_cast<std::int64_t>(points.size());
    const std::int64_t first = std::clamp<std::int64_t>(begin, 0, count);
    const std::int64_t behind = std::clamp<std::int64_t>(end + 1, first, count);
    return points.subspan(static_cast<std::size_t>(first), static_cast<std::size_t>(behind - first));
}

std::int32_t SecondsOf(const GraphPoint& point) {
    return TruncateToInt32(static_cast<double>(point.get_xValue()));
}

Point Moved(Point point, int horizontally, int vertically) {
    return {.v = static_cast<std::int16_t>(point.v + vertically),
            .h = static_cast<std::int16_t>(point.h + horizontally)};
}

}  // namespace

Graph::Graph(const SPaneInfo& info) : LView(info), m_fittedFrame(CalcLocalFrameRect()) {}

Graph::Graph(LStream* stream) : LView(stream), m_fittedFrame(CalcLocalFrameRect()) {}

Graph::~Graph() = default;

void Graph::addSeries(std::unique_ptr<Series> series) {
    if (m_seriesCount == kMostSeries) {
        throw LException("a chart holds ten series at most");
    }
    m_series[static_cast<std::size_t>(m_seriesCount)] = std::move(series);
    ++m_seriesCount;
}

Series* Graph::get_Series(int index) {
    return index >= 0 && index < m_seriesCount ? m_series[static_cast<std::size_t>(index)].get() : nullptr;
}

void Graph::set_seriesCount(int count) {
    const auto held = std::ranges::count_if(m_series, [](const auto& series) { return series != nullptr; });
    m_seriesCount = std::clamp(count, 0, static_cast<int>(held));
}

void Graph::addSeriesPoints(const GraphPoint& point, int series) {
    if (Series* wanted = get_Series(series)) {
        wanted->addPoints(point);
    }
}

void Graph::removeAllSeries() {
    std::ranges::fill(m_series, nullptr);
    m_seriesCount = 0;
}

std::span<const std::unique_ptr<Series>> Graph::SeriesInUse() const {
    return std::span(m_series).first(static_cast<std::size_t>(m_seriesCount));
}

void Graph::FitLegendToSeries() {
    m_legend.FitTo(SeriesInUse());
}

void Graph::FitToFrame() {
    const Rect frame = CalcLocalFrameRect();
    const int wider = frame.Width() - m_fittedFrame.Width();
    const int higher = frame.Height() - m_fittedFrame.Height();
    m_fittedFrame = frame;
    m_ptRelativeBottomRight = Moved(m_ptRelativeBottomRight, wider, higher);
    m_legend.set_ptRelativeTopLeft(Moved(m_legend.get_ptRelativeTopLeft(), wider, 0));
    m_legend.set_ptRelativeBottomRight(Moved(m_legend.get_ptRelativeBottomRight(), wider, 0));
}

void Graph::FrameChanged() {
    LView::FrameChanged();
    FitToFrame();
}

void Graph::calcXYRange() {
    float largest = 0.0F;
    for (const auto& series : SeriesInUse()) {
        largest = LargestY(PointsBetween(series->getPtArray(), m_beginPoint, m_endPoint), largest);
    }
    // The range may have been set for more points than there are now: the nearest ones stand in for those that are
    // missing.
    if (m_seriesCount > 0 && SeriesInUse().back()->get_pointsCount() > 0) {
        const std::span<const GraphPoint> points = SeriesInUse().back()->getPtArray();
        const auto pointAt = [&](std::int32_t index) -> const GraphPoint& {
            return points[std::min(static_cast<std::size_t>(std::max(index, 0)), points.size() - 1)];
        };
        const std::int32_t start = SecondsOf(pointAt(m_beginPoint));
        SetRange(m_xaxis, ChartRanges::FixedXRangeFor(start, SecondsOf(pointAt(m_endPoint))));
    }
    setYRange(largest);
}

void Graph::calcXYRangeInfiniteX() {
    float largest = 0.0F;
    for (const auto& series : SeriesInUse()) {
        largest = LargestY(series->getPtArray(), largest);
    }
    if (m_seriesCount > 0 && SeriesInUse().front()->get_pointsCount() > 0) {
        const std::int32_t last = SecondsOf(SeriesInUse().front()->getPtArray().back());
        if (const auto range = ChartRanges::GrowingXRangeFor(last)) {
            SetRange(m_xaxis, *range);
        }
    }
    m_xaxis.set_minValue(0.0F);
    setYRange(largest);
}

void Graph::setYRange(float largest) {
    if (const auto range = ChartRanges::YRangeFor(largest)) {
        SetRange(m_yaxis, *range);
    }
    m_yaxis.set_minValue(0.0F);
}

std::int32_t Graph::calcNearestYDivisor(std::int32_t unit, float value) {
    return ChartRanges::NearestMultipleFrom(unit, value);
}

std::int32_t Graph::calcNearestDivisor(std::int32_t divisor, std::int32_t start) {
    return ChartRanges::NearestMultiple(divisor, start);
}

void Graph::DrawSelf() {
    const Rect frame = CalcLocalFrameRect();
    GWorld image(frame, GWorld::CurrentScale());
    {
        const auto port = image.BeginPainting();
        Drawing::EraseRect(frame);
        drawGraph();
    }
    const Drawing::StateSaver saved;
    Drawing::RGBForeColor(kBlack);
    Drawing::RGBBackColor(kWhite);
    Drawing::CopyBits(image);
}

void Graph::drawGraph() {
    const Rect frame = CalcLocalFrameRect();
    const bool isBlank = Stage::iStage == Stage::kBlank;
    // Where the legend begins, it fills the background itself.
    const int right = isBlank ? frame.right : frame.left + m_legend.get_ptRelativeTopLeft().h;
    Drawing::RGBForeColor(m_backColor);
    Drawing::PaintRect(Drawing::SetRect(frame.left, frame.top, right, frame.bottom));
    Drawing::RGBForeColor(m_graphAreaBackColor);
    Drawing::PaintRect(Drawing::SetRect(frame.left + m_ptRelativeTopLeft.h, frame.top + m_ptRelativeTopLeft.v,
                                        frame.left + m_ptRelativeBottomRight.h, frame.top + m_ptRelativeBottomRight.v));
    Drawing::RGBForeColor(kWhite);
    Drawing::TextFont(Drawing::kLabelFont);
    Drawing::TextSize(Axis::kTextSize);
    Drawing::MoveTo(frame.left + 3, frame.bottom - 5);
    Drawing::DrawString("(Seconds)");
    m_flagInfiniteX == 0 ? calcXYRange() : calcXYRangeInfiniteX();
    if (isBlank) {
        SetRange(m_xaxis, kBlankX);
        SetRange(m_yaxis, kBlankY);
    }
    m_legend.drawLegend(frame, SeriesInUse(), m_backColor, Stage::iStage);
    m_xaxis.drawAxis(frame, m_ptRelativeTopLeft, m_ptRelativeBottomRight, Axis::kXAxis);
    m_yaxis.drawAxis(frame, m_ptRelativeTopLeft, m_ptRelativeBottomRight, Axis::kYAxis);
    if (!isBlank) {
        for (const auto& series : SeriesInUse()) {
            Drawing::RGBForeColor(series->get_seriesColor());
            series->drawSeries(frame, m_ptRelativeTopLeft, m_ptRelativeBottomRight, &m_xaxis, &m_yaxis);
        }
    }
    drawDottedLines({.v = frame.top, .h = frame.left});
}

void Graph::drawDottedLines(Point frame) {
    const float top = m_yaxis.get_maxValue();
    if (m_constLine1.value != 0.0F) {
        DrawDashes(frame, m_constLine1, std::min(m_constLine1.value, top), kDashDistance1);
    }
    if (m_constLine2.value != 0.0F && m_constLine2.value <= top) {
        DrawDashes(frame, m_constLine2, m_constLine2.value, kDashDistance2);
    }
    Drawing::PenNormal();
}

void Graph::DrawDashes(Point frame, const ConstLine& line, float shownValue, int distance) const {
    const float scale = m_yaxis.PixelsPerUnit(m_ptRelativeBottomRight.v - m_ptRelativeTopLeft.v);
    const float offset = scale * (shownValue - m_yaxis.get_minValue());
    const int y =
        TruncateToInt32(static_cast<double>(static_cast<float>(frame.v + m_ptRelativeBottomRight.v) - offset));
    const int right = frame.h + m_ptRelativeBottomRight.h;
    Drawing::RGBForeColor(line.color);
    Drawing::PenSize(line.thickness, line.thickness);
    for (int x = frame.h + m_ptRelativeTopLeft.h; x <= right; x += distance) {
        Drawing::MoveTo(x, y);
        Drawing::LineTo(std::min(x + kDashLength, right), y);
    }
}
