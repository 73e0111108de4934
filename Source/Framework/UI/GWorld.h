#pragma once

#include "Platform/DrawingTypes.h"

#include <memory>

class QImage;

namespace Drawing {
class PortSetter;
}  // namespace Drawing

/// An off-screen image, with the rectangle of local coordinates that it shows. Main thread only.
class GWorld {
public:
    /// An image of the rectangle's size at `scale` device pixels to the unit, black at first. Throws `LException` when
    /// the rectangle is empty, or the system has no memory for the image.
    GWorld(const Rect& bounds, double scale);
    ~GWorld();
    GWorld(const GWorld&) = delete;
    GWorld& operator=(const GWorld&) = delete;

    /// The scale of the port in force: what an image to be copied into it needs. 1 without a port.
    [[nodiscard]] static double CurrentScale();

    /// The colour that a pixel painted in `color` has: screens have eight bits for a component.
    [[nodiscard]] static RGBColor AsShown(const RGBColor& color);

    [[nodiscard]] const Rect& Bounds() const { return m_bounds; }
    /// The colour of the device pixel at (x, y) from the image's top left corner, as `AsShown` gives it; black outside.
    [[nodiscard]] RGBColor PixelAt(int x, int y) const;
    [[nodiscard]] QImage& Image() { return *m_image; }
    [[nodiscard]] const QImage& Image() const { return *m_image; }

    /// Makes the image the current port for the lifetime of the result.
    [[nodiscard]] std::unique_ptr<Drawing::PortSetter> BeginPainting();

private:
    Rect m_bounds;
    std::unique_ptr<QImage> m_image;
};
