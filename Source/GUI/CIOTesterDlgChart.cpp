#include "Framework/UI/LButton.h"
#include "Framework/UI/LPicture.h"
#include "GUI/CIOTesterDlg.h"
#include "GUI/CScroll.h"
#include "GUI/CSlider.h"
#include "GUI/Graph.h"
#include "GUI/GraphPoint.h"
#include "GUI/Legend.h"
#include "GUI/Series.h"
#include "GUI/StoredIOResults.h"

#include <algorithm>
#include <array>
#include <limits>
#include <memory>

// The live chart: which series there are, what each sample adds to them, and which part of the history is in view.

namespace {

constexpr int kReadsOnlyMode = 0;
constexpr int kWritesOnlyMode = 1;

constexpr int kFewestVisible = 5;
/// The sample at which a view of the whole history becomes one that follows the newest.
constexpr int kFollowFromSample = 60;
constexpr int kFollowedSamples = 60;

constexpr int kSeriesThickness = 2;
constexpr int kPointRadius = 2;

struct SeriesRow {
    const char* label = "";
    RGBColor color;
};

constexpr std::array<SeriesRow, 3> kReadSeries{{{"Avg Read MBPS", {0xFFFF, 0x7000, 0x1A00}},
                                                {"Recent Read MBPS", {0, 0, 0xC800}},
                                                {"Peak Read MS/100", {0xC800, 0, 0xC800}}}};
constexpr std::array<SeriesRow, 3> kWriteSeries{{{"Avg Write MBPS", {0, 0xC800, 0}},
                                                 {"Recent Write MBPS", {0x2C00, 0xD300, 0xD300}},
                                                 {"Peak Write MS/100", {0xA300, 0x2500, 0xA300}}}};

// Relative to the chart's top left corner; vertical first.
constexpr Point kPlotTopLeft{.v = 15, .h = 80};
constexpr Point kPlotBottomRight{.v = 225, .h = 580};
constexpr Point kLegendTopLeft{.v = 60, .h = 600};

constexpr float kKBPerMB = 1024.0F;
constexpr float kMSPerPeakUnit = 100.0F;

}  // namespace

void CIOTesterDlg::SetChartAppearance() {
    m_chart->set_backColor({0x4500, 0x4500, 0x4500});
    m_chart->set_graphAreaBackColor({0x5000, 0x5000, 0x5000});
    m_chart->set_ptRelativeTopLeft(kPlotTopLeft);
    m_chart->set_ptRelativeBottomRight(kPlotBottomRight);
    Legend& legend = *m_chart->get_Legend();
    legend.set_ptRelativeTopLeft(kLegendTopLeft);
    legend.set_backColor({0xFFFF, 0xFFFF, 0x8000});
    legend.set_foreColor({0, 0, 0});
}

void CIOTesterDlg::Chart_SetupSeries() {
    m_chart->removeAllSeries();
    const auto addAll = [this](const std::array<SeriesRow, 3>& rows) {
        for (const SeriesRow& row : rows) {
            auto series = std::make_unique<Series>();
            series->set_seriesColor(row.color);
            series->set_lineThickness(kSeriesThickness);
            series->set_seriesText(row.label);
            m_chart->addSeries(std::move(series));
        }
    };
    if (m_chartMode != kWritesOnlyMode) {
        addAll(kReadSeries);
    }
    if (m_chartMode != kReadsOnlyMode) {
        addAll(kWriteSeries);
    }
    m_chart->FitLegendToSeries();
}

void CIOTesterDlg::Chart_ClearData() {
    Chart_ClearChartContents();
    Chart_SetupSeries();
}

void CIOTesterDlg::Chart_ClearChartContents() {
    m_chart->removeAllSeries();
    m_visibleSamples = kFewestVisible;
    m_sampleCount = 0;
    m_slider->Enable();
    m_slider->SetMaxValue(kFewestVisible);
    m_slider->SetMinValue(kFewestVisible);
    m_slider->SetValue(kFewestVisible);
    ShowWholeHistory();
}

void CIOTesterDlg::ShowWholeHistory() {
    m_showAllSamples = 1;
    ShowArrowButtons(false);
    ResetScrollBar();
    Chart_SetInfiniteChartX();
}

void CIOTesterDlg::Chart_SetInfiniteChartX() {
    m_chart->set_endPoint(std::numeric_limits<std::int32_t>::max());
    m_chart->set_beginPoint(0);
    m_chart->set_flagInfiniteX(1);
    m_chart->Refresh();
    m_followPicture->Hide();
    m_partPicture->Hide();
    m_followNewest = true;
}

void CIOTesterDlg::ShowArrowButtons(bool isShown) {
    for (LButton* button : {m_scrollBack, m_scrollForward}) {
        if (button != nullptr) {
            isShown ? button->Enable() : button->Disable();
            isShown ? button->Show() : button->Hide();
        }
    }
}

void CIOTesterDlg::ResetScrollBar() {
    m_scroll->SetMinValue(0);
    m_scroll->SetMaxValue(0);
}

void CIOTesterDlg::Chart_SaveAndShowResults(IOTestResults& results) {
    StoredIOResults sample;
    if (results.m_readsStarted || !results.m_writesStarted) {
        sample.readAverage = static_cast<std::int32_t>(results.m_readAvgKBPS);
        sample.readRecent = static_cast<std::int32_t>(results.m_readRecentKBPS);
        sample.readPeakTime = static_cast<std::int32_t>(results.m_readPeakMS);
    }
    if (results.m_writesStarted) {
        sample.writeAverage = static_cast<std::int32_t>(results.m_writeAvgKBPS);
        sample.writeRecent = static_cast<std::int32_t>(results.m_writeRecentKBPS);
        sample.writePeakTime = static_cast<std::int32_t>(results.m_writePeakMS);
    }
    sample.phase = results.m_phase;
    sample.elapsedSeconds = static_cast<std::int32_t>(results.m_elapsedSeconds);
    Chart_AddMeasurementToChart(sample);
}

void CIOTesterDlg::AddPoint(int series, std::int32_t seconds, float value) {
    GraphPoint point;
    point.set_xValue(static_cast<float>(seconds));
    point.set_yValue(value);
    point.set_ptRadius(kPointRadius);
    m_chart->addSeriesPoints(point, series);
}

bool CIOTesterDlg::Chart_AddMeasurementToChart(StoredIOResults& sample) {
    const bool isTaken = (m_chartMode != kReadsOnlyMode || sample.phase == kPhaseRead) &&
                         (m_chartMode != kWritesOnlyMode || sample.phase == kPhaseWrite);
    if (!isTaken) {
        return false;
    }
    int series = 0;
    const auto addThree = [&](std::int32_t average, std::int32_t recent, std::int32_t peak) {
        AddPoint(series++, sample.elapsedSeconds, static_cast<float>(average) / kKBPerMB);
        AddPoint(series++, sample.elapsedSeconds, static_cast<float>(recent) / kKBPerMB);
        AddPoint(series++, sample.elapsedSeconds, static_cast<float>(peak) / kMSPerPeakUnit);
    };
    if (m_chartMode != kWritesOnlyMode) {
        addThree(sample.readAverage, sample.readRecent, sample.readPeakTime);
    }
    if (m_chartMode != kReadsOnlyMode) {
        addThree(sample.writeAverage, sample.writeRecent, sample.writePeakTime);
    }
    ++m_sampleCount;
    m_chart->Refresh();
    if (m_sampleCount > kFewestVisible) {
        FollowHistory();
    }
    return true;
}

/// Brings slider, scroll bar and view up to one more sample.
void CIOTesterDlg::FollowHistory() {
    m_slider->Enable();
    m_slider->SetMinValue(kFewestVisible);
    m_slider->SetMaxValue(m_sampleCount + 1);
    if (m_showAllSamples != 0) {
        if (m_sampleCount == kFollowFromSample) {
            m_slider->SetValue(6);
            Chart_AdjustVisibleTimeRange(kFollowedSamples);
        } else {
            ShowArrowButtons(false);
            ResetScrollBar();
            m_slider->SetValue(kFewestVisible);
        }
        return;
    }
    ShowArrowButtons(true);
    m_scroll->Enable();
    m_scroll->SetMaxValue(SamplesInExcessOfViewableSamples() + 1);
    m_scroll->SetMinValue(0);
    if (m_followNewest) {
        m_scroll->SetValue(m_scroll->GetMaxValue());
        Chart_SetChartXRange(m_scroll->GetMaxValue(), m_visibleSamples);
    }
}

int CIOTesterDlg::SamplesInExcessOfViewableSamples() const {
    return std::max(m_sampleCount - m_visibleSamples, 0);
}

void CIOTesterDlg::Chart_SetChartXRange(int first, int count) {
    const bool atEnd = m_scroll->GetMaxValue() > m_scroll->GetMinValue() && first == m_scroll->GetMaxValue();
    const int begin = std::max(first - (atEnd ? 1 : 0), 0);
    const int points = m_chart->get_seriesCount() > 0 ? m_chart->get_Series(0)->get_pointsCount() : 0;
    const int end = std::min(begin + count - 1, points - 1);
    m_chart->set_endPoint(end);
    m_chart->set_beginPoint(begin);
    m_chart->set_flagInfiniteX(0);
    m_chart->Refresh();
    m_partPicture->Show();
    atEnd ? m_followPicture->Show() : m_followPicture->Hide();
    m_followNewest = atEnd;
}

void CIOTesterDlg::Chart_AdjustVisibleTimeRange(int requested) {
    const int span = std::min(std::max(requested, kFewestVisible), m_sampleCount + 1);
    if (m_sampleCount <= kFewestVisible || span == m_sampleCount + 1) {
        ShowWholeHistory();
        return;
    }
    const int surplus = m_sampleCount - span;
    int first = std::max(surplus, 0) + 1;
    if (m_showAllSamples == 0 && !m_followNewest) {
        // The middle of what was in view stays the middle.
        first = std::max(m_visibleSamples / 2 + m_scroll->GetValue() - span / 2, 0);
    }
    m_showAllSamples = 0;
    m_visibleSamples = span;
    ShowArrowButtons(true);
    m_scroll->Enable();
    m_scroll->SetMaxValue(std::max(surplus, 0) + 1);
    m_scroll->SetMinValue(0);
    m_scroll->SetValue(first);
    Chart_SetChartXRange(first, span);
}

void CIOTesterDlg::ScrollByOne(int step) {
    const int edge = step < 0 ? m_scroll->GetMinValue() : m_scroll->GetMaxValue();
    if (m_scroll->GetValue() != edge) {
        m_scroll->SetValue(m_scroll->GetValue() + step);
        Chart_SetChartXRange(m_scroll->GetValue(), m_visibleSamples);
    }
}

void CIOTesterDlg::Chart_SetTargetBandwidth(int rate, int divisor) {
    if (divisor == 0) {
        return;
    }
    m_chart->set_constLine1Value(static_cast<float>(0.85 * rate / divisor));
    m_chart->set_constLine1Thickness(2);
    m_chart->set_constLine1Color({0xFFFF, 0xFFFF, 0x5500});
    m_chart->set_constLine2Value(static_cast<float>(0.95 * rate / divisor));
    m_chart->set_constLine2Thickness(2);
    m_chart->set_constLine2Color({0, 0xFFFF, 0});
}

void CIOTesterDlg::Chart_ClearTargetBandwidth() {
    m_chart->set_constLine1Value(0.0F);
    m_chart->set_constLine2Value(0.0F);
}
