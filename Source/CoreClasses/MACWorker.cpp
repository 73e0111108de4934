#include "CoreClasses/MACWorker.h"

#include "CoreClasses/COutputMgr.h"
#include "Platform/ColonPath.h"
#include "Platform/FileSystem.h"
#include "Platform/TransferBuffer.h"
#include "Platform/UncachedFile.h"
#include "SupportingClasses/CTime.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>

namespace {

constexpr std::uint64_t kYieldIntervalUS = 251'000;
constexpr mode_t kPermissions = 0777;
constexpr std::size_t kBlockBytes = std::size_t{4} * kBytesPerMB;
constexpr std::byte kSampleByte{0x5B};
constexpr std::byte kWriteByte{0x1A};

/// Stands for "the transfer moved nothing".
constexpr int kEndOfFileError = -39;

/// What opening a name that has no native form fails with.
constexpr int kNoSuchFile = ENOENT;

/// The free space of a volume that cannot be asked cuts nothing.
constexpr std::uint64_t kUnknownSpace = AccessMethodFile::kNoLimit;

/// Error numbers are printed as signed 16-bit values.
int Printed(int error) {
    return static_cast<std::int16_t>(error);
}

int ErrorOf(const TransferResult& result) {
    if (result.bytes < 0) {
        return result.errorNumber;
    }
    return result.bytes == 0 ? kEndOfFileError : 0;
}

std::uint64_t FreeSpaceOf(const std::string& folder) {
    return FileSystem::FreeBytes(folder.empty() ? "." : folder).value_or(kUnknownSpace);
}

UncachedFile::Cache CacheOf(const IOTestParameters& parameters) {
    return parameters.m_noCache ? UncachedFile::Cache::GoRound : UncachedFile::Cache::Use;
}

class DescriptorFile final : public AccessMethodFile {
public:
    struct Setting {
        std::uint32_t transferBytes = 0;
        UncachedFile::Cache cache = UncachedFile::Cache::Use;
        std::uint64_t limit = kNoLimit;
        std::string spaceFolder{};  ///< of the volume whose free space limits writing
    };

    DescriptorFile(Direction direction, COutputMgr* output, int readerNumber, Setting setting)
        : AccessMethodFile(direction, output, readerNumber), m_setting(std::move(setting)) {}

    void PrepareBuffer(TransferBuffer& buffer) override {
        if (IsReading()) {
            AccessMethodFile::PrepareBuffer(buffer);
        } else {
            buffer.Fill(kWriteByte);
        }
    }

    [[nodiscard]] bool Open(const CString& name) override {
        const auto nativePath = ColonPath::ToNative(name.View());
        const int flags = IsReading() ? O_RDWR : O_RDWR | O_CREAT;
        const auto purpose = IsReading() ? UncachedFile::Purpose::Reading : UncachedFile::Purpose::Writing;
        const int error = nativePath ? m_file.Open(*nativePath, flags, kPermissions, m_setting.cache, purpose,
                                                   m_setting.transferBytes)
                                     : kNoSuchFile;
        if (error != 0) {
            LogOpenFailure(name, nativePath.value_or(""), error);
            return false;
        }
        static_cast<void>(m_file.SeekTo(0));
        m_limit = IsReading() ? kNoLimit : std::min(m_setting.limit, FreeSpaceOf(m_setting.spaceFolder));
        return true;
    }

    [[nodiscard]] std::uint64_t Limit() const override { return m_limit; }

    void Transfer(std::byte* buffer, std::size_t size) override {
        m_asked = size;
        m_result = IsReading() ? m_file.Read(buffer, size) : m_file.Write(buffer, size);
    }

    [[nodiscard]] TransferOutcome Judge() const override {
        const int error = ErrorOf(m_result);
        const auto moved = static_cast<std::uint64_t>(std::max<std::int64_t>(m_result.bytes, 0));
        TransferOutcome outcome{.counted = moved, .advance = moved, .reported = Printed(error)};
        if (error == kEndOfFileError && IsReading()) {
            outcome.kind = TransferOutcome::Kind::EndOfFile;
        } else if (error != 0 && error != kEndOfFileError) {
            outcome.kind = TransferOutcome::Kind::Failed;
        } else if (IsReading()) {
            outcome.reported = m_result.bytes;
            outcome.inexact = moved != m_asked;
        }
        return outcome;
    }

    void Close() override { m_file.Close(UncachedFile::Flush::Start); }

    [[nodiscard]] FileCacheReport CacheReport() const override { return m_file.Report(); }

private:
    void LogOpenFailure(const CString& name, const std::string& nativePath, int error) const {
        if (Output() == nullptr) {
            return;
        }
        const CString now = CTime::GetCurrentDateTime();
        if (IsReading()) {
            Output()->Write(kOutError, outLevelSecondary, "Error opening file %s err no %d %s\r", name.CStr(),
                            Printed(error), now.CStr());
        } else {
            Output()->Write(kOutError, outLevelSecondary, "Error opening file %s %s err no %d %s\r", name.CStr(),
                            nativePath.c_str(), Printed(error), now.CStr());
        }
    }

    Setting m_setting;
    UncachedFile m_file;
    std::uint64_t m_limit = 0;
    std::size_t m_asked = 0;
    TransferResult m_result;
};

}  // namespace

MACWorker::MACWorker() : ScratchFileWorker(FileSystem::Exists, kPermissions, kYieldIntervalUS) {}

int MACWorker::ReadPhase(FileReadWriteWorker* /*worker*/) {
    DescriptorFile file(Direction::Read, Output(), ReaderNumber(),
                        {.transferBytes = m_transferBytes, .cache = CacheOf(m_parameters)});
    return RunPhase(Direction::Read, file);
}

int MACWorker::WritePhase(FileReadWriteWorker* /*worker*/) {
    DescriptorFile file(Direction::Write, Output(), ReaderNumber(),
                        {.transferBytes = m_transferBytes,
                         .cache = CacheOf(m_parameters),
                         .limit = WriteLimit(),
                         .spaceFolder = m_fileSpec.folder});
    return RunPhase(Direction::Write, file);
}

/// Creates the file if it is absent and notes its volume. None, counted and logged, when it cannot be reached.
std::optional<std::string> MACWorker::CreateSampleFile(const CString& name) {
    auto nativePath = ColonPath::ToNative(name.View());
    m_fileSpec = {};
    FileDescriptor created;
    const int error = nativePath ? created.Open(*nativePath, O_RDWR | O_CREAT, kPermissions) : kNoSuchFile;
    if (!nativePath || !FileSystem::Exists(*nativePath)) {
        FailCreation(name, Printed(error));
        return std::nullopt;
    }
    m_fileSpec.folder = FileSystem::FolderOf(*nativePath);
    return nativePath;
}

/// The size of the sample file, cut to the free space, which is told then.
std::uint64_t MACWorker::SizeThatFits() const {
    const std::uint64_t space = FreeSpaceOf(m_fileSpec.folder);
    if (space >= SampleSize()) {
        return SampleSize();
    }
    if (Output() != nullptr) {
        Output()->Write(kOutWarning, outLevelPrimary,
                        "Warning: not enough space on disk; read test file is smaller than maximum size requested. "
                        "Available space = (high %lu low %lu) bytes %s\r",
                        static_cast<unsigned long>(space >> 32), static_cast<unsigned long>(space & 0xFFFFFFFF),
                        CTime::GetCurrentDateTime().CStr());
    }
    return space;
}

int MACWorker::MakeSampleFile(const CString& name) {
    const auto nativePath = CreateSampleFile(name);
    if (!nativePath) {
        return 0;
    }
    const std::uint64_t size = SizeThatFits();
    if (size < kBytesPerMB) {
        return 0;
    }
    TransferBuffer block(kBlockBytes);
    if (block.Data() == nullptr) {
        return FailSampleData(name, Printed(ENOMEM));
    }
    block.Fill(kSampleByte);

    UncachedFile file;
    int error = file.Open(*nativePath, O_RDWR, 0, CacheOf(m_parameters), UncachedFile::Purpose::Writing, kBlockBytes);
    if (file.IsOpen()) {
        error = file.SeekTo(size);
    }
    WriteBlocks(0, kBlockBytes, size, [&](std::uint64_t offset) {
        // A file that could not be opened fails every write, which ends in the message below.
        static_cast<void>(file.SeekTo(offset));
        const TransferResult result = file.Write(block.Data(), block.Size());
        error = result.bytes < 0 ? result.errorNumber : 0;
    });
    FinishPreparation();
    const int closeError = file.Close(UncachedFile::Flush::Wait);
    error = error != 0 ? error : closeError;
    return error == 0 ? 1 : FailSampleData(name, Printed(error));
}
