#pragma once

#include "CoreClasses/CIOTester.h"
#include "CoreClasses/IOTestParameters.h"
#include "GUI/CIOTesterDlg.h"
#include "GUI/CSettingsDlg.h"
#include "Support/SimulatedClock.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

/// The program with its main window, on the platform without a screen and on a simulated clock. The tests make the
/// timer thread's ticks themselves. Unless told otherwise: the self test with 1024 KB at 4096 KB/s for a minute, writes
/// then reads, with a limit of 100 MB.
class MainWindowTest : public testing::Test {
protected:
    MainWindowTest();
    ~MainWindowTest() override;

    /// Takes the parameters as if the settings window had been accepted.
    void Accept();

    /// A tick of the timer thread, a third of a second after the one before.
    void Tick(int count = 1);
    /// Presses Start and ticks until the worker has been made and waits for its start; the selection has ended by then.
    void StartUntilWorkerIsMade();
    /// Lets the half second before the start go by. From here on the worker's time is that of the ticks.
    void LetWorkerStart();
    /// Both.
    void StartTest();
    /// Ticks until the window is idle.
    void TickUntilIdle();

    [[nodiscard]] std::string Text(PaneIDT pane);
    /// What a readout shows.
    [[nodiscard]] std::string Readout(PaneIDT pane);
    /// The states of Start, Stop and Settings: '+' can be pressed, '-' not.
    [[nodiscard]] std::string Buttons();
    [[nodiscard]] std::string AlertShown();
    /// Closes the logs and answers the output log's messages without their dates.
    [[nodiscard]] std::vector<std::string> LogMessages();
    /// Of these, the measurement lines.
    [[nodiscard]] std::vector<std::string> Measurements();

    template <typename T>
    [[nodiscard]] T& Pane(PaneIDT id) {
        return dynamic_cast<T&>(*m_window->FindPaneByID(id));
    }

    SimulatedClock m_clock;
    TemporaryFolder m_folder;
    TemporaryFolder m_logs;
    CIOTester m_application;
    CIOTesterDlg* m_window = nullptr;
    IOTestParameters m_parameters;

private:
    std::optional<SimulatedClock::Participant> m_self;  ///< while a worker runs
};
