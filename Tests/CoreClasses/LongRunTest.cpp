#include "CoreClasses/EngineTest.h"
#include "CoreClasses/ScriptedWorker.h"
#include "Support/Sanitizers.h"

#include <malloc.h>

// Tests that go on for weeks, in seconds: on the simulated clock, and with transfers that touch no storage.

namespace {

constexpr std::uint32_t kCap = 0x7FFF'FFFF;
constexpr std::uint64_t kTransferBytes = 8ULL * kBytesPerMB;
constexpr std::uint32_t kHourMS = 3'600'000;

/// How long the paced test goes on. Instrumented, its 43,200 transfers a day take fifteen times as long.
constexpr std::uint32_t kDays = kIsSanitized ? 2 : 30;

/// A mixed test over and over: unless told otherwise half an hour's writes and half an hour's reads.
class LongRunTest : public EngineTest {
protected:
    LongRunTest() {
        m_parameters.m_transferSizeKB = kTransferBytes / kBytesPerKB;
        m_parameters.m_durationMinutes = 60;
        m_parameters.m_loop = true;
    }

    /// Stops the test in its last transfer. Answers how much more memory is in use then than at the end of the second
    /// hour, when everything had been done once.
    std::int64_t RunHours(std::uint32_t hours, std::unique_ptr<ScriptedWorker> worker) {
        ScriptedWorker& test = *worker;
        test.m_fileBytes = 100 * kTransferBytes;
        std::int64_t growth = 0;
        Run(std::move(worker), [&] {
            m_clock.SleepMilliseconds(2 * kHourMS - 1000);
            growth = -BytesInUse();
            for (std::uint32_t hour = 2; hour < hours; ++hour) {
                m_clock.SleepMilliseconds(kHourMS);
            }
            growth += BytesInUse();
            test.SetStop();
        });
        return growth;
    }

    /// The sanitizers' own allocators do not tell.
    [[nodiscard]] static std::int64_t BytesInUse() {
        const auto info = ::mallinfo2();
        return static_cast<std::int64_t>(info.uordblks + info.hblkhd);
    }
};

}  // namespace

TEST_F(LongRunTest, AMonthOfWritesAndReadsIsCountedToTheLastAndTakesNoMemory) {
    constexpr std::uint32_t hours = kDays * 24;
    constexpr std::uint32_t transfers = hours * 900;  // one in two seconds
    auto worker = std::make_unique<ScriptedWorker>();
    worker->m_transfer = [](std::size_t size) { return ScriptedWorker::Take(0, size); };
    EXPECT_LE(RunHours(hours, std::move(worker)), 1024);
    EXPECT_EQ(Counts(), (std::vector{transfers, transfers, 0U, 0U}));
    EXPECT_EQ(m_results.m_bytesWritten, transfers * kTransferBytes);
    EXPECT_EQ(m_results.m_bytesRead, transfers * kTransferBytes);
    for (const std::uint32_t rate : {m_results.m_writeAvgKBPS, m_results.m_readAvgKBPS, m_results.m_readRecentKBPS}) {
        EXPECT_EQ(rate, 4096U);
    }
    EXPECT_EQ(m_results.m_elapsedSeconds, hours * 3600);
    for (const Direction direction : {Direction::Write, Direction::Read}) {
        const TransferStatistics exact = m_worker->GetTransferStatistics(direction);
        EXPECT_EQ(exact.phaseUS, std::uint64_t{hours} * 1'800'000'000);
        EXPECT_EQ(exact.bytes, transfers * kTransferBytes);
        EXPECT_EQ(exact.times.Count(), transfers);
        EXPECT_EQ(exact.deadlines.late, 0U);
    }
    ASSERT_EQ(m_lines.size(), std::size_t{hours} * 18 + 1) << "nine openings of a file in each phase";
    EXPECT_EQ(m_lines[9], "Reader 0 opened file scripted " + At(1800));
    EXPECT_EQ(m_lines.back(), std::string("Ending reader #: 0 Wed ") + (kDays == 30 ? "February 4" : "January 7") +
                                  ", 2004 09:03:07\r");
    EXPECT_THAT(m_errors, testing::IsEmpty());
}

TEST_F(LongRunTest, CountersOf31BitsStopAndThoseOfTimeGoRoundIn32) {
    constexpr std::uint32_t cycles = 120;              // of twelve hours
    constexpr std::uint32_t transfers = cycles * 215;  // but for those that fail
    constexpr std::uint32_t left = 100;
    auto worker = std::make_unique<ScriptedWorker>();
    worker->m_transfer = [number = 0](std::size_t size) mutable {
        TransferOutcome outcome = ScriptedWorker::Take(100'000'000, size);
        if (++number % 216 == 0) {  // the last one of six hours
            outcome.kind = TransferOutcome::Kind::Failed;
        }
        return outcome;
    };
    m_parameters.m_durationMinutes = 720;
    m_parameters.m_transferRateKBps = kUnlimitedRate;
    IOTestResults& results = worker->m_results;
    for (std::uint32_t* counter :
         {&results.m_writesCompleted, &results.m_readsCompleted, &results.m_writeErrors, &results.m_readErrors}) {
        *counter = kCap - left;
    }
    RunHours(12 * cycles, std::move(worker));
    EXPECT_THAT(Counts(), testing::Each(kCap));
    EXPECT_TRUE(m_results.m_writeCountOverflow && m_results.m_readCountOverflow);
    EXPECT_EQ(m_results.m_bytesWritten, transfers * kTransferBytes);
    EXPECT_EQ(m_results.m_bytesRead, left * kTransferBytes) << "reading counts no bytes at the cap";
    EXPECT_EQ(m_worker->TotMSUsedByReadsPerHPC(), 5'184'000'000 - 4'294'967'296);
    for (const Direction direction : {Direction::Write, Direction::Read}) {
        const TransferStatistics exact = m_worker->GetTransferStatistics(direction);
        EXPECT_EQ(exact.transfers, transfers);
        EXPECT_EQ(exact.errors, cycles);
    }
}
