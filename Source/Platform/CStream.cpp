#include "Platform/CStream.h"

#include "Platform/FileSystem.h"

#include <cerrno>

bool CStream::Open(const std::string& nativePath, const std::string& mode, Buffering buffering) {
    m_file.reset();
    const std::string privateMode = mode + 'e';  // not inherited by child processes
    do {
        m_file.reset(std::fopen(nativePath.c_str(), privateMode.c_str()));
    } while (m_file == nullptr && errno == EINTR);
    if (m_file != nullptr && buffering == Buffering::None) {
        std::setvbuf(m_file.get(), nullptr, _IONBF, 0);
    }
    return m_file != nullptr;
}

std::size_t CStream::Read(void* buffer, std::size_t size) {
    return std::fread(buffer, 1, size, m_file.get());
}

std::size_t CStream::Write(const void* buffer, std::size_t size) {
    return std::fwrite(buffer, 1, size, m_file.get());
}

bool CStream::SeekTo(std::uint64_t offset) {
    return ::fseeko(m_file.get(), static_cast<off_t>(offset), SEEK_SET) == 0;
}

bool CStream::HasError() const {
    return std::ferror(m_file.get()) != 0;
}

bool CStream::AtEnd() const {
    return std::feof(m_file.get()) != 0;
}

bool CStream::LivesInMemory() const {
    return FileSystem::LivesInMemory(::fileno(m_file.get()));
}

bool CStream::Close() {
    return m_file == nullptr || std::fclose(m_file.release()) == 0;
}
