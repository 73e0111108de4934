#include "Framework/UI/LApplication.h"

#include "Framework/Base/LException.h"
#include "Framework/UI/LWindow.h"
#include "Framework/UI/MainThread.h"

#include <QApplication>
#include <QSessionManager>
#include <QSocketNotifier>
#include <QTimer>
#include <QWidget>

#include <algorithm>
#include <array>
#include <csignal>
#include <utility>

#include <sys/socket.h>
#include <unistd.h>

namespace {

LApplication*& TheApplication() {
    static LApplication* application = nullptr;
    return application;
}

/// The end of a pair of sockets that the signal handler writes to; the event loop reads the other.
int& SignalSocket() {
    static int socket = -1;
    return socket;
}

extern "C" void WriteSignalNumber(int number) {
    const auto byte = static_cast<char>(number);
    const ssize_t written = ::write(SignalSocket(), &byte, 1);
    static_cast<void>(written);  // nothing can be done about it here
}

}  // namespace

LApplication::LApplication() {
    TheApplication() = this;
}

LApplication::~LApplication() {
    MainThread::StopPasses();
    m_windows.clear();
    TheApplication() = nullptr;
}

LApplication& LApplication::Instance() {
    return *ThrowIfNil(TheApplication(), "the application");
}

int LApplication::Run() {
    QApplication::setQuitOnLastWindowClosed(false);
    TakeSignals();
    QObject::connect(
        qApp, &QGuiApplication::commitDataRequest, qApp,
        [this](QSessionManager& /*session*/) { DoQuit(SaveOption::Ask); }, Qt::DirectConnection);
    MainThread::AcceptPasses();
    Initialize();
    StartUp();
    const int status = m_isQuitting ? 0 : QApplication::exec();
    MainThread::StopPasses();
    return status;
}

/// A handler may do next to nothing; the request itself is carried out in the event loop, like any other.
void LApplication::TakeSignals() {
    std::array<int, 2> sockets{};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, sockets.data()) != 0) {
        return;  // signals then end the process as they always do
    }
    SignalSocket() = sockets[0];
    const int readEnd = sockets[1];
    auto notifier = std::make_unique<QSocketNotifier>(readEnd, QSocketNotifier::Read, qApp);
    QObject::connect(notifier.release(), &QSocketNotifier::activated, qApp, [this, readEnd] {
        char number = 0;
        while (::read(readEnd, &number, 1) == 1) {
            DoQuit(SaveOption::Ask);
        }
    });
    struct sigaction action {};
    action.sa_handler = WriteSignalNumber;
    action.sa_flags = SA_RESTART;
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        ::sigaction(number, &action, nullptr);
    }
}

void LApplication::DoQuit(SaveOption /*option*/) {
    Quit();
}

void LApplication::Quit() {
    m_isQuitting = true;
    QCoreApplication::quit();
}

bool LApplication::ObeyCommand(CommandT command, void* ioParam) {
    if (command == kCommandQuit) {
        DoQuit(SaveOption::Ask);
        return true;
    }
    return LCommander::ObeyCommand(command, ioParam);
}

bool LApplication::FindCommandStatus(CommandT command) {
    return command == kCommandQuit || command == kCommandAbout || LCommander::FindCommandStatus(command);
}

void LApplication::Adopt(std::unique_ptr<LWindow> window) {
    m_windows.push_back(std::move(window));
}

void LApplication::Dispose(LWindow& window) {
    if (std::find(m_disposed.begin(), m_disposed.end(), &window) != m_disposed.end()) {
        return;
    }
    m_disposed.push_back(&window);
    QTimer::singleShot(0, qApp, [] {
        if (TheApplication() != nullptr) {
            TheApplication()->DestroyDisposed();
        }
    });
}

bool LApplication::IsOpen(const LWindow* window) const {
    const auto isIt = [window](const std::unique_ptr<LWindow>& owned) { return owned.get() == window; };
    return std::any_of(m_windows.begin(), m_windows.end(), isIt) &&
           std::find(m_disposed.begin(), m_disposed.end(), window) == m_disposed.end();
}

void LApplication::CollapseAllWindows() {
    for (const auto& window : m_windows) {
        if (QWidget* shell = window->Shell(); shell != nullptr && shell->isVisible()) {
            shell->showMinimized();
        }
    }
}

void LApplication::DestroyDisposed() {
    const std::vector<LWindow*> disposed = std::exchange(m_disposed, {});
    std::erase_if(m_windows, [&](const std::unique_ptr<LWindow>& window) {
        return std::find(disposed.begin(), disposed.end(), window.get()) != disposed.end();
    });
}
