#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include <sys/types.h>

/// What a transfer call answered: the bytes moved, or -1 and the system's error number.
struct TransferResult {
    std::int64_t bytes = 0;
    int errorNumber = 0;  ///< 0 unless `bytes` is -1
};

/// An open file, closed with the object. Interrupted calls are repeated. Not shared between threads.
class FileDescriptor {
public:
    FileDescriptor() = default;
    ~FileDescriptor();
    FileDescriptor(FileDescriptor&& other) noexcept;
    FileDescriptor& operator=(FileDescriptor&& other) noexcept;
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;

    /// Opens `nativePath` with the system's `flags` and permission bits; closes what was open. Answers 0 or the
    /// system's error number.
    [[nodiscard]] int Open(const std::string& nativePath, int flags, mode_t permissions = 0);

    [[nodiscard]] bool IsOpen() const { return m_descriptor >= 0; }
    [[nodiscard]] int Descriptor() const { return m_descriptor; }

    [[nodiscard]] TransferResult Read(void* buffer, std::size_t size) const;
    [[nodiscard]] TransferResult Write(const void* buffer, std::size_t size) const;

    /// Positions at `offset` from the start. Answers 0 or the system's error number.
    [[nodiscard]] int SeekTo(std::uint64_t offset) const;

    /// Closes the file; nothing happens when it is not open. Answers 0 or the system's error number.
    int Close();

private:
    int m_descriptor = -1;
};
