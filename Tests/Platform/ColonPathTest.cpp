#include "Platform/ColonPath.h"

#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

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

TEST(ColonPathTest, TheDefaultVolumeIsTheWorkingDirectoryWithoutAColonAtItsEnd) {
    const TemporaryFolder folder;
    const std::filesystem::path previous = std::filesystem::current_path();
    const std::string deep = folder.Native(std::string(100, 'a') + '/' + std::string(152, 'b'));
    const std::string gone = folder.Native("gone");
    std::filesystem::create_directories(deep);
    std::filesystem::create_directory(gone);
    for (const auto& [directory, expected] :
         {std::pair{folder.Native(), folder.Colon()}, {"/", "Root"}, {deep, "Root"}, {gone, "Root"}}) {
        std::filesystem::current_path(directory);
        std::filesystem::remove(gone);
        EXPECT_EQ(ColonPath::DefaultVolume(), expected) << directory;
        std::filesystem::create_directories(gone);
    }
    std::filesystem::current_path(previous);
}
