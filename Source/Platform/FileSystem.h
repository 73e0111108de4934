#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include <sys/types.h>

/// Questions and orders to the file system about native paths. Each may block as long as the storage does.
namespace FileSystem {

/// Whether something of that name is there; a dangling symbolic link is.
[[nodiscard]] bool Exists(const std::string& nativePath);

/// Whether the file can be opened for reading. Does not wait for the other end of a pipe.
[[nodiscard]] bool CanOpenForReading(const std::string& nativePath);

/// Makes an empty file where nothing is. Answers 0, EEXIST when something is there, or another system error number.
[[nodiscard]] int CreateNew(const std::string& nativePath, mode_t permissions);

/// Removes a file (never a folder). False when it is still there, or when that cannot be told.
bool RemoveFile(const std::string& nativePath);

/// Bytes that this process may still write on the file system which holds the path; none when it cannot be asked.
[[nodiscard]] std::optional<std::uint64_t> FreeBytes(const std::string& nativePath);

/// Whether an open file lies on a file system that keeps its files in memory only.
[[nodiscard]] bool LivesInMemory(int descriptor);

/// The folder part of an absolute path: "/" for a path in the root folder.
[[nodiscard]] std::string FolderOf(const std::string& nativePath);

}  // namespace FileSystem
