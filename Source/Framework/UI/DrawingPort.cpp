#include "Framework/UI/DrawingPort.h"

#include "Framework/UI/Drawing.h"
#include "Framework/UI/DrawingFonts.h"
#include "Framework/UI/GWorld.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace Drawing {

namespace {

Port* g_current = nullptr;

/// Scales of screens go in steps much larger than this, and matrices multiply with errors much smaller.
constexpr double kSameScale = 1e-6;

/// As 0xAARRGGBB, opaque.
std::uint32_t PixelOf(const RGBColor& color) {
    return 0xFF000000U | (color.red & 0xFF00U) << 8U | (color.green & 0xFF00U) |
           static_cast<unsigned>(color.blue) >> 8U;
}

/// Settings of the painter, restored with the object.
class PainterSaver {
public:
    explicit PainterSaver(QPainter& painter) : m_painter(painter) { m_painter.save(); }
    ~PainterSaver() { m_painter.restore(); }
    PainterSaver(const PainterSaver&) = delete;
    PainterSaver& operator=(const PainterSaver&) = delete;

private:
    QPainter& m_painter;
};

}  // namespace

Port* Port::Current() {
    return g_current;
}

void Port::SetCurrent(Port* port) {
    g_current = port;
}

Port::Port(QPainter& painter) : m_painter(painter) {
    const QTransform transform = painter.deviceTransform();
    SetTransform(transform.m11(), transform.dx(), transform.dy());
    if (painter.hasClipping()) {
        const QRect clip = transform.mapRect(painter.clipBoundingRect()).toRect();
        m_limit = {.left = clip.left(),
                   .top = clip.top(),
                   .right = clip.left() + clip.width(),
                   .bottom = clip.top() + clip.height()};
    }
    const bool isRectangular = !painter.hasClipping() || painter.clipRegion().rectCount() <= 1;
    if (auto* image = dynamic_cast<QImage*>(painter.device()); image != nullptr && isRectangular) {
        FindPixels(*image);
    }
}

void Port::SetTransform(double scale, double originX, double originY) {
    m_scale = std::abs(scale - 1.0) < kSameScale ? 1.0 : scale;
    m_originX = originX;
    m_originY = originY;
    m_wholeOriginX = Rounded(originX);
    m_wholeOriginY = Rounded(originY);
    const bool isWhole = std::abs(m_scale - Rounded(m_scale)) < kSameScale &&
                         std::abs(originX - m_wholeOriginX) < kSameScale &&
                         std::abs(originY - m_wholeOriginY) < kSameScale;
    m_wholeScale = isWhole ? Rounded(m_scale) : 0;
}

void Port::FindPixels(QImage& image) {
    if (image.format() == QImage::Format_RGB32 || image.format() == QImage::Format_ARGB32_Premultiplied) {
        m_pixels = reinterpret_cast<std::uint32_t*>(image.bits());
        m_pixelsPerRow = image.bytesPerLine() / static_cast<std::ptrdiff_t>(sizeof(std::uint32_t));
        m_limit = m_limit.CutTo({.left = 0, .top = 0, .right = image.width(), .bottom = image.height()});
    }
}

int Port::Rounded(double value) {
    return static_cast<int>(std::floor(value + 0.5));
}

int Port::DeviceLength(int length) const {
    const int near = std::clamp(length, 0, kFarthestUnit);
    if (near == 0 || m_wholeScale > 0) {
        return near * m_wholeScale;
    }
    return std::max(1, Rounded(near * m_scale));
}

Raster::Area Port::DeviceArea(const Rect& rect) const {
    return {.left = DeviceX(rect.left),
            .top = DeviceY(rect.top),
            .right = DeviceX(rect.right),
            .bottom = DeviceY(rect.bottom)};
}

QRectF Port::LocalArea(const Raster::Area& area) const {
    return {(area.left - m_originX) / m_scale, (area.top - m_originY) / m_scale, (area.right - area.left) / m_scale,
            (area.bottom - area.top) / m_scale};
}

void Port::FillArea(const Raster::Area& area, const RGBColor& color) {
    const Raster::Area visible = area.CutTo(m_limit);
    if (visible.IsEmpty()) {
        return;
    }
    const std::uint32_t pixel = PixelOf(color);
    if (m_pixels == nullptr) {
        m_painter.fillRect(LocalArea(visible), QColor::fromRgb(pixel));
        return;
    }
    // Wide rows are copied faster than they are filled; a call for it costs more than a narrow row.
    constexpr int narrow = 8;
    std::uint32_t* first = PixelsOfRow(visible.top) + visible.left;
    std::uint32_t* row = first;
    for (int y = visible.top; y < visible.bottom; ++y, row += m_pixelsPerRow) {
        if (visible.Width() <= narrow || y == visible.top) {
            std::fill_n(row, visible.Width(), pixel);
        } else {
            std::memcpy(row, first, static_cast<std::size_t>(visible.Width()) * sizeof(std::uint32_t));
        }
    }
}

void Port::FillRow(int y, int left, int right, std::uint32_t pixel) {
    if (m_pixels == nullptr) {
        const Raster::Area row{.left = left, .top = y, .right = right, .bottom = y + 1};
        if (!row.CutTo(m_limit).IsEmpty()) {
            m_painter.fillRect(LocalArea(row.CutTo(m_limit)), QColor::fromRgb(pixel));
        }
        return;
    }
    left = std::max(left, m_limit.left);
    right = std::min(right, m_limit.right);
    if (left < right && y >= m_limit.top && y < m_limit.bottom) {
        std::uint32_t* row = PixelsOfRow(y);
        std::fill(row + left, row + right, pixel);
    }
}

void Port::PaintRect(const Rect& rect, const RGBColor& color) {
    FillArea(DeviceArea(rect), color);
}

void Port::DrawLine(int fromH, int fromV, int toH, int toV) {
    const Raster::Corner from{.x = DeviceX(fromH), .y = DeviceY(fromV)};
    const Raster::Corner to{.x = DeviceX(toH), .y = DeviceY(toV)};
    const int width = DeviceLength(state.penWidth);
    const int height = DeviceLength(state.penHeight);
    if (width == 0 || height == 0) {
        return;
    }
    if (from.x == to.x || from.y == to.y) {
        FillArea({.left = std::min(from.x, to.x),
                  .top = std::min(from.y, to.y),
                  .right = std::max(from.x, to.x) + width,
                  .bottom = std::max(from.y, to.y) + height},
                 state.foreColor);
        return;
    }
    const std::uint32_t pixel = PixelOf(state.foreColor);
    Raster::FillLine(from, to, width, height, m_limit,
                     [&](int y, int left, int right) { FillRow(y, left, right, pixel); });
}

void Port::PaintPolygon(const std::vector<Raster::Corner>& corners) {
    if (IsSmooth()) {
        QPolygonF polygonOfCorners;
        for (const Raster::Corner& corner : corners) {
            polygonOfCorners << QPointF(corner.x, corner.y);
        }
        QPainterPath path;
        path.addPolygon(polygonOfCorners);
        FillPathSmoothly(path);
        return;
    }
    std::vector<Raster::Corner> deviceCorners;
    deviceCorners.reserve(corners.size());
    for (const Raster::Corner& corner : corners) {
        deviceCorners.push_back({.x = DeviceX(corner.x), .y = DeviceY(corner.y)});
    }
    const std::uint32_t pixel = PixelOf(state.foreColor);
    Raster::FillPolygon(deviceCorners, m_limit, m_crossings,
                        [&](int y, int left, int right) { FillRow(y, left, right, pixel); });
}

void Port::FillPathSmoothly(const QPainterPath& path) {
    const PainterSaver saved(m_painter);
    m_painter.setRenderHint(QPainter::Antialiasing);
    m_painter.fillPath(path, QColor::fromRgb(PixelOf(state.foreColor)));
}

const Raster::RoundShape& Port::ShapeOf(int width, int height, int ovalWidth, int ovalHeight) {
    if (!m_lastShape.Is(width, height, ovalWidth, ovalHeight)) {
        m_lastShape = Raster::RoundShape(width, height, ovalWidth, ovalHeight);
    }
    return m_lastShape;
}

void Port::FillShape(const Raster::RoundShape& shape, int left, int top) {
    const std::uint32_t pixel = PixelOf(state.foreColor);
    int y = top;
    for (const int inset : shape.Insets()) {
        FillRow(y, left + inset, left + shape.Width() - inset, pixel);
        ++y;
    }
}

void Port::PaintOval(const Rect& rect) {
    const int left = DeviceX(rect.left);
    const int top = DeviceY(rect.top);
    const int width = DeviceLength(rect.Width());
    const int height = DeviceLength(rect.Height());
    if (IsSmoothOval(rect)) {
        QPainterPath path;
        path.addEllipse(LocalArea({.left = left, .top = top, .right = left + width, .bottom = top + height}));
        FillPathSmoothly(path);
        return;
    }
    FillShape(ShapeOf(width, height, width, height), left, top);
}

void Port::PaintOvals(const Rect& rect, std::span<const int> places) {
    if (places.empty() || IsSmoothOval(rect)) {
        for (const int place : places) {
            PaintOval(SetRect(rect.left, rect.top + place, rect.right, rect.bottom + place));
        }
        return;
    }
    const int width = DeviceLength(rect.Width());
    const int height = DeviceLength(rect.Height());
    const std::span<const int> ovalInsets = ShapeOf(width, height, width, height).Insets();
    const auto [highest, lowest] = std::ranges::minmax(places);
    const int top = std::max(DeviceY(rect.top + highest), m_limit.top);
    const int bottom = std::min(DeviceY(rect.top + lowest) + height, m_limit.bottom);
    if (top >= bottom) {
        return;
    }
    // The ovals stand in one column: a row that several of them cover is as wide as the widest of them there.
    m_insets.assign(static_cast<std::size_t>(bottom - top), width);
    for (const int place : places) {
        const int ovalTop = DeviceY(rect.top + place);
        const int end = std::min(ovalTop + height, bottom);
        for (int y = std::max(ovalTop, top); y < end; ++y) {
            int& inset = m_insets[static_cast<std::size_t>(y - top)];
            inset = std::min(inset, ovalInsets[static_cast<std::size_t>(y - ovalTop)]);
        }
    }
    FillRowsWithInsets(DeviceX(rect.left), top, width);
}

void Port::FillRowsWithInsets(int left, int top, int width) {
    // Rows of one width, which most are, are filled together.
    for (auto row = m_insets.begin(); row != m_insets.end();) {
        const auto end = std::find_if(row, m_insets.end(), [inset = *row](int other) { return other != inset; });
        FillArea({.left = left + *row,
                  .top = top + static_cast<int>(row - m_insets.begin()),
                  .right = left + width - *row,
                  .bottom = top + static_cast<int>(end - m_insets.begin())},
                 state.foreColor);
        row = end;
    }
}

void Port::FrameRoundRect(const Rect& rect, int ovalWidth, int ovalHeight) {
    const Raster::Area outside = DeviceArea(rect);
    const int penWidth = DeviceLength(state.penWidth);
    const int penHeight = DeviceLength(state.penHeight);
    const Raster::Area inside{.left = outside.left + penWidth,
                              .top = outside.top + penHeight,
                              .right = outside.right - penWidth,
                              .bottom = outside.bottom - penHeight};
    const int outerWidth = DeviceLength(ovalWidth);
    const int outerHeight = DeviceLength(ovalHeight);
    // The corners of the inner edge run alongside those of the outer one.
    const int innerWidth = std::max(0, outerWidth - 2 * penWidth);
    const int innerHeight = std::max(0, outerHeight - 2 * penHeight);
    if (IsSmooth()) {
        QPainterPath path;
        path.setFillRule(Qt::OddEvenFill);
        path.addRoundedRect(LocalArea(outside), outerWidth / (2.0 * m_scale), outerHeight / (2.0 * m_scale));
        if (!inside.IsEmpty()) {
            path.addRoundedRect(LocalArea(inside), innerWidth / (2.0 * m_scale), innerHeight / (2.0 * m_scale));
        }
        FillPathSmoothly(path);
        return;
    }
    FillRing(outside, {outside.Width(), outside.Height(), outerWidth, outerHeight}, inside,
             {inside.Width(), inside.Height(), innerWidth, innerHeight});
}

void Port::FillRing(const Raster::Area& outside, const Raster::RoundShape& outer, const Raster::Area& inside,
                    const Raster::RoundShape& inner) {
    const std::uint32_t pixel = PixelOf(state.foreColor);
    int y = outside.top;
    for (const int outerInset : outer.Insets()) {
        const int left = outside.left + outerInset;
        const int right = outside.right - outerInset;
        if (inside.IsEmpty() || y < inside.top || y >= inside.bottom) {
            FillRow(y, left, right, pixel);
        } else {
            const int innerInset = inner.Insets()[static_cast<std::size_t>(y - inside.top)];
            FillRow(y, left, inside.left + innerInset, pixel);
            FillRow(y, inside.right - innerInset, right, pixel);
        }
        ++y;
    }
}

void Port::DrawText(std::string_view text) {
    const ReadyFont* ready = FindFont(state.fontNumber, state.fontPixels);
    if (ready == nullptr) {
        return;
    }
    m_painter.setFont(ready->font);
    m_painter.setPen(QColor::fromRgb(PixelOf(state.foreColor)));
    m_painter.drawText(QPointF(state.penH, state.penV),
                       QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
    state.penH += WidthOf(*ready, text);
}

void Port::CopyImage(const GWorld& source) {
    const QImage& image = source.Image();
    if (std::abs(image.devicePixelRatio() - m_scale) > kSameScale) {
        m_painter.drawImage(QPointF(source.Bounds().left, source.Bounds().top), image);
        return;
    }
    const int left = DeviceX(source.Bounds().left);
    const int top = DeviceY(source.Bounds().top);
    const Raster::Area place{.left = left, .top = top, .right = left + image.width(), .bottom = top + image.height()};
    if (m_pixels == nullptr) {
        // Pixel for pixel: the painter takes coordinates that are device pixels, and the image one that knows of no
        // scale.
        const QImage plain(image.constBits(), image.width(), image.height(), image.bytesPerLine(), image.format());
        const QPointF origin = LocalArea(place).topLeft();
        const PainterSaver saved(m_painter);
        m_painter.setWorldTransform(
            QTransform::fromTranslate(origin.x(), origin.y()).scale(1.0 / m_scale, 1.0 / m_scale), true);
        m_painter.drawImage(0, 0, plain);
        return;
    }
    const Raster::Area visible = place.CutTo(m_limit);
    if (visible.IsEmpty()) {
        return;
    }
    for (int y = visible.top; y < visible.bottom; ++y) {
        const auto* from = reinterpret_cast<const std::uint32_t*>(image.constScanLine(y - top));
        std::memcpy(PixelsOfRow(y) + visible.left, from + (visible.left - left),
                    static_cast<std::size_t>(visible.Width()) * sizeof(std::uint32_t));
    }
}

}  // namespace Drawing
