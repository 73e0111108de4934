#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <thread>
#include <vector>

/// A thread of the program: an operating-system thread whose body is `Run`.
///
///     created --Resume--> running --Run returns--> finished --the framework joins it--> gone
///
/// The framework owns every thread from `Resume` on, joins it once its body has returned and disposes of it; whoever
/// started it keeps no reference.
class LThread {
public:
    virtual ~LThread() = default;

    /// The thread's body; called on the new thread. Its result is for callers of the body itself, the framework ignores
    /// it.
    virtual void* Run() = 0;

    LThread(const LThread&) = delete;
    LThread& operator=(const LThread&) = delete;

    /// Starts `thread`. Throws `std::system_error` when the system has no thread to give; nothing has been started
    /// then. Also joins and disposes of threads that have finished in the meantime.
    static void Resume(std::unique_ptr<LThread> thread);

    /// Blocks the calling thread for `ms` milliseconds of the clock in force.
    static void Sleep(std::uint32_t ms);

    /// Waits one tick of the application (1/60 s): enough for others to get on, and a bound of sixty attempts a second
    /// for work that fails at once.
    static void YieldOneTick();

    /// Joins every thread whose body has returned. With `waitMS`, waits up to that long (real time) for the others.
    /// Answers the names of those that still run: a transfer may hang in the system for as long as the storage does.
    static std::vector<std::string> JoinFinished(std::uint32_t waitMS = 0);

protected:
    /// `name` is what the operating system shows for the thread; its first 15 characters are.
    explicit LThread(std::string name);

private:
    friend class ThreadKeeper;

    void Start();

    std::string m_name;
    std::thread m_thread;
    std::atomic<bool> m_finished{false};  ///< set by the thread as its last touch of this object
};
