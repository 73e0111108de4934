#include "Platform/Clock.h"

#include <gtest/gtest.h>

#include <ctime>
#include <limits>
#include <vector>

namespace {

constexpr std::int64_t kSecondsFrom1904To1970 = 2'082'844'800;

/// Knows whole milliseconds only, as the base class expects of the simplest clock.
class MillisecondClock final : public Clock {
public:
    std::uint64_t Microseconds() override { return m_now; }
    std::uint32_t LocalSeconds() override { return 77; }
    std::tm LocalDateTime() override { return {}; }
    void SleepMilliseconds(std::uint32_t ms) override { m_sleeps.push_back(ms); }

    std::uint64_t m_now = 10'000'000;
    std::vector<std::uint32_t> m_sleeps;
};

}  // namespace

TEST(ClockTest, TheSystemsSecondsAgreeWithItsCalendar) {
    Clock& clock = Clock::Current();
    const std::int64_t before = clock.LocalSeconds();
    std::tm calendar = clock.LocalDateTime();
    const std::int64_t after = clock.LocalSeconds();
    const std::int64_t local = ::timegm(&calendar) + kSecondsFrom1904To1970;
    EXPECT_GE(local, before - 1);
    EXPECT_LE(local, after + 1);
}

TEST(ClockTest, TheSystemsSecondsBelongToItsMicroseconds) {
    Clock& clock = Clock::Current();
    std::uint64_t previous = clock.Microseconds();
    for (int i = 0; i < 1000; ++i) {
        const std::uint32_t before = clock.LocalSeconds();
        const std::uint64_t now = clock.Microseconds();
        const std::uint32_t after = clock.LocalSeconds();
        ASSERT_GE(now, previous);
        ASSERT_GE(clock.LocalSecondsAt(now), before);
        ASSERT_LE(clock.LocalSecondsAt(now), after);
        ASSERT_EQ(clock.LocalSecondsAt(now + 1'000'000), clock.LocalSecondsAt(now) + 1);
        previous = now;
    }
}

TEST(ClockTest, ADeadlineThatHasPassedIsNotSleptFor) {
    Clock& clock = Clock::Current();
    clock.SleepUntil(0);
    clock.SleepUntil(clock.Microseconds());
    clock.SleepMilliseconds(0);

    MillisecondClock simple;
    simple.SleepUntil(0);
    simple.SleepUntil(simple.m_now);
    EXPECT_TRUE(simple.m_sleeps.empty());
}

TEST(ClockTest, AClockOfWholeMillisecondsSleepsToTheNextOne) {
    MillisecondClock clock;
    for (const std::uint64_t wait : {1ULL, 999ULL, 1000ULL, 1001ULL, 333'000ULL}) {
        clock.SleepUntil(clock.m_now + wait);
    }
    clock.SleepUntil(std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(clock.m_sleeps, (std::vector<std::uint32_t>{1, 1, 1, 2, 333, 0xFFFF'FFFF}));
    EXPECT_EQ(clock.LocalSecondsAt(3), 77U);
}

TEST(ClockTest, AReplacementIsInForceUntilTheSystemsClockIsRestored) {
    MillisecondClock replacement;
    Clock& system = Clock::Current();
    EXPECT_EQ(Clock::Replace(&replacement), &system);
    EXPECT_EQ(&Clock::Current(), &replacement);
    EXPECT_EQ(Clock::Replace(nullptr), &replacement);
    EXPECT_EQ(&Clock::Current(), &system);
}
