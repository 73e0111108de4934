#include "ThreadClasses/CShutdownThread.h"

#include "Framework/UI/MainThread.h"
#include "GUI/CShutDownDlg.h"

namespace {

constexpr std::uint32_t kLookMS = 333;

}  // namespace

CShutdownThread::CShutdownThread(CShutDownDlg* progress) : LThread("shutdown"), m_shutDownDlg(progress) {}

void* CShutdownThread::Run() {
    bool isWaiting = true;
    while (isWaiting) {
        if (!MainThread::RunAndWait([&] { isWaiting = !m_shutDownDlg->QuitIfTestEnded(); })) {
            return nullptr;
        }
        if (isWaiting) {
            Sleep(kLookMS);
        }
    }
    return nullptr;
}
