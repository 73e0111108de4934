#include "Programs/CommandLine/StatusLine.h"

#include "Programs/CommandLine/ProgressDisplay.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

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

/// A paced test of 1024 KB at 1024 KB/s in its write phase.
TestReport PacedReport(std::uint32_t elapsedSeconds, std::uint64_t megabytes) {
    TestReport report;
    report.plan.parameters.m_transferSizeKB = 1024;
    report.plan.parameters.m_transferRateKBps = 1024;
    report.plan.parameters.m_readWriteMethod = kWritesOnly;
    report.plan.parameters.m_durationMinutes = 1;
    report.results.m_writesStarted = true;
    report.results.m_phase = kPhaseWrite;
    report.results.m_elapsedSeconds = elapsedSeconds;
    report.writes.bytes = megabytes << 20;
    report.writes.transfers = megabytes;
    report.writes.phaseUS = std::uint64_t{elapsedSeconds} * 1'000'000;
    for (std::uint64_t i = 0; i < megabytes; ++i) {
        report.writes.times.Add(1000 * i);
    }
    return report;
}

}  // namespace

TEST(StatusLineTest, ANarrowTerminalLosesWhatIsLeastNeeded) {
    EXPECT_EQ(LiveStatusLine(Writing(20), 120),
              "Writing   [##########....................] 0:40 left  4.00 MB/s (avg 3.92), max 12.3 ms, 1 error");
    EXPECT_EQ(LiveStatusLine(Writing(20), 79),
              "Writing   [####.........] 0:40 left  4.00 MB/s (avg 3.92), max 12.3 ms, 1 error");
    EXPECT_EQ(LiveStatusLine(Writing(20), 70), "Writing   0:40 left  4.00 MB/s (avg 3.92), max 12.3 ms, 1 error");
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
    StatusTracker tracker;
    std::uint64_t nowUS = 0;
    const auto pass = [&](std::uint32_t elapsed, std::uint64_t megabytes) {
        nowUS = 7'000'000 + std::uint64_t{elapsed} * 1'000'000;
        tracker.Update(PacedReport(elapsed, megabytes), nowUS, false);
    };
    pass(0, 0);
    EXPECT_EQ(tracker.Status().quietSeconds, 0U);
    for (std::uint32_t second = 1; second <= 10; ++second) {
        pass(second, second);
    }
    EXPECT_DOUBLE_EQ(tracker.Status().currentKBps, 1024.0);
    for (std::uint32_t second = 11; second <= 14; ++second) {
        pass(second, 10);
    }
    EXPECT_EQ(tracker.Status().quietSeconds, 0U);  // less than two intervals and three seconds
    pass(15, 10);
    EXPECT_EQ(tracker.Status().quietSeconds, 5U);
    EXPECT_EQ(tracker.Status().currentKBps, 0.0);
    EXPECT_NEAR(tracker.Status().averageKBps, 10 * 1024 / 15.0, 0.01);
    EXPECT_THAT(LiveStatusLine(tracker.Status(), 120), HasSubstr("no transfer for 0:05, 0.00 MB/s (avg 0.667)"));
}

TEST(StatusLineTest, TheLiveLineIsErasedBeforeOtherText) {
    std::ostringstream err;
    const Console console{
        .out = err, .err = err, .errHasColour = true, .errIsLive = true, .errColumns = [] { return 40; }};
    ProgressDisplay display(console, ProgressDisplay::Progress::Shown);
    display.Show(Writing(20));
    display.Say("text");
    display.Clear();
    EXPECT_EQ(err.str(), "\r\033[K\033[31mWriting   0:40 left  4.00 MB/s, 1 error\033[0m\r\033[Kgaugeline-cli: text\n");
}
