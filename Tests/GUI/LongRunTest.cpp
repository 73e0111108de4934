#include "Framework/UI/LPicture.h"
#include "GUI/CScroll.h"
#include "GUI/CSlider.h"
#include "GUI/Graph.h"
#include "GUI/GraphPoint.h"
#include "GUI/MainWindowTest.h"
#include "GUI/Series.h"
#include "Support/Sanitizers.h"

#include <QCoreApplication>

#include <malloc.h>

namespace {

/// A week of measurements, one each 6 s, and what a series has room for. Instrumented, an hour of them takes as long.
constexpr int kSamples = kIsSanitized ? 1000 : Series::kInitialCapacity;

class LongRunTest : public MainWindowTest {
protected:
    /// A status pass 6 s after the one before. The window is brought to the screen now and then.
    void AddSample() {
        m_clock.SleepMilliseconds(6000);
        for (int ticks = 0; ticks < 3; ++ticks) {
            m_window->OnTimer();
        }
        if (++m_count % (kSamples / 20) == 0) {
            m_window->Show();
            QCoreApplication::processEvents();
            m_window->Hide();  // painting each of them takes minutes
            m_bytesInUse.push_back(::mallinfo2().uordblks + ::mallinfo2().hblkhd);
        }
    }

    [[nodiscard]] std::pair<int, int> View() { return {m_chart.get_beginPoint(), m_chart.get_endPoint()}; }

    Graph& m_chart = Pane<Graph>(300);
    int m_count = 0;
    std::vector<std::size_t> m_bytesInUse;  ///< at each showing; the sanitizers' own allocators do not tell
};

}  // namespace

TEST_F(LongRunTest, AWeekOfSamplesIsChartedAndLoggedAndTakesNoMemory) {
    m_parameters.m_loop = true;
    m_parameters.m_transferSizeKB = 8192;  // a transfer each 2 s
    m_parameters.m_durationMinutes = 60;
    m_parameters.m_maxFileSizeMB = 800;
    Accept();
    StartTest();
    m_window->Hide();
    while (m_count < kSamples) {
        AddSample();
    }
    EXPECT_LE(m_bytesInUse.back(), m_bytesInUse.front() + 32'768) << "pictures of letters are kept at their first use";
    ASSERT_EQ(m_chart.get_seriesCount(), 6);
    for (int series = 0; series < 6; ++series) {
        const auto points = m_chart.get_Series(series)->getPtArray();
        ASSERT_EQ(points.size(), static_cast<std::size_t>(kSamples));
        EXPECT_EQ(m_chart.get_Series(series)->get_capacity(), Series::kInitialCapacity);
        for (std::size_t i = 0; i < points.size(); ++i) {
            ASSERT_EQ(points[i].get_xValue(), static_cast<float>(6 * (i + 1)));
        }
    }
    EXPECT_EQ(View(), std::pair(kSamples - 60, kSamples - 1));
    EXPECT_EQ(Pane<CSlider>(1).GetMaxValue(), kSamples + 1);
    EXPECT_EQ(Pane<CScroll>(2).GetMaxValue(), kSamples - 60 + 1);
    EXPECT_TRUE(Pane<LPicture>(40).IsVisible());
    m_window->Chart_AdjustVisibleTimeRange(kSamples);
    Pane<CScroll>(2).SetValue(0);
    m_window->Chart_SetChartXRange(0, 60);
    for (int i = 0; i < 10; ++i) {
        AddSample();
    }
    EXPECT_EQ(View(), std::pair(0, 59)) << "held at the first";
    EXPECT_EQ(m_chart.get_Series(5)->get_pointsCount(), m_count) << "and beyond what there was room for";

    m_window->OnStop();
    TickUntilIdle();
    const std::vector<std::string> lines = Measurements();
    ASSERT_GE(lines.size(), static_cast<std::size_t>(m_count));
    for (std::size_t i = 0; i < static_cast<std::size_t>(m_count); ++i) {
        // Half an hour's 900 transfers in each direction; the one that ends with the pass comes after it.
        const std::size_t transfers = 3 * (i + 1) - 1;
        const std::size_t writes = transfers / 1800 * 900 + std::min<std::size_t>(transfers % 1800, 900);
        const std::string reads = "RQy=" + std::to_string(transfers - writes) + ' ';
        ASSERT_NE(lines[i].find("WQy=" + std::to_string(writes) + ' '), std::string::npos) << lines[i];
        ASSERT_TRUE(transfers < 900 || lines[i].find(reads) != std::string::npos) << lines[i];
    }
}
