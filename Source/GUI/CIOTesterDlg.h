#pragma once

#include "CoreClasses/COutputMgr.h"
#include "CoreClasses/IOTestParameters.h"
#include "CoreClasses/IOTestResults.h"
#include "Framework/Base/LListener.h"
#include "Framework/UI/LTimerTask.h"
#include "Framework/UI/LWindow.h"
#include "SupportingClasses/CString.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>

class CPicture;
class CScroll;
class CSettingsDlg;
class CSlider;
class DigiString;
class Graph;
class IOTestSelector;
class IOTestWorker;
class LButton;
class LPicture;
class LStdButton;
struct StoredIOResults;

/// The main window: owns the settings, the logs and the last copy of the results, and conducts one test at a time.
/// Everything in it runs on the main thread.
///
/// States, read from the members, with what leads from one to the next:
///
///     idle ----------Start--------------------------------> selecting   (m_testSelector)
///     selecting -----selector done, a method--------------> starting    (m_worker, m_startTask waiting: half a second)
///     selecting -----selector done, no method or stopped--> idle
///     starting ------StartWorker true---------------------> running     (m_worker)
///     starting ------StartWorker false--------------------> idle
///     running -------Stop---------------------------------> stopping    (m_stopRequested)
///     running, stopping ----worker done-------------------> idle
///
/// Stop may be pressed from selecting on; it takes effect at the next transition.
class CIOTesterDlg final : public LDialogBox, public LListener {
public:
    explicit CIOTesterDlg(LStream* stream);
    ~CIOTesterDlg() override;

    void ListenToMessage(MessageT message, void* ioParam) override;
    bool ObeyCommand(CommandT command, void* ioParam) override;
    [[nodiscard]] bool FindCommandStatus(CommandT command) override;

    /// Quits at once when no test is active; otherwise asks it to stop, and quits when it has ended.
    void DoClose() override;

    /// Whether a test is being selected, started, run or stopped: two names of one question.
    [[nodiscard]] bool TestIsStarted() const { return m_testSelector != nullptr || m_worker != nullptr; }
    [[nodiscard]] bool IsATestRunning() const { return TestIsStarted(); }

    /// For a process that ends otherwise than by `DoClose`: stops the test, waits until it has given its files back,
    /// and closes the logs. Shows nothing.
    void EndTest();

    /// A tick of the timer thread. Every third one, while a test is active, is a status pass.
    void OnTimer();

    void OnStart();
    void OnStop();
    void OnClickSettings();
    /// The settings window's record has been accepted.
    void OnChangeSettings();

    void UpdateUIWithStatus();

    // Readouts and the measurement line.
    void LEDS_DisplayReadResults();
    void LEDS_DisplayWriteResults();
    void LogResults(IOTestResults& results);
    void DisplayTestParameters();

    // The chart feed.
    void Chart_SetupSeries();
    void Chart_ClearChartContents();
    void Chart_ClearData();
    void Chart_SaveAndShowResults(IOTestResults& results);
    /// False when the kind of test does not chart the sample's phase.
    bool Chart_AddMeasurementToChart(StoredIOResults& sample);
    void Chart_SetTargetBandwidth(int rate, int divisor);
    void Chart_ClearTargetBandwidth();
    void Chart_SetInfiniteChartX();
    void Chart_SetChartXRange(int first, int count);
    void Chart_AdjustVisibleTimeRange(int requested);
    [[nodiscard]] int SamplesInExcessOfViewableSamples() const;

    [[nodiscard]] const IOTestParameters& Parameters() const { return m_parameters; }
    [[nodiscard]] COutputMgr& Output() { return m_outputMgr; }

    void DrawSelf() override;
    /// A click on the background has no effect.
    void ClickSelf(const SMouseDownEvent& /*event*/) override {}

protected:
    void FinishCreateSelf() override;

private:
    /// What a phase shows on the four readouts.
    struct PhaseReading {
        const char* caption;
        bool isStarted;
        std::uint32_t completed;
        std::uint32_t recentKBPS;
        std::uint32_t averageKBPS;
        std::uint32_t errors;
        bool showsOverflow;
    };

    // Building.
    void FindPanes();
    void SetReadoutColors();
    void SetChartAppearance();

    // Conducting.
    void MaintainTestStatus();
    void HandleCompletedTestSelector();
    void StartMadeWorker();
    void RefuseStart(int explanation);
    void ShowPhase();
    void ShowElapsedTime();
    void ShowRemainingTime();
    void ShowTexts();
    void UpdateButtons();
    void ShowReading(const PhaseReading& reading);
    void ShowErrorCount(const PhaseReading& reading);
    void SetErrorColors(bool isNormal);
    void EmptyResultReadouts();
    void ShowText(PaneIDT id, const CString& text);
    void StopActiveTest();
    void TakeParameters(const IOTestParameters& parameters);

    // Chart feed.
    void AddPoint(int series, std::int32_t seconds, float value);
    void FollowHistory();
    void ShowWholeHistory();
    void ShowArrowButtons(bool isShown);
    void ResetScrollBar();
    void ScrollByOne(int step);

    CString m_outputText;  ///< written by any thread, under the output manager's region
    CString m_methodName;
    CString m_errorText;  ///< as m_outputText
    COutputMgr m_outputMgr;
    std::uint32_t m_lastLogTime;  ///< whole seconds of the clock
    std::unique_ptr<IOTestWorker> m_worker;
    bool m_stopRequested = false;
    IOTestParameters m_parameters;
    IOTestResults m_results;
    std::unique_ptr<IOTestSelector> m_testSelector;
    CSettingsDlg* m_settingsDlg = nullptr;
    std::int32_t m_timerTicks = 0;
    std::int32_t m_shownPhase = kPhaseNone;
    std::array<char, 10> m_elapsedBuffer{};
    std::array<char, 10> m_remainingBuffer{};
    bool m_errorColorsNormal = true;

    std::int32_t m_sampleCount = 0;  ///< since the chart was last cleared
    std::int32_t m_showAllSamples = 1;
    std::int32_t m_visibleSamples = 5;  ///< when not all are shown
    std::int32_t m_chartMode = 2;       ///< 0 reads only, 1 writes only, 2 both
    bool m_followNewest = true;

    /// Runs half a second after a worker was made, so that the window shows the new state before files are prepared.
    /// The timer thread's passes do nothing meanwhile.
    LTimerTask m_startTask;
    bool m_isShuttingDown = false;
    /// Settings that were accepted while a test ran; they are taken when it has ended.
    std::optional<IOTestParameters> m_nextParameters;

    // Found by id; the window's subpanes.
    DigiString* m_elapsed = nullptr;
    DigiString* m_remaining = nullptr;
    DigiString* m_completed = nullptr;
    DigiString* m_recentRate = nullptr;
    DigiString* m_averageRate = nullptr;
    DigiString* m_errors = nullptr;
    Graph* m_chart = nullptr;
    CSlider* m_slider = nullptr;
    CScroll* m_scroll = nullptr;
    LButton* m_scrollBack = nullptr;
    LButton* m_scrollForward = nullptr;
    LStdButton* m_start = nullptr;
    LStdButton* m_stop = nullptr;
    LStdButton* m_settings = nullptr;
    CPicture* m_lamp = nullptr;
    LPicture* m_partPicture = nullptr;
    LPicture* m_followPicture = nullptr;
};
