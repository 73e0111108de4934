#pragma once

#include "CoreClasses/AccessMethodFile.h"
#include "CoreClasses/IOTestWorker.h"
#include "CoreClasses/TransferStatistics.h"
#include "Platform/CriticalRegion.h"
#include "SupportingClasses/CPtrArray.h"

#include <cstdint>
#include <mutex>

class TransferBuffer;

/// The sequential write/read engine: runs a test's cycle of phases on its thread, paces, times and counts every
/// transfer. An access method derives from it and does the file work.
///
/// A phase is one call of `WritePhase` or `ReadPhase`; a pass is one opening of one file in it; a fragment is a stretch
/// of a phase, of at least five seconds and `m_minTransfersPerFragment` transfers, over which the recent rate is taken.
///
/// The setters are for before `StartWorker`, which overwrites transfer size, file list, reader number, open delay and
/// pacing interval. `GetTestResults` and the accessors may be called from any thread at any time: they take the
/// worker's lock, which no transfer, pause or log line holds.
class FileReadWriteWorker : public IOTestWorker {
public:
    FileReadWriteWorker();
    /// Neither stops nor waits for the thread: delete a worker only when it is done or was not started.
    ~FileReadWriteWorker() override;

    [[nodiscard]] bool StartWorker() final;
    IOTestResults& GetTestResults(IOTestResults& out) final;

    /// One read or write phase, on the worker's thread, called with the worker itself. Returns 0.
    virtual int ReadPhase(FileReadWriteWorker* worker) = 0;
    virtual int WritePhase(FileReadWriteWorker* worker) = 0;

    /// Deletes every listed file but one that the test path itself names. -1 when there is no list, else 0. A file that
    /// cannot be deleted is passed over.
    virtual int VCleanupFiles();

    /// Makes sure that there is a file to read, and lists it. 0 when the read phase cannot run.
    virtual int PrepareForReadPhase(FileReadWriteWorker* worker) = 0;

    /// What a method needs once before and after its test; false makes the start fail.
    virtual bool PrepareWorker() = 0;
    virtual bool CleanupWorker() = 0;

    void SetTransferSize(std::uint32_t bytes) { m_transferBytes = bytes; }
    void SetFileList(CFileList* list) { m_readFileList = list; }
    void SetReaderNumber(int number) { m_readerNumber = number; }
    void SetFileOpenDelayMS(int ms) { m_fileOpenDelayMS = ms; }
    void SetXFERDelayMS(int ms) { m_transferDelayMS = ms; }
    /// A region that several workers share makes them take turns, one transfer at a time with at least the interval
    /// (set below, in ms) between; null or an interval of 0 for none. Not owned.
    void SetGlobalReadCritSecPtr(CriticalRegion* region) { m_globalReadRegion = region; }
    void SetGlobalReadIntervalMS(int ms) { m_globalReadIntervalMS = ms; }
    /// Transfers of more than `ms` are counted, and logged while `ms` is not 0.
    void SetReadThresholdWatch(int ms) { m_readThresholdMS = ms; }
    /// The most over-threshold lines that are logged; -1 for no limit.
    void SetReadOverThresholdWarnMax(int count) { m_thresholdWarnMax = count; }

    [[nodiscard]] std::uint32_t TickCountMaxRead() const;
    [[nodiscard]] std::uint32_t ReadErrCount() const;
    [[nodiscard]] std::uint32_t ReadsCompleted() const;
    [[nodiscard]] std::uint32_t TotTicksUsedByReads() const;
    [[nodiscard]] std::uint32_t TotMSUsedByReadsPerHPC() const;
    [[nodiscard]] std::int32_t GetReadsOverThreshold() const;
    [[nodiscard]] int GetOpenErrs() const { return 0; }
    /// The table of `ReadTimeRecord` pointers; look at it only when the worker does not run.
    [[nodiscard]] CPtrArray* GetReadTimeRecordPtrArray() { return &m_topReadTimes; }

    /// Exact figures of one direction. The copy is about 35 KB.
    [[nodiscard]] TransferStatistics GetTransferStatistics(Direction direction) const;
    /// The least independence of the file cache that any finished pass was found to have.
    [[nodiscard]] FileCacheReport GetFileCacheReport() const;
    /// The scratch files that the test has made and not yet removed (colon paths); none for an existing file under
    /// test.
    [[nodiscard]] std::vector<CString> ScratchFiles() const;
    /// The scratch files (colon paths) that the test has tried to remove and that are still there.
    [[nodiscard]] std::vector<CString> FilesNotRemoved() const;

    void SafeEnterOutputCS();
    void SafeLeaveOutputCS();

    /// The thread's body; called with the worker itself. Returns 0.
    int DoReadsThreadControlFunction(void* worker);

    /// -1 for a null worker, else the result of its `VCleanupFiles`.
    static int CleanupFiles(FileReadWriteWorker* worker);

    // Phases and fragments, called on the worker's thread.
    void BeginWritePhase() { BeginPhase(Direction::Write); }
    void EndWritePhase() { EndPhase(Direction::Write); }
    void StartNewWriteFragment() { StartNewFragment(Direction::Write); }
    void BeginReadPhase() { BeginPhase(Direction::Read); }
    void EndReadPhase() { EndPhase(Direction::Read); }
    void StartNewReadFragment() { StartNewFragment(Direction::Read); }
    /// Computes rates and peaks anew.
    void UpdateStatistics();

    [[nodiscard]] std::uint32_t SecondsElapsed() const;

    // The table of the slowest transfers: the N longest times of the test, reads and writes alike.
    void SaveInTopReadTimes(const std::uint64_t& milliseconds);
    void FindLowestMaxReadTime(std::uint64_t& lowest, int& index) const;
    void GetMaxReadTime(std::uint64_t* longest) const;
    /// Makes the table hold `count` zero records; nothing for 0 and for the size it has.
    void CollectTopReadTimes(int count);
    /// Deletes the records and leaves their slots empty.
    void EmptyReadTimeRecordArray();

protected:
    /// Runs one phase over `file` until its time is up, a stop is asked for, or there is no name for a scratch file.
    /// Returns 0.
    int RunPhase(Direction direction, AccessMethodFile& file);

    /// The name for a write phase whose file list is empty; false ends the phase.
    [[nodiscard]] virtual bool NewFileName(CString& name) = 0;

    void CountError(Direction direction);
    void MarkStarted(Direction direction);

    /// For the lines of a method; null when the worker has no output manager, and then nothing is logged.
    [[nodiscard]] COutputMgr* Output() const { return m_outputMgr; }
    [[nodiscard]] int ReaderNumber() const { return m_readerNumber; }

    // The fields below are settled before the thread starts or belong to the worker's thread, but for those that m_lock
    // guards.

    std::uint32_t m_writePhaseSeconds = 0;
    std::uint32_t m_readPhaseSeconds = 0;
    std::int32_t m_minTransfersPerFragment = 5;
    std::int32_t m_transfersInFragment = 0;
    std::int32_t m_nextFileNumber = 0;  ///< tried next for a scratch file's name
    std::int32_t m_thresholdWarnings = 0;
    std::int32_t m_thresholdWarnMax = 50;  ///< -1 for no limit
    std::int32_t m_readThresholdMS = 0;    ///< 0: count, but warn of nothing
    CriticalRegion* m_globalReadRegion = nullptr;
    std::int32_t m_fileOpenDelayMS = 0;  ///< pause after each file
    std::int32_t m_transferDelayMS = 0;  ///< pacing interval between the starts of transfers; 0: unpaced
    std::int32_t m_readerNumber = -1;
    CFileList* m_readFileList = nullptr;  ///< what the phases take names from; not owned
    std::uint32_t m_transferBytes = 0x80000;
    std::int32_t m_globalReadIntervalMS = 0;

private:
    struct DirectionFields;
    struct PhaseRun;

    [[nodiscard]] static const DirectionFields& FieldsOf(Direction direction);

    // The thread's body and its cycle.
    void RunCycles();
    void RunCycle();
    void RemoveListedFile(const CString& name);
    void RemoveOwnFilesBesideShared();
    /// Whether `name` is the existing file that the user gave to be tested.
    [[nodiscard]] bool IsSharedFile(const CString& name) const;
    void LogAndLinger();
    [[nodiscard]] std::uint64_t TransfersCompleted() const;

    // The phase loop, in the order of its nesting.
    void RunPasses(PhaseRun& phase, AccessMethodFile& file);
    [[nodiscard]] bool ChooseFile(Direction direction, CString& name);
    [[nodiscard]] bool RunPass(PhaseRun& phase, AccessMethodFile& file, const CString& name);
    void RollFragment(PhaseRun& phase);
    static void Pause(const PhaseRun& phase);
    [[nodiscard]] std::uint64_t TimedTransfer(PhaseRun& phase, AccessMethodFile& file, std::size_t size) const;
    [[nodiscard]] TransferOutcome::Kind Account(PhaseRun& phase, AccessMethodFile& file, const CString& name,
                                                std::uint64_t durationUS);
    [[nodiscard]] bool CountTimeLocked(std::uint64_t milliseconds);
    [[nodiscard]] bool CountOutcomeLocked(Direction direction, const TransferOutcome& outcome,
                                          std::uint64_t durationUS);
    void CountErrorLocked(Direction direction);
    void WarnOfThreshold(const AccessMethodFile& file, std::uint64_t milliseconds);
    void NoteFileCache(const FileCacheReport& report);
    void FailWithoutBuffer(Direction direction);

    // Statistics.
    void BeginPhase(Direction direction);
    void EndPhase(Direction direction);
    void StartNewFragment(Direction direction);
    void UpdateStatisticsLocked(std::uint32_t now);
    void UpdateDirectionLocked(const DirectionFields& fields, std::uint32_t now);
    void BeginFragmentLocked(const DirectionFields& fields, std::uint32_t now);
    [[nodiscard]] std::uint32_t SecondsElapsedLocked() const;
    [[nodiscard]] TransferStatistics& StatisticsOf(Direction direction);

    /// Guards m_results and everything below. Held for a few additions at a time.
    mutable std::mutex m_lock;
    std::uint32_t m_writeSecondsTotal = 0;  ///< in finished phases
    std::uint32_t m_readSecondsTotal = 0;
    std::uint32_t m_readPhaseStart = 0;  ///< whole seconds of the clock; 0 when none runs
    std::uint32_t m_writePhaseStart = 0;
    std::uint64_t m_bytesReadAtFragmentStart = 0;
    std::uint64_t m_bytesWrittenAtFragmentStart = 0;
    std::uint32_t m_readFragmentStart = 0;  ///< whole seconds of the clock; 0 when none
    std::uint32_t m_writeFragmentStart = 0;
    std::int32_t m_lowestTopIndex = 0;
    std::int32_t m_readsOverThreshold = 0;
    std::uint32_t m_endTime;  ///< of the thread; whole seconds of the clock
    std::uint32_t m_startTime;
    std::uint32_t m_totalTransferMS = 0;  ///< wraps
    std::uint32_t m_peakTransferMS = 0;   ///< since the last update that took it; one field for both directions
    CPtrArray m_topReadTimes;             ///< of owned `ReadTimeRecord*`
    std::uint64_t m_lowestTopReadTime = 0;
    std::uint32_t m_totalTransferTicks = 0;  ///< wraps
    TransferStatistics m_readStatistics;
    TransferStatistics m_writeStatistics;
    std::uint64_t m_phaseStartUS = 0;  ///< of the running phase, on the microsecond clock
    FileCacheReport m_fileCacheReport;
    std::vector<CString> m_filesNotRemoved;
};
