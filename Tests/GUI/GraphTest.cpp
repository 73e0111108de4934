#include "GUI/Graph.h"

#include "Framework/UI/Drawing.h"
#include "Framework/UI/GWorld.h"
#include "GUI/GraphPoint.h"
#include "GUI/Stage.h"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>
#include <tuple>
#include <vector>

namespace {

constexpr std::int16_t kWidth = 744;
constexpr std::int16_t kHeight = 262;
constexpr Rect kFrame{.top = 0, .left = 0, .bottom = kHeight, .right = kWidth};

// The plot area, in local coordinates.
constexpr int kX1 = 80;
constexpr int kY1 = 15;
constexpr int kX2 = 580;
constexpr int kY2 = 225;
constexpr int kLegendX = 600;
constexpr int kLegendY = 60;

constexpr RGBColor kBlack{0, 0, 0};
constexpr RGBColor kBack{0x4500, 0x4500, 0x4500};
constexpr RGBColor kPlotBack{0x5000, 0x5000, 0x5000};
constexpr RGBColor kLegendBack{0xFFFF, 0xFFFF, 0x8000};
constexpr RGBColor kRed{0xFFFF, 0, 0};
constexpr RGBColor kLine1{0xFFFF, 0xFFFF, 0x5500};
constexpr RGBColor kLine2{0, 0xFFFF, 0};

GraphPoint PointAt(float x, float y, int radius = 2) {
    GraphPoint point;
    point.set_xValue(x);
    point.set_yValue(y);
    point.set_ptRadius(radius);
    return point;
}

class GraphTest : public testing::Test {
protected:
    GraphTest() {
        Stage::iStage = Stage::kLive;
        m_graph.set_backColor(kBack);
        m_graph.set_graphAreaBackColor(kPlotBack);
        m_graph.set_ptRelativeTopLeft({.v = kY1, .h = kX1});
        m_graph.set_ptRelativeBottomRight({.v = kY2, .h = kX2});
        m_graph.get_Legend()->set_ptRelativeTopLeft({.v = kLegendY, .h = kLegendX});
        m_graph.get_Legend()->set_backColor(kLegendBack);
    }

    ~GraphTest() override { Stage::iStage = Stage::kBlank; }

    Series& AddSeries(const std::vector<GraphPoint>& points, const RGBColor& color = kRed,
                      const char* text = "Series") {
        auto series = std::make_unique<Series>();
        series->set_seriesColor(color);
        series->set_seriesText(text);
        series->set_lineThickness(2);
        m_graph.addSeries(std::move(series));
        for (const GraphPoint& point : points) {
            m_graph.addSeriesPoints(point, m_graph.get_seriesCount() - 1);
        }
        return *m_graph.get_Series(m_graph.get_seriesCount() - 1);
    }

    void Draw() {
        m_image = std::make_unique<GWorld>(m_graph.CalcLocalFrameRect(), 1.0);
        m_graph.DrawInto(*m_image);
    }

    [[nodiscard]] bool Shows(int x, int y, const RGBColor& color) const {
        return m_image->PixelAt(x, y) == GWorld::AsShown(color);
    }

    /// How many pixels of the area have the colour.
    [[nodiscard]] int Count(const RGBColor& color, const Rect& area = kFrame) const {
        int count = 0;
        for (int y = area.top; y < area.bottom; ++y) {
            for (int x = area.left; x < area.right; ++x) {
                count += Shows(x, y, color) ? 1 : 0;
            }
        }
        return count;
    }

    /// "0 to 40 in 9", for an axis.
    static std::string RangeOf(const Axis& axis) {
        std::ostringstream text;
        text << axis.get_minValue() << " to " << axis.get_maxValue() << " in " << axis.get_noOfDivisions();
        return text.str();
    }

    Graph m_graph{SPaneInfo{.width = kWidth, .height = kHeight}};
    std::unique_ptr<GWorld> m_image;
};

TEST_F(GraphTest, YAxisEndsAtARoundValueAboveTheLargest) {
    const std::pair<float, const char*> cases[] = {{0.06F, "0 to 0.06 in 7"}, {0.061F, "0 to 0.1 in 11"},
                                                   {3.0F, "0 to 5 in 11"},    {6.0005F, "0 to 6 in 7"},
                                                   {7.3F, "0 to 8 in 9"},     {999999.0F, "0 to 1e+06 in 11"}};
    for (const auto& [largest, expected] : cases) {
        m_graph.setYRange(largest);
        EXPECT_EQ(RangeOf(*m_graph.get_yaxis()), expected) << largest;
    }
    for (const float beyond : {1000001.0F, std::numeric_limits<float>::quiet_NaN()}) {
        m_graph.setYRange(beyond);
        EXPECT_EQ(RangeOf(*m_graph.get_yaxis()), "0 to 1e+06 in 11") << "as it was before " << beyond;
    }
}

TEST_F(GraphTest, GrowingXAxisEndsAtAWholeStepAfterTheLastPoint) {
    Series& series = AddSeries({});
    const std::string before = RangeOf(*m_graph.get_xaxis());
    m_graph.calcXYRangeInfiniteX();
    EXPECT_EQ(RangeOf(*m_graph.get_xaxis()), before) << "without points the axis stays";
    const std::pair<float, const char*> cases[] = {
        {0.0F, "0 to 0 in 8"},     {1.0F, "0 to 7 in 8"},          {20.0F, "0 to 20 in 11"},
        {34.9F, "0 to 35 in 8"},   {37.0F, "0 to 40 in 9"},        {75.0F, "0 to 75 in 16"},
        {151.0F, "0 to 160 in 9"}, {7.5e6F, "0 to 7.5e+06 in 16"}, {8e6F, "0 to 7.5e+06 in 16"}};
    for (const auto& [last, expected] : cases) {
        series.set_pointsCount(0);
        series.addPoints(PointAt(0, 1));
        series.addPoints(PointAt(last, 45));
        m_graph.calcXYRangeInfiniteX();
        EXPECT_EQ(RangeOf(*m_graph.get_xaxis()), expected) << last;
        EXPECT_EQ(RangeOf(*m_graph.get_yaxis()), "0 to 45 in 10");
    }
}

TEST_F(GraphTest, FixedXAxisIsWidenedUntilItDividesIntoWholeSteps) {
    const std::tuple<float, float, const char*> cases[] = {{3, 50, "2 to 51 in 8"},    {6, 360, "3 to 363 in 16"},
                                                           {10, 10, "10 to 10 in 16"}, {100, 3, "2 to 101 in 12"},
                                                           {2, 3, "0 to 6 in 7"},      {1.9F, 8.9F, "1 to 8 in 8"}};
    m_graph.set_beginPoint(0);
    m_graph.set_endPoint(1);
    for (const auto& [begin, end, expected] : cases) {
        m_graph.removeAllSeries();
        AddSeries({PointAt(7, 0.3F), PointAt(900, 0.4F), PointAt(7, 99)});
        AddSeries({PointAt(begin, 0), PointAt(end, 2), PointAt(5000, 70)});
        m_graph.calcXYRange();
        EXPECT_EQ(RangeOf(*m_graph.get_xaxis()), expected);
        EXPECT_EQ(RangeOf(*m_graph.get_yaxis()), "0 to 2.5 in 11") << "only the points in the range count";
    }
}

/// The range may have been set before points were removed, or while the series are still empty.
TEST_F(GraphTest, FixedXAxisMakesDoWithThePointsThatThereAre) {
    const std::string untouched = RangeOf(*m_graph.get_xaxis());
    m_graph.set_flagInfiniteX(0);
    m_graph.set_beginPoint(1);
    m_graph.set_endPoint(std::numeric_limits<std::int32_t>::max());
    Draw();
    AddSeries({});
    Draw();
    EXPECT_EQ(RangeOf(*m_graph.get_xaxis()), untouched);
    const std::tuple<int, int, const char*> cases[] = {
        {-5, 1, "10 to 24 in 15"}, {90, 99, "38 to 38 in 16"}, {2, 0, "10 to 38 in 15"}};
    AddSeries({PointAt(10, 1), PointAt(24, 2), PointAt(38, 3)});
    for (const auto& [begin, end, expected] : cases) {
        m_graph.set_beginPoint(begin);
        m_graph.set_endPoint(end);
        Draw();
        EXPECT_EQ(RangeOf(*m_graph.get_xaxis()), expected) << begin << " to " << end;
    }
}

TEST_F(GraphTest, AxesHaveTicksAndAGridBehindTheSeries) {
    AddSeries({PointAt(0, 0, 0), PointAt(37, 0, 0)});
    Draw();  // X from 0 to 40 in 9, Y from 0 to 0.06 in 7
    for (int x = kX1; x <= kX2; ++x) {
        const bool isAboveTheAxis = !Shows(x, kY2 - 2, kPlotBack);
        // Eight steps of 62.5 pixels, cut off.
        const bool isTick = (500 - (x - kX1) * 8 % 500) % 500 < 8;
        EXPECT_EQ(isAboveTheAxis, isTick || x == kX1 + 1 || x == kX2) << x;
    }
    for (int i = 0; i < 7; ++i) {
        const int y = kY2 - 35 * i;
        EXPECT_TRUE(Shows(kX1 - 2, y, kBlack) && Shows(kX1 - 3, y, kBack) && Shows(kX2, y, kBlack)) << i;
        EXPECT_TRUE(i == 0 || Shows(300, y, kBlack));
        EXPECT_TRUE(Shows(300, y - 10, kPlotBack) || i == 6);
    }
    EXPECT_TRUE(Shows(kX1, 100, kBlack) && Shows(kX1 + 1, 100, kBlack) && Shows(kX1 + 2, 100, kPlotBack));
    EXPECT_TRUE(Shows(kX2 - 1, 100, kPlotBack) && Shows(kX2, 100, kBlack) && Shows(kX2 + 1, 100, kBack));
    // The series lies on the X axis and ends at 37 / 40 of it, with the pen's 2 pixels.
    EXPECT_TRUE(Shows(300, kY2, kRed) && Shows(300, kY2 + 1, kRed) && Shows(300, kY2 + 2, kBack));
    EXPECT_TRUE(Shows(kX1 + 462 + 1, kY2, kRed) && Shows(kX1 + 462 + 2, kY2, kBlack));
}

TEST_F(GraphTest, PointsOutsideTheXRangeAreNeitherMarkedNorJoined) {
    // Both points in between are left out, and the line goes straight from the first to the last.
    m_graph.set_flagInfiniteX(0);
    m_graph.set_beginPoint(0);
    m_graph.set_endPoint(1);
    AddSeries(
        {PointAt(100, 5), PointAt(200, 5), PointAt(99.9F, 0), PointAt(200.1F, 0), PointAt(100, 0), PointAt(200, 0)});
    Draw();  // X from 100 to 200, Y from 0 to 5
    ASSERT_EQ(RangeOf(*m_graph.get_xaxis()), "100 to 200 in 11");
    // Along the top, from the top right straight to the bottom left, along the bottom.
    EXPECT_TRUE(Shows(kX1 + 100, kY1, kRed) && Shows(kX1 + 250, kY1 + 105, kRed) && Shows(kX1 + 250, kY2, kRed));
    // A mark of radius 2 round the first point, on the left beyond the plot area.
    EXPECT_TRUE(Shows(kX1 - 2, kY1, kRed) && Shows(kX1 - 1, kY1 - 2, kRed));
    EXPECT_FALSE(Shows(kX1 - 2, kY1 - 2, kRed) || Shows(kX1 - 3, kY1, kRed));
    EXPECT_FALSE(Shows(kX1 + 60, kY1 + 105, kRed) || Shows(kX1 + 440, kY1 + 105, kRed));
}

TEST_F(GraphTest, BlankStageShowsFullAxesAndNoSeries) {
    AddSeries({PointAt(0, 0), PointAt(500, 900)});
    m_graph.FitLegendToSeries();
    Stage::iStage = Stage::kBlank;
    Draw();
    EXPECT_EQ(Count(kRed), 0);
    EXPECT_EQ(RangeOf(*m_graph.get_xaxis()) + ", " + RangeOf(*m_graph.get_yaxis()), "0 to 1 in 10, 0 to 1 in 11");
    EXPECT_TRUE(Shows(kLegendX + 10, kLegendY + 10, kBlack));
}

TEST_F(GraphTest, LegendHasARowForEachSeriesAndRoomForEveryText) {
    AddSeries({}, kRed, "Short");
    AddSeries({}, kLine2, "A text that is much longer");
    m_graph.FitLegendToSeries();
    Draw();
    const Point corner = m_graph.get_Legend()->get_ptRelativeBottomRight();
    EXPECT_EQ(corner.v, kLegendY + 40);
    EXPECT_TRUE(Shows(kLegendX, kLegendY, kLegendBack) && Shows(corner.h - 1, corner.v - 1, kLegendBack));
    EXPECT_TRUE(Shows(kLegendX - 1, kLegendY, kBack) && Shows(kLegendX, kLegendY - 1, kBack));
    EXPECT_TRUE(Shows(corner.h + 2, corner.v + 2, kBlack) && Shows(corner.h, kLegendY + 2, kBack));
    EXPECT_TRUE(Shows(corner.h + 3, corner.v + 2, kBack) && Shows(kLegendX + 2, corner.v, kBack));
    // Each marker: a line from 3 to 16 in the row's middle, through a circle from 5 to 15.
    for (const auto& [row, color] : {std::pair{kLegendY, kRed}, {kLegendY + 20, kLine2}}) {
        EXPECT_EQ(Count(color, Drawing::SetRect(kLegendX, row + 10, kWidth, row + 11)), 14);
        EXPECT_EQ(Count(color, Drawing::SetRect(kLegendX + 10, row, kLegendX + 11, row + 20)), 10);
        EXPECT_TRUE(Shows(kLegendX + 3, row + 10, color) && Shows(kLegendX + 10, row + 5, color));
        EXPECT_TRUE(Shows(kLegendX + 5, row + 5, kLegendBack));
    }
}

TEST_F(GraphTest, ReferenceLinesAreDashedAndLieOverTheSeries) {
    AddSeries({PointAt(0, 8, 0), PointAt(40, 8, 0)});
    m_graph.set_constLine1Color(kLine1);
    m_graph.set_constLine1Thickness(2);
    m_graph.set_constLine1Value(8.0F);
    m_graph.set_constLine2Color(kLine2);
    m_graph.set_constLine2Thickness(2);
    m_graph.set_constLine2Value(4.0F);
    Draw();  // Y from 0 to 8: 210 pixels
    for (int x = kX1; x <= kX2 + 1; ++x) {
        // A dash goes over 3 pixels and the pen's 2; the last one begins 5 pixels before the end and stops 3 before it.
        const bool isDash1 = (x - kX1) % 9 < 5;
        const bool isDash2 = (x - kX1) % 7 < 5;
        EXPECT_EQ(Shows(x, kY1, kLine1) && Shows(x, kY1 + 1, kLine1), isDash1) << x;
        EXPECT_EQ(Shows(x, 120, kLine2) && Shows(x, 121, kLine2), isDash2) << x;
    }
    EXPECT_TRUE(Shows(kX1 + 5, kY1, kRed)) << "between two dashes";
    m_graph.set_constLine1Value(900.0F);
    m_graph.set_constLine2Value(8.1F);
    Draw();
    EXPECT_TRUE(Shows(kX1, kY1, kLine1)) << "above the scale, line 1 runs along its top";
    EXPECT_EQ(Count(kLine2), 0);
}

TEST_F(GraphTest, PlotAreaAndLegendFollowTheEdgesOfTheFrame) {
    AddSeries({PointAt(10, 8)});
    m_graph.FitLegendToSeries();
    const Legend& legend = *m_graph.get_Legend();
    const int legendWidth = legend.get_ptRelativeBottomRight().h - kLegendX;
    m_graph.ResizeFrameTo(kWidth + 300, kHeight + 130);
    EXPECT_EQ(legend.get_ptRelativeBottomRight().h, kLegendX + 300 + legendWidth);
    EXPECT_EQ(legend.get_ptRelativeBottomRight().v, kLegendY + 20);
    Draw();
    EXPECT_TRUE(Shows(kX1, kY1, kBlack) && Shows(kX1 + 800, kY2 + 130, kBlack));
    EXPECT_TRUE(Shows(kLegendX + 300, kLegendY, kLegendBack));
}

}  // namespace
