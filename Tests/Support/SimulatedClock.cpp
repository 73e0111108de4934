#include "Support/SimulatedClock.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <tuple>
#include <utility>
#include <vector>

namespace {

constexpr std::uint64_t kStart = 5'000'000'000;
constexpr std::uint64_t kMicrosecondsPerSecond = 1'000'000;

constexpr std::uint64_t kStartSince1970 = 1'073'293'387;  // 2004-01-05 09:03:07
constexpr std::uint64_t kSecondsFrom1904To1970 = 2'082'844'800;

constexpr int kFreeUses = 100'000;
constexpr std::uint64_t kStalledUseMicroseconds = 1000;

constexpr std::uint64_t kNotTakingPart = ~std::uint64_t{0};

std::uint64_t SecondsSince1970(std::uint64_t microseconds) {
    return kStartSince1970 + (microseconds - kStart) / kMicrosecondsPerSecond;
}

}  // namespace

/// The time and who waits for it. Everything is guarded by the lock, which the caller of the functions holds.
struct SimulatedClock::Schedule : std::enable_shared_from_this<Schedule> {
    struct Sleeper {
        [[nodiscard]] auto Rank() const { return std::tie(deadline, order); }

        std::uint64_t deadline;
        std::uint64_t order;  ///< of taking part, or `kNotTakingPart`
        bool awake = false;
        std::condition_variable wake{};
    };

    std::uint64_t Read(std::unique_lock<std::mutex>& lock, std::uint64_t cost);
    std::uint64_t OrderOfThisThread();
    void Join();
    [[nodiscard]] bool IsFree() const { return m_running + m_asleep + m_expected == 0; }
    [[nodiscard]] std::uint64_t CostOfUse(std::uint64_t usual);
    void Sleep(std::unique_lock<std::mutex>& lock, std::uint64_t deadline);
    void MoveOn(std::unique_lock<std::mutex>& lock, std::uint64_t time, std::uint64_t order);
    void Wait(std::unique_lock<std::mutex>& lock, std::uint64_t deadline, std::uint64_t order);
    void WakeNext();

    std::mutex m_lock;
    std::uint64_t m_now = kStart;
    std::uint64_t m_readingCost = 0;
    int m_usesWithoutSleep = 0;
    std::uint64_t m_nextOrder = 0;
    int m_running = 0;  ///< threads that take part and do not sleep
    int m_asleep = 0;   ///< threads that take part and sleep
    int m_expected = 0;
    std::vector<Sleeper*> m_sleepers;  ///< on the stacks of the sleeping threads, also of those that do not take part
};

/// What a thread knows of the clocks; it signs off when it ends.
struct SimulatedClock::Membership {
    ~Membership() { SignOff(); }

    void SignOff() {
        if (const auto left = std::exchange(schedule, nullptr)) {
            const std::scoped_lock lock(left->m_lock);
            --left->m_running;
            left->WakeNext();
        }
    }

    std::shared_ptr<Schedule> schedule;  ///< null while the thread does not take part
    std::uint64_t order = kNotTakingPart;
    const Schedule* notExpectedBy = nullptr;
};

SimulatedClock::Membership& SimulatedClock::ThisThread() {
    thread_local Membership membership;
    return membership;
}

std::uint64_t SimulatedClock::Schedule::Read(std::unique_lock<std::mutex>& lock, std::uint64_t cost) {
    const std::uint64_t order = OrderOfThisThread();
    if (order == kNotTakingPart && !IsFree()) {
        return m_now;
    }
    MoveOn(lock, m_now + CostOfUse(cost), order);
    return m_now;
}

std::uint64_t SimulatedClock::Schedule::OrderOfThisThread() {
    const Membership& membership = ThisThread();
    if (membership.schedule == nullptr && m_expected > 0 && membership.notExpectedBy != this) {
        --m_expected;
        Join();
    }
    return membership.schedule.get() == this ? membership.order : kNotTakingPart;
}

void SimulatedClock::Schedule::Join() {
    ++m_running;
    ThisThread().schedule = shared_from_this();
    ThisThread().order = m_nextOrder++;
}

std::uint64_t SimulatedClock::Schedule::CostOfUse(std::uint64_t usual) {
    return usual == 0 && ++m_usesWithoutSleep > kFreeUses ? kStalledUseMicroseconds : usual;
}

void SimulatedClock::Schedule::Sleep(std::unique_lock<std::mutex>& lock, std::uint64_t deadline) {
    const std::uint64_t order = OrderOfThisThread();
    if (deadline > m_now) {
        m_usesWithoutSleep = 0;
    } else {
        deadline = m_now + CostOfUse(0);
    }
    MoveOn(lock, deadline, order);
}

void SimulatedClock::Schedule::MoveOn(std::unique_lock<std::mutex>& lock, std::uint64_t time, std::uint64_t order) {
    if (IsFree()) {
        m_now = time;
    } else if (time > m_now) {
        Wait(lock, time, order);
    }
}

void SimulatedClock::Schedule::Wait(std::unique_lock<std::mutex>& lock, std::uint64_t deadline, std::uint64_t order) {
    Sleeper self{.deadline = deadline, .order = order};
    m_sleepers.push_back(&self);
    if (order != kNotTakingPart) {
        --m_running;
        ++m_asleep;
    }
    WakeNext();
    self.wake.wait(lock, [&] { return self.awake; });
}

void SimulatedClock::Schedule::WakeNext() {
    while (m_running == 0 && m_expected == 0 && !m_sleepers.empty()) {
        const auto next = std::min_element(m_sleepers.begin(), m_sleepers.end(),
                                           [](const Sleeper* a, const Sleeper* b) { return a->Rank() < b->Rank(); });
        Sleeper& sleeper = **next;
        m_sleepers.erase(next);
        m_now = std::max(m_now, sleeper.deadline);
        if (sleeper.order != kNotTakingPart) {
            --m_asleep;
            ++m_running;
        }
        sleeper.awake = true;
        sleeper.wake.notify_one();  // with the lock held: the sleeper takes the condition with it
    }
}

SimulatedClock::SimulatedClock() : m_schedule(std::make_shared<Schedule>()), m_previous(Clock::Replace(this)) {
    ThisThread().notExpectedBy = m_schedule.get();
}

SimulatedClock::~SimulatedClock() {
    Clock::Replace(m_previous);
}

std::uint64_t SimulatedClock::Microseconds() {
    std::unique_lock lock(m_schedule->m_lock);
    return m_schedule->Read(lock, m_schedule->m_readingCost);
}

std::uint32_t SimulatedClock::LocalSeconds() {
    std::unique_lock lock(m_schedule->m_lock);
    return LocalSecondsAt(m_schedule->Read(lock, 0));
}

std::uint32_t SimulatedClock::LocalSecondsAt(std::uint64_t microseconds) {
    return static_cast<std::uint32_t>(kSecondsFrom1904To1970 + SecondsSince1970(microseconds));
}

std::tm SimulatedClock::LocalDateTime() {
    std::unique_lock lock(m_schedule->m_lock);
    const auto seconds = static_cast<std::time_t>(SecondsSince1970(m_schedule->Read(lock, 0)));
    std::tm date{};
    ::gmtime_r(&seconds, &date);
    return date;
}

void SimulatedClock::SleepMilliseconds(std::uint32_t ms) {
    std::unique_lock lock(m_schedule->m_lock);
    m_schedule->Sleep(lock, m_schedule->m_now + std::uint64_t{ms} * 1000);
}

void SimulatedClock::SleepUntil(std::uint64_t deadline) {
    std::unique_lock lock(m_schedule->m_lock);
    m_schedule->Sleep(lock, deadline);
}

void SimulatedClock::SetMicrosecondsPerReading(std::uint64_t microseconds) {
    const std::scoped_lock lock(m_schedule->m_lock);
    m_schedule->m_readingCost = microseconds;
}

std::uint64_t SimulatedClock::ElapsedMicroseconds() const {
    const std::scoped_lock lock(m_schedule->m_lock);
    return m_schedule->m_now - kStart;
}

void SimulatedClock::ExpectThread() {
    const std::scoped_lock lock(m_schedule->m_lock);
    ThisThread().notExpectedBy = m_schedule.get();
    ++m_schedule->m_expected;
}

SimulatedClock::Participant::Participant(SimulatedClock& clock) {
    const std::scoped_lock lock(clock.m_schedule->m_lock);
    clock.m_schedule->Join();
}

SimulatedClock::Participant::~Participant() {
    ThisThread().SignOff();
}
