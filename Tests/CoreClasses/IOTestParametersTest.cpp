#include "CoreClasses/IOTestParameters.h"

#include "CoreClasses/EngineTest.h"

#include <filesystem>

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

/// A record in which no field that is logged, and no flag, has its default.
IOTestParameters Unusual() {
    IOTestParameters parameters;
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
    return parameters;
}

}  // namespace

TEST(IOTestParametersTest, LogsElevenLinesAndKeepsTheTextsWhenReset) {
    IOTestParameters parameters = Unusual();
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
    for (const int method : {kAccessSelfTest, kAccessPosix}) {
        parameters.m_fileAccessMethod = method;
        parameters.m_readWriteMethod = method == kAccessPosix ? 3 : kWritesOnly;
        const std::vector<std::string> lines = LogOf(parameters);
        EXPECT_EQ(lines[1], "File Access API: Unknown\r");
        EXPECT_EQ(lines[2], std::string("Read-Write Method: ") + (method == 3 ? "Unknown\r" : "Sequential Writes\r"));
        EXPECT_EQ(lines[4], "Transfer Rate KBPS: 0\r");
        EXPECT_EQ(lines[8], "Drive Path To Test: (NULL)\r");
    }
    parameters.SetPathValue(std::string(300, 'p').c_str());
    parameters.SetPathValue(nullptr);
    EXPECT_EQ(parameters.m_drivePath, std::string(255, 'p'));
}

TEST(IOTestParametersTest, TheDefaultPathIsTheFirstWorkingDirectoryOfTheProcess) {
    const std::filesystem::path before = std::filesystem::current_path();
    const CString defaultBefore = IOTestParameters::sm_defaultPath;
    const TemporaryFolder first;
    const TemporaryFolder second;
    IOTestParameters::sm_defaultPath = "";
    for (const TemporaryFolder* folder : {&first, &second}) {
        std::filesystem::current_path(folder->Native());
        IOTestParameters parameters;
        EXPECT_EQ(parameters.m_drivePath, first.Colon() + ':');
        parameters.SetPathValue("Elsewhere:");
    }
    std::filesystem::current_path(before);
    IOTestParameters::sm_defaultPath = defaultBefore;
}

TEST(IOTestParametersTest, NormalizingTakesThePresetAndLeavesThePersonsChoices) {
    for (const auto& [id, name] :
         {std::pair{4, "Profile-C Reads (~ 18 MB/second)"}, {-1, "Custom Test"}, {17, "A test"}}) {
        IOTestParameters record = Unusual();
        record.m_standardTestID = id;
        record.NormalizeStandardParameters();
        EXPECT_EQ(record.m_testName, name);
        EXPECT_EQ(record.m_transferSizeKB, id == 4 ? 8192U : 8U);
        EXPECT_EQ(record.m_noCache, id == 4);
        EXPECT_TRUE(record.m_durationMinutes == 10 && record.m_loop && record.m_pathIsCorvane);
        EXPECT_EQ(record.m_drivePath, "Data:Tests");
    }
}
