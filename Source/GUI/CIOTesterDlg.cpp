#include "GUI/CIOTesterDlg.h"

#include "CoreClasses/FileReadWriteWorker.h"
#include "CoreClasses/IOTestSelector.h"
#include "CoreClasses/TestLog.h"
#include "CoreClasses/WorkerFactory.h"
#include "Framework/Base/LException.h"
#include "Framework/Base/LThread.h"
#include "Framework/UI/ControlLinks.h"
#include "Framework/UI/Drawing.h"
#include "Framework/UI/LApplication.h"
#include "Framework/UI/LButton.h"
#include "Framework/UI/LPicture.h"
#include "Framework/UI/LStdButton.h"
#include "Framework/UI/StandardAlert.h"
#include "GUI/CPicture.h"
#include "GUI/CScroll.h"
#include "GUI/CSettingsDlg.h"
#include "GUI/CShutDownDlg.h"
#include "GUI/CSlider.h"
#include "GUI/Commands.h"
#include "GUI/DigiString.h"
#include "GUI/Graph.h"
#include "GUI/Stage.h"
#include "SupportingClasses/CTime.h"
#include "SupportingClasses/ORBFSLoader.h"
#include "ThreadClasses/CShutdownThread.h"
#include "ThreadClasses/CTimerThread.h"

#include <cstdio>
#include <string>
#include <utility>

// Building the window and conducting a test. What the readouts and the log show is in CIOTesterDlgReadouts.cpp, the
// chart in CIOTesterDlgChart.cpp.

namespace {

constexpr int kSettingsLayout = 2129;
constexpr int kShutDownLayout = 131;

constexpr std::uint32_t kStartDelayMS = 500;
constexpr std::uint32_t kLogIntervalSeconds = 6;
constexpr int kTicksPerStatusPass = 3;
// Entries of the program's string list.
constexpr int kCouldNotStartString = 15;
constexpr int kAlreadyRunningString = 19;
constexpr int kAlreadyRunningExplanation = 20;
constexpr int kDidNotStartExplanation = 21;
constexpr int kNoMethodExplanation = 23;

CString ProgramString(int index) {
    CString text;
    text.LoadString(index);
    return text;
}

template <typename T>
T* Required(LView& window, PaneIDT id) {
    return ThrowIfNil(FindPane<T>(window, id), "pane " + std::to_string(id) + " of the main window");
}

}  // namespace

CIOTesterDlg::CIOTesterDlg(LStream* stream) : LDialogBox(stream), m_lastLogTime(CTime::GetCurrentTime()) {
    ORBFSLoader::LoadORBFSLibrary();
}

CIOTesterDlg::~CIOTesterDlg() {
    EndTest();
}

void CIOTesterDlg::EndTest() {
    if (m_worker != nullptr && !m_startTask.IsWaiting()) {
        m_worker->SetStop();
        while (!m_worker->IsDone()) {  // until then it writes to the logs
            LThread::YieldOneTick();
        }
        m_worker.reset();
        TestLog::Stopped(m_outputMgr);
    }
    while (m_testSelector != nullptr && !m_testSelector->IsDone()) {
        LThread::YieldOneTick();
    }
    m_outputMgr.CloseFiles();
    for (const CString& log : m_outputMgr.TakeIncompleteLogs()) {
        std::fprintf(stderr, "gaugeline: the log %s is not complete: its storage did not take all lines\n", log.CStr());
    }
}

void CIOTesterDlg::FindPanes() {
    m_elapsed = Required<DigiString>(*this, 210);
    m_remaining = Required<DigiString>(*this, 220);
    m_completed = Required<DigiString>(*this, 230);
    m_recentRate = Required<DigiString>(*this, 240);
    m_averageRate = Required<DigiString>(*this, 250);
    m_errors = Required<DigiString>(*this, 260);
    m_chart = Required<Graph>(*this, 300);
    m_slider = Required<CSlider>(*this, 1);
    m_scroll = Required<CScroll>(*this, 2);
    m_start = Required<LStdButton>(*this, 15);
    m_stop = Required<LStdButton>(*this, 16);
    m_settings = Required<LStdButton>(*this, 11);
    m_lamp = Required<CPicture>(*this, 26);
    m_partPicture = Required<LPicture>(*this, 27);
    m_followPicture = Required<LPicture>(*this, 40);
    // This system's scroll bar has an arrow at each end: 860 scrolls back, and 760, for arrows drawn together, goes
    // unused.
    if (auto* unused = FindPane<LButton>(*this, 760)) {
        unused->Disable();
        unused->Hide();
    }
    m_scrollBack = FindPane<LButton>(*this, 860);
    m_scrollForward = FindPane<LButton>(*this, 770);
    m_scroll->SetArrowLayout(1);
}

void CIOTesterDlg::FinishCreateSelf() {
    FindPanes();
    SetReadoutColors();
    SetChartAppearance();
    Chart_ClearData();
    LinkListenerToControls(*this, *this);
    DisplayTestParameters();
    UpdateUIWithStatus();
    m_stop->Disable();
    m_outputMgr.SetOutputCStrPtr(&m_outputText);
    m_outputMgr.SetErrCStrPtr(&m_errorText);
    LThread::Resume(std::make_unique<CTimerThread>(this));
}

void CIOTesterDlg::ListenToMessage(MessageT message, void* /*ioParam*/) {
    switch (message) {
        case kMessageSettings:
            OnClickSettings();
            break;
        case kMessageMinimise:
            LApplication::Instance().CollapseAllWindows();
            break;
        case kMessageClose:
            DoClose();
            break;
        case kMessageStart:
            OnStart();
            break;
        case kMessageStop:
            OnStop();
            break;
        case kMessageScrolled:
            if (m_showAllSamples == 0) {
                Chart_SetChartXRange(m_scroll->GetValue(), m_visibleSamples);
            }
            break;
        case kMessageScrollBack:
            ScrollByOne(-1);
            break;
        case kMessageScrollForward:
            ScrollByOne(1);
            break;
        case kMessageTimeSpan:
            Chart_AdjustVisibleTimeRange(6 - m_slider->GetValue() + m_sampleCount);
            break;
        default:
            break;
    }
}

bool CIOTesterDlg::ObeyCommand(CommandT command, void* ioParam) {
    if (command == kCommandSettingsAccepted) {
        OnChangeSettings();
        return true;
    }
    return LDialogBox::ObeyCommand(command, ioParam);  // closing included, which comes back as DoClose
}

bool CIOTesterDlg::FindCommandStatus(CommandT command) {
    return command == kCommandSettingsAccepted || LDialogBox::FindCommandStatus(command);
}

void CIOTesterDlg::OnStart() {
    if (TestIsStarted()) {
        StandardAlert::Show(*this, ProgramString(kAlreadyRunningString), ProgramString(kAlreadyRunningExplanation));
        return;
    }
    Stage::iStage = Stage::kBlank;
    Chart_ClearData();
    m_testSelector = std::make_unique<IOTestSelector>();
    m_methodName.Empty();
    m_outputMgr.SafeEnterOutputCS();
    m_errorText.Empty();
    m_outputMgr.SafeLeaveOutputCS();
    SetDescriptorForPaneID(38, CString());
    Stage::iStage = Stage::kLive;
    UpdateUIWithStatus();
    m_parameters.LogToStdOut(m_outputMgr);
    TestLog::Selecting(m_outputMgr);
    m_testSelector->BeginTestSelection(m_parameters);
}

void CIOTesterDlg::OnStop() {
    m_stop->Disable();
    m_start->Enable();
    if (TestIsStarted()) {
        StopActiveTest();
    }
}

/// A selection that still runs is discarded when it completes.
void CIOTesterDlg::StopActiveTest() {
    m_stopRequested = true;
    if (m_worker != nullptr) {
        m_worker->SetStop();
    }
}

void CIOTesterDlg::OnTimer() {
    if (m_startTask.IsWaiting()) {
        return;
    }
    if (m_timerTicks == 0) {
        m_timerTicks = 1;
        m_parameters = IOTestParameters();
        DisplayTestParameters();
    }
    ++m_timerTicks;
    if (!TestIsStarted()) {
        if (m_nextParameters) {
            TakeParameters(*std::exchange(m_nextParameters, std::nullopt));
        }
        return;
    }
    if (m_timerTicks % kTicksPerStatusPass == 0) {
        MaintainTestStatus();
        UpdateUIWithStatus();
    }
    if (TestIsStarted()) {
        m_lamp->Draw();
    }
}

void CIOTesterDlg::MaintainTestStatus() {
    if (m_testSelector != nullptr) {
        if (m_testSelector->IsDone()) {
            HandleCompletedTestSelector();
        }
        return;
    }
    if (m_worker == nullptr) {
        return;
    }
    m_worker->GetTestResults(m_results);
    if (m_worker->IsDone()) {
        m_worker.reset();
        m_stopRequested = false;
        TestLog::Stopped(m_outputMgr);
    }
}

void CIOTesterDlg::HandleCompletedTestSelector() {
    if (m_stopRequested) {
        m_testSelector.reset();
        m_stopRequested = false;
        return;
    }
    Chart_ClearData();
    SelectedWorker selected = MakeWorker(m_testSelector->GetSelectedFileAccessMethod());
    m_methodName = selected.methodName;
    TestLog::Selected(m_outputMgr, selected.methodName);
    m_worker = std::move(selected.worker);
    m_testSelector.reset();
    if (m_worker == nullptr) {
        RefuseStart(kNoMethodExplanation);
        TestLog::CouldNotSelect(m_outputMgr);
        m_stopRequested = false;
        return;
    }
    m_worker->SetTestParameters(m_parameters);
    m_worker->SetOutputMgr(&m_outputMgr);
    UpdateUIWithStatus();
    Refresh();
    m_startTask.Start(kStartDelayMS, [this] { StartMadeWorker(); });
}

void CIOTesterDlg::StartMadeWorker() {
    if (!m_worker->StartWorker()) {
        m_stopRequested = false;
        RefuseStart(kDidNotStartExplanation);
        TestLog::CouldNotStart(m_outputMgr);
        m_worker.reset();
    }
    UpdateUIWithStatus();
}

void CIOTesterDlg::RefuseStart(int explanation) {
    StandardAlert::Show(*this, ProgramString(kCouldNotStartString), ProgramString(explanation));
}

void CIOTesterDlg::UpdateUIWithStatus() {
    if (m_results.m_isValid) {
        m_results.m_isValid = false;
        ShowPhase();
        const std::uint32_t now = CTime::GetCurrentTime();
        if (now - m_lastLogTime >= kLogIntervalSeconds) {
            Chart_SaveAndShowResults(m_results);
            LogResults(m_results);
            m_lastLogTime = now;
        }
    }
    ShowElapsedTime();
    ShowRemainingTime();
    ShowTexts();
    UpdateButtons();
}

/// Between two phases the readouts keep showing the one before.
void CIOTesterDlg::ShowPhase() {
    if (m_results.m_phase == kPhaseRead || m_results.m_phase == kPhaseWrite) {
        m_shownPhase = m_results.m_phase;
    }
    if (m_shownPhase == kPhaseRead) {
        LEDS_DisplayReadResults();
    } else if (m_shownPhase == kPhaseWrite) {
        LEDS_DisplayWriteResults();
    } else {
        SetDescriptorForPaneID(37, CString());
        EmptyResultReadouts();
    }
}

void CIOTesterDlg::UpdateButtons() {
    const auto enable = [](LPane& pane, bool isEnabled) { isEnabled ? pane.Enable() : pane.Disable(); };
    const bool isIdle = !TestIsStarted();
    enable(*m_start, isIdle);
    enable(*m_stop, !isIdle && !m_stopRequested);
    enable(*m_settings, isIdle);
}

void CIOTesterDlg::OnClickSettings() {
    if (LApplication::Instance().IsOpen(m_settingsDlg)) {
        m_settingsDlg->Select();
        return;
    }
    m_settingsDlg = ThrowIfNil(dynamic_cast<CSettingsDlg*>(CreateWindow(kSettingsLayout, this)), "the settings window");
    m_settingsDlg->OpenFor(m_parameters, m_outputMgr);
}

void CIOTesterDlg::OnChangeSettings() {
    const IOTestParameters& accepted = ThrowIfNil(m_settingsDlg, "the settings window")->Parameters();
    if (TestIsStarted()) {
        m_nextParameters = accepted;
    } else {
        TakeParameters(accepted);
    }
}

void CIOTesterDlg::TakeParameters(const IOTestParameters& parameters) {
    m_parameters = parameters;
    m_methodName.Empty();
    SetDescriptorForPaneID(36, m_methodName);
    m_results.ClearResults();
    m_lastLogTime = CTime::GetCurrentTime();
    Chart_ClearData();
    DisplayTestParameters();
    m_shownPhase = kPhaseNone;
}

void CIOTesterDlg::DoClose() {
    if (!TestIsStarted()) {
        ORBFSLoader::UnLoadORBFSLibrary();
        char now = 0;
        ProcessCommand(kCommandQuitNow, &now);
        return;
    }
    StopActiveTest();
    if (m_isShuttingDown) {
        return;  // asked twice; the first wait goes on
    }
    m_isShuttingDown = true;
    auto* progress =
        ThrowIfNil(dynamic_cast<CShutDownDlg*>(CreateWindow(kShutDownLayout, this)), "the shutdown window");
    progress->SetIOTestMainDlg(*this);
    progress->Show();
    LThread::Resume(std::make_unique<CShutdownThread>(progress));
}

void CIOTesterDlg::DrawSelf() {
    const Drawing::StateSaver saved;
    const Rect frame = CalcLocalFrameRect();
    Drawing::RGBForeColor({0x9000, 0x3A00, 0xAC00});
    Drawing::PenSize(4, 4);
    Drawing::FrameRoundRect(Drawing::SetRect(frame.left + 8, frame.top + 22, frame.right - 8, frame.bottom - 4), 30,
                            30);
}
