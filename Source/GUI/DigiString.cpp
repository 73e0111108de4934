#include "GUI/DigiString.h"

#include "Framework/UI/Drawing.h"
#include "GUI/DigiChar.h"
#include "GUI/DigiSegment.h"
#include "GUI/Truncation.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>

namespace {

constexpr int kCellAdvance = 14;
constexpr int kDotAdvance = 5;
constexpr int kCentre = 63;
/// A row with one point or colon, less the gap after its last cell, is centred in this width.
constexpr int kWidthWithDot = 121;

constexpr RGBColor kBevelShadow{24576, 24576, 24576};

constexpr std::string_view kOverflow = "OVERFLOW";
constexpr std::string_view kLoop = "LOOP";

/// The digit at `index` from the left of a number of `count` digits.
int DigitAt(std::int32_t number, int count, int index) {
    return number / DigiString::pow(10, count - 1 - index) % 10;
}

/// The digits of a time without its colons; what is missing at the text's end is left out.
std::string DigitsOfTime(std::string_view text, int colonCount) {
    constexpr std::array<std::size_t, 6> positions{0, 1, 3, 4, 6, 7};
    std::string digits;
    for (std::size_t i = 0; i < (colonCount == 1 ? 4U : positions.size()) && positions[i] < text.size(); ++i) {
        digits += text[positions[i]];
    }
    return digits;
}

/// What `drawFloat` shows: hundredths, cut off.
std::int32_t Hundredths(float number) {
    if (TruncateToInt32(static_cast<double>(number)) == 0) {
        return TruncateToInt32(static_cast<double>(number * 100.0F));
    }
    return TruncateToInt32(static_cast<double>(number) * 100.0);
}

std::string FloatAsShown(float number) {
    const std::int32_t hundredths = Hundredths(number);
    if (hundredths < 0) {
        return {};
    }
    const std::string decimals = std::to_string(hundredths % 100);
    return std::to_string(hundredths / 100) + (decimals.size() < 2 ? ".0" : ".") + decimals;
}

std::string NumberAsShown(std::int32_t number) {
    return number < 0 ? std::string() : std::to_string(number);
}

std::string StringAsShown(std::string_view text) {
    const auto colons = std::ranges::count(text, ':');
    if (text.empty() || colons > 2) {
        return {};
    }
    if (colons > 0 || text == kOverflow || text == kLoop) {
        return std::string(text);
    }
    if (text.size() == 1) {
        return "-";
    }
    return (text.front() == '0' ? "0" : "") + std::to_string(DigiString::strToLong(text));
}

}  // namespace

void DigiString::setLongValue(std::int32_t value) {
    m_longValue = value;
    m_valueKind = kLongKind;
}

void DigiString::setFloatValue(float value) {
    m_floatValue = value;
    m_valueKind = kFloatKind;
}

void DigiString::setStringValue(const char* text) {
    m_stringValue = text != nullptr ? text : "";
    m_valueKind = kStringKind;
}

void DigiString::setTextColor(const RGBColor& unlit, const RGBColor& lit) {
    m_unlitColor = unlit;
    m_litColor = lit;
}

void DigiString::DrawSelf() {
    if (m_valueKind == kLongKind) {
        drawNumber(m_longValue);
    } else if (m_valueKind == kFloatKind) {
        drawFloat(m_floatValue);
    } else if (m_valueKind == kStringKind) {
        drawString(m_stringValue);
    }
}

std::string DigiString::AccessibleValue() const {
    if (m_valueKind == kLongKind) {
        return NumberAsShown(m_longValue);
    }
    return m_valueKind == kFloatKind ? FloatAsShown(m_floatValue) : StringAsShown(m_stringValue);
}

void DigiString::clear() {
    const Rect frame = CalcLocalFrameRect();
    Drawing::RGBForeColor(m_backColor);
    Drawing::PaintRect(frame);
    Drawing::PenNormal();
    Drawing::RGBForeColor(kBevelShadow);
    Drawing::MoveTo(frame.left, frame.top);
    Drawing::LineTo(frame.left, frame.bottom - 1);
    Drawing::RGBForeColor(kWhite);
    Drawing::LineTo(frame.right - 1, frame.bottom - 1);
    Drawing::LineTo(frame.right - 1, frame.top);
    Drawing::RGBForeColor(kBevelShadow);
    Drawing::LineTo(frame.left - 1, frame.top);
}

int DigiString::DrawDigit(int x, int digit) {
    DigiChar(DigiSegment::createPoint(x, CalcLocalFrameRect().top)).setNumber(digit, m_litColor, m_unlitColor);
    return x + kCellAdvance;
}

int DigiString::DrawCharacter(int x, char character) {
    DigiChar(DigiSegment::createPoint(x, CalcLocalFrameRect().top)).setChar(character, m_litColor, m_unlitColor);
    return x + (character == '.' || character == ':' ? kDotAdvance : kCellAdvance);
}

int DigiString::DrawRestoredZero(int x) {
    if (!m_zeroFlag) {
        return x;
    }
    m_zeroFlag = false;
    return DrawDigit(x, 0);
}

void DigiString::DrawWord(int x, std::string_view letters) {
    for (const char letter : letters) {
        x = DrawCharacter(x, letter);
    }
}

void DigiString::drawNumber(std::int32_t number) {
    clear();
    const int digits = calcNoOfDigits(number);
    const int half = kCellAdvance / 2 * (digits + (m_zeroFlag ? 1 : 0));
    int x = DrawRestoredZero(CalcLocalFrameRect().left + kCentre - half);
    for (int i = 0; i < digits; ++i) {
        x = DrawDigit(x, DigitAt(number, digits, i));
    }
}

void DigiString::drawFloat(float number) {
    clear();
    const int left = CalcLocalFrameRect().left;
    if (TruncateToInt32(static_cast<double>(number)) == 0) {
        constexpr int offset = 39;
        const std::int32_t tenths = TruncateToInt32(static_cast<double>(number * 10.0F));
        int x = DrawDigit(left + offset, 0);
        x = DrawCharacter(x, '.');
        x = DrawDigit(x, tenths);
        DrawDigit(x, Hundredths(number) - 10 * tenths);
        return;
    }
    const std::int32_t hundredths = Hundredths(number);
    const int digits = calcNoOfDigits(hundredths);
    int x = left + (kWidthWithDot - kCellAdvance * digits) / 2;
    for (int i = 0; i < digits; ++i) {
        if (i == digits - 2) {
            x = DrawCharacter(x, '.');
        }
        x = DrawDigit(x, DigitAt(hundredths, digits, i));
    }
}

void DigiString::drawTime(const char* text, int colonCount) {
    const std::int32_t number = strToLong(DigitsOfTime(text, colonCount));
    const int digits = calcNoOfDigits(number);
    const int zeroWidth = m_zeroFlag ? kCellAdvance : 0;
    const int offset = colonCount == 1 ? (kWidthWithDot - zeroWidth - kCellAdvance * digits) / 2
                                       : 58 - zeroWidth / 2 - kCellAdvance / 2 * digits;
    int x = DrawRestoredZero(CalcLocalFrameRect().left + offset);
    const int cells = digits + colonCount;
    // The digits to the right of a cell: one colon is in the third cell from the right, the other in the sixth.
    const auto digitsBehind = [](int cell) { return cell - (cell > 2 ? 1 : 0) - (cell > 5 ? 1 : 0); };
    for (int cell = cells - 1; cell >= 0; --cell) {
        const bool isColon = cell == 2 || cell == 5;
        x = isColon ? DrawCharacter(x, ':') : DrawDigit(x, number / pow(10, digitsBehind(cell)) % 10);
    }
}

void DigiString::drawString(const char* text) {
    clear();
    const std::string_view shown(text);
    if (shown.empty()) {
        return;
    }
    m_zeroFlag = shown.front() == '0';
    const auto colons = std::ranges::count(shown, ':');
    const int left = CalcLocalFrameRect().left;
    if (colons == 1 || colons == 2) {
        drawTime(text, static_cast<int>(colons));
    } else if (colons > 2) {
        // nothing that a readout can show
    } else if (shown.size() == 1) {
        DrawCharacter(left + 55, '-');
    } else if (shown == kOverflow) {
        DrawWord(left + 45, "OFL");
    } else if (shown == kLoop) {
        DrawWord(left + 35, "LOOP");
    } else {
        drawNumber(strToLong(shown));
    }
    m_zeroFlag = false;  // the marker belongs to one draw
}

int DigiString::calcNoOfDigits(std::int32_t number) {
    int digits = 1;
    while (digits < 10 && number > 9) {
        number /= 10;
        ++digits;
    }
    return digits;
}

std::int32_t DigiString::strToLong(std::string_view text) {
    constexpr std::int64_t largest = std::numeric_limits<std::int32_t>::max();
    std::int64_t number = 0;
    for (const char character : text) {
        number = std::min(number * 10 + charToInt(character), largest);
    }
    return static_cast<std::int32_t>(number);
}

int DigiString::charToInt(char character) {
    return character >= '1' && character <= '9' ? character - '0' : 0;
}

std::int32_t DigiString::pow(int base, int exponent) {
    std::uint32_t power = 1;
    for (int i = 0; i < exponent; ++i) {
        power *= static_cast<std::uint32_t>(base);
    }
    return static_cast<std::int32_t>(power);
}
