#include "GUI/DigiChar.h"

#include "Framework/UI/Drawing.h"
#include "GUI/DigiSegment.h"

#include <array>
#include <cstddef>

namespace {

constexpr std::int32_t kAllSegments = 91111111;
constexpr std::int32_t kNoSegments = 90000000;

constexpr std::array<std::int32_t, 10> kDigits{911110111, 910010010, 91011101, 91011011, 90111010,
                                               91101011,  91101111,  91010010, 91111111, 91111011};

/// `kNoSegments` for a character that is not drawn with segments.
std::int32_t PatternOf(char character) {
    switch (character) {
        case '-':
            return 90001000;
        case 'F':
            return 91101100;
        case 'L':
            return 90100101;
        case 'O':
            return 91110111;
        case 'P':
            return 91111100;
        default:
            return kNoSegments;
    }
}

void DrawDots(Point cell, std::initializer_list<int> positions, const RGBColor& color) {
    Drawing::RGBForeColor(color);
    for (const int position : positions) {
        DigiSegment(cell).drawSemiColombi(position);
    }
}

}  // namespace

void DigiChar::setNumber(int digit, const RGBColor& lit, const RGBColor& unlit) const {
    const bool isDigit = digit >= 0 && digit < static_cast<int>(kDigits.size());
    DrawPattern(isDigit ? kDigits[static_cast<std::size_t>(digit)] : kNoSegments, lit, unlit);
}

void DigiChar::setChar(char character, const RGBColor& lit, const RGBColor& unlit) const {
    if (character == '.' || character == ':') {
        DrawDots(m_leftStartingPosition, {0, 1, 2}, unlit);
        if (character == '.') {
            DrawDots(m_leftStartingPosition, {2}, lit);
        } else {
            DrawDots(m_leftStartingPosition, {0, 1}, lit);
        }
    } else if (const std::int32_t pattern = PatternOf(character); pattern != kNoSegments) {
        DrawPattern(pattern, lit, unlit);
    }
}

void DigiChar::DrawPattern(std::int32_t pattern, const RGBColor& lit, const RGBColor& unlit) const {
    Drawing::RGBForeColor(unlit);
    drawDelegate(kAllSegments);
    Drawing::RGBForeColor(lit);
    drawDelegate(pattern);
}

void DigiChar::drawDelegate(std::int32_t pattern) const {
    std::array<int, DigiSegment::kSegments> flags{};
    for (std::size_t segment = flags.size(); segment-- > 0;) {
        flags[segment] = pattern % 10;
        pattern /= 10;
    }
    const DigiSegment drawer(m_leftStartingPosition);
    for (int segment = 0; segment < DigiSegment::kSegments; ++segment) {
        if (flags[static_cast<std::size_t>(segment)] == 1) {
            drawer.drawSegment(segment);
        }
    }
}
