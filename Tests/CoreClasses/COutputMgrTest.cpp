#include "CoreClasses/COutputMgr.h"

#include "CoreClasses/EngineTest.h"

#include <array>
#include <cstring>
#include <map>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

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

// A pipe in the place of the log shows all that is written, also what emptying a file takes away.
TEST_F(COutputMgrTest, ALogThatIsSetAgainIsClosedWithItsBannerFirst) {
    const std::string path = m_folder.Colon("pipe");
    ASSERT_EQ(::mkfifo(m_folder.Native("pipe").c_str(), 0600), 0);
    const int pipe = ::open(m_folder.Native("pipe").c_str(), O_RDONLY | O_NONBLOCK);
    for (const bool isOutput : {true, false}) {
        const auto set = isOutput ? &COutputMgr::SetOutputFile : &COutputMgr::SetErrorFile;
        ASSERT_TRUE((m_output.*set)(path.c_str()));
        m_output.Write(kOutWarning, outLevelPrimary, "Message %d\r", 1);
        ASSERT_TRUE((m_output.*set)(path.c_str()));
        m_output.CloseFiles();
        m_output.CloseFiles();  // nothing is open any more
        std::array<char, 4096> written{};
        ASSERT_GT(::read(pipe, written.data(), written.size()), 0);
        const std::string caption = isOutput ? "Output File: " : "Error Log File: ";
        const std::string rule(64, '=');
        const std::string opening = rule + "\rQuarn IO Gaugeline Version 2\\.2\r[^\r]+\r" + caption + path +
                                    " Created at: " + DateText(0) + '\r' + rule + "\r\r\r";
        const std::string closing = std::string(32, '-') + "\rClosing " + caption + path + " at: " + DateText(0) + '\r';
        EXPECT_THAT(written.data(), testing::MatchesRegex(opening + "Message 1\r\r" + closing + opening + closing));
    }
    ::close(pipe);
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
