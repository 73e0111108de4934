#include "GUI/DigiString.h"

#include "Framework/UI/GWorld.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <map>
#include <string>
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

/// The picture of these characters, each in the cell that begins at its place.
Picture Expected(const std::vector<std::pair<int, char>>& cells) {
    Picture picture = EmptyReadout();
    for (const auto& [left, character] : cells) {
        if (character == ':' || character == '.') {
            for (std::size_t dot = 0; dot < kDots.size(); ++dot) {
                Paint(picture, kDots[dot], left, (dot < 2) == (character == ':') ? '#' : '.');
            }
            continue;
        }
        for (const Corners& segment : kSegments) {
            Paint(picture, segment, left, '.');
        }
        for (const char segment : kLitSegments.at(character)) {
            Paint(picture, kSegments[static_cast<std::size_t>(segment - '0')], left, '#');
        }
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

TEST_F(DigiStringTest, ShowsItsValueInCellsAndTellsItAsText) {
    const auto number = [](std::int32_t value) { return [=](DigiString& readout) { readout.setLongValue(value); }; };
    const auto fraction = [](float value) { return [=](DigiString& readout) { readout.setFloatValue(value); }; };
    const auto text = [](const char* value) { return [=](DigiString& readout) { readout.setStringValue(value); }; };
    const struct {
        std::function<void(DigiString&)> set;
        std::vector<std::pair<int, char>> cells;
        std::string accessibleValue;
    } cases[] = {
        {number(7), {{56, '7'}}, "7"},
        {number(10), {{49, '1'}, {63, '0'}}, "10"},
        {number(34689), {{28, '3'}, {42, '4'}, {56, '6'}, {70, '8'}, {84, '9'}}, "34689"},
        {number(-5), {{56, '?'}}, ""},
        {number(2147483647),
         {{-7, '2'},
          {7, '1'},
          {21, '4'},
          {35, '7'},
          {49, '4'},
          {63, '8'},
          {77, '3'},
          {91, '6'},
          {105, '4'},
          {119, '7'}},
         "2147483647"},
        {fraction(0.0F), {{39, '0'}, {53, '.'}, {58, '0'}, {72, '0'}}, "0.00"},
        {fraction(0.05F), {{39, '0'}, {53, '.'}, {58, '0'}, {72, '5'}}, "0.05"},
        {fraction(0.5F), {{39, '0'}, {53, '.'}, {58, '5'}, {72, '0'}}, "0.50"},
        {fraction(0.99F), {{39, '0'}, {53, '.'}, {58, '9'}, {72, '9'}}, "0.99"},
        {fraction(1.0F), {{39, '1'}, {53, '.'}, {58, '0'}, {72, '0'}}, "1.00"},
        {fraction(12.345F), {{32, '1'}, {46, '2'}, {60, '.'}, {65, '3'}, {79, '4'}}, "12.34"},
        {fraction(123.456F), {{25, '1'}, {39, '2'}, {53, '3'}, {67, '.'}, {72, '4'}, {86, '5'}}, "123.45"},
        {text(""), {}, ""},
        {text("-"), {{55, '-'}}, "-"},
        {text("0"), {{55, '-'}}, "-"},
        {text("05"), {{49, '0'}, {63, '5'}}, "05"},
        {text("0005"), {{49, '0'}, {63, '5'}}, "05"},
        {text("59"), {{49, '5'}, {63, '9'}}, "59"},
        {text("OVERFLOW"), {{45, 'O'}, {59, 'F'}, {73, 'L'}}, "OVERFLOW"},
        {text("LOOP"), {{35, 'L'}, {49, 'O'}, {63, 'O'}, {77, 'P'}}, "LOOP"},
        {text("LOOPS"), {{56, '0'}}, "0"},
        {text("12:34"), {{32, '1'}, {46, '2'}, {60, ':'}, {65, '3'}, {79, '4'}}, "12:34"},
        {text("01:05"), {{32, '0'}, {46, '1'}, {60, ':'}, {65, '0'}, {79, '5'}}, "01:05"},
        {text("01:02:03"),
         {{16, '0'}, {30, '1'}, {44, ':'}, {49, '0'}, {63, '2'}, {77, ':'}, {82, '0'}, {96, '3'}},
         "01:02:03"},
        {text("23:59:59"),
         {{16, '2'}, {30, '3'}, {44, ':'}, {49, '5'}, {63, '9'}, {77, ':'}, {82, '5'}, {96, '9'}},
         "23:59:59"},
        {text("1:2:3:4"), {}, ""},
    };
    for (const auto& row : cases) {
        row.set(m_readout);
        const std::string shown = m_readout.AccessibleValue();
        EXPECT_EQ(shown, row.accessibleValue);
        EXPECT_EQ(Drawn(m_readout), Expected(row.cells)) << '"' << shown << '"';
    }
}

/// Nothing of a draw may show in the next one: neither its picture nor its leading zero.
TEST_F(DigiStringTest, EveryDrawStartsAfresh) {
    m_readout.setStringValue("0");
    const Picture dash = Drawn(m_readout);
    m_readout.setLongValue(7);
    EXPECT_EQ(Drawn(m_readout), Expected({{56, '7'}}));
    m_readout.setStringValue("0:0:0:0");
    EXPECT_EQ(Drawn(m_readout), EmptyReadout());
    m_readout.setStringValue("12:34");
    EXPECT_EQ(Drawn(m_readout), Expected({{32, '1'}, {46, '2'}, {60, ':'}, {65, '3'}, {79, '4'}}));
    m_readout.setStringValue("0");
    EXPECT_EQ(Drawn(m_readout), dash);
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

TEST(DigiStringArithmeticTest, CountsAndConvertsDigits) {
    const std::pair<std::int32_t, int> counts[] = {{-2147483647, 1}, {-1, 1},         {0, 1},   {9, 1},
                                                   {10, 2},          {99, 2},         {100, 3}, {999999999, 9},
                                                   {1000000000, 10}, {2147483647, 10}};
    for (const auto& [number, digits] : counts) {
        EXPECT_EQ(DigiString::calcNoOfDigits(number), digits) << number;
    }
    const std::pair<const char*, std::int32_t> numbers[] = {{"", 0},
                                                            {"0", 0},
                                                            {"7", 7},
                                                            {"0012", 12},
                                                            {"1x3", 103},
                                                            {"-5", 5},
                                                            {"2147483647", 2147483647},
                                                            {"99999999999", 2147483647}};
    for (const auto& [text, number] : numbers) {
        EXPECT_EQ(DigiString::strToLong(text), number) << text;
    }
    EXPECT_EQ(DigiString::pow(10, 9), 1000000000);
    EXPECT_EQ(DigiString::pow(10, 0), 1);
    EXPECT_EQ(DigiString::pow(10, -3), 1);
}

}  // namespace
