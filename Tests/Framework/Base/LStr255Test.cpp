#include "Framework/Base/LStr255.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>

namespace {

int CompareIgnoringCase(std::string_view left, std::string_view right) {
    const auto isEqual = [](char a, char b) { return std::tolower(a) == std::tolower(b); };
    return std::equal(left.begin(), left.end(), right.begin(), right.end(), isEqual) ? 0 : 1;
}

/// The stored form: length byte, characters, NUL.
void ExpectStored(const LStr255& text, std::string_view expected) {
    EXPECT_EQ(text.View(), expected);
    EXPECT_EQ(text.ConstTextPtr()[0], expected.size());
    EXPECT_EQ(std::memcmp(text.ConstTextPtr() + 1, expected.data(), expected.size()), 0);
    EXPECT_EQ(text.CStr()[expected.size()], '\0');
}

}  // namespace

TEST(LStr255Test, EveryWayOfFillingKeepsTheFirst255Characters) {
    std::string longText;
    for (int i = 0; i < 300; ++i) {
        longText += static_cast<char>('a' + i % 26);
    }
    const std::string kept = longText.substr(0, 255);
    ExpectStored(LStr255(longText.c_str()), kept);
    ExpectStored(LStr255(std::string_view(longText)), kept);

    LStr255 assigned;
    assigned = longText.c_str();
    ExpectStored(assigned, kept);
    assigned = std::string_view(longText);
    ExpectStored(assigned, kept);
    assigned += 'x';
    assigned += 7;
    assigned += longText;
    ExpectStored(assigned, kept);

    LStr255 appended(std::string_view(longText).substr(0, 253));
    appended += -12345;
    ExpectStored(appended, longText.substr(0, 253) + "-1");
    LStr255 grown(std::string_view(longText).substr(0, 200));
    grown += longText.substr(200);
    ExpectStored(grown, kept);
}

TEST(LStr255Test, AppendsTextsCharactersAndNumbers) {
    LStr255 text("a");
    text += "bc";
    text += std::string("d");
    text += LStr255("ef");
    text += 'g';
    text += std::string_view("\0h", 2);
    text += static_cast<const char*>(nullptr);
    ExpectStored(text, std::string_view("abcdefg\0h", 9));

    LStr255 numbers;
    for (const std::int32_t number :
         {0, -1, 2004, std::numeric_limits<std::int32_t>::max(), std::numeric_limits<std::int32_t>::min()}) {
        numbers += number;
        numbers += ' ';
    }
    ExpectStored(numbers, "0 -1 2004 2147483647 -2147483648 ");
}

TEST(LStr255Test, ANullCStringIsTheEmptyText) {
    const char* const null = nullptr;
    LStr255 text("something");
    text = null;
    ExpectStored(text, "");
    ExpectStored(LStr255(null), "");
    EXPECT_TRUE(text == null);
    EXPECT_TRUE(LStr255("x").BeginsWith(null));
}

TEST(LStr255Test, TakesPartsOfItselfAsArguments) {
    LStr255 text("Disk:Folder:file");
    text = text.View().substr(5);
    ExpectStored(text, "Folder:file");
    text = text.CStr() + 7;
    ExpectStored(text, "file");
    text += text;
    text += text.View().substr(2, 4);
    ExpectStored(text, "filefilelefi");
    const LStr255& same = text;
    text = same;
    ExpectStored(text, "filefilelefi");

    LStr255 doubled(std::string(200, 'd'));
    doubled += doubled;
    ExpectStored(doubled, std::string(255, 'd'));
}

TEST(LStr255Test, RemovesTheRangeAsFarAsItLiesInTheText) {
    struct Case {
        std::uint8_t start;
        std::uint8_t count;
        const char* left;
    };
    for (const Case& c : {Case{1, 1, "bcdef"},
                          {1, 6, ""},
                          {1, 255, ""},
                          {3, 2, "abef"},
                          {6, 1, "abcde"},
                          {6, 255, "abcde"},
                          {7, 1, "abcdef"},
                          {255, 255, "abcdef"},
                          {0, 3, "abcdef"},
                          {2, 0, "abcdef"}}) {
        LStr255 text("abcdef");
        text.Remove(c.start, c.count);
        SCOPED_TRACE(testing::Message() << int{c.start} << ", " << int{c.count});
        ExpectStored(text, c.left);
    }
    LStr255 full(std::string(254, 'a') + 'z');
    full.Remove(1, 254);
    ExpectStored(full, "z");
}

TEST(LStr255Test, BeginsAndEndsAreExact) {
    const LStr255 text("Disk:file");
    for (const char* begin : {"", "D", "Disk:", "Disk:file"}) {
        EXPECT_TRUE(text.BeginsWith(begin)) << begin;
    }
    for (const char* end : {"", "e", ":file", "Disk:file"}) {
        EXPECT_TRUE(text.EndsWith(end)) << end;
    }
    for (const char* neither : {"disk:", "FILE", "isk", "Disk:file2", "xDisk:file"}) {
        EXPECT_FALSE(text.BeginsWith(neither)) << neither;
        EXPECT_FALSE(text.EndsWith(neither)) << neither;
    }
}

TEST(LStr255Test, EqualityAsksTheComparisonFunctionOfTheLeftText) {
    LStr255 loose("Data:");
    const LStr255 exact("DATA:");
    EXPECT_TRUE(loose != exact);
    loose.SetCompareFunc(CompareIgnoringCase);
    EXPECT_TRUE(loose == exact);
    EXPECT_TRUE(exact != loose);
    EXPECT_TRUE(loose == "dATA:");

    const LStr255 copy(loose);
    EXPECT_TRUE(copy == "DATA:");
    loose = "other";
    EXPECT_TRUE(loose == "OTHER");
    loose.SetCompareFunc(nullptr);
    EXPECT_TRUE(loose != "OTHER");
}

TEST(LStr255Test, LoadsFromAStringListAndIsEmptyWhenThereIsNoEntry) {
    LStr255 text("before");
    text.LoadFromList(200, 3);
    ExpectStored(text, "Quarn IO Gaugeline");
    for (const auto& [list, index] : {std::pair{200, 0}, {200, 4}, {200, -3}, {200, 40'000}, {201, 3}, {-1, 3}}) {
        text = "before";
        text.LoadFromList(list, index);
        EXPECT_EQ(text.View(), "") << list << ", " << index;
    }
}
