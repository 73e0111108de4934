#include "Programs/CommandLine/TestConductor.h"

#include "CoreClasses/COutputMgr.h"
#include "CoreClasses/FileReadWriteWorker.h"
#include "CoreClasses/IOTestSelector.h"
#include "CoreClasses/TestLog.h"
#include "CoreClasses/WorkerFactory.h"
#include "Platform/Clock.h"
#include "Platform/FileSystem.h"
#include "Programs/CommandLine/TextFormat.h"
#include "SupportingClasses/CTime.h"

#include <algorithm>
#include <csignal>

namespace {

constexpr std::uint64_t kPassUS = 1'000'000;
constexpr std::uint32_t kSelectionPollMS = 10;
constexpr std::uint32_t kSampleSeconds = 6;

/// Session managers send the same SIGTERM or SIGHUP more than once; only a later one is impatience. A person's second
/// SIGINT always is.
constexpr std::uint64_t kSameRequestUS = 2'000'000;

const char* SignalName(int signal) {
    switch (signal) {
        case SIGINT:
            return "SIGINT";
        case SIGTERM:
            return "SIGTERM";
        case SIGHUP:
            return "SIGHUP";
        default:
            return "a signal";
    }
}

/// Both forms of a scratch file's path, without asking the system: its storage may hang.
TypedPath ScratchFilePath(const CString& name, const TestPlan& plan) {
    const std::string colon(name.View());
    TypedPath path{.colon = colon, .native = std::nullopt};
    if (plan.nativePath) {
        const std::string folder =
            plan.parameters.m_sharedFileInPath ? FileSystem::FolderOf(*plan.nativePath) : *plan.nativePath;
        path.native = (folder == "/" ? "" : folder) + '/' + colon.substr(colon.rfind(':') + 1);
    }
    return path;
}

}  // namespace

TestSample::TestSample(const IOTestResults& results)
    : elapsedSeconds(results.m_elapsedSeconds),
      phase(results.m_phase), writes{results.m_writesStarted, results.m_writesCompleted, results.m_writeAvgKBPS,
                                     results.m_writeRecentKBPS, results.m_writePeakMS},
      reads{results.m_readsStarted, results.m_readsCompleted, results.m_readAvgKBPS, results.m_readRecentKBPS,
            results.m_readPeakMS} {}

TestConductor::TestConductor(const TestPlan& plan, COutputMgr& output, EventSource& events, ProgressDisplay& display)
    : m_output(output), m_events(events), m_display(display) {
    m_report.plan = plan;
    m_report.startedAt = Clock::Current().LocalDateTime();
    m_output.SetErrCStrPtr(&m_errorText);
}

TestConductor::~TestConductor() {
    if (WorkerHasEnded()) {
        m_output.SetErrCStrPtr(nullptr);
    } else {
        static_cast<void>(m_worker.release());
    }
    if (m_selector != nullptr && !m_selector->IsDone()) {
        static_cast<void>(m_selector.release());
    }
}

bool TestConductor::WorkerHasEnded() const {
    return m_worker == nullptr || m_worker->IsDone();
}

const TestReport& TestConductor::Run() {
    m_lastSample = CTime::GetCurrentTime();
    m_report.plan.parameters.LogToStdOut(m_output);
    if (Select()) {
        Poll();
    }
    m_display.Clear();
    return m_report;
}

/// Answers whether the test runs.
bool TestConductor::Select() {
    TestLog::Selecting(m_output);
    m_selector = std::make_unique<IOTestSelector>();
    m_selector->BeginTestSelection(m_report.plan.parameters);
    while (!m_selector->IsDone() && !m_report.isAbandoned) {
        WaitForEvent(kSelectionPollMS);
    }
    WaitForEvent(0);
    if (m_report.signal != 0) {
        m_report.state = TestReport::State::Interrupted;
        return false;
    }
    const int method = m_selector->GetSelectedFileAccessMethod();
    m_selector.reset();
    return Start(method);
}

bool TestConductor::Start(int fileAccessMethod) {
    SelectedWorker selected = MakeWorker(fileAccessMethod);
    TestLog::Selected(m_output, selected.methodName);
    if (selected.worker == nullptr) {
        TestLog::CouldNotSelect(m_output);
        m_report.error = "no access method could be selected";
        m_report.state = TestReport::State::NotStarted;
        return false;
    }
    FileReadWriteWorker& worker = *selected.worker;
    worker.SetTestParameters(m_report.plan.parameters);
    worker.SetOutputMgr(&m_output);
    if (m_report.plan.thresholdMS > 0) {
        worker.SetReadThresholdWatch(m_report.plan.thresholdMS);
        worker.SetReadOverThresholdWarnMax(m_report.plan.thresholdWarnings);
    }
    if (!worker.StartWorker()) {
        TestLog::CouldNotStart(m_output);
        m_report.error = "the access method could not start the test";
        m_report.state = TestReport::State::NotStarted;
        return false;
    }
    m_worker = std::move(selected.worker);
    m_report.methodName = selected.methodName;
    return true;
}

/// One pass a second. Whether the worker is done is asked before its results are copied, so that the copy of the last
/// pass is complete.
void TestConductor::Poll() {
    m_nextPassUS = Clock::Current().Microseconds();
    bool isDone = false;
    while (!isDone) {
        WaitForNextPass();
        isDone = m_worker->IsDone();
        TakeCopies();
        if (m_report.isAbandoned) {
            break;
        }
        MeasureIfDue();
        TellFirstError();
        if (!isDone) {
            m_display.Show(m_tracker.Status());
        }
    }
    m_report.state = m_report.signal != 0 ? TestReport::State::Interrupted : TestReport::State::Completed;
    if (isDone && !m_report.isAbandoned) {
        NoteFilesLeft(m_worker->FilesNotRemoved());
        m_worker.reset();
        TestLog::Stopped(m_output);
    }
}

void TestConductor::WaitForNextPass() {
    const std::uint64_t start = Clock::Current().Microseconds();
    // A process that was halted for a while does not make up for the passes that it missed.
    m_nextPassUS = std::max(m_nextPassUS + kPassUS, start);
    std::uint64_t now = start;
    do {
        WaitForEvent(static_cast<std::uint32_t>((m_nextPassUS - now + 999) / 1000));
        now = Clock::Current().Microseconds();
    } while (now < m_nextPassUS && !m_report.isAbandoned);
}

void TestConductor::WaitForEvent(std::uint32_t ms) {
    if (const std::optional<int> signal = m_events.Wait(ms)) {
        Handle(*signal);
    }
}

void TestConductor::Handle(int signal) {
    if (signal == SIGUSR1) {
        TakeCopies();
        m_display.ShowNow(m_tracker.Status());
    } else {
        RequestStop(signal);
    }
}

void TestConductor::RequestStop(int signal) {
    const std::uint64_t now = Clock::Current().Microseconds();
    if (m_report.signal == 0) {
        m_report.signal = signal;
        m_stopUS = now;
        if (m_worker != nullptr) {
            m_worker->SetStop();
            m_display.Say(
                TextFormat::Print("stopping after %s; waiting for the transfer in progress (interrupt again to "
                                  "quit at once)",
                                  SignalName(signal)));
        }
    } else if (signal == SIGINT || now - m_stopUS >= kSameRequestUS) {
        m_report.signal = signal;
        Abandon();
    }
}

void TestConductor::Abandon() {
    m_report.isAbandoned = true;
    if (m_worker == nullptr) {
        return;
    }
    NoteFilesLeft(m_worker->FilesNotRemoved());
    NoteFilesLeft(m_worker->ScratchFiles());
}

void TestConductor::NoteFilesLeft(const std::vector<CString>& names) {
    for (const CString& name : names) {
        m_report.scratchFilesLeft.push_back(ScratchFilePath(name, m_report.plan));
    }
}

void TestConductor::TakeCopies() {
    if (m_worker == nullptr) {
        return;
    }
    m_worker->GetTestResults(m_report.results);
    m_report.writes = m_worker->GetTransferStatistics(Direction::Write);
    m_report.reads = m_worker->GetTransferStatistics(Direction::Read);
    m_report.fileCache = m_worker->GetFileCacheReport();
    m_report.overThreshold = m_worker->GetReadsOverThreshold();
    m_tracker.Update(m_report, Clock::Current().Microseconds(), m_report.signal != 0);
}

void TestConductor::MeasureIfDue() {
    const std::uint32_t now = CTime::GetCurrentTime();
    if (!m_report.results.m_isValid || now - m_lastSample < kSampleSeconds) {
        return;
    }
    m_report.results.m_isValid = false;
    m_lastSample = now;
    TestLog::Measurement(m_output, m_report.results);
    m_report.samples.emplace_back(m_report.results);
}

/// The first error of a test mostly says what is wrong with it; all of them are in the error log. What cannot be
/// finished because of a stop is no news.
void TestConductor::TellFirstError() {
    if (m_hasToldError || m_report.Errors() == 0 || m_report.signal != 0) {
        return;
    }
    m_hasToldError = true;
    m_output.SafeEnterOutputCS();
    std::string text(m_errorText.View());
    m_output.SafeLeaveOutputCS();
    std::erase(text, '\r');
    m_display.Say(text + (m_report.plan.errorLog ? "" : " (--error-log keeps all of them)"));
}
