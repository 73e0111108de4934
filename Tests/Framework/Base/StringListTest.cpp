#include "Framework/Base/StringList.h"

#include <gmock/gmock.h>

#include <stdexcept>
#include <string>

using testing::HasSubstr;

TEST(StringListTest, ReadsEntriesWithGapsCommentsAndEscapes) {
    const auto list = StringList::Parse("# Alerts = none\r\n"
                                        "\r\n"
                                        "3 = Plain text = with # signs \r\n"
                                        "  7\t=two  blanks\\\\n stay\n"
                                        "5 =  line\\none\\r\n"
                                        "   # 6 = no\n"
                                        "32767 =\n"
                                        "8 = " +
                                        std::string(253, 'x') + "\\n\\r\n" + "2 = no line end");
    const std::pair<int, std::string> entries[] = {
        {2, "no line end"},         {3, "Plain text = with # signs "},   {5, " line\none\r"}, {6, ""}, {-1, ""},
        {7, "two  blanks\\n stay"}, {8, std::string(253, 'x') + "\n\r"}, {32767, ""}};
    for (const auto& [index, text] : entries) {
        EXPECT_EQ(list.Entry(index), text) << index;
    }
}

TEST(StringListTest, AMalformedLineIsNamedWithItsReason) {
    const std::pair<std::string, const char*> lines[] = {{"= text", "begins with a number"},
                                                         {"32768 = a", "from 1 to"},
                                                         {"1 = a\\t", "backslash"},
                                                         {"2 = again", "2 is given twice"},
                                                         {"1 = " + std::string(256, 'x'), "longer than 255"}};
    for (const auto& [line, reason] : lines) {
        try {
            static_cast<void>(StringList::Parse("# first\n2 = a\n" + line + "\n4 = b\n"));
            ADD_FAILURE() << line;
        } catch (const std::runtime_error& fault) {
            EXPECT_THAT(fault.what(), testing::AllOf(HasSubstr("line 3"), HasSubstr(reason))) << line;
        }
    }
}
