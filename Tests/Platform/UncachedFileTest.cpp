#include "Platform/UncachedFile.h"

#include "Platform/TransferBuffer.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <tuple>

#include <fcntl.h>
#include <unistd.h>

namespace {

using Cache = UncachedFile::Cache;
using Purpose = UncachedFile::Purpose;

constexpr std::size_t kBlock = 64 << 10;

/// Whether the file system that holds the folder makes direct transfers, found out without the class under test.
bool MakesDirectTransfers(const TemporaryFolder& folder) {
    const int file = ::open(folder.Native("probe").c_str(), O_RDWR | O_CREAT | O_DIRECT, 0600);
    const TransferBuffer buffer(kBlock);
    const bool works = file >= 0 && ::write(file, buffer.Data(), kBlock) == static_cast<ssize_t>(kBlock);
    ::close(file);
    return works;
}

/// Writes or reads `size` bytes by transfers of `step`, to or from the buffer, and answers what is reported of them.
FileCacheReport Transfer(const std::string& path, Purpose purpose, Cache cache, TransferBuffer& buffer,
                         std::size_t step, std::size_t size) {
    UncachedFile file;
    EXPECT_EQ(file.Open(path, O_RDWR | O_CREAT, 0600, cache, purpose, step), 0);
    for (std::size_t offset = 0; offset < size; offset += step) {
        const std::size_t left = std::min(step, size - offset);
        const TransferResult result = purpose == Purpose::Writing ? file.Write(buffer.Data() + offset, left)
                                                                  : file.Read(buffer.Data() + offset, step);
        EXPECT_EQ(result.bytes, static_cast<std::int64_t>(left)) << offset;
    }
    if (purpose == Purpose::Reading) {
        EXPECT_EQ(file.Read(buffer.Data(), step).bytes, 0) << "the end";
    }
    EXPECT_EQ(file.Close(UncachedFile::Flush::Wait), 0);
    return file.Report();
}

}  // namespace

TEST(UncachedFileTest, FindsOutHowItsTransfersMetTheCacheAndMovesEveryByte) {
    const TemporaryFolder folder;
    const bool direct = MakesDirectTransfers(folder);
    const char* const odd = "the transfer size is no multiple of the storage's block";
    using Case = std::tuple<Cache, std::size_t, std::size_t, FileCacheMode, const char*>;
    for (const auto& [cache, step, size, mode, refusal] :
         {Case{Cache::Use, kBlock, 4 * kBlock, FileCacheMode::Cached, nullptr},
          Case{Cache::GoRound, kBlock, 4 * kBlock + 4099, FileCacheMode::Bypassed, nullptr},
          Case{Cache::GoRound, 1000, 4 * kBlock, FileCacheMode::DroppedAfterUse, odd}}) {
        TransferBuffer written(8 * kBlock);
        TransferBuffer read(8 * kBlock);
        written.FillWithNoise();
        read.Fill(std::byte{0});
        const std::string path = folder.Native("file");
        for (const Purpose purpose : {Purpose::Writing, Purpose::Reading}) {
            TransferBuffer& buffer = purpose == Purpose::Writing ? written : read;
            const FileCacheReport report = Transfer(path, purpose, cache, buffer, step, size);
            if (direct && !report.isVolatile) {  // elsewhere all fall back
                EXPECT_EQ(report.mode, mode) << step << " of " << size;
                EXPECT_STREQ(report.refusal, refusal);
            }
        }
        EXPECT_TRUE(std::equal(written.Data(), written.Data() + size, read.Data()));
        std::filesystem::remove(path);
    }
    if (!direct) {
        GTEST_SKIP() << "only that the bytes move: this file system makes no direct transfers";
    }
}

TEST(UncachedFileTest, AFileInMemoryIsCachedWhateverItsFileSystemGrants) {
    const std::string path = "/dev/shm/gaugeline-test-" + std::to_string(::getpid());
    TransferBuffer buffer(kBlock);
    buffer.FillWithNoise();
    UncachedFile file;
    if (file.Open(path, O_RDWR | O_CREAT, 0600, Cache::GoRound, Purpose::Writing, kBlock) != 0) {
        GTEST_SKIP() << "no /dev/shm here";
    }
    ::unlink(path.c_str());
    EXPECT_EQ(file.Write(buffer.Data(), kBlock).bytes, static_cast<std::int64_t>(kBlock));
    file.Close(UncachedFile::Flush::Start);
    EXPECT_EQ(file.Report().mode, FileCacheMode::Cached);
    EXPECT_TRUE(file.Report().isVolatile);
}
