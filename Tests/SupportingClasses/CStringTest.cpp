#include "SupportingClasses/CString.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <thread>

TEST(CStringTest, TextsOfNothingButSpacesAreEmpty) {
    for (const char* text : {"", " ", "     "}) {
        EXPECT_TRUE(CString(text).IsEmpty()) << '"' << text << '"';
    }
    for (const char* text : {" a", "a", "\t", " \r"}) {
        EXPECT_FALSE(CString(text).IsEmpty()) << '"' << text << '"';
    }
    CString text("  ");
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_EQ(text.GetLength(), 2);
    text.Empty();
    EXPECT_EQ(text.GetLength(), 0);
}

TEST(CStringTest, TrimsSpacesAndNothingElse) {
    struct Case {
        const char* text;
        const char* left;
        const char* right;
    };
    for (const Case& c : {Case{"  a b  ", "a b  ", "  a b"},
                          {"", "", ""},
                          {"   ", "", ""},
                          {"a", "a", "a"},
                          {"\t a \t", "\t a \t", "\t a \t"},
                          {" \ta\t ", "\ta\t ", " \ta\t"}}) {
        CString left(c.text);
        left.TrimLeft();
        EXPECT_EQ(left, c.left) << '"' << c.text << '"';
        CString right(c.text);
        right.TrimRight();
        EXPECT_EQ(right, c.right) << '"' << c.text << '"';
    }
}

TEST(CStringTest, StrippingTheFileNameLeavesTheFolder) {
    const std::string longName = "D:" + std::string(253, 'n');
    for (const auto& [path, folder] : {std::pair<std::string, const char*>{"Disk:Folder:file", "Disk:Folder:"},
                                       {"Disk:file", "Disk:"},
                                       {"Disk:", "Disk:"},
                                       {"file", ""},
                                       {"", ""},
                                       {"::", "::"},
                                       {longName, "D:"}}) {
        CString text{std::string_view(path)};
        const CString copy = text.StripFileName();
        EXPECT_EQ(text, folder) << path;
        EXPECT_EQ(copy, folder) << path;
    }
}

TEST(CStringTest, KeepsTheFirst255CharactersOfALongerCString) {
    const std::string longText = std::string(254, 'a') + std::string(46, 'b');
    const CString text(longText.c_str());
    EXPECT_EQ(text.GetLength(), 255);
    EXPECT_EQ(text.GetUChars()[0], 255);
    EXPECT_EQ(text.GetUChars()[255], 'b');
    EXPECT_EQ(std::string(text.GetChars()), longText.substr(0, 255));
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

TEST(CStringTest, CopiesKeepTheComparisonAndAreIndependent) {
    CString text("a");
    text.SetCompareFunc([](std::string_view, std::string_view) { return 0; });
    CString copy(text);
    copy += "b";
    EXPECT_EQ(text.View(), "a");
    EXPECT_EQ(copy.View(), "ab");
    EXPECT_TRUE(copy == "anything");
    CString assigned("c");
    assigned = text;
    EXPECT_TRUE(assigned == "anything");
}

TEST(CStringTest, LoadsTheProgramsTexts) {
    CString text;
    text.LoadString(2);
    EXPECT_EQ(text, "Version 2.2");
    text.LoadString(1);
    EXPECT_EQ(text, "");
}
