#include "CoreClasses/EngineTest.h"
#include "Platform/Clock.h"
#include "Support/Sanitizers.h"

#include <malloc.h>

// Tests that go on for weeks, in seconds: on the simulated clock, and with transfers that touch no storage.

namespace {

constexpr std::uint32_t kCap = 0x7FFF'FFFF;
constexpr std::uint64_t kTransferBytes = 8ULL * kBytesPerMB;
constexpr std::uint32_t kHourMS = 3'600'000;

/// How long the paced test goes on. Instrumented, its 43,200 transfers a day take fifteen times as long.
constexpr std::uint32_t kDays = kIsSanitized ? 2 : 30;

/// Counts the bytes of transfers that take a fixed time; each of a phase's last ones may fail.
class LongWorker final : public FileReadWriteWorker {
public:
    int WritePhase(FileReadWriteWorker* /*worker*/) override { return Phase(Direction::Write); }
    int ReadPhase(FileReadWriteWorker* /*worker*/) override { return Phase(Direction::Read); }
    int PrepareForReadPhase(FileReadWriteWorker* /*worker*/) override {
        m_fileList.AddFile("none");
        return 1;
    }
    bool PrepareWorker() override { return true; }
    bool CleanupWorker() override { return true; }

    using FileReadWriteWorker::m_results;

    std::uint32_t m_transferMS = 0;
    int m_failsAt = 0;  ///< number of the transfer in its phase; 0: none does

private:
    class File final : public AccessMethodFile {
    public:
        File(Direction direction, LongWorker& worker)
            : AccessMethodFile(direction, worker.Output(), worker.ReaderNumber()), m_worker(worker) {}

        void PrepareBuffer(TransferBuffer& /*buffer*/) override {}
        [[nodiscard]] bool Open(const CString& /*name*/) override { return true; }
        [[nodiscard]] std::uint64_t Limit() const override { return 100 * kTransferBytes; }
        void Transfer(std::byte* /*buffer*/, std::size_t size) override {
            m_size = size;
            ++m_number;
            Clock::Current().SleepMilliseconds(m_worker.m_transferMS);
        }
        [[nodiscard]] TransferOutcome Judge() const override {
            const bool fails = m_number == m_worker.m_failsAt;
            return {.kind = fails ? TransferOutcome::Kind::Failed : TransferOutcome::Kind::Completed,
                    .counted = m_size,
                    .advance = m_size};
        }
        void Close() override {}

    private:
        LongWorker& m_worker;
        std::size_t m_size = 0;
        int m_number = 0;
    };

    int Phase(Direction direction) {
        File file(direction, *this);
        return RunPhase(direction, file);
    }
    [[nodiscard]] bool NewFileName(CString& name) override {
        name = "none";
        return true;
    }
};

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
    std::int64_t RunHours(std::uint32_t hours, std::unique_ptr<LongWorker> worker) {
        LongWorker& test = *worker;
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
    EXPECT_LE(RunHours(hours, std::make_unique<LongWorker>()), 1024);
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
    EXPECT_EQ(m_lines[9], "Reader 0 opened file none " + At(1800));
    EXPECT_EQ(m_lines.back(), std::string("Ending reader #: 0 Wed ") + (kDays == 30 ? "February 4" : "January 7") +
                                  ", 2004 09:03:07\r");
    EXPECT_THAT(m_errors, testing::IsEmpty());
}

TEST_F(LongRunTest, CountersOf31BitsStopAndThoseOfTimeGoRoundIn32) {
    constexpr std::uint32_t cycles = 120;              // of twelve hours
    constexpr std::uint32_t transfers = cycles * 215;  // but for those that fail
    constexpr std::uint32_t left = 100;
    auto worker = std::make_unique<LongWorker>();
    worker->m_transferMS = 100'000;
    worker->m_failsAt = 216;  // the last one of six hours
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
