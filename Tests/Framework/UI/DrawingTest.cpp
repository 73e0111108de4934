#include "Framework/UI/Drawing.h"

#include "Framework/Base/LException.h"
#include "Framework/UI/GWorld.h"
#include "Support/Sanitizers.h"

#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <random>
#include <vector>

namespace Drawing {
namespace {

constexpr RGBColor kWhite{0xFFFF, 0xFFFF, 0xFFFF};

/// '#' where a pixel is not black, a word for each row.
std::string Rows(const GWorld& image) {
    std::string rows;
    for (int y = 0; y < image.Image().height(); ++y) {
        rows += y == 0 ? "" : " ";
        for (int x = 0; x < image.Image().width(); ++x) {
            rows += image.PixelAt(x, y) == RGBColor() ? '.' : '#';
        }
    }
    return rows;
}

/// What `draw` draws in white into a black image.
std::string Drawn(int width, int height, const std::function<void()>& draw, double scale = 1.0) {
    GWorld image(SetRect(0, 0, width, height), scale);
    const auto port = image.BeginPainting();
    RGBForeColor(kWhite);
    draw();
    return Rows(image);
}

void DrawLine(int h, int v, int toH, int toV, int penWidth, int penHeight) {
    PenSize(penWidth, penHeight);
    MoveTo(h, v);
    LineTo(toH, toV);
}

void Frame(const Rect& rect, int penWidth, int penHeight, int corner = 0) {
    PenSize(penWidth, penHeight);
    FrameRoundRect(rect, corner, corner);
}

void DrawPolygon(const std::vector<Point>& corners) {
    OpenPoly();
    MoveTo(corners.back().h, corners.back().v);
    for (const Point corner : corners) {
        LineTo(corner.h, corner.v);
    }
    ClosePoly();
    PaintPoly();
    KillPoly();
}

/// Some of every figure, at places that `factor` spreads; the same sequence for the same seed.
void DrawScene(unsigned seed, int factor) {
    std::mt19937 random(seed);
    const auto pick = [&](int limit) { return factor * static_cast<int>(random() % static_cast<unsigned>(limit)); };
    for (int i = 0; i < 60; ++i) {
        const auto shade = static_cast<std::uint16_t>(random() | 0x4000U);
        RGBForeColor({.red = shade, .green = static_cast<std::uint16_t>(random()), .blue = 0xFFFF});
        const int left = pick(60) - 5 * factor;
        const int top = pick(60) - 5 * factor;
        PenSize(pick(5), pick(5));
        MoveTo(left, top);
        LineTo(pick(60), pick(60));
        FrameRect(SetRect(left, top, left + pick(12), top + pick(12)));
        PaintRect(SetRect(top, left, top + pick(6), left + pick(6)));
        const int diameter = factor * (1 + i % 9);
        PaintOval(SetRect(top, left, top + diameter, left + diameter));
    }
}

QImage ImageOf(int size, double scale, const std::function<void()>& draw) {
    GWorld image(SetRect(0, 0, size, size), scale);
    const auto port = image.BeginPainting();
    draw();
    image.Image().setDevicePixelRatio(1.0);
    return image.Image();
}

/// As `ImageOf`, through a painter's operations.
QImage PaintedImageOf(int size, double scale, const std::function<void()>& draw) {
    QImage image(QSize(size, size) * scale, QImage::Format_RGB888);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::black);
    {
        QPainter painter(&image);
        const PortSetter port(painter);
        draw();
    }
    image.setDevicePixelRatio(1.0);
    return image.convertToFormat(QImage::Format_RGB32);
}

TEST(DrawingTest, FiguresCoverThePixelsBetweenTheirGridLines) {
    // Points are vertical first.
    const std::vector<Point> triangle{{0, 0}, {0, 6}, {6, 6}};
    const std::vector<Point> ring{{0, 0}, {8, 0}, {8, 6}, {0, 6}, {0, 0}, {2, 2}, {2, 4}, {6, 4}, {6, 2}, {2, 2}};
    const std::pair<std::function<void()>, const char*> figures[] = {
        {[] { DrawLine(1, 1, 4, 1, 2, 2); }, "........ .#####.. .#####.. ........ ........ ........"},
        {[] { DrawLine(2, 4, 2, 1, 3, 1); }, "........ ..###... ..###... ..###... ..###... ........"},
        {[] { DrawLine(0, 1, 6, 3, 1, 1); }, "........ ##...... .####... ....###. ........ ........"},
        {[] { DrawLine(6, 3, 0, 1, 1, 1); }, "........ ##...... .####... ....###. ........ ........"},
        {[] { DrawLine(0, 4, 4, 0, 2, 2); }, "...###.. ..####.. .####... ####.... ###..... ##......"},
        {[] { DrawLine(0, 0, 5, 5, 0, 2); }, "........ ........ ........ ........ ........ ........"},
        {[] { PaintRect(SetRect(1, 2, 4, 5)); }, "........ ........ .###.... .###.... .###.... ........"},
        {[] { PaintRect(SetRect(4, 2, 1, 5)); }, "........ ........ ........ ........ ........ ........"},
        {[] { Frame(SetRect(1, 1, 8, 5), 2, 1); }, "........ .####### .##...## .##...## .####### ........"},
        {[] { PaintOval(SetRect(0, 0, 7, 5)); }, ".#####.. #######. #######. #######. .#####.. ........"},
        {[] { PaintOval(SetRect(4, 0, 5, 6)); }, "....#... ....#... ....#... ....#... ....#... ....#..."},
        {[&] { DrawPolygon(triangle); }, "######.. .#####.. ..####.. ...###.. ....##.. .....#.."},
        {[&] { DrawPolygon(ring); }, "######.. ######.. ##..##.. ##..##.. ##..##.. ##..##.."}};
    for (const auto& [draw, expected] : figures) {
        EXPECT_EQ(Drawn(8, 6, draw), expected);
    }
    EXPECT_EQ(Drawn(12, 10, [] { Frame(SetRect(0, 0, 12, 10), 2, 2, 8); }),
              "..########.. .##########. ###......### ##........## ##........## "
              "##........## ##........## ###......### .##########. ..########..");
}

/// What lies beyond any image must neither cost time nor overflow.
TEST(DrawingTest, PlacesFarOutsideTheImageAreCutOff) {
    constexpr int far = 2'000'000'000;
    const auto drawn = Drawn(4, 3, [] {
        PenSize(2, 2);
        MoveTo(-far, -far);
        LineTo(far, -far);
        LineTo(far, 1);
        LineTo(-far, 1);
        PaintRect(SetRect(-far, 0, 2, 1));
        PaintOval(SetRect(-far, far, far, far));
    });
    EXPECT_EQ(drawn, "##.. #### ####");
}

TEST(DrawingTest, ScaleOfTwoDrawsEveryFigureAtTwiceTheResolution) {
    for (unsigned seed = 1; seed <= 10; ++seed) {
        ASSERT_EQ(ImageOf(60, 2.0, [&] { DrawScene(seed, 1); }), ImageOf(120, 1.0, [&] { DrawScene(seed, 2); }));
    }
}

/// A painter on anything but a 32-bit image is drawn on through its own operations.
TEST(DrawingTest, PainterDrawsTheSamePixelsAsTheImage) {
    const auto draw = [] {
        DrawScene(7, 1);
        PaintOvals(SetRect(20, 30, 24, 34), std::array{0, 1, 9, -30});
        DrawPolygon({{2, 2}, {50, 2}, {20, 40}});
    };
    for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
        EXPECT_EQ(PaintedImageOf(60, scale, draw), ImageOf(60, scale, draw)) << "scale " << scale;
    }
}

TEST(DrawingTest, PenAndSmallOvalKeepTheirSizeAtAFractionOfAScale) {
    for (int h = 0; h < 10; ++h) {
        const auto draw = [h] {
            DrawLine(h, 0, h, 1, 1, 1);
            PaintOval(SetRect(h + 4, 1, h + 7, 4));
        };
        const auto rows = Drawn(20, 4, draw, 1.5);
        EXPECT_EQ(std::ranges::count(rows.substr(0, 30), '#'), 2);
        EXPECT_EQ(std::ranges::count(rows.substr(std::size_t{4} * 31, 30), '#'), 5);
    }
}

TEST(DrawingTest, ImageOrSavedStateLeavesThePortAsItWas) {
    GWorld outer(SetRect(10, 20, 16, 24), 1.0);
    const auto port = outer.BeginPainting();
    RGBForeColor(kWhite);
    MoveTo(10, 20);
    GWorld inner(SetRect(12, 21, 14, 23), GWorld::CurrentScale());
    {
        const auto innerPort = inner.BeginPainting();
        EraseRect(SetRect(12, 21, 13, 22));
        MoveTo(0, 0);
        PenSize(5, 5);
    }
    {
        const StateSaver saved;
        RGBForeColor({});
        PenSize(4, 4);
        MoveTo(9, 9);
    }
    LineTo(15, 20);
    CopyBits(inner);
    EXPECT_EQ(Rows(outer), "###### ..#... ...... ......");
}

TEST(DrawingTest, CopiedImageKeepsItsDevicePixels) {
    for (const double scale : {1.0, 1.5, 2.0}) {
        GWorld source(SetRect(4, 6, 34, 30), scale);
        {
            const auto port = source.BeginPainting();
            DrawScene(2, 1);
        }
        const auto copy = [&] { CopyBits(source); };
        const QRect place(QPoint(static_cast<int>(4 * scale), static_cast<int>(6 * scale)), source.Image().size());
        const QImage painted = PaintedImageOf(40, scale, copy).copy(place);
        const QImage copied = ImageOf(40, scale, copy).copy(place);
        source.Image().setDevicePixelRatio(1.0);
        EXPECT_EQ(painted, source.Image());
        EXPECT_EQ(copied, source.Image());
    }
}

TEST(DrawingTest, ClipAndTranslationOfThePainterHold) {
    GWorld image(SetRect(0, 0, 8, 4), 1.0);
    {
        QPainter painter(&image.Image());
        painter.setClipRect(2, 1, 4, 2);
        painter.translate(1, 0);
        const PortSetter port(painter);
        RGBForeColor(kWhite);
        PaintRect(SetRect(0, 0, 4, 4));
        MoveTo(-1, 2);
        LineTo(7, 2);
    }
    EXPECT_EQ(Rows(image), "........ ..###... ..####.. ........");
}

TEST(GWorldTest, CannotBeMadeEmptyOrLargerThanMemory) {
    EXPECT_THROW(GWorld(SetRect(5, 5, 5, 9), 1.0), LException);
    if (!kIsSanitized) {  // whose allocators end the process instead
        EXPECT_THROW(GWorld(SetRect(-32768, -32768, 32767, 32767), 64.0), LException);
    }
}

}  // namespace
}  // namespace Drawing
