#pragma once

#include "GUI/GraphPoint.h"

#include <algorithm>
#include <array>
#include <cstddef>

/// Draws the points of one series, in their order, with the current colour and pen: a mark for each and a line from
/// each to the next. Points that follow each other in one pixel column are collected and drawn together, each pixel
/// once, so that the time depends on the width of the chart and hardly on the number of points; the picture is the same
/// as point by point.
class PixelColumn {
public:
    /// Offsets are from the local point (h, v).
    PixelColumn(int h, int v) : m_originH(h), m_originV(v) {}

    void Add(PixelOffset offset, int radius) {
        if (!m_hasBegun || offset.dx != m_latest.dx || radius != m_radius) {
            Begin(offset, radius);
        } else {
            m_hasBar = true;
            m_barBottom = std::min(m_barBottom, offset.dy);
            m_barTop = std::max(m_barTop, offset.dy);
        }
        m_latest = offset;
        AddMark(offset);
    }

    /// Draws what has been collected. To be called after the last point.
    void Flush();

private:
    /// Marks further up or down are drawn one by one.
    static constexpr int kRows = 2048;

    void AddMark(PixelOffset offset) {
        if (!m_collectsMarks || offset.dy < 0 || offset.dy >= kRows) {
            DrawMark(offset);
            return;
        }
        // Without a branch, because whether the row is a new one is as good as random.
        const auto row = static_cast<std::size_t>(offset.dy);
        m_places[m_placeCount] = -offset.dy;
        m_placeCount += m_isPlace[row] ? 0U : 1U;
        m_isPlace[row] = true;
    }

    void Begin(PixelOffset offset, int radius);
    void DrawLine(PixelOffset from, PixelOffset to) const;
    void DrawMark(PixelOffset offset) const;
    void DrawMarks();

    int m_originH;
    int m_originV;
    bool m_hasBegun = false;
    PixelOffset m_latest;
    int m_radius = 0;
    bool m_collectsMarks = false;

    // The rows that have a mark, each once, and which rows these are.
    std::array<int, kRows + 1> m_places{};  ///< one more than can be kept, for the next to be tried
    std::size_t m_placeCount = 0;
    std::array<bool, kRows> m_isPlace{};

    // Lines within a column are bars, and all of them together are one, because each begins where the one before it
    // ended.
    bool m_hasBar = false;
    int m_barBottom = 0;
    int m_barTop = 0;
};
