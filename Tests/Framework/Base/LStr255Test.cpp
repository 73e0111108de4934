#include "Framework/Base/LStr255.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <string_view>

namespace {

/// The stored form: length byte, characters, NUL.
void ExpectStored(const LStr255& text, std::string_view expected) {
    const std::string stored = static_cast<char>(expected.size()) + std::string(expected) + '\0';
    EXPECT_EQ(std::string_view(reinterpret_cast<const char*>(text.ConstTextPtr()), stored.size()), stored);
}

}  // namespace

TEST(LStr255Test, EveryWayOfFillingKeepsTheFirst255Characters) {
    const std::string longText = std::string(200, 'a') + std::string(53, 'b') + std::string(47, 'c');
    const std::string kept = longText.substr(0, 255);
    ExpectStored(LStr255(longText.c_str()), kept);
    ExpectStored(LStr255(std::string_view(longText)), kept);
    LStr255 text;
    text = longText.c_str();
    ExpectStored(text, kept);
    text = std::string_view(longText);
    text += 'x';
    text += 7;
    text += longText;
    ExpectStored(text, kept);
    text = std::string_view(longText).substr(0, 253);
    text += -12345;
    ExpectStored(text, longText.substr(0, 253) + "-1");
    text = std::string_view(longText).substr(0, 200);
    text += longText.substr(200);
    ExpectStored(text, kept);
    text.Remove(1, 254);
    ExpectStored(text, "c");
}

TEST(LStr255Test, AppendsTextsCharactersAndNumbersAlsoOfItself) {
    LStr255 text;
    text += std::string_view("\0h", 2);
    text += static_cast<const char*>(nullptr);
    text += std::numeric_limits<std::int32_t>::max();
    text += std::numeric_limits<std::int32_t>::min();
    ExpectStored(text, std::string_view("\0h2147483647-2147483648", 23));
    text = "Disk:Folder:file";
    text = text.View().substr(5);
    text = text.CStr() + 7;
    text += text;
    text += text.View().substr(2, 4);
    ExpectStored(text, "filefilelefi");
    text = static_cast<const char*>(nullptr);
    ExpectStored(text, "");
}

TEST(LStr255Test, RemovesTheRangeAsFarAsItLiesInTheText) {
    for (const auto& [start, count, left] : {std::tuple{1, 1, "bcdef"},
                                             {1, 255, ""},
                                             {3, 2, "abef"},
                                             {6, 255, "abcde"},
                                             {255, 255, "abcdef"},
                                             {0, 3, "abcdef"},
                                             {2, 0, "abcdef"}}) {
        LStr255 text("abcdef");
        text.Remove(static_cast<std::uint8_t>(start), static_cast<std::uint8_t>(count));
        SCOPED_TRACE(testing::Message() << start << ", " << count);
        ExpectStored(text, left);
    }
}

TEST(LStr255Test, ComparisonsAreExactUnlessTheLeftTextHasAFunctionOfItsOwn) {
    LStr255 text("Disk:file");
    for (const char* both : {"", "Disk:file"}) {
        EXPECT_TRUE(text.BeginsWith(both) && text.EndsWith(both)) << both;
    }
    EXPECT_TRUE(text.BeginsWith("Disk:") && text.EndsWith(":file"));
    for (const char* neither : {"disk:", "FILE", "isk", "Disk:file2", "xDisk:file"}) {
        EXPECT_FALSE(text.BeginsWith(neither) || text.EndsWith(neither)) << neither;
    }
    const LStr255 other("DISK:FILE");
    EXPECT_TRUE(text != other);
    text.SetCompareFunc(
        [](std::string_view left, std::string_view right) { return left.size() == right.size() ? 0 : 1; });
    const LStr255 copy(text);
    EXPECT_TRUE(copy == other && text == "DISK:FILE" && text != "DISK" && other != text);
    text.SetCompareFunc(nullptr);
    EXPECT_TRUE(text != other);
}

TEST(LStr255Test, LoadsFromAStringListAndIsEmptyWhenThereIsNoEntry) {
    for (const auto& [list, index, expected] :
         {std::tuple{200, 3, "Quarn IO Gaugeline"}, {200, 0, ""}, {200, 40'000, ""}, {201, 3, ""}, {-1, 3, ""}}) {
        LStr255 text("before");
        text.LoadFromList(list, index);
        EXPECT_EQ(text.View(), expected) << list << ", " << index;
    }
}
