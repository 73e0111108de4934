#include "CoreClasses/FileReadWriteWorker.h"
#include "CoreClasses/FileReadWriteWorkerFields.h"
#include "Platform/Clock.h"
#include "SupportingClasses/CTime.h"

#include <algorithm>
#include <array>
#include <memory>

// What a test measures: phases and fragments, rates, peaks, and the table of the slowest transfers.

namespace {

/// Bytes over whole seconds in KB/s: an integer division, then a truncated one by 1024 in floating point.
std::uint32_t RateKBPS(std::uint64_t bytes, std::uint32_t seconds) {
    const std::uint64_t bytesPerSecond = bytes / seconds;
    return static_cast<std::uint32_t>(static_cast<double>(bytesPerSecond) * (1.0 / 1024.0));
}

ReadTimeRecord* RecordAt(const CPtrArray& table, int index) {
    return static_cast<ReadTimeRecord*>(table.GetAt(index));
}

}  // namespace

const FileReadWriteWorker::DirectionFields& FileReadWriteWorker::FieldsOf(Direction direction) {
    using Worker = FileReadWriteWorker;
    using Results = IOTestResults;
    static constexpr DirectionFields read{
        .phaseCode = kPhaseRead,
        .phaseSeconds = &Worker::m_readPhaseSeconds,
        .secondsTotal = &Worker::m_readSecondsTotal,
        .phaseStart = &Worker::m_readPhaseStart,
        .fragmentStart = &Worker::m_readFragmentStart,
        .bytesAtFragmentStart = &Worker::m_bytesReadAtFragmentStart,
        .started = &Results::m_readsStarted,
        .completed = &Results::m_readsCompleted,
        .bytes = &Results::m_bytesRead,
        .recentKBPS = &Results::m_readRecentKBPS,
        .averageKBPS = &Results::m_readAvgKBPS,
        .errors = &Results::m_readErrors,
        .peakMS = &Results::m_readPeakMS,
        .overflow = &Results::m_readCountOverflow,
    };
    static constexpr DirectionFields write{
        .phaseCode = kPhaseWrite,
        .phaseSeconds = &Worker::m_writePhaseSeconds,
        .secondsTotal = &Worker::m_writeSecondsTotal,
        .phaseStart = &Worker::m_writePhaseStart,
        .fragmentStart = &Worker::m_writeFragmentStart,
        .bytesAtFragmentStart = &Worker::m_bytesWrittenAtFragmentStart,
        .started = &Results::m_writesStarted,
        .completed = &Results::m_writesCompleted,
        .bytes = &Results::m_bytesWritten,
        .recentKBPS = &Results::m_writeRecentKBPS,
        .averageKBPS = &Results::m_writeAvgKBPS,
        .errors = &Results::m_writeErrors,
        .peakMS = &Results::m_writePeakMS,
        .overflow = &Results::m_writeCountOverflow,
    };
    return direction == Direction::Read ? read : write;
}

void FileReadWriteWorker::BeginPhase(Direction direction) {
    const DirectionFields& fields = FieldsOf(direction);
    const std::uint32_t now = CTime::GetCurrentTime();
    const std::scoped_lock lock(m_lock);
    m_results.m_phase = fields.phaseCode;
    this->*fields.phaseStart = now;
    UpdateStatisticsLocked(now);
    BeginFragmentLocked(fields, now);
    m_phaseStartUS = Clock::Current().Microseconds();
    StatisticsOf(direction).deadlines.BeginPhase();
}

void FileReadWriteWorker::EndPhase(Direction direction) {
    const DirectionFields& fields = FieldsOf(direction);
    const std::uint32_t now = CTime::GetCurrentTime();
    const std::scoped_lock lock(m_lock);
    this->*fields.secondsTotal += now - this->*fields.phaseStart;
    this->*fields.phaseStart = 0;
    this->*fields.fragmentStart = 0;
    m_results.m_phase = kPhaseNone;
    StatisticsOf(direction).phaseUS += Clock::Current().Microseconds() - m_phaseStartUS;
}

void FileReadWriteWorker::StartNewFragment(Direction direction) {
    const std::uint32_t now = CTime::GetCurrentTime();
    const std::scoped_lock lock(m_lock);
    UpdateStatisticsLocked(now);
    BeginFragmentLocked(FieldsOf(direction), now);
}

void FileReadWriteWorker::BeginFragmentLocked(const DirectionFields& fields, std::uint32_t now) {
    m_transfersInFragment = 0;
    this->*fields.bytesAtFragmentStart = m_results.*fields.bytes;
    this->*fields.fragmentStart = now;
}

void FileReadWriteWorker::UpdateStatistics() {
    const std::uint32_t now = CTime::GetCurrentTime();
    const std::scoped_lock lock(m_lock);
    UpdateStatisticsLocked(now);
}

void FileReadWriteWorker::UpdateStatisticsLocked(std::uint32_t now) {
    UpdateDirectionLocked(FieldsOf(Direction::Read), now);
    UpdateDirectionLocked(FieldsOf(Direction::Write), now);
}

void FileReadWriteWorker::UpdateDirectionLocked(const DirectionFields& fields, std::uint32_t now) {
    if (!(m_results.*fields.started)) {
        return;
    }
    const std::uint32_t phaseStart = this->*fields.phaseStart;
    const std::uint64_t bytes = m_results.*fields.bytes;
    const std::uint32_t seconds = this->*fields.secondsTotal + (phaseStart != 0 ? now - phaseStart : 0);
    m_results.*fields.averageKBPS = seconds == 0 ? 0 : RateKBPS(bytes, seconds);

    const std::uint32_t fragmentStart = this->*fields.fragmentStart;
    if (fragmentStart == 0) {
        m_results.*fields.recentKBPS = 0;
    } else if (now != fragmentStart) {
        m_results.*fields.recentKBPS = RateKBPS(bytes - this->*fields.bytesAtFragmentStart, now - fragmentStart);
    }

    m_results.*fields.peakMS = 0;
    if (m_results.m_phase == fields.phaseCode) {
        m_results.*fields.peakMS = m_peakTransferMS;
        m_peakTransferMS = 0;
    }
}

void FileReadWriteWorker::CountError(Direction direction) {
    const std::scoped_lock lock(m_lock);
    CountErrorLocked(direction);
}

void FileReadWriteWorker::CountErrorLocked(Direction direction) {
    std::uint32_t& errors = m_results.*FieldsOf(direction).errors;
    if (errors < static_cast<std::uint32_t>(kCounterCap)) {
        ++errors;
    }
    ++StatisticsOf(direction).errors;
}

void FileReadWriteWorker::MarkStarted(Direction direction) {
    const std::scoped_lock lock(m_lock);
    m_results.*FieldsOf(direction).started = true;
}

IOTestResults& FileReadWriteWorker::GetTestResults(IOTestResults& out) {
    const std::scoped_lock lock(m_lock);
    m_results.m_elapsedSeconds = SecondsElapsedLocked();
    m_results.m_isValid = false;
    out = m_results;
    out.m_isValid = true;
    return out;
}

std::uint32_t FileReadWriteWorker::SecondsElapsed() const {
    const std::scoped_lock lock(m_lock);
    return SecondsElapsedLocked();
}

std::uint32_t FileReadWriteWorker::SecondsElapsedLocked() const {
    if (IsDone()) {
        return m_endTime - m_startTime;
    }
    return m_running ? CTime::GetCurrentTime() - m_startTime : 0;
}

TransferStatistics& FileReadWriteWorker::StatisticsOf(Direction direction) {
    return direction == Direction::Read ? m_readStatistics : m_writeStatistics;
}

TransferStatistics FileReadWriteWorker::GetTransferStatistics(Direction direction) const {
    const std::scoped_lock lock(m_lock);
    TransferStatistics copy = direction == Direction::Read ? m_readStatistics : m_writeStatistics;
    if (m_results.m_phase == FieldsOf(direction).phaseCode) {
        copy.phaseUS += Clock::Current().Microseconds() - m_phaseStartUS;
    }
    return copy;
}

FileCacheReport FileReadWriteWorker::GetFileCacheReport() const {
    const std::scoped_lock lock(m_lock);
    return m_fileCacheReport;
}

std::uint32_t FileReadWriteWorker::TickCountMaxRead() const {
    const std::scoped_lock lock(m_lock);
    return m_peakTransferMS;
}

std::uint32_t FileReadWriteWorker::ReadErrCount() const {
    const std::scoped_lock lock(m_lock);
    return m_results.m_readErrors;
}

std::uint32_t FileReadWriteWorker::ReadsCompleted() const {
    const std::scoped_lock lock(m_lock);
    return m_results.m_readsCompleted;
}

std::uint32_t FileReadWriteWorker::TotTicksUsedByReads() const {
    const std::scoped_lock lock(m_lock);
    return m_totalTransferTicks;
}

std::uint32_t FileReadWriteWorker::TotMSUsedByReadsPerHPC() const {
    const std::scoped_lock lock(m_lock);
    return m_totalTransferMS;
}

std::int32_t FileReadWriteWorker::GetReadsOverThreshold() const {
    const std::scoped_lock lock(m_lock);
    return m_readsOverThreshold;
}

void FileReadWriteWorker::SaveInTopReadTimes(const std::uint64_t& milliseconds) {
    if (milliseconds <= m_lowestTopReadTime) {
        return;
    }
    if (ReadTimeRecord* record = RecordAt(m_topReadTimes, m_lowestTopIndex)) {
        *record = {milliseconds, CTime::GetCurrentTime()};
    }
    FindLowestMaxReadTime(m_lowestTopReadTime, m_lowestTopIndex);
}

void FileReadWriteWorker::FindLowestMaxReadTime(std::uint64_t& lowest, int& index) const {
    const ReadTimeRecord* first = RecordAt(m_topReadTimes, 0);
    index = 0;
    lowest = first != nullptr ? first->m_time : 0;
    for (int i = 1; i < m_topReadTimes.GetSize(); ++i) {
        const ReadTimeRecord* record = RecordAt(m_topReadTimes, i);
        if (record != nullptr && record->m_time < lowest) {
            lowest = record->m_time;
            index = i;
        }
    }
}

void FileReadWriteWorker::GetMaxReadTime(std::uint64_t* longest) const {
    if (longest == nullptr) {
        return;
    }
    *longest = 0;
    for (int i = 0; i < m_topReadTimes.GetSize(); ++i) {
        if (const ReadTimeRecord* record = RecordAt(m_topReadTimes, i)) {
            *longest = std::max(*longest, record->m_time);
        }
    }
}

void FileReadWriteWorker::CollectTopReadTimes(int count) {
    if (count == 0 || count == m_topReadTimes.GetSize()) {
        return;
    }
    EmptyReadTimeRecordArray();
    m_topReadTimes.SetSize(count);
    for (int i = 0; i < count; ++i) {
        m_topReadTimes.SetAt(i, std::make_unique<ReadTimeRecord>().release());
    }
}

void FileReadWriteWorker::EmptyReadTimeRecordArray() {
    for (int i = 0; i < m_topReadTimes.GetSize(); ++i) {
        const std::unique_ptr<ReadTimeRecord> owned(RecordAt(m_topReadTimes, i));
        m_topReadTimes.SetAt(i, nullptr);
    }
}
