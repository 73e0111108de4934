#include "Platform/ColonPath.h"

#include "Platform/FileSystem.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace {

/// Makes a folder the working directory until the end of the test.
class WorkingDirectory {
public:
    explicit WorkingDirectory(const std::string& path) { std::filesystem::current_path(path); }
    ~WorkingDirectory() { std::filesystem::current_path(m_previous); }
    WorkingDirectory(const WorkingDirectory&) = delete;
    WorkingDirectory& operator=(const WorkingDirectory&) = delete;

private:
    std::filesystem::path m_previous = std::filesystem::current_path();
};

}  // namespace

TEST(ColonPathTest, RealFilesAreFoundThroughTheirColonPaths) {
    const TemporaryFolder folder;
    for (const char* name : {"plain", "with blank", "a:b", "\xc3\xa4\xff", ".hidden"}) {
        std::ofstream(folder.Native(name)) << name;
        const std::string colon = folder.Colon(name);
        EXPECT_EQ(colon.find('/') != std::string::npos, std::string(name) == "a:b") << colon;
        EXPECT_EQ(ColonPath::ToNative(colon), folder.Native(name));
    }
    std::filesystem::create_directories(folder.Native("target/inner"));
    std::filesystem::create_directory_symlink(folder.Native("target/inner"), folder.Native("link"));
    EXPECT_EQ(folder.Colon("link/x"), folder.Colon() + ":link:x") << "links are kept";
    EXPECT_EQ(folder.Colon("link/../x"), folder.Colon() + ":target:x") << "the parent of where the link leads";
}

TEST(ColonPathTest, OnlyTypedNativePathsAreChanged) {
    const TemporaryFolder folder;
    EXPECT_EQ(ColonPath::FromTyped(folder.Native("a")), folder.Colon("a"));
    for (const char* typed : {"", "Root:tmp", "Nowhere:x", "relative/path", " /tmp", "..", ":"}) {
        EXPECT_EQ(ColonPath::FromTyped(typed), typed);
    }
    const std::string unusable("/tmp/a\0b", 8);
    EXPECT_EQ(ColonPath::FromTyped(unusable), unusable);
}

TEST(ColonPathTest, TheDefaultVolumeIsTheWorkingDirectoryWithoutAColonAtItsEnd) {
    const TemporaryFolder folder;
    {
        const WorkingDirectory here(folder.Native());
        EXPECT_EQ(ColonPath::DefaultVolume(), folder.Colon());
    }
    {
        const WorkingDirectory here("/");
        EXPECT_EQ(ColonPath::DefaultVolume(), "Root");
    }
    const std::string deep =
        folder.Native(std::string(100, 'a') + '/' + std::string(100, 'b') + '/' + std::string(50, 'c'));
    std::filesystem::create_directories(deep);
    {
        const WorkingDirectory here(deep);
        ASSERT_GT(folder.Colon().size() + 253, 254U);
        EXPECT_EQ(ColonPath::DefaultVolume(), "Root") << "longer than a path text can hold";
    }
    std::filesystem::create_directory(folder.Native("gone"));
    {
        const WorkingDirectory here(folder.Native("gone"));
        std::filesystem::remove(folder.Native("gone"));
        EXPECT_EQ(ColonPath::DefaultVolume(), "Root");
    }
}
