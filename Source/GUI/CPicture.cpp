#include "GUI/CPicture.h"

#include "Framework/UI/Drawing.h"

void CPicture::DrawSelf() {
    constexpr RGBColor black{0, 0, 0};
    constexpr RGBColor green{0, 65535, 0};
    const Rect frame = CalcLocalFrameRect();
    Drawing::RGBForeColor(black);
    Drawing::PaintRect(frame);
    if (m_lit) {
        Drawing::RGBForeColor(green);
        Drawing::PaintOval(frame);
    }
    m_lit = !m_lit;
}
