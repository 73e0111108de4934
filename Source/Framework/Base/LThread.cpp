#include "Framework/Base/LThread.h"

#include "Platform/Clock.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <utility>

#include <pthread.h>

namespace {

constexpr std::uint32_t kTickMS = 17;  // 1/60 s, rounded up so that sixty a second is never exceeded

}  // namespace

/// Holds every started thread until it has been joined.
class ThreadKeeper {
public:
    /// Never destroyed: a thread that the process could not wait for may still report to it during exit.
    static ThreadKeeper& Instance() {
        static ThreadKeeper* const keeper = std::make_unique<ThreadKeeper>().release();
        return *keeper;
    }

    void Keep(std::unique_ptr<LThread> thread) {
        JoinFinished();
        const std::scoped_lock lock(m_mutex);
        LThread& started = *m_threads.emplace_back(std::move(thread));
        try {
            started.Start();
        } catch (...) {
            m_threads.pop_back();
            throw;
        }
    }

    /// Called by a thread whose body has returned.
    void ReportFinished(LThread& thread) {
        const std::scoped_lock lock(m_mutex);
        thread.m_finished.store(true, std::memory_order_release);
        m_oneFinished.notify_all();
    }

    void JoinFinished() {
        std::vector<std::unique_ptr<LThread>> finished;
        {
            const std::scoped_lock lock(m_mutex);
            finished = TakeFinished();
        }
        // Joined outside the lock, which a thread that is just ending still needs for a moment.
        for (const auto& thread : finished) {
            thread->m_thread.join();
        }
    }

    std::vector<std::string> WaitAndJoin(std::chrono::milliseconds wait) {
        {
            std::unique_lock lock(m_mutex);
            m_oneFinished.wait_for(lock, wait,
                                   [this] { return std::all_of(m_threads.begin(), m_threads.end(), IsFinished); });
        }
        JoinFinished();
        std::vector<std::string> running;
        const std::scoped_lock lock(m_mutex);
        for (const auto& thread : m_threads) {
            running.push_back(thread->m_name);
        }
        return running;
    }

private:
    static bool IsFinished(const std::unique_ptr<LThread>& thread) {
        return thread->m_finished.load(std::memory_order_acquire);
    }

    std::vector<std::unique_ptr<LThread>> TakeFinished() {
        const auto middle = std::stable_partition(m_threads.begin(), m_threads.end(),
                                                  [](const auto& thread) { return !IsFinished(thread); });
        std::vector<std::unique_ptr<LThread>> finished(std::make_move_iterator(middle),
                                                       std::make_move_iterator(m_threads.end()));
        m_threads.erase(middle, m_threads.end());
        return finished;
    }

    std::mutex m_mutex;  ///< guards `m_threads`
    std::condition_variable m_oneFinished;
    std::vector<std::unique_ptr<LThread>> m_threads;
};

LThread::LThread(std::string name) : m_name(std::move(name)) {}

void LThread::Start() {
    m_thread = std::thread([this] {
        ::pthread_setname_np(::pthread_self(), m_name.substr(0, 15).c_str());
        Run();
        ThreadKeeper::Instance().ReportFinished(*this);
    });
}

void LThread::Resume(std::unique_ptr<LThread> thread) {
    ThreadKeeper::Instance().Keep(std::move(thread));
}

void LThread::Sleep(std::uint32_t ms) {
    Clock::Current().SleepMilliseconds(ms);
}

void LThread::YieldOneTick() {
    Sleep(kTickMS);
}

std::vector<std::string> LThread::JoinFinished(std::uint32_t waitMS) {
    return ThreadKeeper::Instance().WaitAndJoin(std::chrono::milliseconds(waitMS));
}
