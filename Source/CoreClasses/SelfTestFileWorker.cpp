#include "CoreClasses/SelfTestFileWorker.h"

#include "CoreClasses/COutputMgr.h"
#include "Platform/Clock.h"
#include "SupportingClasses/CTime.h"

namespace {

constexpr const char* kFileName = "SELF-TEST-NULL-FILE";
constexpr std::uint64_t kYieldIntervalUS = 751'000;

// The file that is not made would get one block at the end of each stretch.
constexpr std::uint64_t kStretch = 0x20000;
constexpr std::uint64_t kFirstBlock = 0x1FE00;

class NullFile final : public AccessMethodFile {
public:
    NullFile(Direction direction, COutputMgr* output, int readerNumber, std::uint64_t limit)
        : AccessMethodFile(direction, output, readerNumber), m_limit(limit) {}

    void PrepareBuffer(TransferBuffer& /*buffer*/) override {}
    [[nodiscard]] bool Open(const CString& /*name*/) override { return true; }
    [[nodiscard]] std::uint64_t Limit() const override { return m_limit; }
    void Transfer(std::byte* /*buffer*/, std::size_t size) override { m_size = size; }
    void Close() override {}

    [[nodiscard]] TransferOutcome Judge() const override {
        if (IsReading() && m_size == 0) {
            return {.kind = TransferOutcome::Kind::EndOfFile};
        }
        return {.advance = m_size};
    }

    void LogOpened(const CString& name) const override {
        if (IsReading()) {
            AccessMethodFile::LogOpened(name);
        } else if (Output() != nullptr) {
            Output()->Write(kOutProgress, outLevelSecondary, "Writer %d opened file %s %s", ReaderNumber(), name.CStr(),
                            CTime::GetCurrentDateTime().CStr());
        }
    }

    void LogEndOfFile(const CString& name, const TransferOutcome& /*outcome*/) const override {
        if (Output() != nullptr) {
            Output()->Write(kOutProgress, outLevelSecondary, "EOF detected reader %d file %s %s", ReaderNumber(),
                            name.CStr(), CTime::GetCurrentDateTime().CStr());
        }
    }

    void LogOverThreshold(int milliseconds) const override {
        if (Output() != nullptr) {
            Output()->Write(kOutProgress, outLevelSecondary,
                            IsReading() ? "WARNING: Read Over Threshold reader %d MS=%d at time %s"
                                        : "WARNING: Write Over Threshold reader %d MS=%d at time %s\r",
                            ReaderNumber(), milliseconds, CTime::GetCurrentDateTime().CStr());
        }
    }

    void LogThresholdMaximum() const override {
        if (IsReading()) {
            AccessMethodFile::LogThresholdMaximum();
        } else if (Output() != nullptr) {
            Output()->Write(kOutWarning, outLevelPrimary,
                            "WARNING: Maximum number of write threshold warnings reached on reader %d at time %s",
                            ReaderNumber(), CTime::GetCurrentDateTime().CStr());
        }
    }

private:
    std::uint64_t m_limit;
    std::size_t m_size = 0;
};

std::uint64_t FileLimit(const IOTestParameters& parameters) {
    return std::uint64_t{parameters.m_maxFileSizeMB} * kBytesPerMB;
}

}  // namespace

int SelfTestFileWorker::ReadPhase(FileReadWriteWorker* /*worker*/) {
    NullFile file(Direction::Read, Output(), ReaderNumber(), FileLimit(m_parameters));
    return RunPhase(Direction::Read, file);
}

int SelfTestFileWorker::WritePhase(FileReadWriteWorker* /*worker*/) {
    NullFile file(Direction::Write, Output(), ReaderNumber(), FileLimit(m_parameters));
    return RunPhase(Direction::Write, file);
}

bool SelfTestFileWorker::NewFileName(CString& name) {
    name = kFileName;
    return true;
}

int SelfTestFileWorker::PrepareForReadPhase(FileReadWriteWorker* worker) {
    LogPreparing(kOutProgress);
    FileReadWriteWorker::CleanupFiles(worker);
    m_fileList.AddFile(m_parameters.m_sharedFileInPath ? m_parameters.m_drivePath.CStr() : kFileName);

    Clock& clock = Clock::Current();
    std::uint64_t lastYield = clock.Microseconds();
    const std::uint64_t limit = FileLimit(m_parameters);
    for (std::uint64_t offset = kFirstBlock; offset < limit && !IsStopRequested(); offset += kStretch) {
        const std::uint64_t now = clock.Microseconds();
        if (now - lastYield >= kYieldIntervalUS) {
            lastYield = now;
            LogPreparing(kOutToOutputText);
        }
    }
    return IsStopRequested() ? 0 : 1;
}

void SelfTestFileWorker::LogPreparing(int mask) const {
    if (Output() != nullptr) {
        Output()->Write(mask, outLevelSecondary,
                        "Preparing reader %d for read test.  ** Creating the test file may be time-consuming ** %s",
                        ReaderNumber(), CTime::GetCurrentDateTime().CStr());
    }
}

int SelfTestFileWorker::CleanupFiles(FileReadWriteWorker* /*worker*/) {
    if (m_readFileList == nullptr) {
        return -1;
    }
    CString name;
    while (m_readFileList->RemoveFileThreadSafe(name)) {
    }
    return 0;
}
