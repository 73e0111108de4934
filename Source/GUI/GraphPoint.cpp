#include "GUI/GraphPoint.h"

#include "Framework/UI/Drawing.h"

PixelOffset GraphPoint::drawPointMark(const Rect& frame, Point topLeft, Point bottomRight, const Axis* xAxis,
                                      const Axis* yAxis) const {
    const PixelOffset offset = PlotScale(topLeft, bottomRight, *xAxis, *yAxis).OffsetOf(m_xValue, m_yValue);
    DrawMark(frame.left + topLeft.h + offset.dx, frame.top + bottomRight.v - offset.dy, m_ptRadius);
    return offset;
}

void GraphPoint::DrawMark(int h, int v, int radius) {
    if (radius > 0) {
        Drawing::PaintOval(Drawing::SetRect(h - radius, v - radius, h + radius, v + radius));
    }
}
