#include "Platform/Clock.h"

#include <gtest/gtest.h>

#include <ctime>

TEST(ClockTest, TheSystemsSecondsAgreeWithItsCalendarAndItsMicroseconds) {
    Clock& clock = Clock::Current();
    const std::uint32_t before = clock.LocalSeconds();
    std::tm calendar = clock.LocalDateTime();
    const std::uint32_t secondOfReading = clock.LocalSecondsAt(clock.Microseconds());
    const std::uint32_t after = clock.LocalSeconds();
    const std::int64_t local = ::timegm(&calendar) + 2'082'844'800;  // 1904 to 1970
    EXPECT_GE(local, std::int64_t{before} - 1);
    EXPECT_LE(local, std::int64_t{after} + 1);
    EXPECT_GE(secondOfReading, before);
    EXPECT_LE(secondOfReading, after);
}
