#pragma once

#include "Platform/Clock.h"

#include <cstdint>
#include <ctime>
#include <memory>

/// A clock for tests, in force from its construction to its destruction. Its time stands still until somebody sleeps.
///
/// While no thread takes part, a sleep moves the time to its end and returns. Once threads take part, time moves only
/// when all of them sleep, to the earliest end of a sleep, and wakes that one thread (of several with the same end, the
/// one that took part first). From their first sleep on, the threads therefore run one at a time and in the same order
/// on every machine. The sleep of a thread that does not take part beside others that do ends when their time has got
/// there; nobody waits for such a thread.
///
/// After a hundred thousand uses without a sleep each further one takes a millisecond, so that a loop which only
/// watches a clock that stands still comes to its end.
///
/// A thread that takes part must not wait for another one by other means than a sleep (joining it, a lock that the
/// other holds in its sleep): the other one's time would stand still.
class SimulatedClock final : public Clock {
public:
    /// Starts at Monday January 5, 2004 09:03:07, with microseconds that no longer fit 32 bits.
    SimulatedClock();
    ~SimulatedClock() override;
    SimulatedClock(const SimulatedClock&) = delete;
    SimulatedClock& operator=(const SimulatedClock&) = delete;

    std::uint64_t Microseconds() override;
    std::uint32_t LocalSeconds() override;
    std::uint32_t LocalSecondsAt(std::uint64_t microseconds) override;
    std::tm LocalDateTime() override;
    void SleepMilliseconds(std::uint32_t ms) override;
    void SleepUntil(std::uint64_t deadline) override;

    /// From now on each reading of `Microseconds` takes so long, as if it were work that is never paced. For a thread
    /// that takes part it is a sleep of that length, so the thread must not hold a lock then that another one needs.
    /// Readings of a thread that does not take part beside others are free.
    void SetMicrosecondsPerReading(std::uint64_t microseconds);

    /// Time gone by since construction. Asking takes none.
    [[nodiscard]] std::uint64_t ElapsedMicroseconds() const;

    /// A thread that is about to be started will take part from its first use of the clock until it ends; time stands
    /// still until it has come. The thread that says so, and the one that made the clock, are never taken for it.
    void ExpectThread();

    /// The calling thread takes part from construction to destruction, both on that thread.
    class Participant {
    public:
        explicit Participant(SimulatedClock& clock);
        ~Participant();
        Participant(const Participant&) = delete;
        Participant& operator=(const Participant&) = delete;
    };

private:
    struct Schedule;
    struct Membership;
    static Membership& ThisThread();

    std::shared_ptr<Schedule> m_schedule;  ///< a thread that ends after the clock still signs off from it
    Clock* m_previous;
};
