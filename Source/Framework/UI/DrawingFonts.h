#pragma once

#include <QFont>
#include <QFontMetricsF>

#include <string_view>

namespace Drawing {

/// A font and its measures, ready for use.
struct ReadyFont {
    QFont font;
    QFontMetricsF metrics;
};

/// The font of this number and pixel size. Made once; good as long as the application object lives. Null without an
/// application object, as there are no fonts then.
[[nodiscard]] const ReadyFont* FindFont(int number, int pixels);

/// The exact width of the text in pixels of scale 1.
[[nodiscard]] double WidthOf(const ReadyFont& font, std::string_view text);

}  // namespace Drawing
