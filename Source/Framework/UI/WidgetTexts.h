#pragma once

#include "Framework/Base/LStr255.h"

#include <string_view>

class QString;

/// Texts on their way between panes (UTF-8, at most 255 bytes) and widgets.
namespace WidgetTexts {

/// A character that lost its end to the length limit is left out.
[[nodiscard]] QString FromPane(std::string_view text);

/// As many whole characters as fit.
[[nodiscard]] LStr255 ToPane(const QString& text);

/// The text as a button, check box or label shows it: an ampersand is an ampersand, and the letter of a key like
/// "Alt+P" is underlined when the text has it.
[[nodiscard]] QString Face(std::string_view text, std::string_view key);

/// A tool tip with the key behind it: "Start the test (Ctrl+R)". `key` may be empty.
[[nodiscard]] QString ToolTip(std::string_view text, std::string_view key);

}  // namespace WidgetTexts
