#include "Platform/FileSystem.h"

#include "Platform/FileDescriptor.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>

TEST(FileSystemTest, KnowsWhatIsThereAndWhatCanBeRead) {
    const TemporaryFolder folder;
    std::ofstream(folder.Native("file")) << "x";
    ASSERT_EQ(::mkfifo(folder.Native("pipe").c_str(), 0600), 0);
    std::filesystem::create_symlink(folder.Native("nothing"), folder.Native("dangling"));
    std::filesystem::create_symlink(folder.Native("file"), folder.Native("link"));
    std::filesystem::create_symlink("loop", folder.Native("loop"));
    struct Case {
        const char* name;
        bool exists;
        bool canBeRead;
    };
    for (const Case& c : {Case{"file", true, true},
                          {"link", true, true},
                          {"dangling", true, false},
                          {"loop", true, false},
                          {"pipe", true, true},
                          {"missing", false, false},
                          {"file/below", false, false}}) {
        EXPECT_EQ(FileSystem::Exists(folder.Native(c.name)), c.exists) << c.name;
        EXPECT_EQ(FileSystem::CanOpenForReading(folder.Native(c.name)), c.canBeRead) << c.name;
    }
}

TEST(FileSystemTest, MakesAFileOnlyWhereNothingIs) {
    const TemporaryFolder folder;
    EXPECT_EQ(FileSystem::CreateNew(folder.Native("new"), 0640), 0);
    EXPECT_EQ(std::filesystem::file_size(folder.Native("new")), 0U);
    EXPECT_EQ(FileSystem::CreateNew(folder.Native("new"), 0640), EEXIST);
    std::filesystem::create_symlink(folder.Native("elsewhere"), folder.Native("dangling"));
    EXPECT_EQ(FileSystem::CreateNew(folder.Native("dangling"), 0640), EEXIST) << "no file behind a link that dangles";
    EXPECT_FALSE(std::filesystem::exists(folder.Native("elsewhere")));
    EXPECT_EQ(FileSystem::CreateNew(folder.Native("missing/new"), 0640), ENOENT);
}

TEST(FileSystemTest, RemovesFilesAndLinksButNoFolders) {
    const TemporaryFolder folder;
    std::ofstream(folder.Native("file")) << "x";
    std::filesystem::create_symlink(folder.Native("file"), folder.Native("link"));
    std::filesystem::create_directory(folder.Native("empty"));
    EXPECT_TRUE(FileSystem::RemoveFile(folder.Native("link")));
    EXPECT_TRUE(std::filesystem::exists(folder.Native("file")));
    EXPECT_TRUE(FileSystem::RemoveFile(folder.Native("file")));
    EXPECT_FALSE(FileSystem::RemoveFile(folder.Native("file")));
    EXPECT_FALSE(FileSystem::RemoveFile(folder.Native("empty")));
    EXPECT_TRUE(std::filesystem::exists(folder.Native("empty")));
}

TEST(FileSystemTest, AnswersForTheFileSystemThatHoldsThePath) {
    const TemporaryFolder folder;
    const auto space = std::filesystem::space(folder.Native());
    const auto free = FileSystem::FreeBytes(folder.Native());
    ASSERT_TRUE(free.has_value());
    EXPECT_LE(*free, space.capacity);
    EXPECT_EQ(FileSystem::FreeBytes(folder.Native("missing")), std::nullopt);

    FileDescriptor file;
    ASSERT_EQ(file.Open("/proc/self/status", O_RDONLY), 0);
    EXPECT_FALSE(FileSystem::LivesInMemory(file.Descriptor())) << "made up on demand, not kept";
    if (file.Open("/dev/shm", O_RDONLY | O_DIRECTORY) == 0) {
        EXPECT_TRUE(FileSystem::LivesInMemory(file.Descriptor()));
    }
    EXPECT_FALSE(FileSystem::LivesInMemory(-1));
}

TEST(FileSystemTest, TheFolderOfAPathIsWhatPrecedesItsLastSlash) {
    for (const auto& [path, folder] : {std::pair{"/a/b/c", "/a/b"}, {"/a", "/"}, {"/a/", "/a"}, {"/", "/"}}) {
        EXPECT_EQ(FileSystem::FolderOf(path), folder) << path;
    }
}
