#include "Framework/Base/LStr255.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <string_view>
#include <tuple>

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
    LStr255 text;
    text = std::string_view(longText);
    text += 'x';
    text += longText;
    ExpectStored(text, kept);
    text = std::string_view(longText).substr(0, 253);
    text += -12345;
    ExpectStored(text, longText.substr(0, 253) + "-1");
}

TEST(LStr255Test, AppendsTextsCharactersAndNumbersAlsoOfItself) {
    LStr255 text;
    text += std::string_view("\0h", 2);
    text += static_cast<const char*>(nullptr);
    text += std::numeric_limits<std::int32_t>::min();
    ExpectStored(text, std::string_view("\0h-2147483648", 13));
    text = "Disk:Folder:file";
    text = text.View().substr(5);
    text = text.CStr() + 7;
    text += text;
    text += text.View().substr(2, 4);
    ExpectStored(text, "filefilelefi");
}

TEST(LStr255Test, RemovesTheRangeAsFarAsItLiesInTheText) {
    const std::tuple<std::uint8_t, std::uint8_t, const char*> cases[] = {
        {1, 255, ""}, {3, 2, "abef"}, {6, 255, "abcde"}, {255, 255, "abcdef"}, {0, 3, "abcdef"}};
    for (const auto& [start, count, left] : cases) {
        LStr255 text("abcdef");
        text.Remove(start, count);
        ExpectStored(text, left);
    }
}

TEST(LStr255Test, LoadsFromAStringListAndIsEmptyWhenThereIsNoEntry) {
    for (const auto& [list, index, expected] :
         {std::tuple{200, 3, "Quarn IO Gaugeline"}, {200, 40'000, ""}, {201, 3, ""}}) {
        LStr255 text("before");
        text.LoadFromList(list, index);
        EXPECT_EQ(text.View(), expected) << list << ", " << index;
    }
}
