#include "Programs/CommandLine/StatusLine.h"

#include <gmock/gmock.h>

using testing::HasSubstr;
using testing::StartsWith;

namespace {

TestStatus Writing(std::uint32_t elapsedSeconds) {
    return {.phase = "Writing",
            .elapsedSeconds = elapsedSeconds,
            .durationSeconds = 60,
            .currentKBps = 4096.0,
            .averageKBps = 4010.0,
            .slowestUS = 12'345,
            .errors = 1,
            .quietSeconds = 0};
}

}  // namespace

TEST(StatusLineTest, ANarrowTerminalLosesWhatIsLeastNeeded) {
    EXPECT_EQ(LiveStatusLine(Writing(20), 120),
              "Writing   [##########....................] 0:40 left  4.00 MB/s (avg 3.92), max 12.3 ms, 1 error");
    EXPECT_EQ(LiveStatusLine(Writing(20), 79),
              "Writing   [####.........] 0:40 left  4.00 MB/s (avg 3.92), max 12.3 ms, 1 error");
    EXPECT_EQ(LiveStatusLine(Writing(20), 55), "Writing   0:40 left  4.00 MB/s (avg 3.92), 1 error");
    EXPECT_EQ(LiveStatusLine(Writing(20), 39), "Writing   0:40 left  4.00 MB/s, 1 error");
    EXPECT_EQ(LiveStatusLine(Writing(20), 12), "Writing   0:");
    for (std::size_t columns = 1; columns < 130; ++columns) {
        EXPECT_LE(LiveStatusLine(Writing(20), columns).size(), columns);
    }
}

TEST(StatusLineTest, TheRemainingTimeIsNeverNegativeAndALoopHasNone) {
    TestStatus status = Writing(75);
    EXPECT_THAT(LiveStatusLine(status, 120), HasSubstr("[##############################] 0:00 left"));
    status.durationSeconds = 0;
    EXPECT_THAT(LiveStatusLine(status, 120), StartsWith("Writing   1:15 LOOP  4.00 MB/s"));
    EXPECT_THAT(PlainStatusLine(status), StartsWith("Writing, 1:15 gone, LOOP: 4.00 MB/s"));
    status.durationSeconds = 200'000;
    EXPECT_EQ(status.Remaining(), "2d 07:32:05 left");
}

TEST(StatusLineTest, TheCurrentRateFollowsTheLastSecondsAndASilenceIsTold) {
    TestReport report;
    report.plan.parameters.m_transferSizeKB = 1024;
    report.plan.parameters.m_transferRateKBps = 1024;
    report.results.m_phase = kPhaseWrite;
    StatusTracker tracker;
    for (std::uint32_t second = 0; second <= 15; ++second) {
        report.results.m_elapsedSeconds = second;
        report.writes.phaseUS = std::uint64_t{second} * 1'000'000;
        if (second >= 1 && second <= 10) {
            report.writes.bytes += std::uint64_t{1} << 20;
            report.writes.times.Add(1000);
        }
        tracker.Update(report, 7'000'000 + report.writes.phaseUS, false);
        EXPECT_EQ(tracker.Status().quietSeconds, second < 15 ? 0U : 5U);  // from two intervals and three seconds on
        if (second == 10) {
            EXPECT_DOUBLE_EQ(tracker.Status().currentKBps, 1024.0);
        }
    }
    EXPECT_THAT(LiveStatusLine(tracker.Status(), 120), HasSubstr("no transfer for 0:05, 0.00 MB/s (avg 0.667)"));
}
