#include "Platform/CStream.h"

#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>

TEST(CStreamTest, WritesSeeksAndReadsShortAtTheEndWithAndWithoutABuffer) {
    const TemporaryFolder folder;
    constexpr std::uint64_t beyond32Bits = 5'000'000'000;
    for (const auto buffering : {CStream::Buffering::Full, CStream::Buffering::None}) {
        CStream stream;
        std::array<char, 8> buffer{};
        ASSERT_TRUE(stream.Open(folder.Native("a"), "wb", buffering));
        EXPECT_TRUE(stream.SeekTo(beyond32Bits));
        EXPECT_EQ(stream.Write("0123456789", 10), 10U);
        const bool isInTheFile = std::filesystem::file_size(folder.Native("a")) == beyond32Bits + 10;
        EXPECT_EQ(isInTheFile, buffering == CStream::Buffering::None);
        EXPECT_TRUE(stream.Close());

        ASSERT_TRUE(stream.Open(folder.Native("a"), "rb", buffering));
        EXPECT_TRUE(stream.SeekTo(beyond32Bits));
        EXPECT_EQ(stream.Read(buffer.data(), 8), 8U);
        EXPECT_FALSE(stream.AtEnd());
        EXPECT_EQ(stream.Read(buffer.data(), 8), 2U);
        EXPECT_TRUE(stream.AtEnd());
        EXPECT_FALSE(stream.HasError());
        EXPECT_EQ(buffer[1], '9');
        EXPECT_FALSE(stream.Open(folder.Native("missing"), "rb", buffering));
        EXPECT_FALSE(stream.IsOpen()) << "what was open is closed";
    }
}
