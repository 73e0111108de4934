#include "Programs/CommandLine/Verdict.h"

#include "Programs/CommandLine/ExitStatus.h"

#include <gtest/gtest.h>

#include <csignal>
#include <tuple>

namespace {

/// A direction of ten seconds at so many KB/s; with no rate, one that made no transfer.
TransferStatistics Measured(double rateKBps, std::uint64_t errors = 0) {
    TransferStatistics direction;
    direction.transfers = rateKBps > 0 ? 10 : 0;
    direction.bytes = static_cast<std::uint64_t>(rateKBps * 10 * 1024);
    direction.phaseUS = 10'000'000;
    direction.errors = errors;
    return direction;
}

TestReport Completed(ReadWriteMethod mode, std::uint32_t targetKBps) {
    TestReport report;
    report.state = TestReport::State::Completed;
    report.plan.parameters.m_readWriteMethod = mode;
    report.plan.parameters.m_transferRateKBps = targetKBps;
    report.results.m_writesStarted = report.plan.Writes();
    report.results.m_readsStarted = report.plan.Reads();
    return report;
}

}  // namespace

TEST(VerdictTest, TheWorseDirectionDecidesAndErrorsOutweighIt) {
    using Case = std::tuple<ReadWriteMethod, std::uint32_t, double, double, std::uint64_t, const char*, int>;
    for (const auto& [mode, target, writes, reads, errors, verdict, exitStatus] :
         {Case{kWritesOnly, 1000, 950, 0, 0, "sustained", 0}, Case{kWritesOnly, 1000, 949.9, 0, 0, "marginal", 1},
          Case{kReadsOnly, 1000, 0, 850, 0, "marginal", 1}, Case{kReadsOnly, 1000, 0, 849.9, 0, "short", 1},
          Case{kWritesThenReads, 1000, 2000, 900, 0, "marginal", 1},
          Case{kWritesThenReads, 1000, 1000, 1000, 1, "sustained", 4},
          Case{kWritesThenReads, kUnlimitedRate, 3, 0, 0, "short", 1},
          Case{kReadsOnly, kUnlimitedRate, 0, 3, 1, "unpaced", 4}}) {
        TestReport report = Completed(mode, target);
        report.writes = Measured(writes, errors);
        report.reads = Measured(reads);
        EXPECT_STREQ(VerdictName(Judge(report).value()), verdict) << writes << " " << reads;
        EXPECT_EQ(ExitStatusOf(report), exitStatus) << writes << " " << reads;
    }
}

TEST(VerdictTest, ASelfTestIsNotJudgedByARateItCannotHave) {
    TestReport report = Completed(kWritesOnly, 1000);
    report.plan.parameters.m_fileAccessMethod = kAccessSelfTest;
    report.writes.transfers = 240;
    EXPECT_EQ(Judge(report), Verdict::Unpaced);
}

TEST(VerdictTest, ATestThatWasInterruptedIsJudgedByWhatItCameTo) {
    TestReport report = Completed(kWritesThenReads, 1000);
    report.state = TestReport::State::Interrupted;
    report.signal = SIGTERM;
    report.writes = Measured(990);
    report.results.m_readsStarted = false;
    EXPECT_EQ(Judge(report), Verdict::Sustained);
    EXPECT_EQ(ExitStatusOf(report), 143);

    report.results.m_readsStarted = true;  // opened and closed in passing
    EXPECT_EQ(Judge(report), Verdict::Sustained);
    report.isAbandoned = true;  // its first transfer hung
    EXPECT_EQ(Judge(report), Verdict::Short);

    report.isAbandoned = false;
    report.results.m_writesStarted = false;
    EXPECT_EQ(Judge(report), std::nullopt);
    report.signal = 0;
    report.state = TestReport::State::NotStarted;
    EXPECT_EQ(Judge(report), std::nullopt);
    EXPECT_EQ(ExitStatusOf(report), 3);
}
