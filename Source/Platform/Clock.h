#pragma once

#include <cstdint>
#include <ctime>

/// The one source of time. The program runs on the system's clock; a test puts a clock of its own in its place.
///
/// Every operation may be called from any thread.
class Clock {
public:
    virtual ~Clock() = default;

    /// Monotonic time in microseconds from an arbitrary start.
    virtual std::uint64_t Microseconds() = 0;

    /// Whole seconds since 1904-01-01 00:00 local time. The system's is taken from the calendar once and carried on by
    /// the monotonic clock, so that neither a change of the clock nor summer time stretches or ends a test.
    virtual std::uint32_t LocalSeconds() = 0;

    /// The calendar, for texts only: it follows every change of the system's clock.
    virtual std::tm LocalDateTime() = 0;

    /// Blocks the calling thread for at least `ms` milliseconds.
    virtual void SleepMilliseconds(std::uint32_t ms) = 0;

    /// Blocks the calling thread until `Microseconds()` has reached `deadline`; returns at once when it has passed.
    /// A clock that only knows whole milliseconds oversleeps by less than one.
    virtual void SleepUntil(std::uint64_t deadline);

    /// The value that `LocalSeconds()` had when `Microseconds()` read `microseconds`, a reading of the recent past. It
    /// spares a transfer loop a third clock reading. A clock that cannot tell answers with the present second.
    virtual std::uint32_t LocalSecondsAt(std::uint64_t microseconds);

    /// The clock in force.
    static Clock& Current();

    /// Puts `replacement` in force and returns the previous one; null restores the system's clock. The caller keeps the
    /// replacement alive until it has been replaced and no thread uses it any more.
    static Clock* Replace(Clock* replacement);
};
