#pragma once

#include <mutex>

/// A critical region that the thread which holds it may enter again; it must be left as often as it was entered, on
/// the same thread. Works with the standard's scoped locks.
class CriticalRegion {
public:
    CriticalRegion() = default;
    CriticalRegion(const CriticalRegion&) = delete;
    CriticalRegion& operator=(const CriticalRegion&) = delete;

    /// Waits without time limit.
    void Enter() { m_mutex.lock(); }
    void Leave() { m_mutex.unlock(); }

    // The names that std::scoped_lock calls.
    void lock() { Enter(); }
    void unlock() { Leave(); }

private:
    std::recursive_mutex m_mutex;
};
