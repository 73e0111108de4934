#include "CoreClasses/ScratchFileWorker.h"

#include "CoreClasses/EngineTest.h"
#include "CoreClasses/WorkerFactory.h"

#include <filesystem>
#include <fstream>

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::SizeIs;

namespace {

/// The methods with real files; the parameter is the method's number.
class ScratchFileWorkerTest : public EngineTest, public testing::WithParamInterface<int> {
protected:
    [[nodiscard]] static bool IsMac() { return GetParam() == kAccessMacFileManager; }
    [[nodiscard]] bool IsFolderEmpty() const { return std::filesystem::is_empty(m_folder.Native()); }

    void RunAndStopAfter(std::uint32_t ms) {
        Run(GetParam(), [&] {
            m_clock.SleepMilliseconds(ms);
            m_worker->SetStop();
        });
    }

    /// Makes a file of 1 MB in the tested folder the path to test.
    void TestExistingFile() {
        std::ofstream(m_folder.Native("user.mov")) << m_userContent;
        m_parameters.m_sharedFileInPath = true;
        m_parameters.SetPathValue(File("user.mov").c_str());
    }

    const std::string m_userContent = std::string(1 << 20, 'u');
};

INSTANTIATE_TEST_SUITE_P(Methods, ScratchFileWorkerTest, testing::Values(kAccessMacFileManager, kAccessPosix),
                         [](const auto& method) { return method.param == kAccessPosix ? "Posix" : "Mac"; });

}  // namespace

// A transfer starts each 250 ms: 120 in 30 s of writing, 100 to a file. Reading starts after 30 s and the 1.1 s for
// closing the sample file; its 101st transfer, which finds the end of the file, takes its turn like the others.
TEST_P(ScratchFileWorkerTest, MixedTestLogsEachStepPassesOverATakenNameAndLeavesNoFileOfItsOwn) {
    std::ofstream(m_folder.Native("IOT0.tio")) << "mine";
    m_parameters.m_maxFileSizeMB = 100;
    Run(GetParam());
    const std::string written = "Writer 0 opened file " + File("IOT1.tio ");
    const std::string read = "Reader 0 opened file " + File("IOT2.tio ");
    const std::string end =
        "EOF detected reader 0 file " + File("IOT2.tio ") + (IsMac() ? "err no =-39 " : "err no =0 ");
    const std::string preparing = "Preparing reader 0 for read test. " + At(30);
    const std::string finishing =
        "Finishing prepration for read test... ** Closing test data file may take several seconds or more. ** " +
        At(30);
    EXPECT_THAT(m_lines, ElementsAre(written + At(0), written + At(25), preparing, finishing, read + At(31),
                                     end + At(56), read + At(56), "Ending reader #: 0 " + At(61)));
    EXPECT_THAT(m_errors, ElementsAre(preparing, finishing));
    EXPECT_THAT(m_cacheLines, SizeIs(1)) << "told once";
    EXPECT_THAT(Counts(), ElementsAre(120, 119, 0, 0));
    EXPECT_THAT((std::vector{m_results.m_writeAvgKBPS, m_results.m_readAvgKBPS}), Each(4096));
    EXPECT_EQ(m_results.m_elapsedSeconds, 61U);
    EXPECT_EQ(ContentOf(m_folder.Native("IOT0.tio")), "mine");
    EXPECT_TRUE(std::filesystem::remove(m_folder.Native("IOT0.tio")) && IsFolderEmpty());
}

TEST_P(ScratchFileWorkerTest, FilesHoldWhatEachMethodWrites) {
    m_parameters.m_maxFileSizeMB = 10;
    std::string written;
    std::string sample;
    Run(GetParam(), [&] {
        m_clock.SleepMilliseconds(4'300);  // 17 transfers: 7 of the second pass
        written = ContentOf(m_folder.Native("IOT0.tio"));
        m_clock.SleepMilliseconds(30'000);
        sample = ContentOf(m_folder.Native("IOT1.tio"));
    });
    std::string blocks;
    for (int block = 0; block < 80; ++block) {
        blocks += std::string(130'560, '\0') + std::string(512, '[');
    }
    EXPECT_EQ(written.size(), IsMac() ? 10U << 20 : 7U << 20) << "overwritten in place, or emptied first";
    EXPECT_TRUE(!IsMac() || written == std::string(10 << 20, '\x1A'));
    EXPECT_TRUE(sample == (IsMac() ? std::string(12 << 20, '[') : blocks))
        << "of 4 MB each, or at the end of each 128 KB";
}

// 384 KB a second to or from 1 MB: three transfers make a file. Reading, the third is short: for the stream method the
// end of the file, for the other one a transfer that counts, and a fourth finds the end.
TEST_P(ScratchFileWorkerTest, TheShortLastPieceIsWrittenAndCountedAsTheMethodHasIt) {
    m_parameters.m_transferSizeKB = m_parameters.m_transferRateKBps = 384;
    m_parameters.m_readWriteMethod = kWritesOnly;
    Run(GetParam());
    EXPECT_THAT(Counts(), ElementsAre(60, 0, 0, 0));
    EXPECT_EQ(m_results.m_bytesWritten, 20U << 20);

    m_parameters.m_readWriteMethod = kReadsOnly;
    TestExistingFile();
    Run(GetParam());
    EXPECT_THAT(Counts(), ElementsAre(0, IsMac() ? 45 : 40, 0, 0));
    EXPECT_EQ(m_results.m_bytesRead, IsMac() ? 15U << 20 : 40U * 393'216);
    EXPECT_EQ(m_lines[2], "EOF detected reader 0 file " + File("user.mov") +
                              (IsMac() ? " err no =-39 " + At(4) : " err no =262144 " + At(3)));
}

// 60 s of passes that can write nothing, one tick of 17 ms apart.
TEST_P(ScratchFileWorkerTest, ALimitThatWrapsToNothingMakesSixtyPassesASecond) {
    m_parameters.m_readWriteMethod = kWritesOnly;
    m_parameters.m_maxFileSizeMB = 4096;
    Run(GetParam());
    EXPECT_THAT(m_lines, SizeIs(3530 + 1));
    EXPECT_THAT(Counts(), Each(0));
    m_parameters.m_maxFileSizeMB = 0;
    m_parameters.m_readWriteMethod = kReadsOnly;
    Run(GetParam());
    EXPECT_THAT(m_lines, SizeIs(2)) << "a sample file of less than 1 MB is not read, without a word";
    EXPECT_FALSE(m_results.m_readsStarted);
}

TEST_P(ScratchFileWorkerTest, AnExistingFileIsKeptThroughEachCycleAndWhatWasMadeBesideItIsNot) {
    TestExistingFile();
    m_parameters.m_loop = true;
    RunAndStopAfter(75'125);
    EXPECT_THAT(Counts(), ElementsAre(120 + 61, 60, 0, 0)) << "every other reading finds the end";
    EXPECT_TRUE(ContentOf(m_folder.Native("user.mov")) == m_userContent);
    EXPECT_FALSE(std::filesystem::exists(m_folder.Native("IOT0.tio")));
    EXPECT_THAT(m_worker->ScratchFiles(), SizeIs(0));
}

TEST_P(ScratchFileWorkerTest, AStopBeforeOrDuringPreparationEndsItAfterTheBlockInHand) {
    auto worker = MakeWorker(GetParam()).worker;
    worker->SetStop();
    Run(std::move(worker));
    EXPECT_THAT(m_lines, SizeIs(3)) << "preparing, finishing, ending";
    EXPECT_EQ(m_results.m_readsStarted, IsMac());
    EXPECT_EQ(m_errors.back(),
              IsMac() ? m_lines[1]
                      : "Error writing sample data to file " + File("IOT0.tio") + " for read test. err no =0 " + At(1));
    m_parameters.m_readWriteMethod = kReadsOnly;
    m_parameters.m_maxFileSizeMB = 100;
    m_clock.SetMicrosecondsPerReading(IsMac() ? 100'000 : 10'000);  // each block takes one
    RunAndStopAfter(1'205);
    const std::string creating = "Preparing reader 0 for read test. ** Creating test file may be time-consuming. ** ";
    EXPECT_THAT(m_lines, Contains(creating + At(0)));
    EXPECT_EQ(m_results.m_elapsedSeconds, 2U);
    EXPECT_EQ(m_results.m_readsCompleted, 0U);
    EXPECT_TRUE(IsFolderEmpty());
}
