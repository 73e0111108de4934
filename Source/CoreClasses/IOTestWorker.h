#pragma once

#include "CoreClasses/CFileList.h"
#include "CoreClasses/IOTestParameters.h"
#include "CoreClasses/IOTestResults.h"

#include <atomic>

class COutputMgr;

/// One test, carried out on a thread of its own; a worker runs one test only.
///
///     created --StartWorker true--> started --the thread begins--> running --the thread ends--> done
///
/// Its owner calls, in this order: `SetTestParameters`, `SetOutputMgr`, `StartWorker`; then `GetTestResults` and
/// `IsDone` again and again, and `SetStop` whenever it likes; it deletes the worker once `IsDone` is true (or
/// `StartWorker` was false). Setting the done flag is the thread's last touch of the worker. Nothing here blocks the
/// owner, however long a transfer hangs.
class IOTestWorker {
public:
    IOTestWorker() = default;
    virtual ~IOTestWorker() = default;
    IOTestWorker(const IOTestWorker&) = delete;
    IOTestWorker& operator=(const IOTestWorker&) = delete;

    /// Starts the test. False when there is nothing to start with, an unusable method or no thread to be had.
    [[nodiscard]] virtual bool StartWorker() = 0;

    /// Copies the results so far into `out`, marked valid, and returns `out`. From any thread; does not wait for a
    /// transfer.
    virtual IOTestResults& GetTestResults(IOTestResults& out) = 0;

    [[nodiscard]] bool IsDone() const { return m_done.load(std::memory_order_acquire); }

    /// Asks the test to end; it does at its next check. From any thread.
    IOTestWorker* SetStop();

    /// Where log lines go; null for no logging. The caller keeps it alive as long as the worker.
    void SetOutputMgr(COutputMgr* outputMgr) { m_outputMgr = outputMgr; }

    /// Before `StartWorker` only.
    void SetTestParameters(const IOTestParameters& parameters);
    void GetTestParameters(IOTestParameters& out) const { out = m_parameters; }

protected:
    [[nodiscard]] bool IsStopRequested() const { return m_stop.load(std::memory_order_relaxed); }

    std::atomic<bool> m_running{false};  ///< the thread is inside its main function
    CFileList m_fileList;
    IOTestResults m_results;
    IOTestParameters m_parameters;
    std::atomic<bool> m_done{false};  ///< never becomes false again
    std::atomic<bool> m_stop{false};
    COutputMgr* m_outputMgr = nullptr;
};
