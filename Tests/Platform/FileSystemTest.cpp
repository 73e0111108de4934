#include "Platform/FileSystem.h"

#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <string>
#include <tuple>

#include <sys/stat.h>

TEST(FileSystemTest, KnowsWhatIsThereMakesFilesOnlyWhereNothingIsAndRemovesNoFolder) {
    const TemporaryFolder folder;
    std::ofstream(folder.Native("file")) << "x";
    std::filesystem::create_directory(folder.Native("empty"));
    ASSERT_EQ(::mkfifo(folder.Native("pipe").c_str(), 0600), 0);
    std::filesystem::create_symlink(folder.Native("nothing"), folder.Native("dangling"));
    std::filesystem::create_symlink("loop", folder.Native("loop"));
    const std::tuple<const char*, bool, bool, int, bool> cases[] = {{"new", false, false, 0, true},
                                                                    {"pipe", true, true, EEXIST, true},
                                                                    {"dangling", true, false, EEXIST, true},
                                                                    {"loop", true, false, EEXIST, true},
                                                                    {"empty", true, true, EEXIST, false},
                                                                    {"file/below", false, false, ENOTDIR, true},
                                                                    {"missing/new", false, false, ENOENT, true}};
    for (const auto& [name, exists, canBeRead, creationError, isGone] : cases) {
        EXPECT_EQ(FileSystem::Exists(folder.Native(name)), exists) << name;
        EXPECT_EQ(FileSystem::CanOpenForReading(folder.Native(name)), canBeRead) << name;
        EXPECT_EQ(FileSystem::CreateNew(folder.Native(name), 0640), creationError) << name;
        EXPECT_EQ(FileSystem::RemoveFile(folder.Native(name)), isGone) << name;
    }
    EXPECT_TRUE(std::filesystem::exists(folder.Native("empty")));
    EXPECT_FALSE(std::filesystem::exists(folder.Native("nothing"))) << "no file behind a link that dangles";
}
