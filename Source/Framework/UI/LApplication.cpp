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
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <utility>

#include <sys/socket.h>
#include <unistd.h>

namespace {

LApplication*& TheApplication() {
    static LApplication* application = nullptr;
    return application;
}

/// The end of a pair of sockets that the signal handler writes to; the event loop reads the other.
std::atomic<int>& SignalSocket() {
    static std::atomic<int> socket{-1};
    return socket;
}

extern "C" void WriteSignalNumber(int number) {
    const int errorBefore = errno;
    const auto byte = static_cast<char>(number);
    const ssize_t written = ::write(SignalSocket(), &byte, 1);
    static_cast<void>(written);  // nothing can be done about it here
    errno = errorBefore;
}

}  // namespace

/// The requests to end that come from outside: signals and the end of the desktop session.
class LApplication::EndRequests {
public:
    explicit EndRequests(LApplication& application) {
        QObject::connect(
            qApp, &QGuiApplication::commitDataRequest, &m_context,
            [&application](QSessionManager& /*session*/) { application.DoQuit(SaveOption::Ask); },
            Qt::DirectConnection);
        TakeSignals(application);
    }

    ~EndRequests() {
        for (const auto& [number, before] : m_before) {
            ::sigaction(number, &before, nullptr);
        }
        m_notifier.reset();
        for (const int socket : m_sockets) {
            ::close(socket);
        }
    }

    EndRequests(const EndRequests&) = delete;
    EndRequests& operator=(const EndRequests&) = delete;

private:
    /// A handler may do next to nothing; the request itself is carried out in the event loop, like any other.
    void TakeSignals(LApplication& application) {
        if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, m_sockets.data()) != 0) {
            return;  // signals then end the process as they always do
        }
        SignalSocket() = m_sockets[0];
        m_notifier = std::make_unique<QSocketNotifier>(m_sockets[1], QSocketNotifier::Read);
        QObject::connect(m_notifier.get(), &QSocketNotifier::activated, &m_context,
                         [&application, readEnd = m_sockets[1]] {
                             char number = 0;
                             while (::read(readEnd, &number, 1) == 1) {
                                 application.DoQuit(SaveOption::Ask);
                             }
                         });
        struct sigaction action {};
        action.sa_handler = WriteSignalNumber;
        action.sa_flags = SA_RESTART;
        for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
            struct sigaction before {};
            ::sigaction(number, &action, &before);
            m_before.emplace_back(number, before);
        }
    }

    std::array<int, 2> m_sockets{-1, -1};
    QObject m_context;  ///< the connections end with it
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::vector<std::pair<int, struct sigaction>> m_before;
};

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
    m_endRequests = std::make_unique<EndRequests>(*this);
    MainThread::AcceptPasses();
    Initialize();
    StartUp();
    const int status = m_isQuitting ? 0 : RunEventLoop();
    MainThread::StopPasses();
    return status;
}

/// Qt calls exit() in the midst of the event loop when its connection to the display breaks. Registered only here,
/// after the first window is open, so that what has been made by then still is when the handler runs.
int LApplication::RunEventLoop() {
    static const int registered = std::atexit([] {
        if (LApplication* application = TheApplication(); application != nullptr && application->m_isInEventLoop) {
            application->m_isInEventLoop = false;
            application->DisplayLost();
        }
    });
    static_cast<void>(registered);  // refused only for want of memory; the process then ends as it is
    m_isInEventLoop = true;
    const int status = QApplication::exec();
    m_isInEventLoop = false;
    return status;
}

void LApplication::DoQuit(SaveOption /*option*/) {
    Quit();
}

void LApplication::Quit() {
    m_isQuitting = true;
    QCoreApplication::exit(0);  // quit() would ask every window first, and theirs is to refuse
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
