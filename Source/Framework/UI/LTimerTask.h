#pragma once

#include <cstdint>
#include <functional>

/// A one-shot task of the main thread: runs a function some time later, from the event loop. Main thread only.
///
/// Its time is that of the clock in force, so that under a clock of a test's own `RunDue` runs exactly what is due.
class LTimerTask {
public:
    LTimerTask();
    /// A task that is still waiting will not run.
    ~LTimerTask();
    LTimerTask(const LTimerTask&) = delete;
    LTimerTask& operator=(const LTimerTask&) = delete;

    /// Runs `task` in `ms` milliseconds at the earliest, in place of what was waiting.
    void Start(std::uint32_t ms, std::function<void()> task);
    void Cancel();
    [[nodiscard]] bool IsWaiting() const { return static_cast<bool>(m_task); }

    /// Runs every task whose time has come; the event loop calls it.
    static void RunDue();

private:
    void RunIfDue(std::uint64_t now);

    std::function<void()> m_task;
    std::uint64_t m_dueUS = 0;
};
