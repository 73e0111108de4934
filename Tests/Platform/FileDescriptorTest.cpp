#include "Platform/FileDescriptor.h"

#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <fstream>
#include <string>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

TEST(FileDescriptorTest, WritesSeeksAndReadsShortAtTheEnd) {
    const TemporaryFolder folder;
    FileDescriptor file;
    ASSERT_EQ(file.Open(folder.Native("a"), O_RDWR | O_CREAT, 0600), 0);
    EXPECT_EQ(file.Write("0123456789", 10).bytes, 10);
    EXPECT_EQ(file.SeekTo(7), 0);
    std::array<char, 8> buffer{};
    const TransferResult tail = file.Read(buffer.data(), buffer.size());
    EXPECT_EQ(std::string(buffer.data(), 3), "789");
    EXPECT_EQ(tail.bytes, 3);
    EXPECT_EQ(tail.errorNumber, 0);
    EXPECT_EQ(file.Read(buffer.data(), buffer.size()).bytes, 0);

    constexpr std::uint64_t beyond32Bits = 5'000'000'000;
    EXPECT_EQ(file.SeekTo(beyond32Bits), 0);
    EXPECT_EQ(file.Write("x", 1).bytes, 1);
    EXPECT_EQ(std::filesystem::file_size(folder.Native("a")), beyond32Bits + 1);
    EXPECT_EQ(file.SeekTo(~std::uint64_t{0}), EINVAL);
    EXPECT_EQ(file.Close(), 0);
}

TEST(FileDescriptorTest, ErrorsCarryTheSystemsNumber) {
    const TemporaryFolder folder;
    FileDescriptor file;
    EXPECT_EQ(file.Open(folder.Native("missing"), O_RDONLY), ENOENT);
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(file.Close(), 0) << "nothing was open";
    EXPECT_EQ(file.Open(folder.Native(), O_WRONLY), EISDIR);
    char byte = 0;
    EXPECT_EQ(file.Read(&byte, 1).errorNumber, EBADF);

    ASSERT_EQ(file.Open("/dev/full", O_WRONLY), 0);
    const TransferResult full = file.Write(&byte, 1);
    EXPECT_EQ(full.bytes, -1);
    EXPECT_EQ(full.errorNumber, ENOSPC);
    EXPECT_EQ(file.Read(&byte, 1).errorNumber, EBADF) << "open for writing only";
}

TEST(FileDescriptorTest, HasOneOwnerAndClosesWithIt) {
    const TemporaryFolder folder;
    std::ofstream(folder.Native("a")) << "a";
    std::ofstream(folder.Native("b")) << "b";
    const auto isOpen = [](int descriptor) { return ::fcntl(descriptor, F_GETFD) >= 0; };
    int descriptor = -1;
    {
        FileDescriptor first;
        ASSERT_EQ(first.Open(folder.Native("a"), O_RDONLY), 0);
        descriptor = first.Descriptor();
        EXPECT_EQ(::fcntl(descriptor, F_GETFD), FD_CLOEXEC) << "not inherited by child processes";

        FileDescriptor second(std::move(first));
        FileDescriptor third;
        ASSERT_EQ(third.Open(folder.Native("b"), O_RDONLY), 0);
        const int replaced = third.Descriptor();
        third = std::move(second);
        EXPECT_FALSE(isOpen(replaced));
        EXPECT_EQ(third.Descriptor(), descriptor);
        FileDescriptor& same = third;
        third = std::move(same);
        EXPECT_TRUE(isOpen(descriptor));

        ASSERT_EQ(third.Open(folder.Native("b"), O_RDONLY), 0) << "closes what was open";
        char byte = 0;
        EXPECT_EQ(third.Read(&byte, 1).bytes, 1);
        EXPECT_EQ(byte, 'b');
        descriptor = third.Descriptor();
    }
    EXPECT_FALSE(isOpen(descriptor));
}
