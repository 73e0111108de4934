#pragma once

#include "Framework/Base/LListener.h"
#include "Framework/UI/LApplication.h"

class CIOTesterDlg;

/// The desktop program: registers the pane classes, opens the main window, and routes every quit request through it.
class CIOTester final : public LApplication, public LListener {
public:
    CIOTester();

    bool ObeyCommand(CommandT command, void* ioParam) override;
    [[nodiscard]] bool FindCommandStatus(CommandT command) override;
    /// The button of the About box needs nothing of the application.
    void ListenToMessage(MessageT /*message*/, void* /*ioParam*/) override {}

    /// Closes the main window, which quits when no test runs any more; quits at once when there is no window.
    void DoQuit(SaveOption option) override;

    [[nodiscard]] CIOTesterDlg* MainWindow() const { return m_mainWindow; }

protected:
    void StartUp() override;
    void DisplayLost() override;

private:
    static void RegisterClasses();
    void InitializeWindow();
    void ShowAbout();

    CIOTesterDlg* m_mainWindow = nullptr;  ///< the framework's
};
