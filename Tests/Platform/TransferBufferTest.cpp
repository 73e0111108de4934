#include "Platform/TransferBuffer.h"

#include "Support/Sanitizers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

TEST(TransferBufferTest, EveryBufferIsAlignedAndFilledToItsLastByte) {
    for (const std::size_t size : {std::size_t{1}, std::size_t{100'001}, (std::size_t{5} << 20) + 10}) {
        TransferBuffer buffer(size);
        ASSERT_NE(buffer.Data(), nullptr);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(buffer.Data()) % TransferBuffer::kAlignment, 0U);
        buffer.Fill(std::byte{0x5B});
        EXPECT_TRUE(std::all_of(buffer.Data(), buffer.Data() + size, [](std::byte b) { return b == std::byte{0x5B}; }));
        buffer.FillWithNoise();
        std::set<std::string> blocks;  // of 512 bytes, what storage may compare
        for (std::size_t offset = 0; offset + 512 <= size; offset += 512) {
            blocks.emplace(reinterpret_cast<const char*>(buffer.Data()) + offset, 512);
        }
        EXPECT_EQ(blocks.size(), size / 512) << "no two are equal";
    }
    if (!kIsSanitized) {  // sanitizers stop the program for such a wish
        EXPECT_EQ(TransferBuffer(std::size_t{1} << 60).Data(), nullptr);
    }
}
