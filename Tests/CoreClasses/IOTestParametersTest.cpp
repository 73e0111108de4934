#include "CoreClasses/IOTestParameters.h"

#include "CoreClasses/EngineTest.h"

using testing::ElementsAre;

namespace {

/// The parameter lines after "Test Parameters - ".
std::vector<std::string> LogOf(const IOTestParameters& parameters) {
    const TemporaryFolder folder;
    COutputMgr output;
    EXPECT_TRUE(output.SetOutputFile(folder.Colon("log").c_str()));
    parameters.LogToStdOut(output);
    output.CloseFiles();
    std::vector<std::string> lines = MessagesOf(folder.Native("log"));
    for (std::string& line : lines) {
        line.erase(0, line.find("Test Parameters - ") == 0 ? 18 : 0);
    }
    return lines;
}

}  // namespace

TEST(IOTestParametersTest, LogsElevenLinesAndKeepsTheTextsWhenReset) {
    IOTestParameters parameters;  // no field that is logged, and no flag, has its default
    parameters.m_sharedFileInPath = parameters.m_reservedFlagA = parameters.m_loop = parameters.m_pathIsCorvane = true;
    parameters.m_reservedFlagB = parameters.m_noCache = false;
    parameters.m_testName = "A test";
    parameters.m_transferRateKBps = kUnlimitedRate;
    parameters.m_fileAccessMethod = kAccessMacFileManager;
    parameters.m_readWriteMethod = kReadsOnly;
    parameters.m_transferSizeKB = 8;
    parameters.m_durationMinutes = 10;
    parameters.m_maxFileSizeMB = 11;
    parameters.SetPathValue("Data:Tests");
    EXPECT_THAT(LogOf(parameters),
                ElementsAre("Test Name: A test\r", "File Access API: MAC\r", "Read-Write Method: Sequential Reads\r",
                            "Transfer Size KB: 8\r", "Transfer Rate KBPS: unlimited\r", "Duration Minutes: 10\r",
                            "LOOP: 1\r", "Max File Size MB: 11\r", "Drive Path To Test: Data:Tests\r",
                            "Path Is CORVANE: 1\r", "Shared File Included in Path (for Reads): 1\r"));
    parameters.InitParameters();
    EXPECT_THAT(
        LogOf(parameters),
        ElementsAre("Test Name: A test\r", "File Access API: Auto\r", "Read-Write Method: Mixed R/W Sequential\r",
                    "Transfer Size KB: 256\r", "Transfer Rate KBPS: 384\r", "Duration Minutes: 2\r", "LOOP: 0\r",
                    "Max File Size MB: 100\r", "Drive Path To Test: Data:Tests\r", "Path Is CORVANE: 0\r",
                    "Shared File Included in Path (for Reads): 0\r"));
    EXPECT_TRUE(!parameters.m_reservedFlagA && parameters.m_reservedFlagB && parameters.m_noCache);
    parameters.SetPathValue("");
    parameters.m_transferRateKBps = 0;
    parameters.m_fileAccessMethod = kAccessPosix;
    parameters.m_readWriteMethod = 3;
    EXPECT_THAT(LogOf(parameters), testing::IsSupersetOf({"File Access API: Unknown\r", "Read-Write Method: Unknown\r",
                                                          "Transfer Rate KBPS: 0\r", "Drive Path To Test: (NULL)\r"}));
}
