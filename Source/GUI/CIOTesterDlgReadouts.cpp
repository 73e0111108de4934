#include "CoreClasses/TestLog.h"
#include "GUI/CIOTesterDlg.h"
#include "GUI/DigiString.h"
#include "GUI/Graph.h"
#include "GUI/RateConversion.h"
#include "GUI/Stage.h"
#include "SupportingClasses/CTime.h"

#include <string>

// What the readouts and the parameter panes show, and the measurement line.

namespace {

constexpr RGBColor kReadoutBackground{0x5000, 0x5000, 0x5000};
constexpr RGBColor kNormalUnlit{0, 0x4000, 0};
constexpr RGBColor kNormalLit{0, 0xFFFF, 0};
constexpr RGBColor kAlarmUnlit{0x5500, 0x4200, 0x4200};
constexpr RGBColor kAlarmLit{0xFFFF, 0, 0};

constexpr std::uint32_t kEndlessMinutes = 0xFFFFFFFF;

void ShowNumber(DigiString& readout, std::uint32_t value) {
    readout.setLongValue(static_cast<std::int32_t>(value));
    readout.Draw();
}

void ShowRate(DigiString& readout, std::uint32_t rateKBps) {
    readout.setFloatValue(MBPSForReadout(rateKBps));
    readout.Draw();
}

/// `text` outlives every drawing of the readout.
void ShowString(DigiString& readout, const char* text) {
    readout.setStringValue(text);
    readout.Draw();
}

}  // namespace

void CIOTesterDlg::SetReadoutColors() {
    for (DigiString* readout : {m_elapsed, m_remaining, m_completed, m_recentRate, m_averageRate, m_errors}) {
        readout->setBackColor(kReadoutBackground);
        readout->setTextColor(kNormalUnlit, kNormalLit);
        readout->setStringValue("");
    }
}

void CIOTesterDlg::SetErrorColors(bool isNormal) {
    m_errors->setBackColor(kReadoutBackground);
    m_errors->setTextColor(isNormal ? kNormalUnlit : kAlarmUnlit, isNormal ? kNormalLit : kAlarmLit);
    m_errorColorsNormal = isNormal;
}

void CIOTesterDlg::LEDS_DisplayReadResults() {
    ShowReading({.caption = "(Reading)",
                 .isStarted = m_results.m_readsStarted,
                 .completed = m_results.m_readsCompleted,
                 .recentKBPS = m_results.m_readRecentKBPS,
                 .averageKBPS = m_results.m_readAvgKBPS,
                 .errors = m_results.m_readErrors,
                 .showsOverflow = m_results.m_readCountOverflow || m_results.m_writeCountOverflow});
}

void CIOTesterDlg::LEDS_DisplayWriteResults() {
    ShowReading({.caption = "(Writing)",
                 .isStarted = m_results.m_writesStarted,
                 .completed = m_results.m_writesCompleted,
                 .recentKBPS = m_results.m_writeRecentKBPS,
                 .averageKBPS = m_results.m_writeAvgKBPS,
                 .errors = m_results.m_writeErrors,
                 .showsOverflow = false});
}

void CIOTesterDlg::ShowReading(const PhaseReading& reading) {
    SetDescriptorForPaneID(37, CString(reading.caption));
    if (!reading.isStarted) {
        EmptyResultReadouts();
        return;
    }
    ShowNumber(*m_completed, reading.completed);
    ShowRate(*m_recentRate, reading.recentKBPS);
    ShowRate(*m_averageRate, reading.averageKBPS);
    ShowErrorCount(reading);
}

void CIOTesterDlg::ShowErrorCount(const PhaseReading& reading) {
    m_errors->setLongValue(static_cast<std::int32_t>(reading.errors));
    if (reading.showsOverflow) {
        m_errors->setStringValue("OVERFLOW");
        SetErrorColors(false);
    } else if (m_errorColorsNormal && reading.errors != 0) {
        SetErrorColors(false);
    } else if (!m_errorColorsNormal && reading.errors == 0) {
        SetErrorColors(true);
    }
    m_errors->Draw();
}

void CIOTesterDlg::EmptyResultReadouts() {
    for (DigiString* readout : {m_completed, m_errors, m_averageRate, m_recentRate}) {
        ShowString(*readout, "");
    }
}

void CIOTesterDlg::ShowElapsedTime() {
    const bool hasBegun = m_results.m_readsStarted || m_results.m_writesStarted;
    ShowString(*m_elapsed, hasBegun ? CTime::FormatTime(m_results.m_elapsedSeconds, m_elapsedBuffer.data()) : "-");
}

void CIOTesterDlg::ShowRemainingTime() {
    const char* text = "-";
    if (!TestIsStarted()) {
        text = "-";
    } else if (m_stopRequested) {
        text = "0";
    } else if (m_parameters.m_durationMinutes == kEndlessMinutes || m_parameters.m_loop) {
        text = "LOOP";
    } else {
        const std::uint32_t duration = m_parameters.m_durationMinutes * 60;
        const std::uint32_t elapsed = m_results.m_elapsedSeconds;
        text = CTime::FormatTime(elapsed < duration ? duration - elapsed : 0, m_remainingBuffer.data());
    }
    ShowString(*m_remaining, text);
}

/// The log lines end in a carriage return, which is no part of what a person reads.
void CIOTesterDlg::ShowText(PaneIDT id, const CString& text) {
    CString shown = text;
    while (shown.EndsWith("\r")) {
        shown.Remove(shown.Length(), 1);
    }
    SetDescriptorForPaneID(id, shown);
}

void CIOTesterDlg::ShowTexts() {
    m_outputMgr.SafeEnterOutputCS();
    const CString outputText = m_outputText;
    const CString errorText = m_errorText;
    m_outputMgr.SafeLeaveOutputCS();
    SetDescriptorForPaneID(36, m_methodName);
    if (outputText.GetLength() != 0) {
        ShowText(18, outputText);
    }
    if (errorText.GetLength() != 0) {
        ShowText(38, errorText);
    }
}

void CIOTesterDlg::LogResults(IOTestResults& results) {
    TestLog::Measurement(m_outputMgr, results);
}

void CIOTesterDlg::DisplayTestParameters() {
    m_parameters.NormalizeStandardParameters();
    SetDescriptorForPaneID(5, m_parameters.m_testName);
    SetDescriptorForPaneID(
        7, CString(m_parameters.m_loop ? std::string("Loop") : std::to_string(m_parameters.m_durationMinutes)));
    SetDescriptorForPaneID(9, CString(m_parameters.m_pathIsCorvane ? "(CORVANE)" : ""));
    SetDescriptorForPaneID(10, m_parameters.m_drivePath);
    switch (m_parameters.m_readWriteMethod) {
        case kWritesOnly:
            m_chartMode = 1;
            break;
        case kReadsOnly:
            m_chartMode = 0;
            break;
        default:
            m_chartMode = 2;
            break;
    }
    Stage::iStage = Stage::kBlank;
    Chart_ClearData();
    if (m_parameters.m_transferRateKBps == kUnlimitedRate) {
        Chart_ClearTargetBandwidth();
    } else {
        Chart_SetTargetBandwidth(static_cast<int>(m_parameters.m_transferRateKBps), 1024);
    }
}
