#pragma once

#include "Framework/Base/LThread.h"

class CShutDownDlg;

/// Waits for the test that runs while the program is asked to quit, then has it quit. Looks every 333 ms, on the main
/// thread; the wait has no time limit.
class CShutdownThread final : public LThread {
public:
    /// `progress` lives as long as the application takes passes.
    explicit CShutdownThread(CShutDownDlg* progress);

    void* Run() override;

private:
    CShutDownDlg* m_shutDownDlg;
};
