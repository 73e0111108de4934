#include "Programs/CommandLine/JsonFile.h"

#include "CoreClasses/EngineTest.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

TEST(JsonFileTest, AFileIsReplacedBehindItsLinkAndKeepsItsPermissions) {
    const TemporaryFolder folder;
    std::ofstream(folder.Native("file")) << "a longer text than the documents";
    std::filesystem::permissions(folder.Native("file"), std::filesystem::perms(0640));
    std::filesystem::create_symlink("file", folder.Native("link"));
    JsonFile json;
    ASSERT_EQ(json.Open(folder.Native("link"), "first"), std::nullopt);
    EXPECT_EQ(ContentOf(folder.Native("file")), "first");
    ASSERT_EQ(json.Finish("last"), std::nullopt);
    EXPECT_EQ(ContentOf(folder.Native("link")), "last");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Native("link")));
    EXPECT_EQ(std::filesystem::status(folder.Native("file")).permissions(), std::filesystem::perms(0640));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Native()), {}), 2);  // nothing else stays
}

TEST(JsonFileTest, AFullDeviceIsReportedAndNotReplaced) {
    JsonFile json;
    ASSERT_EQ(json.Open("/dev/full", "first"), std::nullopt);
    EXPECT_EQ(json.Finish("last"), "No space left on device");
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
}
