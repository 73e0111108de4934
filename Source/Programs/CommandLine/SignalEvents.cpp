#include "Programs/CommandLine/SignalEvents.h"

#include <ctime>

namespace {

bool IsIgnored(int signal) {
    struct sigaction action {};
    return ::sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

}  // namespace

SignalEvents::SignalEvents() {
    std::signal(SIGPIPE, SIG_IGN);
    ::sigemptyset(&m_stopping);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        // Shells start background jobs with SIGINT ignored; who sends it by number means it all the same.
        if (signal != SIGHUP || !IsIgnored(signal)) {
            std::signal(signal, SIG_DFL);
            ::sigaddset(&m_stopping, signal);
        }
    }
    ::sigset_t status{};
    ::sigemptyset(&status);
    ::sigaddset(&status, SIGUSR1);
    ::pthread_sigmask(SIG_BLOCK, &status, nullptr);
    m_awaited = m_stopping;
    ::sigaddset(&m_awaited, SIGUSR1);
}

void SignalEvents::Begin() {
    ::pthread_sigmask(SIG_BLOCK, &m_stopping, nullptr);
}

std::optional<int> SignalEvents::Wait(std::uint32_t ms) {
    const std::timespec limit{static_cast<std::time_t>(ms / 1000), static_cast<long>(ms % 1000) * 1'000'000};
    const int signal = ::sigtimedwait(&m_awaited, nullptr, &limit);
    return signal > 0 ? std::optional(signal) : std::nullopt;
}

void SignalEvents::End() {
    while (Wait(0)) {
    }
    ::pthread_sigmask(SIG_UNBLOCK, &m_stopping, nullptr);
}
