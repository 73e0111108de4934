#include "GUI/CSettingsDlg.h"

#include "CoreClasses/CIOTester.h"
#include "CoreClasses/EngineTest.h"
#include "Framework/Base/LThread.h"
#include "Framework/UI/LControl.h"
#include "Framework/UI/LTimerTask.h"
#include "GUI/CLogFilesDlg.h"
#include "GUI/EditPopupMessages.h"
#include "GUI/LColorEditView.h"
#include "GUI/LEditPopupMenu.h"
#include "GUI/LEditPopupView.h"
#include "Support/TestWindow.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QTest>

#include <map>
#include <sstream>
#include <tuple>

namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;

enum SettingsPane : PaneIDT { kLogFiles = 12, kSwitchForm = 13, kOK = 14, kCancel = 17 };
enum SettingsGroup : PaneIDT { kTest = 100, kPath = 200, kMinutes = 300, kSize = 600, kRate = 700, kLimit = 800 };

const std::map<PaneIDT, std::string> kComplaints{{kMinutes, "Duration must be at least 1 Minute.  "},
                                                 {kPath, "Path for testing must not be empty.  "},
                                                 {kSize, "Transfer size must be at least 1 KB.  "},
                                                 {kRate, "Transfer rate must be at least 2 KB/s.  "},
                                                 {kLimit, "File size limit must be at least 1 MB.  "}};
const std::string kLongestPath = "Root:" + std::string(237, 'y');

/// Name, id, path, minutes, method, read or write, size, rate, limit, then the six marks.
std::string Summary(const IOTestParameters& of) {
    std::ostringstream text;
    text << of.m_testName.View() << ", " << of.m_standardTestID << ", " << of.m_drivePath.View() << ", "
         << of.m_durationMinutes << ", " << of.m_fileAccessMethod << ", " << of.m_readWriteMethod << ", "
         << of.m_transferSizeKB << ", " << of.m_transferRateKBps << ", " << of.m_maxFileSizeMB << ", " << of.m_loop
         << of.m_pathIsCorvane << of.m_reservedFlagA << of.m_sharedFileInPath << of.m_reservedFlagB << of.m_noCache;
    return text.str();
}

/// The settings window; the test itself stands in the place of the main window.
class CSettingsDlgTest : public testing::Test, public LCommander {
protected:
    CSettingsDlgTest() {
        m_parameters.m_standardTestID = 4;
        m_parameters.m_durationMinutes = 5;
        m_parameters.SetPathValue("Root:tmp");
    }
    ~CSettingsDlgTest() override { EXPECT_THAT(LThread::JoinFinished(100'000), IsEmpty()); }

    bool ObeyCommand(CommandT command, void* /*ioParam*/) override {
        m_told.push_back(std::to_string(command) + ": " + Summary(m_dialog->Parameters()));
        return true;
    }

    void Open() {
        m_dialog = dynamic_cast<CSettingsDlg*>(LWindow::CreateWindow(2129, this));
        m_place = m_dialog->Shell()->pos();
        m_dialog->OpenFor(m_parameters, m_output);
    }

    [[nodiscard]] LPane& Pane(PaneIDT id) { return *ThrowIfNil(m_dialog->FindPaneByID(id), std::to_string(id)); }
    [[nodiscard]] LEditPopupView& Group(PaneIDT id) { return dynamic_cast<LEditPopupView&>(Pane(id)); }
    [[nodiscard]] QLineEdit& Edit(PaneIDT group) { return dynamic_cast<QLineEdit&>(*Group(group).Field().Peer()); }

    /// The number of the ticked item and the field's text.
    [[nodiscard]] std::string Shown(PaneIDT group) {
        return std::to_string(Group(group).Popup().GetValue()) + ' ' + Edit(group).text().toStdString();
    }

    void Press(PaneIDT button) { QTest::mouseClick(Pane(button).Peer(), Qt::LeftButton); }

    /// As if pasted in the place of the field's text.
    void Enter(PaneIDT group, const std::string& text) {
        Edit(group).selectAll();
        Edit(group).insert(QString::fromStdString(text));
    }

    void AcceptCustomFormWith(PaneIDT group, const std::string& text) {
        Open();
        Press(kSwitchForm);
        Enter(group, text);
        Press(kOK);
    }

    void ExpectRefusal(const std::vector<PaneIDT>& wrong, const std::string& complaint = "") {
        std::string report = "Some settings need a correction.Errors found in settings were as follows: " + complaint;
        for (const PaneIDT group : wrong) {
            report += complaint.empty() ? kComplaints.at(group) : "";
        }
        ASSERT_EQ(ShownAlerts().size(), 1U);
        EXPECT_EQ(TextOf(*ShownAlerts().front()), report);
        QTest::keyClick(ShownAlerts().front(), Qt::Key_Return);
        EXPECT_EQ(m_dialog->Shell()->focusWidget(), &Edit(wrong.front()));
    }

    SimulatedClock m_clock;
    TemporaryFolder m_folder;
    COutputMgr m_output;
    CIOTester m_application;
    IOTestParameters m_parameters;
    CSettingsDlg* m_dialog = nullptr;
    QPoint m_place;                   ///< of the window before it was shown
    std::vector<std::string> m_told;  ///< the commands and what was stored when they came
};

}  // namespace

// What is more than a test can count, or than a path can hold, would become another test than the one asked for.
TEST_F(CSettingsDlgTest, AnEntryThatNoTestCanHoldIsRefused) {
    using Entry = std::tuple<PaneIDT, std::string, const char*>;
    for (const auto& [group, entered, complaint] :
         {Entry{kSize, "4194304", "Transfer size must be at most 4194303 KB.  "},
          Entry{kLimit, "99999999999999999999", "File size limit must be at most 4294967295 MB.  "},
          Entry{kPath, kLongestPath + "x",
                "Path for testing must not be longer than 242 characters in its colon form.  "}}) {
        AcceptCustomFormWith(group, entered);
        ExpectRefusal({group}, complaint);
    }
}

TEST_F(CSettingsDlgTest, WhatIsWrongIsToldTogetherAndNothingIsStored) {
    Open();
    Press(kSwitchForm);
    const std::string before = Summary(m_dialog->Parameters());
    for (const auto& [group, complaint] : kComplaints) {
        Enter(group, " ");
    }
    Press(kOK);
    ExpectRefusal({kMinutes, kPath, kSize, kRate, kLimit});
    Press(kSwitchForm);  // the standard form checks what it shows
    Press(kOK);
    ExpectRefusal({kMinutes, kPath});
    EXPECT_EQ(Summary(m_dialog->Parameters()), before);
    EXPECT_THAT(m_told, IsEmpty());
}

TEST_F(CSettingsDlgTest, TheFormsDifferBy220PixelsAndSwitchBackAndForth) {
    Open();
    EXPECT_EQ(m_dialog->Shell()->pos(), m_place + QPoint(0, 110));
    for (const bool isCustom : {false, true, false}) {
        SCOPED_TRACE(isCustom);
        EXPECT_TRUE(RunEventsUntil([&] { return m_dialog->Shell()->height() == (isCustom ? 484 : 264); }));
        EXPECT_EQ(Pane(kSwitchForm).GetDescriptor(), isCustom ? "<<<Standard Test" : "Custom Test>>>");
        EXPECT_EQ(Pane(kOK).FrameInSuperView().bottom, isCustom ? 468 : 248);
        EXPECT_EQ(Shown(kTest), isCustom ? "5 Custom" : "5 Profile-C Reads (~ 18 MB/second)");
        EXPECT_EQ(Group(kTest).Popup().IsEnabled(), !isCustom);
        EXPECT_EQ(Edit(kRate).isEnabled() && Edit(kRate).isVisible(), isCustom);
        Press(kSwitchForm);
    }
}

TEST_F(CSettingsDlgTest, PopupsTickWhatTheirFieldsShowAtFirst) {
    Open();
    const auto shown = [this] { return std::vector{Shown(400), Shown(500), Shown(kRate)}; };
    EXPECT_THAT(shown(), ElementsAre("1 Automatically Select", "3 Reads Only", "5 4096 (4 MB / s)"));
    EXPECT_EQ(Shown(kSize) + ", " + Shown(kLimit), "5 1024, 1 100");
    m_parameters.m_standardTestID = kCustomTestID;
    m_parameters.m_fileAccessMethod = kAccessPosix;
    m_parameters.m_readWriteMethod = kWritesOnly;
    for (const auto& [rate, text] : {std::pair{500U, "5 500"}, {1024U, "3 1024 (1 MB / s)"}}) {
        m_parameters.m_transferRateKBps = rate;
        Open();
        EXPECT_THAT(shown(), ElementsAre("4 Posix-Test", "2 Writes Only", text));
    }
    EXPECT_EQ(m_dialog->Shell()->pos(), m_place);
    EXPECT_EQ(Shown(kTest), "0 Custom");
    Press(kSwitchForm);
    EXPECT_EQ(Shown(kTest), "1 Profile-A Reads (~ 4 MB/second)");
}

TEST_F(CSettingsDlgTest, FieldAndPopupAreKeptInAgreement) {
    Open();
    LEditPopupMenu& popup = Group(kMinutes).Popup();
    popup.AppendItem(LStr255("Two"));
    popup.AppendItem(LStr255("2"));
    const auto tickFor = [this](const char* text) {
        Enter(kMinutes, text);
        Group(kMinutes).Field().BroadcastMessage(kMatchPopupToField);
        EXPECT_EQ(Edit(kMinutes).selectedText(), text);
        return Shown(kMinutes);
    };
    EXPECT_EQ(tickFor("2"), "11 2") << "the last of two";
    QTest::keyClick(&Edit(kMinutes), Qt::Key_Down);
    EXPECT_EQ(Shown(kMinutes), "1 1");
    EXPECT_EQ(tickFor("TWO"), "0 TWO");
    auto& list = dynamic_cast<QComboBox&>(*popup.Peer());
    Enter(kMinutes, "60");
    QTest::mousePress(&list, Qt::LeftButton);
    ASSERT_TRUE(RunEventsUntil([&] { return list.view()->isVisible(); }));
    QTest::keyClick(list.view(), Qt::Key_Down);
    QTest::keyClick(list.view(), Qt::Key_Return);
    EXPECT_TRUE(RunEventsUntil([&] { return !list.view()->isVisible() && Shown(kMinutes) == "7 120"; }));
    Enter(kMinutes, " ");
    QTest::keyClicks(&Edit(kMinutes), "7 ");
    EXPECT_EQ(Edit(kMinutes).text(), "7 ") << "a lone space gives way to the first key";
}

TEST_F(CSettingsDlgTest, OKStoresTheFormThatShowsAndCancelNothing) {
    Open();
    Enter(kMinutes, "60");
    Press(4);
    QTest::keyClick(Group(kTest).Popup().Peer(), Qt::Key_Up);
    QTest::keyClick(m_dialog->Shell(), Qt::Key_Return);
    EXPECT_FALSE(m_application.IsOpen(m_dialog) || m_dialog->Shell()->isVisible());
    m_parameters.m_standardTestID = kCustomTestID;
    Open();
    for (const PaneIDT box : {1, 3, 5, 21, 22}) {
        Press(box);
    }
    QTest::keyClick(Group(400).Popup().Peer(), Qt::Key_End);
    QTest::keyClick(Group(500).Popup().Peer(), Qt::Key_Down);
    Press(kOK);
    Open();
    Enter(kMinutes, "60");
    QTest::keyClick(m_dialog->Shell(), Qt::Key_Escape);
    EXPECT_FALSE(m_application.IsOpen(m_dialog));
    EXPECT_EQ(m_dialog->Parameters().m_durationMinutes, 5U);
    EXPECT_THAT(m_told,
                ElementsAre("2000: Profile-B Writes (~ 8 MB/second), 3, Root:tmp, 60, 0, 1, 1024, 8192, 100, 100011",
                            "2000: Custom Test, -1, Root:tmp, 5, 3, 1, 256, 384, 100, 011100"));
}

TEST_F(CSettingsDlgTest, TheKeyboardReachesEveryControlInReadingOrder) {
    const std::string top =
        "Path to test|Path to test, suggestions|Choose the path to test|Duration in minutes|Duration in minutes, "
        "suggestions|Repeat the test until it is stopped|The path lies on the shared storage (CORVANE)|";
    const std::string custom =
        "Access method, suggestions|Read or write, suggestions|Transfer size in KB|Transfer size in KB, suggestions|"
        "Transfer rate in KB a second|Transfer rate in KB a second, suggestions|File size limit in MB|File size limit "
        "in MB, suggestions|The path names a file to read|Go round the system's file cache|Option A (kept, used by no "
        "test)|Option B (kept, used by no test)|";
    Open();
    for (const std::string& expected : {"Test, suggestions|" + top + "Log Files...|Custom Test>>>|Cancel|OK|",
                                        top + custom + "Log Files...|<<<Standard Test|Cancel|OK|"}) {
        std::string visited;
        Pane(kOK).TakeFocus();
        ASSERT_TRUE(RunEventsUntil([this] { return QApplication::focusWidget() == Pane(kOK).Peer(); }));
        do {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            const std::string name = QApplication::focusWidget()->accessibleName().toStdString();
            visited += (name.empty() ? AccessibleName(*QApplication::focusWidget()) : name) + '|';
        } while (QApplication::focusWidget() != Pane(kOK).Peer());
        EXPECT_EQ(visited, expected);
        Press(kSwitchForm);
    }
}

TEST_F(CSettingsDlgTest, AcceptedLogPathsCloseBothLogsAndOpenTheNewOnes) {
    const std::string old = m_folder.Colon("old");
    const std::string next = m_folder.Colon("next");
    EXPECT_TRUE(m_output.SetOutputFile(old.c_str()));
    Open();
    const auto answer = [this](const std::string& output, const std::string& errors, Qt::Key key) {
        Press(kLogFiles);
        LWindow& dialog = *m_application.Windows().back();
        EXPECT_EQ(dialog.GetDescriptorForPaneID(8), m_output.GetOutFilePath());
        dialog.SetDescriptorForPaneID(8, LStr255(std::string_view(output)));
        dialog.SetDescriptorForPaneID(9, LStr255(std::string_view(errors)));
        QTest::keyClick(dialog.Shell(), key);
        LTimerTask::RunDue();
    };
    answer(m_folder.Native("next"), "None:errors", Qt::Key_Return);
    EXPECT_THAT(ContentOf(m_folder.Native("old")), EndsWith(old + " at: " + DateText(0) + '\r'));
    ASSERT_EQ(ShownAlerts().size(), 1U);
    EXPECT_THAT(TextOf(*ShownAlerts().front()), HasSubstr("cannot be written.None:errors: No such file or directory."));
    QTest::keyClick(ShownAlerts().front(), Qt::Key_Return);
    answer("", "", Qt::Key_Escape);
    EXPECT_EQ(m_output.GetOutFilePath(), next) << "cancelled, and yet taken";
    answer("", "", Qt::Key_Return);
    EXPECT_THAT(ContentOf(m_folder.Native("next")), HasSubstr("Output File: " + next + " Created at: " + DateText(0)));
    EXPECT_THAT(ContentOf(m_folder.Native("next")), EndsWith(next + " at: " + DateText(0) + '\r'));
    EXPECT_THAT(ShownAlerts(), IsEmpty()) << "an empty path keeps no log";
}

TEST_F(CSettingsDlgTest, OneLogFilesWindowIsOpenAndGoesWithItsSettings) {
    Open();
    Press(kLogFiles);
    const LWindow* logFiles = m_application.Windows().back().get();
    Press(kLogFiles);
    EXPECT_EQ(m_application.Windows().size(), 2U);
    Press(kCancel);
    EXPECT_FALSE(m_application.IsOpen(logFiles));
}

TEST_F(CSettingsDlgTest, AFullPathIsAColonPathWhetherTheFileIsThereOrNot) {
    EXPECT_EQ(CLogFilesDlg::GetFullPath(m_folder.Native("none/run.log")).View(), m_folder.Colon() + ":none:run.log");
    EXPECT_EQ(CLogFilesDlg::GetFullPath("/gaugeline-run.log"), "Root:gaugeline-run.log");
    EXPECT_EQ(CLogFilesDlg::GetFullPath(m_folder.Native(std::string(250, 'n'))), "");
}
