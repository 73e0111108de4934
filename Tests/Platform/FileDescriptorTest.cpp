#include "Platform/FileDescriptor.h"

#include <gtest/gtest.h>

#include <utility>

#include <fcntl.h>

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
