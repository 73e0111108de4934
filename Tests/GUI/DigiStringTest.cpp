#include "GUI/DigiString.h"

#include "Framework/UI/GWorld.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <map>
#include <span>
#include <tuple>

namespace {

constexpr Rect kFrame{.top = 0, .left = 0, .bottom = 25, .right = 126};
constexpr RGBColor kBack{0x5000, 0x5000, 0x5000};
constexpr RGBColor kUnlit{0, 0x4000, 0};
constexpr RGBColor kLit{0, 0xFFFF, 0};

// Pixels at the outer edges of a digit's segments and in a separator's dots, from their cell's left.
constexpr std::array<std::pair<int, int>, 7> kSegments{{{5, 1}, {0, 7}, {11, 7}, {5, 12}, {0, 18}, {11, 18}, {5, 23}}};
constexpr std::array<std::pair<int, int>, 3> kDots{{{0, 7}, {0, 16}, {0, 22}}};

/// The characters by their segments or dots, lit ('#') or not; '?' is a cell with nothing lit.
const std::map<std::string, char> kCharacters{
    {"###.###", '0'}, {"..#..#.", '1'}, {"#.###.#", '2'}, {"#.##.##", '3'}, {".###.#.", '4'}, {"##.#.##", '5'},
    {"##.####", '6'}, {"#.#..#.", '7'}, {"#######", '8'}, {"####.##", '9'}, {"...#...", '-'}, {"##.##..", 'F'},
    {".#..#.#", 'L'}, {"#####..", 'P'}, {".......", '?'}, {"##.", ':'},     {"..#", '.'}};

class DigiStringTest : public testing::Test {
protected:
    DigiStringTest() {
        m_readout.setBackColor(kBack);
        m_readout.setTextColor(kUnlit, kLit);
    }

    [[nodiscard]] char LetterAt(int x, int y) const {
        for (const auto& [shown, letter] : {std::pair{kBack, ' '}, {kUnlit, '.'}, {kLit, '#'}}) {
            if (m_image.PixelAt(x, y) == GWorld::AsShown(shown)) {
                return letter;
            }
        }
        return '|';  // the bevel's
    }

    /// A row from edge to edge, halfway up the upper segments.
    std::string DrawnRow() {
        m_readout.DrawInto(m_image);
        std::string row;
        for (int x = 0; x < kFrame.right; ++x) {
            row += LetterAt(x, 7);
        }
        return row;
    }

    /// What is read in cells like those of `cells` from a place on: a digit's is 14 wide, a separator's 5.
    std::string Shown(int left, const std::string& cells) {
        const std::string row = DrawnRow();
        std::string shown =
            row.substr(0, row.find_first_of(".#")) == '|' + std::string(static_cast<std::size_t>(left) - 1, ' ')
                ? ""
                : "moved";
        for (const char cell : cells) {
            const bool isSeparator = cell == ':' || cell == '.';
            std::string lit;
            for (const auto& [x, y] : isSeparator ? std::span<const std::pair<int, int>>(kDots) : kSegments) {
                lit += LetterAt(left + x, y);
            }
            const auto character = kCharacters.find(lit);
            shown += character == kCharacters.end() ? '!' : character->second;
            left += isSeparator ? 5 : 14;
        }
        const bool isCleanBehind = row.find_first_of(".#", static_cast<std::size_t>(left)) == std::string::npos;
        return isCleanBehind ? shown : shown + " and more";
    }

    DigiString m_readout{SPaneInfo{.width = kFrame.right, .height = kFrame.bottom}};
    GWorld m_image{kFrame, 1.0};
};

const std::string kEmptyRow = '|' + std::string(124, ' ') + '|';

/// One after the other, so that nothing of a draw may show in the next one.
TEST_F(DigiStringTest, ShowsItsValueInCellsAndTellsItAsText) {
    const auto check = [this](int left, const std::string& cells) {
        EXPECT_EQ(m_readout.AccessibleValue(), cells == "?" ? "" : cells);
        EXPECT_EQ(Shown(left, cells), cells);
    };
    const std::tuple<std::int32_t, int, const char*> numbers[] = {
        {7, 56, "7"}, {10, 49, "10"}, {34689, 28, "34689"}, {-5, 56, "?"}};
    for (const auto& [number, left, cells] : numbers) {
        m_readout.setLongValue(number);
        check(left, cells);
    }
    const std::tuple<float, int, const char*> fractions[] = {
        {0.05F, 39, "0.05"}, {0.5F, 39, "0.50"}, {12.345F, 32, "12.34"}, {123.456F, 25, "123.45"}};
    for (const auto& [fraction, left, cells] : fractions) {
        m_readout.setFloatValue(fraction);
        check(left, cells);
    }
    const std::tuple<const char*, int, const char*> texts[] = {
        {"-", 55, "-"},     {"0005", 49, "05"}, {"59", 49, "59"},       {"LOOP", 35, "L00P"},
        {"LOOPS", 56, "0"}, {"1x3", 42, "103"}, {"12:34", 32, "12:34"}, {"01:02:03", 16, "01:02:03"}};
    for (const auto& [text, left, cells] : texts) {
        m_readout.setStringValue(text);
        EXPECT_EQ(Shown(left, cells), cells);
        EXPECT_EQ(m_readout.AccessibleValue(), cells == std::string("L00P") ? text : cells);
    }
    m_readout.setStringValue("OVERFLOW");
    EXPECT_EQ(m_readout.AccessibleValue(), "OVERFLOW");
    EXPECT_EQ(Shown(45, "0FL"), "0FL");
    for (const char* nothing : {"", "1:2:3:4"}) {
        m_readout.setStringValue(nothing);
        EXPECT_EQ(DrawnRow(), kEmptyRow) << nothing;
    }
}

/// A text that is no time, and numbers that no readout can show, must do no harm.
TEST_F(DigiStringTest, SurvivesWhatItCannotShow) {
    for (const char* text : {":", "1:", "12345678901234567890", "x:y:z", "999999999999:1"}) {
        m_readout.setStringValue(text);
        EXPECT_NE(DrawnRow(), kEmptyRow) << text;
    }
    m_readout.setStringValue("99999999999");
    EXPECT_EQ(m_readout.AccessibleValue(), "2147483647");
    for (const float value : {1e30F, -1e30F, -12.0F, std::numeric_limits<float>::quiet_NaN()}) {
        m_readout.setFloatValue(value);
        EXPECT_NE(DrawnRow(), kEmptyRow) << value;
    }
    m_readout.setStringValue(nullptr);
    EXPECT_EQ(DrawnRow(), kEmptyRow);
}

}  // namespace
