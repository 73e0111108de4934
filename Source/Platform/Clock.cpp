#include "Platform/Clock.h"

#include <atomic>
#include <cerrno>
#include <limits>

#include <sys/prctl.h>

namespace {

constexpr std::uint64_t kMicrosecondsPerSecond = 1'000'000;

/// A processor that has idled for long wakes up late, one that was awake so short a time ago does not.
constexpr std::uint64_t kAwakeUS = 1000;

/// Seconds from 1904-01-01 to 1970-01-01: 66 years, 17 of them leap years.
constexpr std::uint64_t kSecondsFrom1904To1970 = (66ULL * 365 + 17) * 86'400;

std::uint64_t MonotonicMicroseconds() {
    std::timespec now{};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<std::uint64_t>(now.tv_sec) * kMicrosecondsPerSecond +
           static_cast<std::uint64_t>(now.tv_nsec) / 1000;
}

/// The kernel lets a thread oversleep by up to 50 us, so as to wake several at a time. A sleeper who paces a stream
/// does not wait for others.
void HaveTimersExact() {
    thread_local const int isSet = ::prctl(PR_SET_TIMERSLACK, 1UL, 0UL, 0UL, 0UL);
    static_cast<void>(isSet);  // where it is refused, pauses are late by what they were before
}

void WaitUntil(std::uint64_t deadline) {
    const std::timespec until{static_cast<std::time_t>(deadline / kMicrosecondsPerSecond),
                              static_cast<long>(deadline % kMicrosecondsPerSecond) * 1000};
    while (::clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &until, nullptr) == EINTR) {
    }
}

std::tm LocalCalendar() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    ::localtime_r(&now, &local);
    return local;
}

class SystemClock final : public Clock {
public:
    SystemClock() {
        std::timespec calendar{};
        ::clock_gettime(CLOCK_REALTIME, &calendar);
        std::tm local{};
        ::localtime_r(&calendar.tv_sec, &local);
        const std::uint64_t localSeconds =
            static_cast<std::uint64_t>(calendar.tv_sec + local.tm_gmtoff) + kSecondsFrom1904To1970;
        const std::uint64_t localMicroseconds =
            localSeconds * kMicrosecondsPerSecond + static_cast<std::uint64_t>(calendar.tv_nsec) / 1000;
        // Unsigned: the difference may be "negative" and still gives the right sum.
        m_localFromMonotonic = localMicroseconds - MonotonicMicroseconds();
    }

    std::uint64_t Microseconds() override { return MonotonicMicroseconds(); }

    std::uint32_t LocalSeconds() override { return LocalSecondsAt(MonotonicMicroseconds()); }

    std::uint32_t LocalSecondsAt(std::uint64_t microseconds) override {
        return static_cast<std::uint32_t>((microseconds + m_localFromMonotonic) / kMicrosecondsPerSecond);
    }

    std::tm LocalDateTime() override { return LocalCalendar(); }

    void SleepMilliseconds(std::uint32_t ms) override {
        SleepUntil(MonotonicMicroseconds() + static_cast<std::uint64_t>(ms) * 1000);
    }

    void SleepUntil(std::uint64_t deadline) override {
        HaveTimersExact();
        if (deadline > MonotonicMicroseconds() + 2 * kAwakeUS) {
            WaitUntil(deadline - kAwakeUS);
        }
        WaitUntil(deadline);
    }

private:
    std::uint64_t m_localFromMonotonic = 0;
};

SystemClock& TheSystemClock() {
    static SystemClock clock;
    return clock;
}

/// Null while the system's clock is in force.
std::atomic<Clock*>& Replacement() {
    static std::atomic<Clock*> replacement{nullptr};
    return replacement;
}

}  // namespace

void Clock::SleepUntil(std::uint64_t deadline) {
    const std::uint64_t now = Microseconds();
    if (deadline <= now) {
        return;
    }
    const std::uint64_t ms = (deadline - now + 999) / 1000;
    constexpr std::uint64_t longest = std::numeric_limits<std::uint32_t>::max();
    SleepMilliseconds(static_cast<std::uint32_t>(ms < longest ? ms : longest));
}

std::uint32_t Clock::LocalSecondsAt(std::uint64_t /*microseconds*/) {
    return LocalSeconds();
}

Clock& Clock::Current() {
    Clock* replacement = Replacement().load(std::memory_order_acquire);
    return replacement != nullptr ? *replacement : TheSystemClock();
}

Clock* Clock::Replace(Clock* replacement) {
    Clock* previous = Replacement().exchange(replacement, std::memory_order_acq_rel);
    return previous != nullptr ? previous : &TheSystemClock();
}
