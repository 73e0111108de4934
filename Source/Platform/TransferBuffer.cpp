#include "Platform/TransferBuffer.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include <sys/mman.h>

namespace {

constexpr std::size_t kHugePage = std::size_t{2} << 20;

std::size_t RoundedUp(std::size_t size, std::size_t step) {
    return (std::max<std::size_t>(size, 1) + step - 1) / step * step;
}

}  // namespace

TransferBuffer::TransferBuffer(std::size_t size) : m_size(size) {
    // Large buffers ask for large pages: copying through 4 KB pages spends its time in address translation.
    const std::size_t alignment = size >= kHugePage ? kHugePage : kAlignment;
    const std::size_t rounded = RoundedUp(size, alignment);
    m_data.reset(static_cast<std::byte*>(std::aligned_alloc(alignment, rounded)));
    if (m_data != nullptr && alignment == kHugePage) {
        ::madvise(m_data.get(), rounded, MADV_HUGEPAGE);  // a wish; the buffer works without
    }
}

void TransferBuffer::Fill(std::byte value) {
    std::fill_n(m_data.get(), m_size, value);
}

void TransferBuffer::FillWithNoise() {
    std::uint64_t state = 0x9E3779B97F4A7C15ULL;
    for (std::size_t offset = 0; offset < m_size; offset += sizeof(state)) {
        state ^= state << 13;  // xorshift64 (Marsaglia, "Xorshift RNGs", 2003)
        state ^= state >> 7;
        state ^= state << 17;
        std::memcpy(m_data.get() + offset, &state, std::min(sizeof(state), m_size - offset));
    }
}

void TransferBuffer::Releaser::operator()(std::byte* data) const {
    std::free(data);  // NOLINT(cppcoreguidelines-no-malloc): what aligned_alloc gave
}
