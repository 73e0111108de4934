#include "GUI/CShutDownDlg.h"

#include "GUI/CIOTesterDlg.h"
#include "GUI/Commands.h"
#include "SupportingClasses/ORBFSLoader.h"

bool CShutDownDlg::QuitIfTestEnded() {
    if (m_mainDlg != nullptr && m_mainDlg->IsATestRunning()) {
        return false;
    }
    ORBFSLoader::UnLoadORBFSLibrary();
    char now = 0;
    ProcessCommand(kCommandQuitNow, &now);
    return true;
}
