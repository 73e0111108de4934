#include "Platform/FileDescriptor.h"

#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

FileDescriptor::~FileDescriptor() {
    Close();
}

FileDescriptor::FileDescriptor(FileDescriptor&& other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}

FileDescriptor& FileDescriptor::operator=(FileDescriptor&& other) noexcept {
    if (this != &other) {
        Close();
        m_descriptor = std::exchange(other.m_descriptor, -1);
    }
    return *this;
}

int FileDescriptor::Open(const std::string& nativePath, int flags, mode_t permissions) {
    Close();
    do {
        m_descriptor = ::open(nativePath.c_str(), flags | O_CLOEXEC, permissions);
    } while (m_descriptor < 0 && errno == EINTR);
    return m_descriptor < 0 ? errno : 0;
}

TransferResult FileDescriptor::Read(void* buffer, std::size_t size) const {
    ssize_t moved = 0;
    do {
        moved = ::read(m_descriptor, buffer, size);
    } while (moved < 0 && errno == EINTR);
    return {moved, moved < 0 ? errno : 0};
}

TransferResult FileDescriptor::Write(const void* buffer, std::size_t size) const {
    ssize_t moved = 0;
    do {
        moved = ::write(m_descriptor, buffer, size);
    } while (moved < 0 && errno == EINTR);
    return {moved, moved < 0 ? errno : 0};
}

int FileDescriptor::SeekTo(std::uint64_t offset) const {
    return ::lseek(m_descriptor, static_cast<off_t>(offset), SEEK_SET) < 0 ? errno : 0;
}

int FileDescriptor::Close() {
    if (!IsOpen()) {
        return 0;
    }
    // The descriptor is gone even when closing was interrupted; closing again could hit another thread's file.
    const int result = ::close(std::exchange(m_descriptor, -1));
    return result < 0 && errno != EINTR ? errno : 0;
}
