#include "SupportingClasses/CString.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>

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
    for (const auto& [path, folder] : {std::pair{std::string("Disk:Folder:file"), "Disk:Folder:"},
                                       {"Disk:", "Disk:"},
                                       {"file", ""},
                                       {"::", "::"},
                                       {"D:" + std::string(253, 'n'), "D:"}}) {
        CString text{std::string_view(path)};
        EXPECT_EQ(text.StripFileName(), folder) << path;
        EXPECT_EQ(text, folder) << path;
    }
}

TEST(CStringTest, TheConversionBufferIsSharedByTheObjectsOfOneThread) {
    const CString path("Disk:file");
    const CString date("Mon January 5, 2004 09:03:07");
    const char* const first = path.GetChars();
    EXPECT_STREQ(first, "Disk:file");
    std::thread([&] { EXPECT_STREQ(date.GetChars(), date.CStr()); }).join();
    EXPECT_STREQ(first, "Disk:file") << "another thread's conversion";
    EXPECT_EQ(date.GetChars(), first);
    EXPECT_STREQ(first, date.CStr());
}
