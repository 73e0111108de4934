#include "CoreClasses/CFileList.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace {

std::vector<std::string> Next(CFileList& list, int count) {
    std::vector<std::string> names;
    for (CString name("left over"); count > 0; --count) {
        list.GetNextFileThreadSafe(name);
        names.emplace_back(name.View());
    }
    return names;
}

}  // namespace

TEST(CFileListTest, HandsOutNamesInRotationAndTakesThemOutFromTheEnd) {
    CFileList list;
    EXPECT_TRUE(list.Init());
    EXPECT_THAT(Next(list, 1), ElementsAre(""));
    for (const char* name : {"A", "B", "B"}) {
        list.AddFile(name);
    }
    EXPECT_THAT(Next(list, 5), ElementsAre("A", "B", "B", "A", "B"));
    for (const char* expected : {"B", "B", "A"}) {
        CString name;
        EXPECT_TRUE(list.RemoveFileThreadSafe(name));
        EXPECT_EQ(name, expected);
    }
    list.AddFile("D");
    EXPECT_THAT(Next(list, 2), ElementsAre("D", "D")) << "the rotation stood behind the one name that there is now";
    list.AddFile("E");
    EXPECT_THAT(Next(list, 2), ElementsAre("E", "D"));
}
