#include "Framework/UI/Look.h"

#include "Framework/UI/LookStyle.h"

#include <QApplication>
#include <QPalette>
#include <QSettings>
#include <QStandardPaths>
#include <QStyle>
#include <QToolTip>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace {

struct Shades {
    std::uint32_t normal;  ///< 0xRRGGBB
    std::uint32_t high;
};

/// By role.
constexpr std::array<Shades, 18> kShades{{
    {0x2B2B2D, 0x000000},  // Window
    {0x1D1D1F, 0x000000},  // Field
    {0x3D3D41, 0x000000},  // Button
    {0x4A4A4F, 0x202020},  // ButtonHover
    {0x323236, 0x303030},  // ButtonPressed
    {0x626268, 0xFFFFFF},  // Outline
    {0x434347, 0xA0A0A0},  // FaintOutline
    {0x1D1D1F, 0x303030},  // Track
    {0xB4B4BA, 0xFFFFFF},  // Thumb
    {0xEDEDEF, 0xFFFFFF},  // Text
    {0xBDBDC3, 0xFFFFFF},  // CaptionText
    {0xA9A9AF, 0xFFFFFF},  // QuietText
    {0x7A7A80, 0xA0A0A0},  // DisabledText
    {0xFF8A80, 0xFFB4AC},  // AlarmText
    {0x903AAC, 0x7A2E94},  // Accent
    {0xFFFFFF, 0xFFFFFF},  // OnAccent
    {0xCF93E4, 0xFFFFFF},  // Signal
    {0xCF93E4, 0xFFE600},  // Focus
}};

Look::Contrast& InForce() {
    static Look::Contrast contrast = Look::Contrast::Normal;
    return contrast;
}

/// Of a colour as the eye weighs it, 0 to 1.
double Luminance(const QColor& color) {
    const auto linear = [](float part) {
        return part <= 0.04045F ? double{part} / 12.92 : std::pow((double{part} + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

/// The desktop's own colours are next to black and white: a contrast of 21 is the highest there is, and common themes
/// stay under 19.
bool DesktopPaletteIsHighContrast() {
    const QPalette palette = QApplication::palette();
    const double text = Luminance(palette.color(QPalette::WindowText)) + 0.05;
    const double window = Luminance(palette.color(QPalette::Window)) + 0.05;
    return std::max(text, window) / std::min(text, window) > 20;
}

/// The name of the desktop's theme where there is no other word of it: the variable comes before the settings file.
QString DesktopThemeName() {
    QString chosen = qEnvironmentVariable("GTK_THEME");
    const QString file =
        QStandardPaths::locate(QStandardPaths::GenericConfigLocation, QStringLiteral("gtk-3.0/settings.ini"));
    if (!chosen.isEmpty() || file.isEmpty()) {
        return chosen;
    }
    return QSettings(file, QSettings::IniFormat).value(QStringLiteral("Settings/gtk-theme-name")).toString();
}

Look::Contrast ContrastWished() {
    const bool isHigh = DesktopThemeName().startsWith(QLatin1String("HighContrast"), Qt::CaseInsensitive) ||
                        DesktopPaletteIsHighContrast();
    return isHigh ? Look::Contrast::High : Look::Contrast::Normal;
}

}  // namespace

RGBColor Look::ColorOf(Role role, Contrast contrast) {
    const Shades& shades = kShades.at(static_cast<std::size_t>(role));
    const std::uint32_t color = contrast == Contrast::High ? shades.high : shades.normal;
    const auto component = [color](unsigned shift) {
        return static_cast<std::uint16_t>(((color >> shift) & 0xFFU) * 0x101U);
    };
    return {.red = component(16), .green = component(8), .blue = component(0)};
}

RGBColor Look::ColorOf(Role role) {
    return ColorOf(role, ContrastInForce());
}

Look::Contrast Look::ContrastInForce() {
    return InForce();
}

void Look::Apply() {
    InForce() = ContrastWished();
    QApplication::setStyle(LookStyle::Make().release());  // the application takes it over
    QApplication::setPalette(LookStyle::Palette());
    QToolTip::setPalette(LookStyle::Palette());
}
