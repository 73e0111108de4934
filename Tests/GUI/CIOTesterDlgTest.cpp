#include "GUI/CIOTesterDlg.h"

#include "Framework/Base/LThread.h"
#include "Framework/UI/LTimerTask.h"
#include "GUI/Commands.h"
#include "GUI/DigiString.h"
#include "GUI/MainWindowTest.h"
#include "GUI/RateConversion.h"
#include "GUI/Stage.h"
#include "Support/TestWindow.h"
#include "SupportingClasses/CTime.h"

#include <QAction>
#include <QMenu>
#include <QWidget>
#include <gmock/gmock.h>

#include <array>
#include <filesystem>
#include <map>

namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

using CIOTesterDlgTest = MainWindowTest;

/// The number behind "key=" in a measurement line; -1 for "n/a".
int FieldOf(const std::string& line, const std::string& key) {
    const std::string value = line.substr(line.find(key + '=') + key.size() + 1);
    return value.starts_with("n/a") ? -1 : std::stoi(value);
}

/// What a readout shows of a rate in KB/s.
std::string RateShown(int rateKBps) {
    DigiString readout(SPaneInfo{});
    readout.setFloatValue(MBPSForReadout(static_cast<std::uint32_t>(rateKBps)));
    return readout.AccessibleValue();
}

}  // namespace

TEST_F(CIOTesterDlgTest, EveryStateShowsWhatCanBeDoneAndTheLogTellsEachStep) {
    EXPECT_EQ(Buttons(), "+-+");
    EXPECT_EQ(Stage::iStage, Stage::kBlank);
    EXPECT_THAT((std::vector{Text(5), Text(7), Text(9), Text(10)}),
                ElementsAre("Custom Test", "1", "", m_folder.Colon()));
    m_window->OnStart();
    EXPECT_EQ(Buttons(), "-+-");
    EXPECT_EQ(Stage::iStage, Stage::kLive);
    EXPECT_THAT((std::vector{Readout(210), Readout(220), Text(36)}), ElementsAre("-", "01:00", ""));
    m_window->OnStart();
    EXPECT_THAT(AlertShown(), HasSubstr("A test is already running."));

    StartUntilWorkerIsMade();
    EXPECT_EQ(Text(36), "Self Test");
    EXPECT_THAT(Text(18), StartsWith("Selected Test Method: 'Self Test' - Mon January 5, 2004 "));
    LetWorkerStart();
    Tick(6);
    EXPECT_EQ(Text(37), "(Writing)");
    EXPECT_THAT((std::vector{Readout(210), Readout(220)}), ElementsAre("02", "58"));
    m_window->ListenToMessage(kMessageStop, nullptr);
    EXPECT_EQ(Buttons(), "+--") << "until the next pass";
    Tick(3);
    EXPECT_EQ(Buttons(), "---");
    EXPECT_EQ(Readout(220), "-") << "a single 0";
    TickUntilIdle();
    EXPECT_EQ(Buttons(), "+-+");
    EXPECT_EQ(Readout(220), "-");
    EXPECT_THAT(Text(18), StartsWith("Test stopped "));
    std::vector<std::string> lines = LogMessages();
    lines.erase(lines.begin(), lines.begin() + 11);  // the parameters
    EXPECT_THAT(lines, ElementsAre("Selecting file access protocol and generating test object... \r",
                                   "Selected Test Method: 'Self Test' - \r", StartsWith("Writer 0 opened file "),
                                   StartsWith("Preparing reader 0 for read test. "), "Ending reader #: 0 \r",
                                   "Test stopped \r"));
}

// Whatever is shown comes from the same copy of the results as the line.
TEST_F(CIOTesterDlgTest, TheReadoutsShowWhatTheMeasurementLineSaysEverySixSecondsInItsThreeForms) {
    m_parameters.m_fileAccessMethod = kAccessPosix;
    Accept();
    StartTest();
    using Shown = std::vector<std::string>;
    std::map<std::string, Shown> shownAt;  // by the elapsed time
    while (m_window->TestIsStarted()) {
        Tick();
        shownAt[Readout(210)] = {Text(37), Readout(230), Readout(240), Readout(250)};
    }
    EXPECT_TRUE(std::filesystem::is_empty(m_folder.Native()));

    std::vector<int> elapsed;
    for (const std::string& line : Measurements()) {
        elapsed.push_back(FieldOf(line, "Elapsed"));
        std::array<char, 10> text{};
        const Shown& shown = shownAt[CTime::FormatTime(static_cast<std::uint32_t>(elapsed.back()), text.data())];
        const std::string way = elapsed.back() <= 30 ? "W" : "R";
        EXPECT_THAT(shown,
                    ElementsAre(way == "W" ? "(Writing)" : "(Reading)", std::to_string(FieldOf(line, way + "Qy")),
                                RateShown(FieldOf(line, way + "Cr")), RateShown(FieldOf(line, way + "Av"))))
            << line;
        EXPECT_EQ(FieldOf(line, "RQy") == -1, way == "W") << "reads have not begun";
        EXPECT_NE(FieldOf(line, "WQy"), -1);
    }
    EXPECT_THAT(elapsed, ElementsAre(6, 12, 18, 24, 30, 36, 42, 48, 54, 60));
}

TEST_F(CIOTesterDlgTest, AReadsOnlyTestHasNoFiguresOfWrites) {
    m_parameters.m_readWriteMethod = kReadsOnly;
    Accept();
    StartTest();
    Tick(50);
    EXPECT_EQ(Text(37), "(Reading)");
    const std::vector<std::string> lines = Measurements();
    EXPECT_THAT(lines, SizeIs(2));
    EXPECT_THAT(lines, Each(HasSubstr(" WQy=n/a WAv=n/a WCr=n/a WTm=n/a Elapsed=")));
}

TEST_F(CIOTesterDlgTest, TheRemainingTimeIsNeverNegativeAndALoopHasNone) {
    StartTest();
    std::string last;
    while (m_window->TestIsStarted()) {
        last = Readout(220);
        Tick();
    }
    EXPECT_EQ(last, "00") << "the worker ends after its time";
    for (const auto& [minutes, loops, remaining] :
         {std::tuple{1U, true, "LOOP"}, {0xFFFF'FFFFU, false, "LOOP"}, {60U, false, "01:00:00"}}) {
        m_parameters.m_durationMinutes = minutes;
        m_parameters.m_loop = loops;
        Accept();
        EXPECT_EQ(Text(7), loops ? "Loop" : std::to_string(minutes));
        StartUntilWorkerIsMade();
        EXPECT_EQ(Readout(220), remaining);
        m_window->OnStop();
        LetWorkerStart();
        TickUntilIdle();
    }
}

TEST_F(CIOTesterDlgTest, AStopDuringTheSelectionMakesNoWorkerAndLogsNothing) {
    m_parameters.m_fileAccessMethod = kAccessAutomatic;
    Accept();
    m_window->OnStart();
    m_window->OnStop();
    LThread::JoinFinished(100'000);
    TickUntilIdle();
    EXPECT_EQ(Buttons(), "+-+");
    EXPECT_EQ(Text(36), "");
    EXPECT_THAT(LogMessages().back(), StartsWith("Selecting file access protocol"));
}

TEST_F(CIOTesterDlgTest, StopAndCloseTakeEffectInTheHalfSecondBeforeTheWorkerStarts) {
    for (const bool closes : {false, true}) {
        StartUntilWorkerIsMade();
        m_window->OnTimer();
        closes ? m_window->DoClose() : m_window->OnStop();
        LetWorkerStart();
        TickUntilIdle();
        EXPECT_THAT(Text(18), StartsWith("Test stopped "));
    }
    EXPECT_THAT(LogMessages(), Not(Contains(HasSubstr("WQy=1"))));
}

TEST_F(CIOTesterDlgTest, AStartThatFailsIsToldAndLoggedAndTheSettingsStay) {
    m_parameters.m_fileAccessMethod = 7;
    Accept();
    StartUntilWorkerIsMade();
    Tick(3);
    EXPECT_THAT(AlertShown(), HasSubstr("The test could not be started."));
    EXPECT_THAT(Text(38), StartsWith("Could not select an appropriate test object and access method... "));
    EXPECT_EQ(Buttons(), "+-+");

    m_parameters.m_fileAccessMethod = kAccessPosix;
    m_parameters.SetPathValue("");
    Accept();
    StartUntilWorkerIsMade();
    m_clock.SleepMilliseconds(500);
    LTimerTask::RunDue();
    EXPECT_FALSE(m_window->TestIsStarted());
    EXPECT_THAT(Text(38), StartsWith("Could not start test.  The path may be invalid or the file access method may be "
                                     "incorrectly set.  "));
    EXPECT_EQ(m_window->Parameters().m_fileAccessMethod, kAccessPosix);
    EXPECT_EQ(Buttons(), "+-+");
}

TEST_F(CIOTesterDlgTest, SettingsAcceptedDuringATestAreTakenAtItsEnd) {
    StartTest();
    m_parameters.m_durationMinutes = 7;
    Accept();
    Tick(3);
    EXPECT_EQ(Text(7), "1");
    m_window->OnStop();
    TickUntilIdle();
    Tick();
    EXPECT_EQ(Text(7), "7");
    EXPECT_EQ(Text(36), "");
}

TEST_F(CIOTesterDlgTest, AScreenReaderIsToldEachReadoutsCaptionAndValue) {
    StartTest();
    Tick(9);
    for (const auto& [pane, caption] :
         {std::pair{210, "Elapsed time: "}, {240, "Recent rate in megabytes a second: "}, {260, "Errors: "}}) {
        EXPECT_EQ(AccessibleName(*Pane<LPane>(pane).Peer()), caption + Readout(pane));
    }
}

TEST_F(CIOTesterDlgTest, EveryMenuItemHasAKeyOfItsOwn) {
    std::map<QString, int> keys;
    for (const QAction* item : m_window->Shell()->findChildren<QAction*>()) {
        if (item->menu() == nullptr && !item->isSeparator()) {
            ++keys[item->shortcut().isEmpty() ? item->text().section('\t', 1) : item->shortcut().toString()];
        }
    }
    EXPECT_THAT(keys, ElementsAre(std::pair("Ctrl+,", 1), std::pair("Ctrl+.", 1), std::pair("Ctrl+M", 1),
                                  std::pair("Ctrl+Q", 1), std::pair("Ctrl+R", 1), std::pair("F1", 1)));
}

// On threads that run side by side, in no particular order: the sanitizers look for what they share.
TEST_F(CIOTesterDlgTest, ManyTestsAreStartedPolledAndStopped) {
    m_parameters.m_loop = true;
    for (const int method : {kAccessAutomatic, kAccessSelfTest, kAccessPosix, kAccessAutomatic, kAccessPosix}) {
        m_parameters.m_fileAccessMethod = method;
        m_parameters.m_maxFileSizeMB = 1;
        Accept();
        StartUntilWorkerIsMade();
        m_clock.SleepMilliseconds(500);
        LTimerTask::RunDue();
        for (int i = 0; i < 60; ++i) {
            m_window->OnTimer();
        }
        m_window->OnStop();
        TickUntilIdle();
        EXPECT_THAT(LThread::JoinFinished(100'000), IsEmpty());
        EXPECT_TRUE(std::filesystem::is_empty(m_folder.Native()));
    }
}
