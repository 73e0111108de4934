#pragma once

#include <cstddef>
#include <memory>

/// The memory that transfers go through: page-aligned, so that it serves transfers round the file cache, and so that
/// those through it copy at full speed.
class TransferBuffer {
public:
    /// Alignment of every buffer, in bytes.
    static constexpr std::size_t kAlignment = 4096;

    /// Takes `size` bytes; `Data()` is null when the system cannot give them. The bytes are not set.
    explicit TransferBuffer(std::size_t size);

    [[nodiscard]] std::byte* Data() const { return m_data.get(); }
    [[nodiscard]] std::size_t Size() const { return m_size; }

    /// Sets every byte of the buffer. Setting them also makes the system supply the memory now and not in a timed
    /// transfer.
    void Fill(std::byte value);

    /// Sets the buffer to bytes that neither compress nor repeat, so that storage which compresses or shares equal
    /// blocks does not look faster than it is.
    void FillWithNoise();

private:
    struct Releaser {
        void operator()(std::byte* data) const;
    };

    std::size_t m_size = 0;
    std::unique_ptr<std::byte, Releaser> m_data;
};
