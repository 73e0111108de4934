#include "CoreClasses/FileReadWriteWorker.h"

#include "CoreClasses/EngineTest.h"
#include "CoreClasses/ScriptedWorker.h"
#include "Framework/Base/LThread.h"
#include "Support/Sanitizers.h"

#include <array>
#include <barrier>
#include <tuple>

#include <sys/resource.h>

using testing::ElementsAre;

namespace {

constexpr std::uint64_t kMS = 1000;
constexpr std::uint64_t kSecond = 1'000'000;

/// For tests on the worker's thread.
class FileReadWriteWorkerTest : public EngineTest {
protected:
    std::unique_ptr<ScriptedWorker> Scripted() {
        auto worker = std::make_unique<ScriptedWorker>();
        worker->SetTestParameters(m_parameters);
        return worker;
    }
};

/// For phases that are called directly.
class WorkerStatisticsTest : public testing::Test {
protected:
    /// Writes transfers of the given lengths, then ends the phase.
    void Write(std::vector<std::uint64_t> microseconds) {
        m_worker.m_transfer = [&, next = microseconds.begin()](std::size_t size) mutable {
            m_starts.push_back(m_clock.ElapsedMicroseconds());
            m_peaks.push_back(m_results.m_writePeakMS);
            m_rates.push_back(m_results.m_writeRecentKBPS);
            const std::uint64_t duration = *next++;
            if (next == microseconds.end()) {
                m_worker.SetStop();
            }
            return ScriptedWorker::Take(duration, size);
        };
        m_worker.WritePhase(&m_worker);
    }

    SimulatedClock m_clock;
    ScriptedWorker m_worker;
    IOTestResults& m_results = m_worker.m_results;

    // At the start of each transfer.
    std::vector<std::uint64_t> m_starts;
    std::vector<std::uint32_t> m_peaks;
    std::vector<std::uint32_t> m_rates;
};

}  // namespace

TEST_F(FileReadWriteWorkerTest, StartTakesSizesAndPacingFromTheParametersIn32Bits) {
    using Row = std::tuple<std::uint32_t, std::uint32_t, std::uint32_t, std::int32_t>;
    for (const auto& [sizeKB, rateKBps, bytes, intervalMS] :
         {Row{256, 384, 262'144, 666}, Row{256, 0, 262'144, 0}, Row{0x40'0000, kUnlimitedRate, 0, 0},
          Row{0x3F'FFFF, 2, 0xFFFF'FC00, 2'097'151'500}, Row{4'294'968, 2, 103'079'936, 704 / 2}}) {
        m_parameters.m_durationMinutes = 0;
        m_parameters.m_transferSizeKB = sizeKB;
        m_parameters.m_transferRateKBps = rateKBps;
        Run(Scripted());
        const auto& worker = static_cast<ScriptedWorker&>(*m_worker);
        EXPECT_EQ(worker.m_transferBytes, bytes) << sizeKB;
        EXPECT_EQ(worker.m_transferDelayMS, intervalMS) << sizeKB;
    }
}

TEST_F(FileReadWriteWorkerTest, ABufferThatCannotBeHadIsOneErrorAndEndsThePhase) {
    if (kIsSanitized) {
        GTEST_SKIP() << "a sanitizer's own memory leaves no room for a limit";
    }
    m_parameters.m_transferSizeKB = 0x3F'FFFF;
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_AS, &before), 0);
    const rlimit twoGB{rlim_t{2} << 30, before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_AS, &twoGB), 0);
    Run(kAccessSelfTest);
    ASSERT_EQ(::setrlimit(RLIMIT_AS, &before), 0);
    const std::string line = "Error: no memory for a transfer buffer of 4294966272 bytes, reader 0 " + At(0);
    EXPECT_THAT(m_errors, ElementsAre(line, line));
    EXPECT_THAT(Counts(), ElementsAre(0, 0, 1, 1));
}

TEST_F(FileReadWriteWorkerTest, SlowTransfersAreWarnedOfUpToTheMaximumOfBothDirections) {
    m_parameters.m_transferRateKBps = kUnlimitedRate;
    for (const int warnMax : {-1, 1, 3, 0}) {
        auto worker = Scripted();
        worker->SetReadThresholdWatch(14'500);
        worker->SetReadOverThresholdWarnMax(warnMax);
        worker->m_transfer = [next = std::size_t{0}](std::size_t size) mutable {
            constexpr auto durations = std::to_array<std::uint64_t>({15'000, 14'500, 14'501, 30'000});
            return ScriptedWorker::Take(durations.at(next++) * kMS, size);
        };
        Run(std::move(worker));
        std::vector<std::string> lines{"WARNING: Write Over Threshold reader 0 MS=15000 at time " + At(15),
                                       "WARNING: Write Over Threshold reader 0 MS=14501 at time " + At(44),
                                       "WARNING: Read Over Threshold reader 0 MS=30000 at time " + At(74)};
        lines.resize(warnMax == -1 ? 3 : static_cast<std::size_t>(warnMax));
        if (warnMax > 0) {
            lines.push_back(std::string("WARNING: Maximum number of ") + (warnMax == 1 ? "write" : "read") +
                            " threshold warnings reached on reader 0 at time " + At(warnMax == 1 ? 15 : 74));
        }
        EXPECT_EQ(m_errors, lines) << warnMax;
        EXPECT_EQ(m_worker->GetReadsOverThreshold(), 3);
    }
}

TEST_F(FileReadWriteWorkerTest, ATransferThatHangsKeepsNobodyWaiting) {
    std::barrier hang(2);
    auto worker = Scripted();
    worker->m_transfer = [&](std::size_t size) {
        hang.arrive_and_wait();  // hangs from here
        hang.arrive_and_wait();  // to here
        return ScriptedWorker::Take(0, size);
    };
    ASSERT_TRUE(worker->StartWorker());
    hang.arrive_and_wait();
    EXPECT_EQ(worker->GetTestResults(m_results).m_phase, kPhaseWrite);
    EXPECT_FALSE(worker->SetStop()->IsDone());
    hang.arrive_and_wait();
    EXPECT_THAT(LThread::JoinFinished(100'000), testing::IsEmpty());
}

// The sanitizers see any touch of a worker after its end.
TEST_F(FileReadWriteWorkerTest, ResultsFitTogetherAtAnyTimeAndAWorkerMayBeDeletedAsSoonAsItIsDone) {
    for (int i = 0; i < 100; ++i) {
        auto worker = Scripted();
        ASSERT_TRUE(worker->StartWorker());
        while (!worker->IsDone()) {
            worker->GetTestResults(m_results);
            ASSERT_TRUE(m_results.m_isValid);
            ASSERT_EQ(m_results.m_bytesWritten, std::uint64_t{m_results.m_writesCompleted} << 20);
            ASSERT_EQ(m_results.m_bytesRead, std::uint64_t{m_results.m_readsCompleted} << 20);
            const TransferStatistics statistics = worker->GetTransferStatistics(Direction::Write);
            ASSERT_EQ(statistics.times.Count(), statistics.transfers);
        }
    }
    EXPECT_THAT(LThread::JoinFinished(100'000), testing::IsEmpty());
}

// The pause is taken from the whole milliseconds of a duration, so that 999 us are not made up for.
TEST_F(WorkerStatisticsTest, PacedTransfersStartAtTheIntervalUnlessTheOneBeforeWasLonger) {
    m_worker.SetXFERDelayMS(250);
    Write({100 * kMS, 400 * kMS, 50 * kMS, 50 * kMS + 999, 0});
    EXPECT_THAT(m_starts, ElementsAre(250'000, 500'000, 900'000, 1'150'000, 1'400'999));
    EXPECT_EQ(m_worker.GetTransferStatistics(Direction::Write).deadlines.worstLatenessUS, 150'000U);
}

TEST_F(WorkerStatisticsTest,
       AFragmentLastsFiveSecondsAndAtLeastItsTransfersAndItsPeakGoesToTheDirectionThatUpdatesNext) {
    Write({3 * kSecond, kSecond, kSecond, kSecond, kSecond, kSecond, 2 * kSecond, kSecond});
    EXPECT_THAT(m_peaks, ElementsAre(0, 0, 0, 0, 0, 3000, 3000, 3000)) << "five transfers in 7 s";
    EXPECT_THAT(m_rates, ElementsAre(0, 0, 0, 0, 0, 731, 731, 731));
    m_worker.BeginReadPhase();
    EXPECT_EQ(m_results.m_writePeakMS, 0U);
    EXPECT_EQ(m_results.m_readPeakMS, 0U) << "no read phase had begun yet";
    m_results.m_readsStarted = true;
    m_worker.StartNewReadFragment();
    EXPECT_EQ(m_results.m_readPeakMS, 2000U) << "a write's";
    for (const auto& [seconds, rate] : {std::pair{5U, 0U}, {6U, 1024U}}) {
        ScriptedWorker worker;
        worker.m_minTransfersPerFragment = 1;
        worker.m_writePhaseSeconds = seconds;
        worker.WritePhase(&worker);
        EXPECT_EQ(worker.m_results.m_writeRecentKBPS, rate);
    }
}

TEST_F(WorkerStatisticsTest, RatesAreThoseOfWholeSecondsAndOfPhases) {
    m_worker.BeginReadPhase();
    m_results.m_readsStarted = true;
    m_clock.SleepMilliseconds(10'999);
    m_results.m_bytesRead = 50U << 20;
    m_worker.StartNewReadFragment();
    EXPECT_EQ(m_results.m_readAvgKBPS, 5120U);
    EXPECT_EQ(m_results.m_readRecentKBPS, 5120U);
    m_results.m_bytesRead += 5U << 20;
    m_worker.StartNewReadFragment();
    EXPECT_EQ(m_results.m_readAvgKBPS, 5632U);
    EXPECT_EQ(m_results.m_readRecentKBPS, 5120U) << "within the second in which the fragment began";
    m_clock.SleepMilliseconds(5000);
    m_results.m_bytesRead += (5U << 20) + 5 * 1024 - 1;
    m_worker.UpdateStatistics();
    EXPECT_EQ(m_results.m_readRecentKBPS, 1024U) << "not quite 1025";
    m_worker.EndReadPhase();
    m_clock.SleepMilliseconds(60'000);  // in no phase
    m_worker.BeginWritePhase();
    EXPECT_EQ(m_results.m_readAvgKBPS, ((60U << 20) + 5119) / 15 / 1024);
}
