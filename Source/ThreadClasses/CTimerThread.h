#pragma once

#include "Framework/Base/LThread.h"

class CIOTesterDlg;

/// Drives the main window: every pass, after a sleep of 333 ms, is handed to the main thread and waited for. Ends when
/// the application takes no more passes.
class CTimerThread final : public LThread {
public:
    /// `window` lives as long as the application takes passes.
    explicit CTimerThread(CIOTesterDlg* window);

    void* Run() override;

private:
    CIOTesterDlg* m_window;
};
