#include "Framework/Base/StringList.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

using testing::HasSubstr;

namespace {

std::string FaultOf(std::string_view content) {
    try {
        static_cast<void>(StringList::Parse(content));
    } catch (const std::runtime_error& fault) {
        return fault.what();
    }
    return "";
}

}  // namespace

TEST(StringListTest, ReadsEntriesWithGapsCommentsAndEscapes) {
    const auto list = StringList::Parse("# Alerts = none\r\n"
                                        "\r\n"
                                        "3 = Plain text = with # signs \r\n"
                                        "  7\t=two  blanks\\\\n stay\n"
                                        "5 =  line\\none\\r\n"
                                        "   # 6 = no\n"
                                        "32767 =\n"
                                        "2 = no line end");
    const std::vector<std::pair<int, std::string_view>> expected = {{0, ""},
                                                                    {1, ""},
                                                                    {2, "no line end"},
                                                                    {3, "Plain text = with # signs "},
                                                                    {4, ""},
                                                                    {5, " line\none\r"},
                                                                    {6, ""},
                                                                    {7, "two  blanks\\n stay"},
                                                                    {8, ""},
                                                                    {32767, ""},
                                                                    {-1, ""}};
    for (const auto& [index, text] : expected) {
        EXPECT_EQ(list.Entry(index), text) << index;
    }
}

TEST(StringListTest, AMalformedLineIsNamedWithItsReason) {
    struct Case {
        std::string line;
        const char* reason;
    };
    const std::string tooLong(256, 'x');
    for (const Case& c : {Case{"text", "begins with a number"},
                          {"= text", "begins with a number"},
                          {"0 = a", "from 1 to"},
                          {"-1 = a", "from 1 to"},
                          {"32768 = a", "from 1 to"},
                          {"99999999999999999999 = a", "number"},
                          {"+1 = a", "number"},
                          {"1", "'=' is missing"},
                          {"1.5 = a", "'=' is missing"},
                          {"1 : a", "'=' is missing"},
                          {"1 = a\\t", "backslash"},
                          {"1 = a\\", "backslash ends the line"},
                          {"2 = again", "2 is given twice"},
                          {"1 = " + tooLong, "longer than 255"}}) {
        const std::string fault = FaultOf("# first\n2 = a\n" + c.line + "\n4 = b\n");
        EXPECT_THAT(fault, HasSubstr("line 3")) << c.line;
        EXPECT_THAT(fault, HasSubstr(c.reason)) << c.line;
    }
    EXPECT_EQ(FaultOf("1 = " + std::string(253, 'x') + "\\n\\r"), "") << "255 characters once read";
}

TEST(StringListTest, AnyBytesEitherReadOrNameALine) {
    std::mt19937 random(2004);
    constexpr std::array<std::string_view, 12> pieces = {
        "1", "32767", "=", " ", "\n", "\r", "\\", "n", "#", "\xff\x80", std::string_view("\0", 1), "-"};
    int read = 0;
    for (int round = 0; round < 5000; ++round) {
        std::string content;
        for (std::size_t length = random() % 12; length > 0; --length) {
            content += pieces[random() % pieces.size()];
        }
        const std::string fault = FaultOf(content);
        EXPECT_TRUE(fault.empty() || fault.find(", line ") != std::string::npos) << fault;
        read += fault.empty() ? 1 : 0;
    }
    EXPECT_GT(read, 100);
    EXPECT_LT(read, 4900);
}

TEST(StringListTest, TheProgramsListHasEveryTextThatIsAskedFor) {
    std::vector<const StringList*> found(4);
    {
        std::vector<std::jthread> threads;
        threads.reserve(found.size());
        for (auto& list : found) {
            threads.emplace_back([&list] { list = StringList::Find(200); });
        }
    }
    ASSERT_NE(found[0], nullptr);
    EXPECT_THAT(found, testing::Each(found[0]));
    for (const int index : {2, 3, 15, 19, 20, 21, 22, 23, 26, 27}) {
        EXPECT_NE(found[0]->Entry(index), "") << index;
    }
    // The settings find a popup item by the text of its field.
    const std::vector<std::pair<int, std::string_view>> items = {{5, "MAC File API"},
                                                                 {6, "Writes, then Reads (Sequentially)"},
                                                                 {7, "Reads Only"},
                                                                 {11, "Writes Only"},
                                                                 {12, "Automatically Select"},
                                                                 {28, "Self-Test"},
                                                                 {29, "Posix-Test"}};
    for (const auto& [index, text] : items) {
        EXPECT_EQ(found[0]->Entry(index), text);
    }
    EXPECT_EQ(StringList::Find(999), nullptr);
}
