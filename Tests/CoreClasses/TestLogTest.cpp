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
    results.m_readPeakMS = 4;
    results.m_writesCompleted = 5;
    results.m_writePeakMS = 0x8000'0000;  // shown signed
    for (const int phases : {0, 1, 2, 3}) {
        results.m_readsStarted = (phases & 1) != 0;
        results.m_writesStarted = (phases & 2) != 0;
        TestLog::Measurement(output, results);
    }
    TestLog::Stopped(output);
    TestLog::CouldNotStart(output);
    TestLog::CouldNotSelect(output);
    output.CloseFiles();
    const std::string now = DateText(0);
    const std::string measured = now + " - measurement ";
    const std::string reads = measured + "RQy=1 RAv=0 RCr=0 RTm=4 ";
    const std::string readsOnly = reads + "WQy=n/a WAv=n/a WCr=n/a WTm=n/a Elapsed=0\r";
    const std::string writes = "WQy=5 WAv=0 WCr=0 WTm=-2147483648 Elapsed=0\r";
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
