#include "Platform/FileSystem.h"

#include "Platform/FileDescriptor.h"

#include <cerrno>

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <sys/statvfs.h>
#include <unistd.h>

bool FileSystem::Exists(const std::string& nativePath) {
    struct stat status {};
    return ::lstat(nativePath.c_str(), &status) == 0;
}

bool FileSystem::CanOpenForReading(const std::string& nativePath) {
    FileDescriptor file;
    return file.Open(nativePath, O_RDONLY | O_NONBLOCK) == 0;
}

int FileSystem::CreateNew(const std::string& nativePath, mode_t permissions) {
    FileDescriptor file;
    return file.Open(nativePath, O_RDWR | O_CREAT | O_EXCL, permissions);
}

bool FileSystem::RemoveFile(const std::string& nativePath) {
    return ::unlink(nativePath.c_str()) == 0 || errno == ENOENT || errno == ENOTDIR;
}

std::optional<std::uint64_t> FileSystem::FreeBytes(const std::string& nativePath) {
    struct statvfs space {};
    if (::statvfs(nativePath.c_str(), &space) != 0) {
        return std::nullopt;
    }
    return static_cast<std::uint64_t>(space.f_bavail) * space.f_frsize;
}

bool FileSystem::LivesInMemory(int descriptor) {
    struct statfs description {};
    return ::fstatfs(descriptor, &description) == 0 &&
           (description.f_type == TMPFS_MAGIC || description.f_type == RAMFS_MAGIC);
}

std::string FileSystem::FolderOf(const std::string& nativePath) {
    const std::size_t slash = nativePath.rfind('/');
    return slash == 0 || slash == std::string::npos ? "/" : nativePath.substr(0, slash);
}
