#pragma once

#include "Framework/UI/LWindow.h"

class CIOTesterDlg;

/// The small window that tells what quitting waits for. Stays open until the application quits; closing it has no
/// effect.
class CShutDownDlg final : public LWindow {
public:
    using LWindow::LWindow;

    /// `mainDlg` outlives this window.
    void SetIOTestMainDlg(CIOTesterDlg& mainDlg) { m_mainDlg = &mainDlg; }

    /// Once no test runs any more: unloads the client library, sends the quit command up the chain and answers true.
    /// Without a main window there is no test to wait for.
    [[nodiscard]] bool QuitIfTestEnded();

    void DoClose() override {}

private:
    CIOTesterDlg* m_mainDlg = nullptr;
};
