#include "GUI/Series.h"

#include "Framework/UI/Drawing.h"
#include "Framework/UI/GWorld.h"
#include "GUI/Axis.h"

#include <QImage>
#include <gtest/gtest.h>

#include <random>

namespace {

constexpr Rect kFrame{.top = 0, .left = 0, .bottom = 140, .right = 190};

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
    const bool isDense = seed % 2 != 0;
    Series series;
    series.set_lineThickness(static_cast<int>(seed % 4));
    GraphPoint point;
    point.set_xValue(-1.0F);
    for (int i = 0; i < (isDense ? 3000 : 20); ++i) {
        const float back = random() % 50 == 0 ? 1.0F : 0.0F;
        point.set_xValue(point.get_xValue() + static_cast<float>(random() % 100) * (isDense ? 0.0005F : 0.1F) - back);
        const float stretch = random() % 40 == 0 ? 50.0F : 1.0F;
        point.set_yValue(static_cast<float>(random() % 1000) * 0.01F * stretch - (random() % 40 == 0 ? 20.0F : 0.0F));
        point.set_ptRadius(static_cast<int>(random() % 30 == 0 ? random() % 8 : seed % 5));
        series.addPoints(point);
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

}  // namespace
