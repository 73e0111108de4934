#include "GUI/PixelColumn.h"

#include "Framework/UI/Drawing.h"

#include <span>

void PixelColumn::Begin(PixelOffset offset, int radius) {
    Flush();
    if (m_hasBegun) {
        DrawLine(m_latest, offset);
    }
    m_hasBegun = true;
    m_radius = radius;
    // Smooth edges become denser with every mark, so those marks are drawn as often as they come.
    m_collectsMarks = 2 * radius < Drawing::kSmallestSmoothOval;
    m_barBottom = offset.dy;
    m_barTop = offset.dy;
}

void PixelColumn::Flush() {
    if (m_hasBar) {
        DrawLine({.dx = m_latest.dx, .dy = m_barBottom}, {.dx = m_latest.dx, .dy = m_barTop});
    }
    if (m_placeCount > 0) {
        DrawMarks();
    }
    m_hasBar = false;
}

void PixelColumn::DrawLine(PixelOffset from, PixelOffset to) const {
    Drawing::MoveTo(m_originH + from.dx, m_originV - from.dy);
    Drawing::LineTo(m_originH + to.dx, m_originV - to.dy);
}

void PixelColumn::DrawMark(PixelOffset offset) const {
    GraphPoint::DrawMark(m_originH + offset.dx, m_originV - offset.dy, m_radius);
}

void PixelColumn::DrawMarks() {
    const std::span<const int> places = std::span(m_places).first(m_placeCount);
    if (m_radius > 0) {
        const int h = m_originH + m_latest.dx;
        Drawing::PaintOvals(Drawing::SetRect(h - m_radius, m_originV - m_radius, h + m_radius, m_originV + m_radius),
                            places);
    }
    for (const int place : places) {
        m_isPlace[static_cast<std::size_t>(-place)] = false;
    }
    m_placeCount = 0;
}
