#pragma once

#include "Framework/Base/LStr255.h"
#include "Platform/DrawingTypes.h"

#include <memory>
#include <span>
#include <string_view>

class GWorld;
class QPainter;

/// The 2-D drawing operations of the panes, over QPainter. They act on the current port: the pane that is being drawn
/// or the off-screen image (`GWorld`) that a `PortSetter` chose. Without a port they do nothing. Main thread only.
///
/// Coordinates are whole numbers on the grid that runs between the pixels. The pen hangs below and to the right of its
/// path: a line from (0, 0) to (10, 0) with a pen of 2 by 2 covers the pixels 0 to 11 of the rows 0 and 1. Rectangles
/// have no right and bottom edge of their own. A figure covers the pixels whose centres lie inside it; a centre on its
/// left edge belongs to it, one on its right edge does not.
///
/// At a scale of 1 no figure is antialiased; at other scales the same calls draw at the screen's resolution, pens and
/// ovals keep one size wherever they stand, and polygons, round rectangles and ovals from `kSmallestSmoothOval` up have
/// smooth edges. Drawing a line, a rectangle or a smaller oval twice changes nothing at any scale. Texts are smooth at
/// every scale.
namespace Drawing {

/// The width or height from which ovals are smooth at scales other than 1. Smaller ones are marks that come by the
/// thousands.
constexpr int kSmallestSmoothOval = 10;

/// The upper eight bits of each component are what is drawn.
void RGBForeColor(const RGBColor& color);
void RGBBackColor(const RGBColor& color);
/// Black without a port.
[[nodiscard]] RGBColor GetForeColor();
/// White without a port.
[[nodiscard]] RGBColor GetBackColor();

/// A pen without width or height draws nothing.
void PenSize(int width, int height);
/// A pen of 1 by 1.
void PenNormal();
void MoveTo(int h, int v);
void LineTo(int h, int v);

/// Coordinates that a `Rect` cannot hold become the nearest that it can.
[[nodiscard]] Rect SetRect(int left, int top, int right, int bottom);
void PaintRect(const Rect& rect);
/// Fills with the background colour.
void EraseRect(const Rect& rect);
/// The outline inside the rectangle, of the pen's size.
void FrameRect(const Rect& rect);
void FrameRoundRect(const Rect& rect, int ovalWidth, int ovalHeight);
void PaintOval(const Rect& rect);
/// Paints the oval once for each entry of `places`, so many units further down. The same as `PaintOval` for each, but
/// quick when there are many and they overlap.
void PaintOvals(const Rect& rect, std::span<const int> places);

/// Between `OpenPoly` and `ClosePoly`, `MoveTo` and `LineTo` record corners and draw nothing.
void OpenPoly();
void ClosePoly();
/// Fills the polygon recorded last, by the even-odd rule.
void PaintPoly();
void KillPoly();

/// The number of the small, narrow face of chart labels.
constexpr int kLabelFont = 2001;

/// `kLabelFont`; every other number is the program's own font. Sizes are pixels.
void TextFont(int number);
void TextSize(int pixels);
/// Draws from the pen's position, which is the baseline's start, and moves the pen to the text's end: to the fraction
/// of a pixel, so that pieces drawn one after another stand as one text. The text is UTF-8.
void DrawString(std::string_view text);
/// In the port's font, rounded up; 0 without a port.
[[nodiscard]] int StringWidth(std::string_view text);
/// In the given font, rounded up. Needs no port, but the application object; 0 without it.
[[nodiscard]] int StringWidth(std::string_view text, int fontNumber, int pixels);
[[nodiscard]] LStr255 NumToString(long number);

/// Copies the image, whole, to its place in the current port.
void CopyBits(const GWorld& source);

/// The pen, colour and text state of the current port; restored with the object, which must go before the port does.
class StateSaver {
public:
    StateSaver();
    ~StateSaver();
    StateSaver(const StateSaver&) = delete;
    StateSaver& operator=(const StateSaver&) = delete;

private:
    struct State;
    std::unique_ptr<State> m_state;
};

class Port;

/// Makes a painter or an image the current port for the object's lifetime, with black on white, a pen of 1 by 1 at (0,
/// 0) and the program's font; then the port before it is in force again, as it was.
class PortSetter {
public:
    /// Coordinates are those that the painter has now; its later transformations and clips are not seen. The framework
    /// sets this around `DrawSelf`.
    explicit PortSetter(QPainter& painter);
    /// Coordinates are the image's local ones.
    explicit PortSetter(GWorld& image);
    ~PortSetter();
    PortSetter(const PortSetter&) = delete;
    PortSetter& operator=(const PortSetter&) = delete;

private:
    std::unique_ptr<QPainter> m_ownPainter;  ///< on an image
    std::unique_ptr<Port> m_port;
    Port* m_previous = nullptr;
};

}  // namespace Drawing
