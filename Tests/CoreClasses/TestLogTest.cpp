#include "CoreClasses/TestLog.h"

#include "CoreClasses/EngineTest.h"
#include "CoreClasses/IOTestResults.h"

using testing::ElementsAre;

TEST(TestLogTest, WritesTheConductorsLinesAndTheFormsOfAMeasurement) {
    const SimulatedClock clock;
    const TemporaryFolder folder;
    COutputMgr output;
    ASSERT_TRUE(output.SetOutputFile(folder.Colon("output").c_str()));
    ASSERT_TRUE(output.SetErrorFile(folder.Colon("errors").c_str()));
    TestLog::Selecting(output);
    TestLog::Selected(output, "MAC File API");
    IOTestResults results;
    results.m_readsCompleted = 1;
    results.m_readAvgKBPS = 2;
    results.m_readRecentKBPS = 3;
    results.m_readPeakMS = 4;
    results.m_writesCompleted = 5;
    results.m_writeAvgKBPS = 6;
    results.m_writeRecentKBPS = 7;
    results.m_writePeakMS = 0x8000'0000;  // shown signed
    results.m_elapsedSeconds = 9;
    for (const bool writes : {false, true}) {
        for (const bool reads : {false, true}) {
            results.m_writesStarted = writes;
            results.m_readsStarted = reads;
            TestLog::Measurement(output, results);
        }
    }
    TestLog::Stopped(output);
    TestLog::CouldNotStart(output);
    TestLog::CouldNotSelect(output);
    output.CloseFiles();
    const std::string now = DateText(0);
    const std::string measured = now + " - measurement ";
    const std::string reads = measured + "RQy=1 RAv=2 RCr=3 RTm=4 ";
    const std::string readsOnly = reads + "WQy=n/a WAv=n/a WCr=n/a WTm=n/a Elapsed=9\r";
    const std::string writes = "WQy=5 WAv=6 WCr=7 WTm=-2147483648 Elapsed=9\r";
    EXPECT_THAT(MessagesOf(folder.Native("output")),
                ElementsAre("Selecting file access protocol and generating test object... " + now + '\r',
                            "Selected Test Method: 'MAC File API' - " + now + '\r', readsOnly, readsOnly,
                            measured + "RQy=n/a RAv=n/a RCr=n/a RTm=n/a " + writes, reads + writes,
                            "Test stopped " + now + '\r'));
    EXPECT_THAT(
        MessagesOf(folder.Native("errors")),
        ElementsAre("Test stopped " + now + '\r',
                    "Could not start test.  The path may be invalid or the file access method may be incorrectly "
                    "set.  " +
                        now + '\r',
                    "Could not select an appropriate test object and access method... " + now + '\r'));
}
