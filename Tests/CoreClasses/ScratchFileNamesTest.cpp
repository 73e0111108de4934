#include "CoreClasses/ScratchFileNames.h"

#include "Platform/FileSystem.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <set>
#include <thread>
#include <vector>

TEST(ScratchFileNamesTest, TestsInOneFolderNeverGetTheSameName) {
    const TemporaryFolder folder;
    const CString colonFolder((folder.Colon() + ':').c_str());
    std::array<std::set<std::string>, 4> taken;
    std::vector<std::thread> threads;
    threads.reserve(taken.size());
    for (auto& names : taken) {
        threads.emplace_back([&] {
            CString name;
            for (std::int32_t next = 0; names.size() < 100;) {
                ASSERT_TRUE(ScratchFileNames::TakeFree(colonFolder, FileSystem::Exists, 0600, next, name));
                names.emplace(name.View());
            }
        });
    }
    std::set<std::string> all;
    for (std::size_t i = 0; i < taken.size(); ++i) {
        threads[i].join();
        all.insert(taken[i].begin(), taken[i].end());
    }
    EXPECT_EQ(all.size(), 400U);
    EXPECT_TRUE(all.contains(folder.Colon("IOT0.tio")) && all.contains(folder.Colon("IOT399.tio"))) << "without gaps";
}
