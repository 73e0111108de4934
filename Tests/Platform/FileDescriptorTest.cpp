#include "Platform/FileDescriptor.h"

#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <utility>

#include <fcntl.h>

TEST(FileDescriptorTest, WritesSeeksAndReadsShortAtTheEndAndErrorsCarryTheSystemsNumber) {
    const TemporaryFolder folder;
    FileDescriptor file;
    std::array<char, 8> buffer{};
    constexpr std::uint64_t beyond32Bits = 5'000'000'000;
    EXPECT_EQ(file.Open(folder.Native("missing"), O_RDONLY), ENOENT);
    EXPECT_EQ(file.Read(buffer.data(), 1).errorNumber, EBADF);
    ASSERT_EQ(file.Open(folder.Native("a"), O_RDWR | O_CREAT, 0600), 0);
    EXPECT_EQ(file.SeekTo(beyond32Bits), 0);
    EXPECT_EQ(file.Write("0123456789", 10).bytes, 10);
    EXPECT_EQ(file.SeekTo(beyond32Bits + 7), 0);
    const TransferResult tail = file.Read(buffer.data(), buffer.size());
    EXPECT_STREQ(buffer.data(), "789");
    EXPECT_EQ(tail.bytes, 3);
    EXPECT_EQ(tail.errorNumber, 0);
    EXPECT_EQ(file.Read(buffer.data(), buffer.size()).bytes, 0);
    EXPECT_EQ(file.SeekTo(~std::uint64_t{0}), EINVAL);

    ASSERT_EQ(file.Open("/dev/full", O_WRONLY), 0);
    const TransferResult full = file.Write(buffer.data(), 1);
    EXPECT_EQ(full.bytes, -1);
    EXPECT_EQ(full.errorNumber, ENOSPC);
}

TEST(FileDescriptorTest, HasOneOwnerAndClosesWithIt) {
    const auto isOpen = [](int descriptor) { return ::fcntl(descriptor, F_GETFD) >= 0; };
    FileDescriptor first;
    ASSERT_EQ(first.Open("/dev/null", O_RDONLY), 0);
    const int descriptor = first.Descriptor();
    EXPECT_EQ(::fcntl(descriptor, F_GETFD), FD_CLOEXEC) << "not inherited by child processes";
    {
        FileDescriptor second;
        ASSERT_EQ(second.Open("/dev/null", O_RDONLY), 0);
        const int replaced = second.Descriptor();
        second = std::move(first);
        EXPECT_FALSE(isOpen(replaced));
        EXPECT_TRUE(isOpen(descriptor));
    }
    EXPECT_FALSE(isOpen(descriptor));
}
