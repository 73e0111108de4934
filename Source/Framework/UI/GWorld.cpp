#include "Framework/UI/GWorld.h"

#include "Framework/Base/LException.h"
#include "Framework/UI/Drawing.h"

#include <QImage>

#include <cmath>
#include <string>

namespace {

/// 0 to 255 spread over 0 to 65535.
constexpr int kWiden = 257;

RGBColor Widened(unsigned red, unsigned green, unsigned blue) {
    return {.red = static_cast<std::uint16_t>(red * kWiden),
            .green = static_cast<std::uint16_t>(green * kWiden),
            .blue = static_cast<std::uint16_t>(blue * kWiden)};
}

}  // namespace

GWorld::GWorld(const Rect& bounds, double scale) : m_bounds(bounds) {
    const std::string size = std::to_string(bounds.Width()) + " by " + std::to_string(bounds.Height());
    if (bounds.Width() <= 0 || bounds.Height() <= 0) {
        throw LException("no off-screen image is as small as " + size);
    }
    // A pixel that the rectangle covers in part belongs to it.
    const int width = static_cast<int>(std::ceil(bounds.Width() * scale));
    const int height = static_cast<int>(std::ceil(bounds.Height() * scale));
    m_image = std::make_unique<QImage>(width, height, QImage::Format_RGB32);
    if (m_image->isNull()) {
        throw LException("no memory for an off-screen image of " + size + " at a scale of " + std::to_string(scale));
    }
    m_image->setDevicePixelRatio(scale);
    m_image->fill(Qt::black);
}

GWorld::~GWorld() = default;

RGBColor GWorld::AsShown(const RGBColor& color) {
    return Widened(color.red >> 8U, color.green >> 8U, color.blue >> 8U);
}

RGBColor GWorld::PixelAt(int x, int y) const {
    if (!m_image->valid(x, y)) {
        return {};
    }
    const QRgb pixel = m_image->pixel(x, y);
    return Widened(static_cast<unsigned>(qRed(pixel)), static_cast<unsigned>(qGreen(pixel)),
                   static_cast<unsigned>(qBlue(pixel)));
}

std::unique_ptr<Drawing::PortSetter> GWorld::BeginPainting() {
    return std::make_unique<Drawing::PortSetter>(*this);
}
