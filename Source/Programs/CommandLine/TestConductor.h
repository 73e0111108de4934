#pragma once

#include "Programs/CommandLine/EventSource.h"
#include "Programs/CommandLine/ProgressDisplay.h"
#include "Programs/CommandLine/TestReport.h"
#include "SupportingClasses/CString.h"

#include <cstdint>
#include <memory>

class COutputMgr;
class FileReadWriteWorker;
class IOTestSelector;

/// Conducts one test from the selection of its access method to its end, as the main window does: writes the log lines
/// of whoever conducts a test, and looks at the worker once a second. Main thread only.
///
///     selecting --> running --stop signal--> stopping --> ended
///         |            |                        |
///         |            +----- worker done ------+--second signal--> ended, worker abandoned
///         +--stop signal, no method, no start--> ended
///
/// It waits for nobody but its events; a transfer that hangs does not keep it from answering them.
class TestConductor {
public:
    /// The log files are open, if there are any. All three outlive the conductor.
    TestConductor(const TestPlan& plan, COutputMgr& output, EventSource& events, ProgressDisplay& display);
    /// Never waits for a worker: an abandoned one that still has not ended is left to run, with everything it uses.
    ~TestConductor();
    TestConductor(const TestConductor&) = delete;
    TestConductor& operator=(const TestConductor&) = delete;

    /// Runs the test and answers with what it showed. Writes every line but "Test stopped" of an abandoned worker,
    /// which might have to wait for it. Call once.
    const TestReport& Run();

    /// The same report; `Run` fills it.
    [[nodiscard]] const TestReport& Report() const { return m_report; }

    /// Whether there is no worker any more, or it has ended in the meantime.
    [[nodiscard]] bool WorkerHasEnded() const;

private:
    [[nodiscard]] bool Select();
    [[nodiscard]] bool Start(int fileAccessMethod);
    void Poll();

    void WaitForNextPass();
    void WaitForEvent(std::uint32_t ms);
    void Handle(int signal);
    void RequestStop(int signal);
    void Abandon();
    void NoteFilesLeft(const std::vector<CString>& names);

    void TakeCopies();
    void MeasureIfDue();
    void TellFirstError();

    COutputMgr& m_output;
    EventSource& m_events;
    ProgressDisplay& m_display;
    TestReport m_report;
    StatusTracker m_tracker;
    std::unique_ptr<IOTestSelector> m_selector;
    std::unique_ptr<FileReadWriteWorker> m_worker;
    CString m_errorText;  ///< the latest error line; the output manager's region guards it
    bool m_hasToldError = false;
    std::uint64_t m_nextPassUS = 0;  ///< on the microsecond clock
    std::uint64_t m_stopUS = 0;      ///< of the first stop signal
    std::uint32_t m_lastSample = 0;  ///< whole seconds of the clock; at first the time of the start
};
