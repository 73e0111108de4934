#include "GUI/Series.h"

#include "Framework/UI/Drawing.h"
#include "GUI/Axis.h"
#include "GUI/PixelColumn.h"

#include <cstddef>

Series::Series() {
    m_points.reserve(kInitialCapacity);
}

void Series::set_pointsCount(int count) {
    if (count >= 0 && count < get_pointsCount()) {
        m_points.resize(static_cast<std::size_t>(count));
    }
}

int Series::addPoints(const GraphPoint& point) {
    if (m_points.size() == m_points.capacity()) {
        m_points.reserve(m_points.size() + 1);
    }
    m_points.push_back(point);
    return get_pointsCount() - 1;
}

void Series::clearSeries() {
    m_points = {};
}

void Series::drawSeries(const Rect& frame, Point topLeft, Point bottomRight, const Axis* xAxis,
                        const Axis* yAxis) const {
    const float first = xAxis->get_minValue();
    const float last = xAxis->get_maxValue();
    const PlotScale scale(topLeft, bottomRight, *xAxis, *yAxis);
    PixelColumn column(frame.left + topLeft.h, frame.top + bottomRight.v);
    Drawing::PenSize(m_lineThickness, m_lineThickness);
    for (const GraphPoint& point : m_points) {
        if (point.get_xValue() >= first && point.get_xValue() <= last) {
            column.Add(scale.OffsetOf(point.get_xValue(), point.get_yValue()), point.get_ptRadius());
        }
    }
    column.Flush();
    Drawing::PenNormal();
}
