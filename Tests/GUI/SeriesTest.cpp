#include "GUI/Series.h"

#include "Framework/UI/Drawing.h"
#include "Framework/UI/GWorld.h"
#include "GUI/Axis.h"

#include <QImage>
#include <gtest/gtest.h>

#include <random>

namespace {

constexpr Rect kFrame{.top = 0, .left = 0, .bottom = 140, .right = 190};

GraphPoint PointAt(float x, float y, int radius = 2) {
    GraphPoint point;
    point.set_xValue(x);
    point.set_yValue(y);
    point.set_ptRadius(radius);
    return point;
}

/// Draws a series point by point.
void DrawPlainly(const Series& series, Point topLeft, Point bottomRight, const Axis& x, const Axis& y) {
    const PlotScale scale(topLeft, bottomRight, x, y);
    bool hasBegun = false;
    Drawing::PenSize(series.get_lineThickness(), series.get_lineThickness());
    for (const GraphPoint& point : series.getPtArray()) {
        if (point.get_xValue() < x.get_minValue() || point.get_xValue() > x.get_maxValue()) {
            continue;
        }
        const PixelOffset offset = scale.OffsetOf(point.get_xValue(), point.get_yValue());
        const int h = topLeft.h + offset.dx;
        const int v = bottomRight.v - offset.dy;
        if (hasBegun) {
            Drawing::LineTo(h, v);  // the pen stands where the point before was
        }
        EXPECT_EQ(point.drawPointMark(kFrame, topLeft, bottomRight, &x, &y), offset);
        Drawing::MoveTo(h, v);
        hasBegun = true;
    }
}

/// Many points share a column: those that follow each other, some that come back to it, and some far above and below.
Series RandomSeries(unsigned seed) {
    std::mt19937 random(seed);
    Series series;
    series.set_lineThickness(static_cast<int>(seed % 4));
    const int most = seed % 2 == 0 ? 20 : 3000;
    float x = -1.0F;
    for (int i = 0; i < most; ++i) {
        x += static_cast<float>(random() % 100) * (seed % 2 == 0 ? 0.1F : 0.0005F);
        x -= random() % 50 == 0 ? 1.0F : 0.0F;
        float y = static_cast<float>(random() % 1000) * 0.01F;
        y *= random() % 40 == 0 ? 50.0F : 1.0F;
        y -= random() % 40 == 0 ? 20.0F : 0.0F;
        const int radius = random() % 30 == 0 ? static_cast<int>(random() % 8) : static_cast<int>(seed % 5);
        series.addPoints(PointAt(x, y, radius));
    }
    return series;
}

TEST(SeriesTest, ManyPointsInAColumnLookAsIfDrawnOneByOne) {
    const Point topLeft{.v = 10, .h = 20};
    const Point bottomRight{.v = 130, .h = 170};
    Axis x;
    x.set_maxValue(50.0F);
    Axis y;
    y.set_maxValue(10.0F);
    const auto draw = [](double scale, const auto& drawer) {
        auto image = std::make_unique<GWorld>(kFrame, scale);
        const auto port = image->BeginPainting();
        Drawing::RGBForeColor({.red = 0xFFFF, .green = 0, .blue = 0});
        drawer();
        return image;
    };
    for (const double scale : {1.0, 1.5, 2.0}) {
        for (unsigned seed = 1; seed <= 25; ++seed) {
            const Series series = RandomSeries(seed);
            const auto quick = draw(scale, [&] { series.drawSeries(kFrame, topLeft, bottomRight, &x, &y); });
            const auto plain = draw(scale, [&] { DrawPlainly(series, topLeft, bottomRight, x, y); });
            ASSERT_EQ(quick->Image(), plain->Image()) << "scale " << scale << ", seed " << seed;
        }
    }
}

TEST(SeriesTest, KeepsItsPointsAndGrowsByOneBeyondItsFirstRoom) {
    Series series;
    EXPECT_EQ(series.get_capacity(), Series::kInitialCapacity);
    for (int i = 0; i <= Series::kInitialCapacity; ++i) {
        ASSERT_EQ(series.addPoints(PointAt(static_cast<float>(i), 1)), i);
    }
    EXPECT_EQ(series.get_capacity(), Series::kInitialCapacity + 1);
    EXPECT_EQ(series.getPtArray()[99'999].get_xValue(), 99'999.0F);
    EXPECT_LE(sizeof(GraphPoint) * 6 * 14'400, 20'000'000U) << "what a day of samples adds";
}

}  // namespace
