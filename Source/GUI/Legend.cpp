#include "GUI/Legend.h"

#include "Framework/UI/Drawing.h"
#include "GUI/Series.h"
#include "GUI/Stage.h"

#include <algorithm>
#include <cstddef>

namespace {

constexpr int kFontSize = 10;
constexpr int kShadow = 3;
constexpr int kRowHeight = 20;
constexpr int kTextIndent = 20;
constexpr int kTextMargin = 8;  ///< behind the longest text

/// The circle of a row, and the line through it; `top` is the row's.
void DrawMarker(int left, int top) {
    Drawing::PaintOval(Drawing::SetRect(left + 5, top + 5, left + 15, top + 15));
    Drawing::MoveTo(left + 3, top + 10);
    Drawing::LineTo(left + 16, top + 10);
}

}  // namespace

void Legend::FitTo(std::span<const std::unique_ptr<Series>> series) {
    int textWidth = 0;
    for (const auto& one : series) {
        textWidth = std::max(textWidth, Drawing::StringWidth(one->get_seriesText(), Drawing::kLabelFont, kFontSize));
    }
    const int height = kRowHeight * static_cast<int>(series.size());
    const Rect box =
        Drawing::SetRect(m_ptRelativeTopLeft.h, m_ptRelativeTopLeft.v,
                         m_ptRelativeTopLeft.h + kTextIndent + textWidth + kTextMargin, m_ptRelativeTopLeft.v + height);
    m_ptRelativeBottomRight = {.v = box.bottom, .h = box.right};
}

void Legend::drawLegend(const Rect& frame, std::span<const std::unique_ptr<Series>> series, const RGBColor& backColor,
                        int stage) const {
    if (stage != Stage::kBlank && stage != Stage::kLive) {
        return;
    }
    const int left = frame.left + m_ptRelativeTopLeft.h;
    const int top = frame.top + m_ptRelativeTopLeft.v;
    const int right = frame.left + m_ptRelativeBottomRight.h;
    const int bottom = frame.top + m_ptRelativeBottomRight.v;
    Drawing::PenNormal();
    Drawing::TextFont(Drawing::kLabelFont);
    Drawing::TextSize(kFontSize);
    Drawing::RGBForeColor(backColor);
    Drawing::PaintRect(Drawing::SetRect(left, frame.top, frame.right, frame.bottom));
    Drawing::RGBForeColor(kBlack);
    Drawing::PaintRect(Drawing::SetRect(left + kShadow, top + kShadow, right + kShadow, bottom + kShadow));
    Drawing::RGBForeColor(m_backColor);
    Drawing::PaintRect(Drawing::SetRect(left, top, right, bottom));
    int row = top;
    for (const auto& one : series) {
        Drawing::RGBForeColor(kBlack);
        DrawMarker(left, row);
        Drawing::MoveTo(left + kTextIndent, row + 14);
        Drawing::DrawString(one->get_seriesText());
        if (stage == Stage::kLive) {
            Drawing::RGBForeColor(one->get_seriesColor());
            DrawMarker(left, row);
        }
        row += kRowHeight;
    }
}
