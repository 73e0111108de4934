#include "SupportingClasses/CString.h"

#include <gtest/gtest.h>

#include <string>

TEST(CStringTest, TrimsSpacesAndNothingElse) {
    for (const auto& [text, leftTrimmed, rightTrimmed] :
         {std::tuple{"  a b  ", "a b  ", "  a b"}, {"", "", ""}, {"   ", "", ""}, {" \ta\t ", "\ta\t ", " \ta\t"}}) {
        CString left(text);
        CString right(text);
        EXPECT_EQ(left.IsEmpty(), *leftTrimmed == '\0') << '"' << text << '"';
        left.TrimLeft();
        right.TrimRight();
        EXPECT_EQ(left, leftTrimmed) << '"' << text << '"';
        EXPECT_EQ(right, rightTrimmed) << '"' << text << '"';
    }
}

TEST(CStringTest, StrippingTheFileNameLeavesTheFolder) {
    const std::pair<std::string, const char*> paths[] = {
        {"Disk:Folder:file", "Disk:Folder:"}, {"Disk:", "Disk:"}, {"file", ""}, {"D:" + std::string(253, 'n'), "D:"}};
    for (const auto& [path, folder] : paths) {
        CString text{std::string_view(path)};
        EXPECT_EQ(text.StripFileName(), folder) << path;
        EXPECT_EQ(text, folder) << path;
    }
}
