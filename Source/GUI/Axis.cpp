#include "GUI/Axis.h"

#include "Framework/UI/Drawing.h"
#include "GUI/Truncation.h"

namespace {

int Truncated(float value) {
    return TruncateToInt32(static_cast<double>(value));
}

Point TopLeftOf(const Rect& frame) {
    return {.v = frame.top, .h = frame.left};
}

void DrawLine(int fromH, int fromV, int toH, int toV) {
    Drawing::MoveTo(fromH, fromV);
    Drawing::LineTo(toH, toV);
}

}  // namespace

std::string Axis::LabelText(float value) {
    const std::int32_t whole = Truncated(value);
    const std::int32_t hundredths = Truncated((value - static_cast<float>(whole)) * 100.0F);
    return std::to_string(whole) + (hundredths < 10 ? ".0" : ".") + std::to_string(hundredths);
}

int Axis::YLabelIndent(float value) {
    const std::int32_t whole = Truncated(value);
    if (whole >= 100000) {
        return 63;
    }
    constexpr int indentOfOneDigit = 29;
    constexpr int digitWidth = 7;
    int indent = indentOfOneDigit;
    for (std::int32_t limit = 10; whole >= limit; limit *= 10) {
        indent += digitWidth;
    }
    return indent;
}

void Axis::drawAxis(const Rect& frame, Point topLeft, Point bottomRight, int kind) const {
    const Drawing::StateSaver saved;
    Drawing::RGBForeColor(kBlack);
    Drawing::PenNormal();
    Drawing::TextFont(Drawing::kLabelFont);
    Drawing::TextSize(kTextSize);
    if (kind == kXAxis) {
        DrawXAxis(frame, topLeft, bottomRight);
    } else if (kind == kYAxis) {
        DrawYAxis(frame, topLeft, bottomRight);
    }
}

void Axis::DrawXAxis(const Rect& frame, Point topLeft, Point bottomRight) const {
    const int x1 = frame.left + topLeft.h;
    const int x2 = frame.left + bottomRight.h;
    const int y2 = frame.top + bottomRight.v;
    Drawing::PenSize(2, 2);
    DrawLine(x1, y2, x2, y2);
    Drawing::PenNormal();
    for (int i = 0; i < m_noOfDivisions; ++i) {
        const int x = static_cast<int>(x1 + i * static_cast<double>(x2 - x1) / Intervals());
        DrawLine(x, y2 - 2, x, y2 + 2);
    }
    Drawing::RGBForeColor(kWhite);
    writeXValues(TopLeftOf(frame), topLeft, bottomRight);
}

void Axis::DrawYAxis(const Rect& frame, Point topLeft, Point bottomRight) const {
    const int x1 = frame.left + topLeft.h;
    const int x2 = frame.left + bottomRight.h;
    const int y1 = frame.top + topLeft.v;
    const int y2 = frame.top + bottomRight.v;
    Drawing::PenSize(2, 2);
    DrawLine(x1, y1, x1, y2);
    Drawing::PenNormal();
    DrawLine(x2, y1, x2, y2);
    const float gridStep = static_cast<float>(y2 - y1) / static_cast<float>(Intervals());
    for (int i = 0; i < m_noOfDivisions; ++i) {
        const int y = Truncated(static_cast<float>(y2) - static_cast<float>(i) * gridStep);
        DrawLine(x1 - 2, y, x2, y);
    }
    Drawing::RGBForeColor(kWhite);
    writeYValues(TopLeftOf(frame), topLeft, bottomRight, gridStep);
}

std::vector<float> Axis::LabelValues(int kind) const {
    const float step = (m_maxValue - m_minValue) / static_cast<float>(Intervals());
    std::vector<float> values;
    float value = m_minValue;
    for (int i = 0; i < (HasRange() ? m_noOfDivisions : 1); ++i) {
        values.push_back(value);
        value += step;
    }
    if (kind == kYAxis && values.size() > 1) {
        // The top of the scale shows nothing of what the sums before it have gathered in errors.
        values.back() = m_maxValue;
    }
    return values;
}

void Axis::writeXValues(Point frame, Point topLeft, Point bottomRight) const {
    constexpr int indent = 12;
    constexpr int drop = 14;
    // Whole pixels, unlike the ticks' distances.
    const int distance = (bottomRight.h - topLeft.h) / Intervals();
    int x = frame.h + topLeft.h - indent;
    for (const float value : LabelValues(kXAxis)) {
        Drawing::MoveTo(x, frame.v + bottomRight.v + drop);
        Drawing::DrawString(LabelText(value));
        x += distance;
    }
}

void Axis::writeYValues(Point frame, Point topLeft, Point bottomRight, float gridStep) const {
    constexpr float drop = 5.0F;
    const int x1 = frame.h + topLeft.h;
    const auto y2 = static_cast<float>(frame.v + bottomRight.v);
    float line = 0.0F;
    for (const float value : LabelValues(kYAxis)) {
        Drawing::MoveTo(x1 - YLabelIndent(value), Truncated(y2 - line * gridStep + drop));
        Drawing::DrawString(LabelText(value));
        line += 1.0F;
    }
}
