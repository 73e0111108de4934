#pragma once

#include "Framework/UI/Drawing.h"
#include "Framework/UI/Raster.h"
#include "Platform/DrawingTypes.h"

#include <QColor>
#include <QRectF>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

class GWorld;
class QImage;
class QPainter;
class QPainterPath;

namespace Drawing {

/// What `StateSaver` keeps.
struct PortState {
    RGBColor foreColor{};
    RGBColor backColor{.red = 0xFFFF, .green = 0xFFFF, .blue = 0xFFFF};
    int penWidth = 1;
    int penHeight = 1;
    double penH = 0.0;  ///< a text may end between two grid lines
    int penV = 0;
    int fontNumber = 0;
    int fontPixels = 12;
};

/// Where the drawing operations draw: turns local coordinates into device pixels and fills these, by writing into the
/// image itself when the painter paints on a 32-bit image, and through the painter otherwise. Both ways the same pixels
/// change.
class Port {
public:
    /// `painter` stays in use for the port's lifetime.
    explicit Port(QPainter& painter);

    /// The port of the drawing operations, or null.
    [[nodiscard]] static Port* Current();
    static void SetCurrent(Port* port);

    [[nodiscard]] double Scale() const { return m_scale; }

    void PaintRect(const Rect& rect, const RGBColor& color);
    void PaintOval(const Rect& rect);
    void PaintOvals(const Rect& rect, std::span<const int> places);
    void FrameRoundRect(const Rect& rect, int ovalWidth, int ovalHeight);
    void DrawLine(int fromH, int fromV, int toH, int toV);
    /// Corners in local coordinates.
    void PaintPolygon(const std::vector<Raster::Corner>& corners);
    /// Draws at the pen's position and moves the pen.
    void DrawText(std::string_view text);
    void CopyImage(const GWorld& source);

    PortState state;
    std::vector<Raster::Corner> polygon;  ///< local coordinates
    bool isRecording = false;

private:
    /// Thousands of screens away, and at every scale of a screen near enough for `Raster`.
    static constexpr int kFarthestUnit = Raster::kFarthest / 16;

    [[nodiscard]] int DeviceX(int h) const { return ToDevice(h, m_originX, m_wholeOriginX); }
    [[nodiscard]] int DeviceY(int v) const { return ToDevice(v, m_originY, m_wholeOriginY); }
    [[nodiscard]] int ToDevice(int coordinate, double origin, int wholeOrigin) const {
        const int near = std::clamp(coordinate, -kFarthestUnit, kFarthestUnit);
        return m_wholeScale > 0 ? near * m_wholeScale + wholeOrigin : Rounded(near * m_scale + origin);
    }
    [[nodiscard]] static int Rounded(double value);
    /// The device pixels that `length` units are, wherever they lie.
    [[nodiscard]] int DeviceLength(int length) const;
    [[nodiscard]] Raster::Area DeviceArea(const Rect& rect) const;
    [[nodiscard]] QRectF LocalArea(const Raster::Area& area) const;

    void SetTransform(double scale, double originX, double originY);
    void FindPixels(QImage& image);
    void FillArea(const Raster::Area& area, const RGBColor& color);
    void FillRow(int y, int left, int right, std::uint32_t pixel);
    [[nodiscard]] std::uint32_t* PixelsOfRow(int y) const { return m_pixels + y * m_pixelsPerRow; }
    /// Rows of `m_insets`, from the row `top` on, within a column of this width.
    void FillRowsWithInsets(int left, int top, int width);
    void FillShape(const Raster::RoundShape& shape, int left, int top);
    /// What the outer shape covers and the inner one does not.
    void FillRing(const Raster::Area& outside, const Raster::RoundShape& outer, const Raster::Area& inside,
                  const Raster::RoundShape& inner);
    void FillPathSmoothly(const QPainterPath& path);
    [[nodiscard]] const Raster::RoundShape& ShapeOf(int width, int height, int ovalWidth, int ovalHeight);
    [[nodiscard]] bool IsSmooth() const { return m_scale != 1.0; }
    [[nodiscard]] bool IsSmoothOval(const Rect& rect) const {
        return IsSmooth() && std::min(rect.Width(), rect.Height()) >= kSmallestSmoothOval;
    }

    QPainter& m_painter;
    double m_scale = 1.0;
    double m_originX = 0.0;  ///< the local point (0, 0), in device pixels
    double m_originY = 0.0;

    // For the common scales, where every grid line lies between pixels; otherwise the scale is 0.
    int m_wholeScale = 0;
    int m_wholeOriginX = 0;
    int m_wholeOriginY = 0;

    /// Of what is drawn, in device pixels.
    Raster::Area m_limit{
        .left = -Raster::kFarthest, .top = -Raster::kFarthest, .right = Raster::kFarthest, .bottom = Raster::kFarthest};

    // The image's own memory; null when everything goes through the painter.
    std::uint32_t* m_pixels = nullptr;
    std::ptrdiff_t m_pixelsPerRow = 0;

    // Scratch memory.
    Raster::RoundShape m_lastShape;
    std::vector<int> m_insets;
    std::vector<int> m_crossings;
};

}  // namespace Drawing
