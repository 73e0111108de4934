#include "Programs/CommandLine/Summary.h"

#include "Programs/CommandLine/JsonReport.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

using testing::EndsWith;

namespace {

TestReport PacedReport() {
    TestReport report;
    report.state = TestReport::State::Completed;
    report.methodName = "MAC File API";
    IOTestParameters& test = report.plan.parameters;
    test.m_standardTestID = kCustomTestID;
    test.NormalizeStandardParameters();
    test.SetPathValue("Media:Tests");
    test.m_transferSizeKB = 1024;
    test.m_transferRateKBps = 4096;
    test.m_durationMinutes = 1;
    report.plan.nativePath = "/mnt/Media/Tests";
    report.results.m_writesStarted = true;
    report.results.m_readsStarted = true;
    report.results.m_elapsedSeconds = 61;
    report.writes.transfers = 110;
    report.writes.bytes = 110 << 20;
    report.writes.errors = 1;
    report.writes.phaseUS = 30'250'000;
    for (int i = 0; i < 110; ++i) {
        const std::uint64_t time = i < 100 ? 85 : i < 109 ? 12'500 : 1'250'000;
        report.writes.times.Add(time);
        report.writes.deadlines.Add(time, 250'000);
    }
    report.reads.phaseUS = 30'000'000;
    report.fileCache.mode = FileCacheMode::Bypassed;
    return report;
}

}  // namespace

TEST(SummaryTest, APacedTestShowsItsDeadlinesAndTheVerdict) {
    EXPECT_EQ(SummaryText(PacedReport(), false),
              R"(Test          Custom Test: writes, then reads of 1024 KB at 4096 KB/s, 1 minute, files of 100 MB
Path          Media:Tests (/mnt/Media/Tests)
Method        MAC File API
File cache    bypassed
Ran for       1:01

                                writes         reads
transfers                          110             0
data                          110.0 MB        0.0 MB
time in phases                 30.25 s       30.00 s
average                      3.64 MB/s     0.00 MB/s
errors                               1             0
time of one transfer
  median                      0.085 ms             -
  95 %                         12.5 ms             -
  99 %                         12.5 ms             -
  99.9 %                       1250 ms             -
  slowest                      1250 ms             -
deadlines, one transfer every 250 ms
  late                               1             0
  most late in a row                 1             0
  worst lateness               1000 ms             -
  buffer to ride it out        1.000 s       0.000 s

1 KB is 1024 bytes, 1 MB is 1024 KB.
Verdict       short (writes 90.9 %, reads 0.0 % of 4096 KB/s), with 1 error
)");
    EXPECT_THAT(SummaryText(PacedReport(), true),
                EndsWith("Verdict       \033[31mshort\033[0m (writes 90.9 %, reads 0.0 % of 4096 KB/s)"
                         "\033[31m, with 1 error\033[0m\n"));
}

TEST(SummaryTest, TheDocumentIsValidWhateverThePathsBytesAre) {
    TestReport report = PacedReport();
    report.plan.parameters.SetPathValue("Media:\xff\xc3");
    report.plan.nativePath = "/mnt/Media/\xff\"\n";
    report.plan.thresholdMS = 10;
    const auto document = nlohmann::json::parse(JsonText(report));
    EXPECT_EQ(document["path"]["colon"], "Media:\xef\xbf\xbd\xef\xbf\xbd");
    EXPECT_EQ(document["path"]["native"], "/mnt/Media/\xef\xbf\xbd\"\n");
    nlohmann::json expected = document;
    expected.merge_patch(
        nlohmann::json::parse(R"({"verdict": "short", "exitStatus": 4, "transfersOverThreshold": 0, "writes":
        {"seconds": 30.25, "averageKBps": 3723.636, "percentOfTarget": 90.909, "latencyUs": {"p50": 85, "p999": 1250000},
         "late": {"count": 1, "longestRun": 1, "worstUs": 1000000, "bufferSeconds": 1.0}}})"));
    EXPECT_EQ(document, expected);
    EXPECT_NEAR(document["writes"]["latencyUs"]["p99"], 12'500, 125);
    EXPECT_EQ(document["reads"]["latencyUs"], nullptr);
}
