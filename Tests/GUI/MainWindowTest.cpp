#include "GUI/MainWindowTest.h"

#include "CoreClasses/EngineTest.h"
#include "Framework/Base/LThread.h"
#include "Framework/UI/LTimerTask.h"
#include "GUI/Commands.h"
#include "GUI/DigiString.h"

#include <QMessageBox>

#include <cstdlib>

MainWindowTest::MainWindowTest() {
    m_application.ObeyCommand(kCommandNew, nullptr);
    m_window = m_application.MainWindow();
    m_window->OnTimer();  // the first one sets the parameters to their defaults
    m_parameters.SetPathValue(m_folder.Colon().c_str());
    m_parameters.m_standardTestID = kCustomTestID;
    m_parameters.m_fileAccessMethod = kAccessSelfTest;
    m_parameters.m_transferSizeKB = 1024;
    m_parameters.m_transferRateKBps = 4096;
    m_parameters.m_durationMinutes = 1;
    EXPECT_TRUE(m_window->Output().SetOutputFile(m_logs.Colon("output").c_str()));
    EXPECT_TRUE(m_window->Output().SetErrorFile(m_logs.Colon("errors").c_str()));
    Accept();
}

MainWindowTest::~MainWindowTest() {
    if (m_window->TestIsStarted()) {
        m_window->OnStop();
        TickUntilIdle();
    }
    m_self.reset();
    if (!LThread::JoinFinished(100'000).empty()) {
        std::abort();  // hangs, and would go on using what the test gives back
    }
}

void MainWindowTest::Accept() {
    m_window->OnClickSettings();
    for (const auto& window : m_application.Windows()) {
        if (auto* settings = dynamic_cast<CSettingsDlg*>(window.get()); settings != nullptr) {
            settings->OpenFor(m_parameters, m_window->Output());
            settings->ProcessCommand(kCommandSettingsAccepted);
            settings->CloseWindow();
        }
    }
}

void MainWindowTest::Tick(int count) {
    for (int i = 0; i < count; ++i) {
        m_clock.SleepMilliseconds(333);
        m_window->OnTimer();
    }
}

void MainWindowTest::StartUntilWorkerIsMade() {
    m_window->OnStart();
    LThread::JoinFinished(100'000);  // the selection's thread, which knows no time
    for (int i = 0; i < 3 && Text(36).empty(); ++i) {
        Tick();
    }
}

void MainWindowTest::LetWorkerStart() {
    m_clock.SleepMilliseconds(500);
    m_self.emplace(m_clock);
    m_clock.ExpectThread();
    LTimerTask::RunDue();
}

void MainWindowTest::StartTest() {
    StartUntilWorkerIsMade();
    LetWorkerStart();
}

void MainWindowTest::TickUntilIdle() {
    while (m_window->TestIsStarted()) {
        LTimerTask::RunDue();
        Tick();
    }
    m_self.reset();
}

std::string MainWindowTest::Text(PaneIDT pane) {
    return std::string(m_window->GetDescriptorForPaneID(pane).View());
}

std::string MainWindowTest::Readout(PaneIDT pane) {
    return Pane<DigiString>(pane).AccessibleValue();
}

std::string MainWindowTest::Buttons() {
    std::string states;
    for (const PaneIDT button : {15, 16, 11}) {
        states += Pane<LPane>(button).IsEnabled() ? '+' : '-';
    }
    return states;
}

std::string MainWindowTest::AlertShown() {
    const auto* box = m_window->Shell()->findChild<QMessageBox*>();
    return box != nullptr ? box->text().toStdString() : "";
}

std::vector<std::string> MainWindowTest::Measurements() {
    std::vector<std::string> lines = LogMessages();
    std::erase_if(lines, [](const std::string& line) { return line.find(" - measurement ") == std::string::npos; });
    return lines;
}

std::vector<std::string> MainWindowTest::LogMessages() {
    m_window->Output().CloseFiles();
    std::vector<std::string> messages = MessagesOf(m_logs.Native("output"));
    for (std::string& message : messages) {
        constexpr std::size_t dateLength = std::string_view("Mon January 5, 2004 09:03:07").size();
        if (const std::size_t date = message.find("Mon January"); date != std::string::npos) {
            message.erase(date, dateLength);
        }
    }
    return messages;
}
