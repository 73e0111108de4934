#pragma once

#include "Programs/CommandLine/EventSource.h"

#include <csignal>

/// The process's SIGINT, SIGTERM, SIGHUP and SIGUSR1 as events.
///
/// A SIGHUP that the process was started to ignore (nohup) stays ignored. A status request never ends the process, not
/// even before `Begin`; a write to a closed pipe fails instead of ending it.
class SignalEvents final : public EventSource {
public:
    SignalEvents();

    void Begin() override;
    [[nodiscard]] std::optional<int> Wait(std::uint32_t ms) override;
    void End() override;

private:
    ::sigset_t m_awaited{};
    ::sigset_t m_stopping{};  ///< those of m_awaited that end the process when they are no events
};
