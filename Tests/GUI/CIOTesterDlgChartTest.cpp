#include "Framework/UI/LButton.h"
#include "Framework/UI/LPicture.h"
#include "GUI/CIOTesterDlg.h"
#include "GUI/CScroll.h"
#include "GUI/CSlider.h"
#include "GUI/Commands.h"
#include "GUI/Graph.h"
#include "GUI/GraphPoint.h"
#include "GUI/MainWindowTest.h"
#include "GUI/StoredIOResults.h"

#include <gmock/gmock.h>

#include <limits>
#include <tuple>

namespace {

using testing::ElementsAre;

class CIOTesterDlgChartTest : public MainWindowTest {
protected:
    /// Adds samples up to the given count, one every 6 s.
    void AddUpTo(int count) {
        for (; m_count < count; ++m_count) {
            StoredIOResults sample;
            sample.phase = kPhaseRead;
            sample.elapsedSeconds = 6 * m_count;
            m_window->Chart_AddMeasurementToChart(sample);
        }
    }

    /// First and last sample in view; all of them are 0 and the largest number.
    [[nodiscard]] std::pair<int, int> View() { return {m_chart.get_beginPoint(), m_chart.get_endPoint()}; }
    [[nodiscard]] bool Follows() { return Pane<LPicture>(40).IsVisible(); }
    [[nodiscard]] bool ShowsPart() { return Pane<LPicture>(27).IsVisible(); }
    [[nodiscard]] bool ShowsArrows() { return Pane<LButton>(770).IsVisible() && Pane<LButton>(860).IsVisible(); }

    void MoveSlider(int value) {
        m_slider.SetValue(value);
        m_window->ListenToMessage(kMessageTimeSpan, nullptr);
    }
    void MoveScrollBar(int value) {
        m_scroll.SetValue(value);
        m_window->ListenToMessage(kMessageScrolled, nullptr);
    }

    Graph& m_chart = Pane<Graph>(300);
    CSlider& m_slider = Pane<CSlider>(1);
    CScroll& m_scroll = Pane<CScroll>(2);
    int m_count = 0;
};

constexpr std::pair<int, int> kAll{0, std::numeric_limits<std::int32_t>::max()};

}  // namespace

TEST_F(CIOTesterDlgChartTest, EachKindOfTestChartsItsPhasesInItsSeries) {
    const StoredIOResults sample{.readAverage = 1024,
                                 .readRecent = 2048,
                                 .readPeakTime = 300,
                                 .writeAverage = 4096,
                                 .writeRecent = 5120,
                                 .writePeakTime = 650,
                                 .phase = kPhaseRead,
                                 .elapsedSeconds = 42};
    using Row = std::tuple<std::int32_t, std::int32_t, std::vector<float>>;
    for (const auto& [method, phase, values] :
         {Row{kWritesThenReads, kPhaseRead, {1, 2, 3, 4, 5, 6.5F}},
          Row{kWritesThenReads, kPhaseNone, {1, 2, 3, 4, 5, 6.5F}}, Row{kWritesOnly, kPhaseWrite, {4, 5, 6.5F}},
          Row{kReadsOnly, kPhaseRead, {1, 2, 3}}, Row{kWritesOnly, kPhaseRead, {}}, Row{kReadsOnly, kPhaseNone, {}}}) {
        m_parameters.m_readWriteMethod = method;
        Accept();
        StoredIOResults added = sample;
        added.phase = phase;
        EXPECT_EQ(m_window->Chart_AddMeasurementToChart(added), !values.empty());
        std::vector<float> charted;
        for (int i = 0; i < m_chart.get_seriesCount(); ++i) {
            if (m_chart.get_Series(i)->get_pointsCount() == 1) {
                const GraphPoint& point = m_chart.get_Series(i)->getPtArray().front();
                EXPECT_EQ(point.get_xValue(), 42.0F);
                charted.push_back(point.get_yValue());
            }
        }
        EXPECT_EQ(charted, values) << method << ' ' << phase;
    }
}

TEST_F(CIOTesterDlgChartTest, ADirectionThatHasNotBegunIsChartedAsNothing) {
    IOTestResults results;
    results.m_phase = kPhaseWrite;
    results.m_readAvgKBPS = results.m_writeAvgKBPS = 1024;
    for (const auto& [writes, reads, read, write] :
         {std::tuple{true, true, 1.0F, 1.0F}, {true, false, 0.0F, 1.0F}, {false, true, 1.0F, 0.0F}}) {
        results.m_writesStarted = writes;
        results.m_readsStarted = reads;
        m_window->Chart_ClearData();
        m_window->Chart_SaveAndShowResults(results);
        EXPECT_EQ(m_chart.get_Series(0)->getPtArray().front().get_yValue(), read);
        EXPECT_EQ(m_chart.get_Series(3)->getPtArray().front().get_yValue(), write);
    }
}

TEST_F(CIOTesterDlgChartTest, TheWholeHistoryIsInViewUntilTheSixtiethSample) {
    AddUpTo(5);
    EXPECT_EQ(m_slider.GetMaxValue(), 5) << "pinned";
    AddUpTo(59);
    EXPECT_EQ(View(), kAll);
    EXPECT_EQ(m_slider.GetMaxValue(), 60);
    EXPECT_EQ(m_slider.GetValue(), 5);
    EXPECT_FALSE(ShowsArrows() || ShowsPart() || Follows());
    AddUpTo(60);
    EXPECT_EQ(View(), std::pair(0, 59));
    EXPECT_EQ(m_slider.GetValue(), 6);
    EXPECT_TRUE(ShowsArrows() && ShowsPart() && Follows());
}

TEST_F(CIOTesterDlgChartTest, ScrollingHoldsTheViewAndTheLastPositionFollowsAgain) {
    AddUpTo(100);
    ASSERT_EQ(View(), std::pair(40, 99));
    m_window->ListenToMessage(kMessageScrollBack, nullptr);
    EXPECT_EQ(View(), std::pair(40, 99)) << "one position more than there are windows";
    EXPECT_FALSE(Follows());
    m_window->ListenToMessage(kMessageScrollBack, nullptr);
    AddUpTo(105);
    EXPECT_EQ(View(), std::pair(39, 98)) << "held";
    MoveScrollBar(0);
    m_window->ListenToMessage(kMessageScrollBack, nullptr);
    EXPECT_EQ(View(), std::pair(0, 59)) << "the first window is the last to scroll back to";
    MoveScrollBar(m_scroll.GetMaxValue());
    m_window->ListenToMessage(kMessageScrollForward, nullptr);
    EXPECT_TRUE(Follows());
    AddUpTo(106);
    EXPECT_EQ(View(), std::pair(46, 105));
}

TEST_F(CIOTesterDlgChartTest, TheSliderChoosesHowMuchIsInView) {
    AddUpTo(40);
    MoveSlider(41);
    EXPECT_EQ(View(), std::pair(35, 39)) << "five samples, the newest";
    EXPECT_TRUE(Follows());
    MoveScrollBar(10);
    ASSERT_EQ(View(), std::pair(10, 14));
    MoveSlider(26);  // 20 samples, about the same middle: 5 / 2 + 10 - 20 / 2
    EXPECT_EQ(View(), std::pair(2, 21));
    EXPECT_EQ(m_scroll.GetMaxValue(), 21);
    MoveSlider(6);  // all but none: 40 samples about a middle that is too far left
    EXPECT_EQ(View(), std::pair(0, 39));
    EXPECT_EQ(m_scroll.GetMaxValue(), 1);
    MoveSlider(5);
    EXPECT_EQ(View(), kAll);
    EXPECT_FALSE(ShowsArrows() || ShowsPart() || Follows());
    MoveScrollBar(0);
    EXPECT_EQ(View(), kAll) << "nothing to scroll";
    m_window->Chart_ClearData();
    EXPECT_EQ(m_slider.GetMaxValue(), 5);
    EXPECT_EQ(m_chart.get_Series(0)->get_pointsCount(), 0);
}

TEST_F(CIOTesterDlgChartTest, ReferenceLinesStandAt85And95PercentOfTheTarget) {
    for (const auto& [rate, low, high] :
         {std::tuple{10240U, 8.5F, 9.5F}, {384U, 0.31875F, 0.35625F}, {kUnlimitedRate, 0.0F, 0.0F}}) {
        m_parameters.m_transferRateKBps = rate;
        Accept();
        EXPECT_FLOAT_EQ(m_chart.get_constLine1Value(), low);
        EXPECT_FLOAT_EQ(m_chart.get_constLine2Value(), high);
    }
    m_window->Chart_SetTargetBandwidth(1024, 0);
    EXPECT_EQ(m_chart.get_constLine1Value(), 0.0F) << "nothing is done";
}
