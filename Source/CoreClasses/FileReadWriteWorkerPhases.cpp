#include "CoreClasses/COutputMgr.h"
#include "CoreClasses/FileReadWriteWorker.h"
#include "CoreClasses/FileReadWriteWorkerFields.h"
#include "Framework/Base/LThread.h"
#include "Platform/Clock.h"
#include "Platform/TransferBuffer.h"
#include "SupportingClasses/CTime.h"

#include <algorithm>
#include <mutex>

// The one phase loop of every access method and both directions. Where threads took turns, a transfer loop had to yield
// to the display every now and then; these threads run side by side, so it only paces, transfers and counts.

namespace {

/// Room beyond the transfer size that every transfer buffer has.
constexpr std::size_t kBufferSlack = 10;

/// A fragment lasts longer than this many whole seconds.
constexpr std::uint32_t kFragmentSeconds = 4;

}  // namespace

/// What a phase keeps while it runs.
struct FileReadWriteWorker::PhaseRun {
    PhaseRun(Direction phaseDirection, TransferBuffer& transferBuffer, std::uint32_t phaseSeconds)
        : direction(phaseDirection), buffer(transferBuffer), seconds(phaseSeconds) {}

    [[nodiscard]] bool HasTimeLeft(std::uint32_t now) const { return now - start < seconds; }
    /// Read off the latest clock reading, which is that of the last transfer's end: it costs no reading of its own.
    [[nodiscard]] std::uint32_t Now() const { return clock.LocalSecondsAt(lastReadingUS); }

    Clock& clock = Clock::Current();
    Direction direction;
    TransferBuffer& buffer;
    std::uint32_t seconds;  ///< length of the phase
    std::uint32_t start = clock.LocalSeconds();
    std::uint32_t fragmentStart = start;
    std::uint64_t lastReadingUS = 0;
    std::int32_t pauseMS = 0;  ///< before the next transfer
    std::uint64_t offset = 0;  ///< in the open file
};

int FileReadWriteWorker::RunPhase(Direction direction, AccessMethodFile& file) {
    TransferBuffer buffer(std::size_t{m_transferBytes} + kBufferSlack);
    const bool hasBuffer = buffer.Data() != nullptr;
    if (hasBuffer) {
        file.PrepareBuffer(buffer);
    }
    PhaseRun phase(direction, buffer, this->*FieldsOf(direction).phaseSeconds);
    BeginPhase(direction);
    MarkStarted(direction);
    if (hasBuffer) {
        RunPasses(phase, file);
    } else {
        FailWithoutBuffer(direction);
    }
    EndPhase(direction);
    return 0;
}

void FileReadWriteWorker::RunPasses(PhaseRun& phase, AccessMethodFile& file) {
    while (!IsStopRequested() && phase.HasTimeLeft(phase.clock.LocalSeconds())) {
        CString name;
        if (!ChooseFile(phase.direction, name)) {
            return;
        }
        const bool transferred = RunPass(phase, file, name);
        if (IsStopRequested()) {
            return;
        }
        if (m_fileOpenDelayMS != 0) {
            LThread::Sleep(static_cast<std::uint32_t>(m_fileOpenDelayMS));
        }
        if (!transferred) {
            LThread::YieldOneTick();  // an unusable path or a full volume fails at once, again and again
        }
    }
}

void FileReadWriteWorker::FailWithoutBuffer(Direction direction) {
    CountError(direction);
    if (m_outputMgr != nullptr) {
        m_outputMgr->Write(
            kOutError, outLevelSecondary, "Error: no memory for a transfer buffer of %lu bytes, reader %d %s\r",
            static_cast<unsigned long>(m_transferBytes), m_readerNumber, CTime::GetCurrentDateTime().CStr());
    }
}

/// Reading takes the listed files in turn. Writing does so too, but never takes an existing file under test, which the
/// reading of an earlier cycle has listed: writing begins with emptying what it writes to.
bool FileReadWriteWorker::ChooseFile(Direction direction, CString& name) {
    if (direction == Direction::Write && ScratchFiles().empty()) {
        if (!NewFileName(name)) {
            return false;
        }
        m_fileList.AddFile(name.CStr());
        return true;
    }
    do {
        m_readFileList->GetNextFileThreadSafe(name);
    } while (direction == Direction::Write && IsSharedFile(name));
    return true;
}

/// One opening of one file. Answers whether it completed a transfer.
bool FileReadWriteWorker::RunPass(PhaseRun& phase, AccessMethodFile& file, const CString& name) {
    if (!file.Open(name)) {
        CountError(phase.direction);
        return false;
    }
    file.LogOpened(name);
    phase.pauseMS = m_transferDelayMS;
    phase.offset = 0;
    phase.lastReadingUS = phase.clock.Microseconds();
    const std::uint64_t limit = file.Limit();
    bool transferred = false;
    while (!IsStopRequested() && phase.offset < limit && phase.HasTimeLeft(phase.Now())) {
        RollFragment(phase);
        std::size_t size = m_transferBytes;
        if (phase.direction == Direction::Write) {
            size = static_cast<std::size_t>(std::min<std::uint64_t>(size, limit - phase.offset));
        }
        Pause(phase);
        const std::uint64_t durationUS = TimedTransfer(phase, file, size);
        if (Account(phase, file, name, durationUS) != TransferOutcome::Kind::Completed) {
            break;
        }
        transferred = true;
    }
    file.Close();
    NoteFileCache(file.CacheReport());
    return transferred;
}

void FileReadWriteWorker::RollFragment(PhaseRun& phase) {
    const std::uint32_t now = phase.Now();
    if (now - phase.fragmentStart > kFragmentSeconds && m_transfersInFragment >= m_minTransfersPerFragment) {
        StartNewFragment(phase.direction);
        phase.fragmentStart = now;
    }
    ++m_transfersInFragment;
}

/// The pause counts from the last transfer's end, not from the end of the bookkeeping behind it.
void FileReadWriteWorker::Pause(const PhaseRun& phase) {
    if (phase.pauseMS > 0) {
        phase.clock.SleepUntil(phase.lastReadingUS + static_cast<std::uint64_t>(phase.pauseMS) * 1000);
    }
}

std::uint64_t FileReadWriteWorker::TimedTransfer(PhaseRun& phase, AccessMethodFile& file, std::size_t size) const {
    const bool takesTurns = m_globalReadRegion != nullptr && m_globalReadIntervalMS != 0;
    std::unique_lock<CriticalRegion> turn;
    if (takesTurns) {
        turn = std::unique_lock(*m_globalReadRegion);
    }
    const std::uint64_t before = phase.clock.Microseconds();
    file.Transfer(phase.buffer.Data(), size);
    phase.lastReadingUS = phase.clock.Microseconds();
    if (takesTurns) {
        phase.clock.SleepMilliseconds(static_cast<std::uint32_t>(m_globalReadIntervalMS));
    }
    return phase.lastReadingUS - before;
}

/// Times, judges and counts the transfer just made, then writes the lines that it deserves.
TransferOutcome::Kind FileReadWriteWorker::Account(PhaseRun& phase, AccessMethodFile& file, const CString& name,
                                                   std::uint64_t durationUS) {
    const std::uint64_t milliseconds = durationUS / 1000;
    if (m_transferDelayMS != 0) {
        const auto interval = static_cast<std::uint64_t>(m_transferDelayMS);
        phase.pauseMS = static_cast<std::int32_t>(interval - std::min(interval, milliseconds));
    }
    TransferOutcome outcome;
    bool isOverThreshold = false;
    bool isCounted = false;
    {
        const std::scoped_lock lock(m_lock);
        isOverThreshold = CountTimeLocked(milliseconds);
        outcome = file.Judge();
        isCounted = CountOutcomeLocked(phase.direction, outcome, durationUS);
    }
    phase.offset += outcome.advance;
    if (isOverThreshold) {
        WarnOfThreshold(file, milliseconds);
    }
    if (outcome.kind == TransferOutcome::Kind::EndOfFile) {
        file.LogEndOfFile(name, outcome);
    } else if (outcome.kind == TransferOutcome::Kind::Failed) {
        file.LogFailure(name, outcome);
    } else if (outcome.inexact && isCounted) {
        file.LogInexactRead(m_transferBytes, outcome);
    }
    return outcome.kind;
}

/// Answers whether the transfer was over the threshold.
bool FileReadWriteWorker::CountTimeLocked(std::uint64_t milliseconds) {
    if (milliseconds > m_lowestTopReadTime) {
        SaveInTopReadTimes(milliseconds);
    }
    const auto lowWord = static_cast<std::uint32_t>(milliseconds);
    m_totalTransferMS += lowWord;
    const bool isOverThreshold = static_cast<std::int32_t>(lowWord) > m_readThresholdMS;
    if (isOverThreshold && m_readsOverThreshold < kCounterCap) {
        ++m_readsOverThreshold;
    }
    if (milliseconds != 0) {
        m_peakTransferMS = std::max(m_peakTransferMS, lowWord);
        m_totalTransferTicks += lowWord;
    }
    return isOverThreshold;
}

/// Answers whether a completed transfer was counted: at its cap, a counter only marks its overflow, and reading then
/// stops counting bytes as well, so that the rate which the log shows is one of counted transfers.
bool FileReadWriteWorker::CountOutcomeLocked(Direction direction, const TransferOutcome& outcome,
                                             std::uint64_t durationUS) {
    if (outcome.kind == TransferOutcome::Kind::EndOfFile) {
        return false;
    }
    TransferStatistics& statistics = StatisticsOf(direction);
    statistics.times.Add(durationUS);
    if (m_transferDelayMS != 0) {
        statistics.deadlines.Add(durationUS, static_cast<std::uint64_t>(m_transferDelayMS) * 1000);
    }
    if (outcome.kind == TransferOutcome::Kind::Failed) {
        CountErrorLocked(direction);
        return false;
    }
    ++statistics.transfers;
    statistics.bytes += outcome.counted;

    const DirectionFields& fields = FieldsOf(direction);
    std::uint32_t& completed = m_results.*fields.completed;
    const bool isCounted = completed < static_cast<std::uint32_t>(kCounterCap);
    if (isCounted) {
        ++completed;
    } else {
        m_results.*fields.overflow = true;
    }
    if (isCounted || direction == Direction::Write) {
        m_results.*fields.bytes += outcome.counted;
    }
    return isCounted;
}

void FileReadWriteWorker::WarnOfThreshold(const AccessMethodFile& file, std::uint64_t milliseconds) {
    const bool isLimited = m_thresholdWarnMax != -1;
    if (m_readThresholdMS == 0 || (isLimited && m_thresholdWarnings >= m_thresholdWarnMax)) {
        return;
    }
    ++m_thresholdWarnings;
    file.LogOverThreshold(static_cast<int>(static_cast<std::uint32_t>(milliseconds)));
    if (isLimited && m_thresholdWarnings == m_thresholdWarnMax) {
        file.LogThresholdMaximum();
    }
}

/// Keeps the least independence of the cache that a pass was found to have, and logs it when it is news.
void FileReadWriteWorker::NoteFileCache(const FileCacheReport& report) {
    if (report.mode == FileCacheMode::Unknown) {
        return;
    }
    {
        const std::scoped_lock lock(m_lock);
        const FileCacheMode known = m_fileCacheReport.mode;
        if (known != FileCacheMode::Unknown && report.mode >= known) {
            return;
        }
        m_fileCacheReport = report;
    }
    if (m_outputMgr != nullptr) {
        const char* reason = report.refusal != nullptr ? report.refusal
                             : report.isVolatile       ? "volatile: the file system keeps its files in memory only"
                                                       : "";
        m_outputMgr->Write(kOutProgress, outLevelSecondary, "File cache: %s%s%s%s, reader %d %s\r",
                           FileCacheModeName(report.mode), *reason != '\0' ? " (" : "", reason,
                           *reason != '\0' ? ")" : "", m_readerNumber, CTime::GetCurrentDateTime().CStr());
    }
}
