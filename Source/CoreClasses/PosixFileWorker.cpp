#include "CoreClasses/PosixFileWorker.h"

#include "CoreClasses/COutputMgr.h"
#include "Platform/CStream.h"
#include "Platform/ColonPath.h"
#include "Platform/FileSystem.h"
#include "SupportingClasses/CTime.h"

#include <array>
#include <cstdio>

namespace {

constexpr std::uint64_t kYieldIntervalUS = 501'000;
constexpr mode_t kPermissions = 0666;  // what fopen gives
constexpr std::uint64_t kStretch = 0x20000;
constexpr std::size_t kBlockBytes = 512;
constexpr std::uint64_t kFirstBlock = kStretch - kBlockBytes;
constexpr unsigned char kSampleByte = 0x5B;

/// This method does not consult the system's error numbers.
constexpr int kNoErrorNumber = -1;

bool OpenStream(CStream& stream, const CString& name, const char* mode) {
    const auto nativePath = ColonPath::ToNative(name.View());
    return nativePath && stream.Open(*nativePath, mode, CStream::Buffering::None);
}

class StreamFile final : public AccessMethodFile {
public:
    StreamFile(Direction direction, COutputMgr* output, int readerNumber, std::uint64_t limit)
        : AccessMethodFile(direction, output, readerNumber), m_limit(limit) {}

    [[nodiscard]] bool Open(const CString& name) override {
        if (!OpenStream(m_stream, name, IsReading() ? "r+" : "w+")) {
            if (Output() != nullptr) {
                Output()->Write(kOutError, outLevelSecondary, "Error opening file %s err no %d %s\r", name.CStr(),
                                kNoErrorNumber, CTime::GetCurrentDateTime().CStr());
            }
            return false;
        }
        static_cast<void>(m_stream.SeekTo(0));  // a stream that cannot be positioned shows it in its first transfer
        return true;
    }

    [[nodiscard]] std::uint64_t Limit() const override { return m_limit; }

    void Transfer(std::byte* buffer, std::size_t size) override {
        m_asked = size;
        m_moved = IsReading() ? m_stream.Read(buffer, size) : m_stream.Write(buffer, size);
    }

    [[nodiscard]] TransferOutcome Judge() const override {
        TransferOutcome outcome{.counted = m_moved, .advance = m_moved, .reported = static_cast<std::int64_t>(m_moved)};
        if (IsReading() && m_stream.AtEnd()) {
            outcome.kind = TransferOutcome::Kind::EndOfFile;
        } else if (m_stream.HasError()) {
            outcome.kind = TransferOutcome::Kind::Failed;
        }
        outcome.inexact = IsReading() && m_moved != m_asked;
        return outcome;
    }

    void Close() override {
        m_cacheReport = {.mode = FileCacheMode::Cached, .isVolatile = m_stream.LivesInMemory()};
        m_stream.Close();
    }

    [[nodiscard]] FileCacheReport CacheReport() const override { return m_cacheReport; }

private:
    CStream m_stream;
    std::uint64_t m_limit;
    std::size_t m_asked = 0;
    std::size_t m_moved = 0;
    FileCacheReport m_cacheReport;
};

}  // namespace

PosixFileWorker::PosixFileWorker() : ScratchFileWorker(FileSystem::CanOpenForReading, kPermissions, kYieldIntervalUS) {}

int PosixFileWorker::ReadPhase(FileReadWriteWorker* /*worker*/) {
    StreamFile file(Direction::Read, Output(), ReaderNumber(), AccessMethodFile::kNoLimit);
    return RunPhase(Direction::Read, file);
}

int PosixFileWorker::WritePhase(FileReadWriteWorker* /*worker*/) {
    StreamFile file(Direction::Write, Output(), ReaderNumber(), WriteLimit());
    return RunPhase(Direction::Write, file);
}

int PosixFileWorker::MakeSampleFile(const CString& name) {
    CStream stream;
    if (!OpenStream(stream, name, "w+")) {
        return FailCreation(name, kNoErrorNumber);
    }
    const std::uint64_t size = SampleSize();
    if (size < kBytesPerMB) {
        return 0;
    }
    std::array<unsigned char, kBlockBytes> block{};
    block.fill(kSampleByte);
    std::size_t lastWritten = 0;
    WriteBlocks(kFirstBlock, kStretch, size, [&](std::uint64_t offset) {
        lastWritten = stream.SeekTo(offset) ? stream.Write(block.data(), block.size()) : 0;
    });
    FinishPreparation();
    const bool isClosed = stream.Close();
    return lastWritten == kBlockBytes && isClosed ? 1 : FailSampleData(name, static_cast<int>(lastWritten));
}
