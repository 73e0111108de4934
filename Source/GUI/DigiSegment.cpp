#include "GUI/DigiSegment.h"

#include "Framework/UI/Drawing.h"

#include <array>
#include <cstddef>

namespace {

constexpr Point At(int x, int y) {
    return DigiSegment::createPoint(x, y);
}

constexpr std::array kTop{At(0, 1), At(11, 1), At(8, 4), At(3, 4)};
constexpr std::array kUpperLeft{At(0, 2), At(0, 12), At(3, 9), At(3, 4)};
constexpr std::array kUpperRight{At(12, 1), At(12, 12), At(9, 10), At(9, 4)};
constexpr std::array kMiddle{At(0, 12), At(3, 14), At(8, 14), At(11, 12), At(8, 11), At(3, 11)};
constexpr std::array kLowerLeft{At(0, 13), At(0, 23), At(3, 20), At(3, 15)};
constexpr std::array kLowerRight{At(12, 12), At(12, 24), At(9, 21), At(9, 15)};
constexpr std::array kBottom{At(0, 24), At(11, 24), At(8, 21), At(3, 21)};

constexpr std::array<std::span<const Point>, DigiSegment::kSegments> kCorners{
    kTop, kUpperLeft, kUpperRight, kMiddle, kLowerLeft, kLowerRight, kBottom};

constexpr int kDotSize = 3;
constexpr std::array<int, DigiSegment::kDots> kDotTops{6, 15, 21};

}  // namespace

void DigiSegment::drawSegment(int segment) const {
    if (segment >= 0 && segment < kSegments) {
        drawPolygon(kCorners[static_cast<std::size_t>(segment)]);
    }
}

void DigiSegment::drawSemiColombi(int position) const {
    if (position >= 0 && position < kDots) {
        const int top = kDotTops[static_cast<std::size_t>(position)];
        const int bottom = top + kDotSize;
        drawPolygon(std::array{At(0, bottom), At(kDotSize, bottom), At(kDotSize, top), At(0, top)});
    }
}

void DigiSegment::drawPolygon(std::span<const Point> corners) const {
    if (corners.empty()) {
        return;
    }
    Drawing::OpenPoly();
    Drawing::MoveTo(m_ptInitial.h + corners.front().h, m_ptInitial.v + corners.front().v);
    for (const Point corner : corners.subspan(1)) {
        Drawing::LineTo(m_ptInitial.h + corner.h, m_ptInitial.v + corner.v);
    }
    Drawing::LineTo(m_ptInitial.h + corners.front().h, m_ptInitial.v + corners.front().v);
    Drawing::ClosePoly();
    Drawing::PaintPoly();
    Drawing::KillPoly();
}
