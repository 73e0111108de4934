#pragma once

#include <cstdint>
#include <optional>

/// Where the headless program waits, and what can break the wait: signals of the system. Main thread only.
class EventSource {
public:
    EventSource() = default;
    virtual ~EventSource() = default;
    EventSource(const EventSource&) = delete;
    EventSource& operator=(const EventSource&) = delete;

    /// From here on signals are events and end the process no more. Called before any thread is started.
    virtual void Begin() = 0;

    /// Waits up to `ms` milliseconds and answers the number of a signal that came, one at a time, or none.
    [[nodiscard]] virtual std::optional<int> Wait(std::uint32_t ms) = 0;

    /// Gives signals their usual effect back. Those that came since the last `Wait` are dropped.
    virtual void End() = 0;
};
