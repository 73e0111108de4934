#include "ThreadClasses/CTimerThread.h"

#include "Framework/UI/MainThread.h"
#include "GUI/CIOTesterDlg.h"

namespace {

constexpr std::uint32_t kTickMS = 333;

}  // namespace

CTimerThread::CTimerThread(CIOTesterDlg* window) : LThread("timer"), m_window(window) {}

void* CTimerThread::Run() {
    while (MainThread::RunAndWait([this] { m_window->OnTimer(); })) {
        Sleep(kTickMS);
    }
    return nullptr;
}
