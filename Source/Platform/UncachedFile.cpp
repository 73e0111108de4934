#include "Platform/UncachedFile.h"

#include "Platform/FileSystem.h"
#include "Platform/TransferBuffer.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <optional>
#include <vector>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace {

constexpr std::uint32_t kUsualBlock = 512;

/// How much of a file's end is looked at to find out whether the cache held it.
constexpr std::uint64_t kInspectedBytes = std::uint64_t{64} << 20;

struct DirectAlignment {
    std::uint32_t memory = 0;
    std::uint32_t offset = 0;  ///< also of sizes; 0 when direct transfers are not supported
};

/// The logical block size of the device under the file; 512 where the file system has no device of its own.
std::uint32_t LogicalBlockSize(int descriptor) {
    struct stat status {};
    if (::fstat(descriptor, &status) != 0) {
        return kUsualBlock;
    }
    const std::string device =
        "/sys/dev/block/" + std::to_string(major(status.st_dev)) + ':' + std::to_string(minor(status.st_dev));
    for (const char* queue : {"/queue", "/../queue"}) {  // the second for a partition
        std::ifstream file(device + queue + "/logical_block_size");
        if (std::uint32_t size = 0; file >> size && size > 0) {
            return size;
        }
    }
    return kUsualBlock;
}

DirectAlignment AlignmentOf(int descriptor) {
#ifdef STATX_DIOALIGN
    struct statx status {};
    if (::statx(descriptor, "", AT_EMPTY_PATH, STATX_DIOALIGN, &status) == 0 &&
        (status.stx_mask & STATX_DIOALIGN) != 0) {
        return {status.stx_dio_mem_align, status.stx_dio_offset_align};
    }
#endif
    const std::uint32_t block = LogicalBlockSize(descriptor);
    return {block, block};
}

/// The share of the file's pages in [begin, end) that the cache holds; none when the system does not tell.
std::optional<double> ResidentShare(int descriptor, std::uint64_t begin, std::uint64_t end) {
    const auto page = static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
    begin -= begin % page;
    const auto length = static_cast<std::size_t>(end - begin);
    void* mapping = ::mmap(nullptr, length, PROT_READ, MAP_SHARED, descriptor, static_cast<off_t>(begin));
    if (mapping == MAP_FAILED) {
        return std::nullopt;
    }
    std::vector<unsigned char> pages((length + page - 1) / page);
    const int answer = ::mincore(mapping, length, pages.data());
    ::munmap(mapping, length);
    if (answer != 0 || pages.empty()) {
        return std::nullopt;
    }
    const auto resident = std::count_if(pages.begin(), pages.end(), [](unsigned char p) { return (p & 1U) != 0; });
    return static_cast<double>(resident) / static_cast<double>(pages.size());
}

}  // namespace

const char* FileCacheModeName(FileCacheMode mode) {
    switch (mode) {
        case FileCacheMode::Unknown:
            return "unknown";
        case FileCacheMode::Cached:
            return "cached";
        case FileCacheMode::DroppedAfterUse:
            return "dropped after use";
        case FileCacheMode::Bypassed:
            return "bypassed";
    }
    return "unknown";
}

int UncachedFile::Open(const std::string& nativePath, int flags, mode_t permissions, Cache cache, Purpose purpose,
                       std::size_t transferBytes) {
    *this = UncachedFile();
    const int error = m_file.Open(nativePath, flags, permissions);
    if (error != 0) {
        return error;
    }
    m_purpose = purpose;
    if (cache == Cache::Use) {
        m_report.mode = FileCacheMode::Cached;
    } else {
        DropFromCache();  // pages left by earlier use must not answer for the storage
        GoRoundCache(transferBytes);
    }
    return 0;
}

void UncachedFile::GoRoundCache(std::size_t transferBytes) {
    const DirectAlignment alignment = AlignmentOf(m_file.Descriptor());
    if (alignment.offset == 0 || alignment.memory > TransferBuffer::kAlignment) {
        FallBack("the file system has no direct transfers");
    } else if (transferBytes % alignment.offset != 0) {
        FallBack("the transfer size is no multiple of the storage's block");
    } else if (!SwitchDirect(true)) {
        FallBack("the file system refused direct transfers");
    } else {
        m_offsetAlignment = alignment.offset;
        m_report.mode = FileCacheMode::Bypassed;
    }
}

void UncachedFile::FallBack(const char* reason) {
    if (m_directNow) {
        static_cast<void>(SwitchDirect(false));
    }
    m_report.refusal = reason;
    m_report.mode = FileCacheMode::DroppedAfterUse;
}

bool UncachedFile::SwitchDirect(bool on) {
    const int flags = ::fcntl(m_file.Descriptor(), F_GETFL);
    const int wanted = on ? flags | O_DIRECT : flags & ~O_DIRECT;
    if (flags < 0 || ::fcntl(m_file.Descriptor(), F_SETFL, wanted) != 0) {
        return false;
    }
    m_directNow = on;
    return true;
}

void UncachedFile::PrepareFor(std::size_t size) {
    if (m_report.mode != FileCacheMode::Bypassed) {
        return;
    }
    const bool fits = m_position % m_offsetAlignment == 0 && size % m_offsetAlignment == 0;
    if (fits != m_directNow && !SwitchDirect(fits)) {
        FallBack("the file system refused direct transfers");
    }
}

bool UncachedFile::RefusesDirect(const TransferResult& result) const {
    return m_directNow && result.bytes < 0 && result.errorNumber == EINVAL;
}

void UncachedFile::Advance(const TransferResult& result) {
    if (result.bytes > 0) {
        m_position += static_cast<std::uint64_t>(result.bytes);
        m_furthest = std::max(m_furthest, m_position);
    }
}

TransferResult UncachedFile::Read(void* buffer, std::size_t size) {
    PrepareFor(size);
    TransferResult result = m_file.Read(buffer, size);
    if (RefusesDirect(result)) {
        FallBack("the file system refused a direct read");
        result = m_file.Read(buffer, size);
    }
    Advance(result);
    return result;
}

TransferResult UncachedFile::Write(const void* buffer, std::size_t size) {
    PrepareFor(size);
    TransferResult result = m_file.Write(buffer, size);
    if (RefusesDirect(result)) {
        FallBack("the file system refused a direct write");
        result = m_file.Write(buffer, size);
    }
    Advance(result);
    return result;
}

int UncachedFile::SeekTo(std::uint64_t offset) {
    const int error = m_file.SeekTo(offset);
    if (error == 0) {
        m_position = offset;
    }
    return error;
}

int UncachedFile::Close(Flush flush) {
    if (!m_file.IsOpen()) {
        return 0;
    }
    int error = 0;
    if (m_report.mode == FileCacheMode::DroppedAfterUse) {
        if (flush == Flush::Wait) {
            error = ::fdatasync(m_file.Descriptor()) != 0 ? errno : 0;
        }
        DropFromCache();
    }
    FindOut();
    const int closeError = m_file.Close();
    return error != 0 ? error : closeError;
}

void UncachedFile::FindOut() {
    m_report.isVolatile = FileSystem::LivesInMemory(m_file.Descriptor());
    m_report.mode = m_furthest > 0 ? ModeFound() : FileCacheMode::Unknown;
}

FileCacheMode UncachedFile::ModeFound() const {
    if (m_report.mode == FileCacheMode::Cached || m_report.isVolatile) {
        return FileCacheMode::Cached;
    }
    // Data that is written through the cache stays there until the storage has it; only pages that need no more
    // writing show whether dropping them works.
    if (m_report.mode == FileCacheMode::DroppedAfterUse && m_purpose == Purpose::Writing) {
        return m_report.mode;
    }
    const std::uint64_t begin = m_furthest > kInspectedBytes ? m_furthest - kInspectedBytes : 0;
    const std::optional<double> resident = ResidentShare(m_file.Descriptor(), begin, m_furthest);
    return resident && *resident > 0.5 ? FileCacheMode::Cached : m_report.mode;
}

void UncachedFile::DropFromCache() const {
    ::posix_fadvise(m_file.Descriptor(), 0, 0, POSIX_FADV_DONTNEED);
}
