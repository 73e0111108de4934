#include "CoreClasses/SelfTestFileWorker.h"

#include "CoreClasses/EngineTest.h"

using testing::ElementsAre;

namespace {

class SelfTestFileWorkerTest : public EngineTest {
protected:
    /// A date text without the carriage return that most lines end in.
    [[nodiscard]] std::string BareAt(int seconds) const { return At(seconds).substr(0, At(seconds).size() - 1); }

    /// Each transfer takes 2 ms, and one of them is warned of.
    void RunWatched(std::int32_t readWriteMethod) {
        m_parameters.m_readWriteMethod = readWriteMethod;
        m_parameters.m_transferRateKBps = kUnlimitedRate;
        m_clock.SetMicrosecondsPerReading(2000);
        auto worker = std::make_unique<SelfTestFileWorker>();
        worker->SetReadThresholdWatch(1);
        worker->SetReadOverThresholdWarnMax(1);
        Run(std::move(worker));
    }
};

}  // namespace

// One transfer each 666 ms: the first that ends with the second 60 is number 91, at 60.6 s.
TEST_F(SelfTestFileWorkerTest, CountsTransfersAtTheirPaceAndNoBytes) {
    m_parameters.m_transferSizeKB = 256;
    m_parameters.m_transferRateKBps = 384;
    m_parameters.m_readWriteMethod = kWritesOnly;
    Run(kAccessSelfTest);
    EXPECT_EQ(m_lines[0], "Writer 0 opened file SELF-TEST-NULL-FILE " + BareAt(0));
    EXPECT_THAT(m_lines, testing::SizeIs(23 + 1)) << "four transfers to a pass over 1 MB";
    EXPECT_THAT(Counts(), ElementsAre(91, 0, 0, 0));
    EXPECT_EQ(m_results.m_bytesWritten + m_results.m_writeAvgKBPS + m_results.m_writeRecentKBPS, 0U);
}

TEST_F(SelfTestFileWorkerTest, HasTextsOfItsOwn) {
    const std::string maximum = "WARNING: Maximum number of ";
    RunWatched(kWritesOnly);
    EXPECT_EQ(m_lines[1], "WARNING: Write Over Threshold reader 0 MS=2 at time " + At(0));
    EXPECT_THAT(m_errors, ElementsAre(maximum + "write threshold warnings reached on reader 0 at time " + BareAt(0)));
    m_parameters.m_maxFileSizeMB = 100;  // 800 readings of the clock, as if the file were made
    RunWatched(kReadsOnly);
    EXPECT_EQ(m_lines[0],
              "Preparing reader 0 for read test.  ** Creating the test file may be time-consuming ** " + BareAt(0))
        << "the other ones show on the screen only";
    EXPECT_EQ(m_lines[1], "Reader 0 opened file SELF-TEST-NULL-FILE " + At(1));
    EXPECT_EQ(m_lines[2], "WARNING: Read Over Threshold reader 0 MS=2 at time " + BareAt(1));
    EXPECT_THAT(m_errors, ElementsAre(maximum + "read threshold warnings reached on reader 0 at time " + At(1)));
}
