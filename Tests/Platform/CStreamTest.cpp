#include "Platform/CStream.h"

#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <string>

TEST(CStreamTest, ShortReadsAtTheEndSaySo) {
    const TemporaryFolder folder;
    std::ofstream(folder.Native("a")) << "0123456789";
    for (const auto buffering : {CStream::Buffering::Full, CStream::Buffering::None}) {
        CStream stream;
        ASSERT_TRUE(stream.Open(folder.Native("a"), "rb", buffering));
        std::array<char, 8> buffer{};
        EXPECT_EQ(stream.Read(buffer.data(), 8), 8U);
        EXPECT_FALSE(stream.AtEnd());
        EXPECT_EQ(stream.Read(buffer.data(), 8), 2U);
        EXPECT_TRUE(stream.AtEnd());
        EXPECT_FALSE(stream.HasError());
        EXPECT_TRUE(stream.SeekTo(9));
        EXPECT_FALSE(stream.AtEnd());
        EXPECT_EQ(stream.Read(buffer.data(), 1), 1U);
        EXPECT_EQ(buffer[0], '9');
    }
}

TEST(CStreamTest, AnUnbufferedWriteIsInTheFileWhenItReturns) {
    const TemporaryFolder folder;
    CStream stream;
    ASSERT_TRUE(stream.Open(folder.Native("a"), "wb", CStream::Buffering::None));
    EXPECT_EQ(stream.Write("12345", 5), 5U);
    EXPECT_EQ(std::filesystem::file_size(folder.Native("a")), 5U);
    constexpr std::uint64_t beyond32Bits = 5'000'000'000;
    EXPECT_TRUE(stream.SeekTo(beyond32Bits));
    EXPECT_EQ(stream.Write("6", 1), 1U);
    EXPECT_EQ(std::filesystem::file_size(folder.Native("a")), beyond32Bits + 1);
    EXPECT_TRUE(stream.Close());
}

TEST(CStreamTest, AFullDeviceIsReportedByTheWriteOrAtTheLatestByTheClose) {
    CStream stream;
    ASSERT_TRUE(stream.Open("/dev/full", "wb", CStream::Buffering::None));
    EXPECT_EQ(stream.Write("12345", 5), 0U);
    EXPECT_TRUE(stream.HasError());

    ASSERT_TRUE(stream.Open("/dev/full", "wb", CStream::Buffering::Full)) << "closes what was open";
    EXPECT_EQ(stream.Write("12345", 5), 5U);
    EXPECT_FALSE(stream.HasError());
    EXPECT_FALSE(stream.Close());
    EXPECT_FALSE(stream.IsOpen());
    EXPECT_TRUE(stream.Close()) << "nothing was open";
}

TEST(CStreamTest, WhatCannotBeOpenedIsNotOpen) {
    const TemporaryFolder folder;
    std::ofstream(folder.Native("a")) << "a";
    CStream stream;
    ASSERT_TRUE(stream.Open(folder.Native("a"), "rb", CStream::Buffering::Full));
    EXPECT_FALSE(stream.Open(folder.Native("missing"), "rb", CStream::Buffering::Full));
    EXPECT_FALSE(stream.IsOpen());
    EXPECT_EQ(stream.Get(), nullptr);
    EXPECT_FALSE(stream.Open(folder.Native(), "wb", CStream::Buffering::Full));
}
