#pragma once

#include "Framework/UI/Look.h"

#include <memory>

class QColor;
class QPainter;
class QPalette;
class QRect;
class QStyle;
class QWidget;

/// The program's look as widgets take it.
namespace LookStyle {

[[nodiscard]] QColor WidgetColor(Look::Role role);
[[nodiscard]] QPalette Palette();

/// The style of all widgets, over one that is part of the user interface library and looks the same on every desktop.
[[nodiscard]] std::unique_ptr<QStyle> Make();

/// A scroll bar without arrows. An empty `thumb` is one that cannot move.
void PaintScrollBar(QPainter& painter, const QWidget& bar, const QRect& thumb);

}  // namespace LookStyle
