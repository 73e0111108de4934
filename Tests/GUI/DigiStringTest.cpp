#include "GUI/DigiString.h"

#include "Framework/UI/GWorld.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace {

constexpr int kWidth = 126;
constexpr int kHeight = 25;
constexpr RGBColor kBack{0x5000, 0x5000, 0x5000};
constexpr RGBColor kUnlit{0, 0x4000, 0};
constexpr RGBColor kLit{0, 0xFFFF, 0};
constexpr RGBColor kBevelShadow{24576, 24576, 24576};
constexpr RGBColor kBevelLight{65535, 65535, 65535};

using Corners = std::vector<std::pair<int, int>>;
using Picture = std::vector<std::string>;

const std::array<Corners, 7> kSegments{{{{0, 1}, {11, 1}, {8, 4}, {3, 4}},
                                        {{0, 2}, {0, 12}, {3, 9}, {3, 4}},
                                        {{12, 1}, {12, 12}, {9, 10}, {9, 4}},
                                        {{0, 12}, {3, 14}, {8, 14}, {11, 12}, {8, 11}, {3, 11}},
                                        {{0, 13}, {0, 23}, {3, 20}, {3, 15}},
                                        {{12, 12}, {12, 24}, {9, 21}, {9, 15}},
                                        {{0, 24}, {11, 24}, {8, 21}, {3, 21}}}};
const std::array<Corners, 3> kDots{
    {{{0, 6}, {3, 6}, {3, 9}, {0, 9}}, {{0, 15}, {3, 15}, {3, 18}, {0, 18}}, {{0, 21}, {3, 21}, {3, 24}, {0, 24}}}};

/// Lit segments; '?' is a cell without any.
const std::map<char, std::string> kLitSegments{{'0', "012456"},  {'1', "25"},     {'2', "02346"},  {'3', "02356"},
                                               {'4', "1235"},    {'5', "01356"},  {'6', "013456"}, {'7', "025"},
                                               {'8', "0123456"}, {'9', "012356"}, {'-', "3"},      {'F', "0134"},
                                               {'L', "146"},     {'O', "012456"}, {'P', "01234"},  {'?', ""}};

/// Whether the middle of the pixel lies inside the polygon, or on a left edge: counts the edges to its right.
bool Covers(const Corners& corners, int x, int y) {
    bool isInside = false;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const auto [x1, y1] = corners[i];
        const auto [x2, y2] = corners[(i + 1) % corners.size()];
        if ((y1 <= y) != (y2 <= y)) {
            const double crossing = x1 + (y + 0.5 - y1) * (x2 - x1) / (y2 - y1);
            isInside ^= x + 0.5 < crossing;
        }
    }
    return isInside;
}

void Paint(Picture& picture, const Corners& corners, int left, char color) {
    for (int y = 0; y < kHeight; ++y) {
        for (int x = std::max(0, left); x < std::min(kWidth, left + 13); ++x) {
            if (Covers(corners, x - left, y)) {
                picture[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)] = color;
            }
        }
    }
}

Picture EmptyReadout() {
    Picture picture(kHeight, 'g' + std::string(kWidth - 2, ' ') + 'w');
    picture.front() = std::string(kWidth, 'g');
    picture.back() = std::string(kWidth, 'w');
    return picture;
}

/// The picture of these characters from a place on; a digit's cell is 14 wide, a separator's 5.
Picture Expected(int left, std::string_view characters) {
    Picture picture = EmptyReadout();
    for (const char character : characters) {
        const bool isSeparator = character == ':' || character == '.';
        for (std::size_t dot = 0; isSeparator && dot < kDots.size(); ++dot) {
            Paint(picture, kDots[dot], left, (dot < 2) == (character == ':') ? '#' : '.');
        }
        for (std::size_t segment = 0; !isSeparator && segment < kSegments.size(); ++segment) {
            const bool isLit = kLitSegments.at(character).find(static_cast<char>('0' + segment)) != std::string::npos;
            Paint(picture, kSegments[segment], left, isLit ? '#' : '.');
        }
        left += isSeparator ? 5 : 14;
    }
    return picture;
}

char LetterOf(const RGBColor& color) {
    for (const auto& [shown, letter] :
         {std::pair{kBack, ' '}, {kUnlit, '.'}, {kLit, '#'}, {kBevelShadow, 'g'}, {kBevelLight, 'w'}}) {
        if (color == GWorld::AsShown(shown)) {
            return letter;
        }
    }
    return '?';
}

Picture Drawn(DigiString& readout) {
    GWorld image({.top = 0, .left = 0, .bottom = kHeight, .right = kWidth}, 1.0);
    readout.DrawInto(image);
    Picture picture(kHeight);
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            picture[static_cast<std::size_t>(y)] += LetterOf(image.PixelAt(x, y));
        }
    }
    return picture;
}

class DigiStringTest : public testing::Test {
protected:
    DigiStringTest() {
        m_readout.setBackColor(kBack);
        m_readout.setTextColor(kUnlit, kLit);
    }

    DigiString m_readout{SPaneInfo{.width = kWidth, .height = kHeight}};
};

/// One after the other, so that nothing of a draw may show in the next one.
TEST_F(DigiStringTest, ShowsItsValueInCellsAndTellsItAsText) {
    const auto check = [this](int left, const std::string& cells) {
        EXPECT_EQ(m_readout.AccessibleValue(), cells == "?" ? "" : cells);
        EXPECT_EQ(Drawn(m_readout), Expected(left, cells)) << cells;
    };
    const std::tuple<std::int32_t, int, const char*> numbers[] = {
        {7, 56, "7"}, {10, 49, "10"}, {34689, 28, "34689"}, {-5, 56, "?"}, {2147483647, -7, "2147483647"},
    };
    for (const auto& [number, left, cells] : numbers) {
        m_readout.setLongValue(number);
        check(left, cells);
    }
    const std::tuple<float, int, const char*> fractions[] = {
        {0.0F, 39, "0.00"},  {0.05F, 39, "0.05"},    {0.5F, 39, "0.50"},
        {0.99F, 39, "0.99"}, {12.345F, 32, "12.34"}, {123.456F, 25, "123.45"},
    };
    for (const auto& [fraction, left, cells] : fractions) {
        m_readout.setFloatValue(fraction);
        check(left, cells);
    }
    const std::tuple<const char*, int, const char*> texts[] = {
        {"", 0, ""},        {"-", 55, "-"},         {"0", 55, "-"},
        {"0005", 49, "05"}, {"59", 49, "59"},       {"LOOP", 35, "LOOP"},
        {"LOOPS", 56, "0"}, {"12:34", 32, "12:34"}, {"01:02:03", 16, "01:02:03"},
        {"1:2:3:4", 0, ""},
    };
    for (const auto& [text, left, cells] : texts) {
        m_readout.setStringValue(text);
        check(left, cells);
    }
    m_readout.setStringValue("OVERFLOW");
    EXPECT_EQ(m_readout.AccessibleValue(), "OVERFLOW");
    EXPECT_EQ(Drawn(m_readout), Expected(45, "OFL"));
}

/// A text that is no time, and numbers that no readout can show, must do no harm.
TEST_F(DigiStringTest, SurvivesWhatItCannotShow) {
    for (const char* text : {":", "::", "1:", "00:00", "12345678901234567890", "x:y:z", "999999999999:1"}) {
        m_readout.setStringValue(text);
        EXPECT_NE(Drawn(m_readout), EmptyReadout()) << text;
    }
    for (const float value : {1e30F, -1e30F, -0.5F, -12.0F, std::numeric_limits<float>::quiet_NaN()}) {
        m_readout.setFloatValue(value);
        EXPECT_NE(Drawn(m_readout), EmptyReadout()) << value;
    }
    m_readout.setStringValue(nullptr);
    EXPECT_EQ(Drawn(m_readout), EmptyReadout());
}

TEST(DigiStringArithmeticTest, ReadsTheDigitsOfATextAndStopsAtTheLargestNumber) {
    const std::pair<const char*, std::int32_t> numbers[] = {
        {"", 0}, {"0012", 12}, {"1x3", 103}, {"-5", 5}, {"2147483647", 2147483647}, {"99999999999", 2147483647},
    };
    for (const auto& [text, number] : numbers) {
        EXPECT_EQ(DigiString::strToLong(text), number) << text;
    }
}

}  // namespace
