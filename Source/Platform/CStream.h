#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

/// A C stream, closed with the object. Not shared between threads.
class CStream {
public:
    enum class Buffering {
        Full,  ///< the C library's own
        None   ///< each transfer is one system call, so that its time and its error are its own
    };

    /// Opens `nativePath` in an `fopen` mode; closes what was open. False when it cannot be opened.
    [[nodiscard]] bool Open(const std::string& nativePath, const std::string& mode, Buffering buffering);

    [[nodiscard]] bool IsOpen() const { return m_file != nullptr; }

    /// Bytes read or written; a short count comes with `HasError` or `AtEnd`.
    [[nodiscard]] std::size_t Read(void* buffer, std::size_t size);
    [[nodiscard]] std::size_t Write(const void* buffer, std::size_t size);

    /// Positions at `offset` bytes from the start; false when the system refuses.
    [[nodiscard]] bool SeekTo(std::uint64_t offset);

    [[nodiscard]] bool HasError() const;
    [[nodiscard]] bool AtEnd() const;

    /// Whether the file system keeps the file in memory only.
    [[nodiscard]] bool LivesInMemory() const;

    /// Writes what is buffered and closes; nothing happens when no stream is open. False when the last bytes were lost.
    bool Close();

    /// For formatted output and input; null when not open. Stays the property of this object.
    [[nodiscard]] std::FILE* Get() const { return m_file.get(); }

private:
    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    std::unique_ptr<std::FILE, Closer> m_file;
};
