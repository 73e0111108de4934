#pragma once

#include "Platform/FileDescriptor.h"

#include <cstddef>
#include <cstdint>
#include <string>

/// How the transfers of a test met the system's file cache. In the order of growing independence of it.
enum class FileCacheMode {
    Unknown,          ///< nothing has been transferred yet, or nothing is transferred at all
    Cached,           ///< through the file cache
    DroppedAfterUse,  ///< through the file cache, whose pages of the file are given up before and after use
    Bypassed          ///< between the program's buffer and the storage
};

/// What was found out about a file's transfers and the file cache.
struct FileCacheReport {
    FileCacheMode mode = FileCacheMode::Unknown;
    bool isVolatile = false;        ///< the file system keeps its files in memory only
    const char* refusal = nullptr;  ///< why the cache was not gone round though that was wished for, in words
};

/// "cached", "dropped after use", "bypassed" or "unknown".
[[nodiscard]] const char* FileCacheModeName(FileCacheMode mode);

/// A file for sequential transfers that goes round the file cache where the system lets it.
///
/// Going round is O_DIRECT, switched on the open descriptor. It asks for buffers, sizes and offsets that are multiples
/// of a block. A transfer size that is none, and a file system that refuses the switch or the first transfer, make the
/// whole file fall back to cached transfers that are dropped from the cache at its opening and closing. A single
/// transfer that does not fit (the odd last piece of a file) goes through the cache by itself.
class UncachedFile {
public:
    enum class Cache { Use, GoRound };
    enum class Purpose { Reading, Writing };
    /// What closing does with written data that is still on its way: storage that is about to be read must have it.
    enum class Flush { Start, Wait };

    /// Opens `nativePath` with the system's `flags`; transfers will mostly be of `transferBytes`, from buffers
    /// aligned to `TransferBuffer::kAlignment`. Answers 0 or the system's error number.
    [[nodiscard]] int Open(const std::string& nativePath, int flags, mode_t permissions, Cache cache, Purpose purpose,
                           std::size_t transferBytes);

    [[nodiscard]] bool IsOpen() const { return m_file.IsOpen(); }

    /// Moves up to `size` bytes at the position and advances it.
    [[nodiscard]] TransferResult Read(void* buffer, std::size_t size);
    [[nodiscard]] TransferResult Write(const void* buffer, std::size_t size);

    /// Positions at `offset` from the start. Answers 0 or the system's error number.
    [[nodiscard]] int SeekTo(std::uint64_t offset);

    /// Closes the file, and finds out first how the transfers met the file cache if there were any: see `Report`.
    /// Answers 0 or the system's error number.
    int Close(Flush flush);

    /// What was wished for and granted so far; after `Close`, what was found in force by looking at which of the file's
    /// pages the cache held. A file that lives in the cache is `Cached` whatever its file system granted.
    [[nodiscard]] const FileCacheReport& Report() const { return m_report; }

private:
    void GoRoundCache(std::size_t transferBytes);
    void FallBack(const char* reason);
    [[nodiscard]] bool SwitchDirect(bool on);
    void PrepareFor(std::size_t size);
    [[nodiscard]] bool RefusesDirect(const TransferResult& result) const;
    void Advance(const TransferResult& result);
    void FindOut();
    [[nodiscard]] FileCacheMode ModeFound() const;
    void DropFromCache() const;

    FileDescriptor m_file;
    FileCacheReport m_report;
    Purpose m_purpose = Purpose::Reading;
    bool m_directNow = false;  ///< O_DIRECT is set on the descriptor at this moment
    std::uint32_t m_offsetAlignment = 1;
    std::uint64_t m_position = 0;
    std::uint64_t m_furthest = 0;  ///< end of what was transferred since opening
};
