#include "CoreClasses/COutputMgr.h"

#include "CoreClasses/EngineTest.h"

#include <cstring>
#include <map>
#include <thread>

using testing::ElementsAre;

namespace {

class COutputMgrTest : public testing::Test {
protected:
    COutputMgrTest() {
        m_output.SetOutputCStrPtr(&m_outputText);
        m_output.SetErrCStrPtr(&m_errorText);
    }

    SimulatedClock m_clock;
    TemporaryFolder m_folder;
    COutputMgr m_output;
    CString m_outputText;
    CString m_errorText;
};

}  // namespace

TEST_F(COutputMgrTest, ALogThatIsSetAgainIsClosedWithItsBannerFirst) {
    const std::string path = m_folder.Colon("first");
    for (const bool isOutput : {true, false}) {
        const auto set = isOutput ? &COutputMgr::SetOutputFile : &COutputMgr::SetErrorFile;
        ASSERT_TRUE((m_output.*set)(path.c_str()));
        m_output.Write(kOutWarning, outLevelPrimary, "Message %d\r", 1);
        ASSERT_TRUE((m_output.*set)(m_folder.Colon("second").c_str()));
        const std::string caption = isOutput ? "Output File: " : "Error Log File: ";
        const std::string rule(64, '=');
        const std::string opening = rule + "\rQuarn IO Gaugeline Version 2\\.2\r[^\r]+\r" + caption + path +
                                    " Created at: " + DateText(0) + '\r' + rule + "\r\r\r";
        const std::string closing = std::string(32, '-') + "\rClosing " + caption + path + " at: " + DateText(0) + '\r';
        EXPECT_THAT(ContentOf(m_folder.Native("first")), testing::MatchesRegex(opening + "Message 1\r\r" + closing));
        m_output.CloseFiles();
    }
}

TEST_F(COutputMgrTest, EachBitOfTheMaskNamesOneDestinationAndTheFilesTakeTheManagersLevel) {
    m_output.SetOutLevel(outLevelPrimary);
    ASSERT_TRUE(m_output.SetOutputFile(m_folder.Colon("output").c_str()));
    ASSERT_TRUE(m_output.SetErrorFile(m_folder.Colon("errors").c_str()));
    for (int mask = 0; mask < 16; ++mask) {
        for (const outFileLevels level : {outLevelPrimary, outLevelSecondary}) {
            m_outputText = m_errorText = "";
            m_output.Write(mask, level, "%d", mask * level);
            EXPECT_EQ(m_outputText, (mask & 4) != 0 ? std::to_string(mask * level) : "");
            EXPECT_EQ(m_errorText, (mask & 8) != 0 ? std::to_string(mask * level) : "");
        }
    }
    m_output.CloseFiles();
    EXPECT_THAT(MessagesOf(m_folder.Native("output")), ElementsAre("1", "3", "5", "7", "9", "11", "13", "15"));
    EXPECT_THAT(MessagesOf(m_folder.Native("errors")), ElementsAre("2", "3", "6", "7", "10", "11", "14", "15"));
}

TEST_F(COutputMgrTest, ThreadsWriteWholeLinesBothWaysAndLongOnesAreCut) {
    ASSERT_TRUE(m_output.SetOutputFile(m_folder.Colon("log").c_str()));
    std::vector<std::thread> threads;
    for (const char character : {'a', 'b', 'c', 'd'}) {
        threads.emplace_back([this, line = std::string(1033, character)] {
            for (int i = 0; i < 100; ++i) {
                m_output.Write(kOutProgress, outLevelSecondary, "%s", line.c_str());
                std::strcpy(m_output.BlockingGetGlobalOutputBuffer(), line.c_str());
                m_output.UnBlockingWriteCurrentOutputBuffer(kOutProgress, outLevelSecondary);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(m_outputText.GetLength(), 255);
    m_output.CloseFiles();
    std::map<std::string, int> counts;
    for (const std::string& line : MessagesOf(m_folder.Native("log"))) {
        EXPECT_EQ(line, std::string(1023, line[0]));
        ++counts[line];
    }
    EXPECT_THAT(counts, testing::AllOf(testing::SizeIs(4), testing::Each(testing::Pair(testing::_, 200))));
}
