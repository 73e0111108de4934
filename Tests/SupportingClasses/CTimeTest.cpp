#include "SupportingClasses/CTime.h"

#include "Platform/Clock.h"
#include "Support/SimulatedClock.h"

#include <gtest/gtest.h>

#include <array>

namespace {

/// Shows one date and nothing else.
class CalendarClock final : public Clock {
public:
    CalendarClock() : m_previous(Clock::Replace(this)) {}
    ~CalendarClock() override { Clock::Replace(m_previous); }
    CalendarClock(const CalendarClock&) = delete;
    CalendarClock& operator=(const CalendarClock&) = delete;

    std::uint64_t Microseconds() override { return 0; }
    std::uint32_t LocalSeconds() override { return 0; }
    std::tm LocalDateTime() override { return m_date; }
    void SleepMilliseconds(std::uint32_t /*ms*/) override {}

    std::tm m_date{};

private:
    Clock* m_previous;
};

}  // namespace

TEST(CTimeTest, ReadsTheClockInForce) {
    SimulatedClock clock;
    const std::uint32_t start = CTime::GetCurrentTime();
    EXPECT_EQ(CTime::GetCurrentDateTime(), "Mon January 5, 2004 09:03:07");
    clock.SleepMilliseconds(3'600'000 * 15);
    EXPECT_EQ(CTime::GetCurrentTime(), start + 15 * 3600);
    EXPECT_EQ(CTime::GetCurrentDateTime(), "Tue January 6, 2004 00:03:07");
}

TEST(CTimeTest, DateTextsPadTheTimeAndNotTheDay) {
    CalendarClock clock;
    clock.m_date.tm_year = 126;
    clock.m_date.tm_mon = 11;
    clock.m_date.tm_mday = 31;
    clock.m_date.tm_wday = 4;
    clock.m_date.tm_hour = 23;
    clock.m_date.tm_min = 59;
    clock.m_date.tm_sec = 60;  // a leap second
    EXPECT_EQ(CTime::GetCurrentDateTime(), "Thu December 31, 2026 23:59:60");
    clock.m_date = {};
    clock.m_date.tm_mday = 1;
    EXPECT_EQ(CTime::GetCurrentDateTime(), "Sun January 1, 1900 00:00:00");
}

TEST(CTimeTest, FormatsTheTimeOfDayWithoutLeadingZeroParts) {
    struct Case {
        std::uint32_t seconds;
        const char* text;
    };
    for (const Case& c : {Case{0, "00"},
                          {7, "07"},
                          {59, "59"},
                          {60, "01:00"},
                          {65, "01:05"},
                          {3599, "59:59"},
                          {3600, "01:00:00"},
                          {3661, "01:01:01"},
                          {36'000, "10:00:00"},
                          {86'399, "23:59:59"},
                          {86'400, "00"},
                          {86'400 * 3 + 61, "01:01"},
                          {0xFFFF'FFFF, "06:28:15"}}) {
        std::array<char, 10> buffer{};
        buffer.fill('x');
        EXPECT_STREQ(CTime::FormatTime(c.seconds, buffer.data()), c.text);
        EXPECT_EQ(buffer.back(), 'x') << c.seconds;
    }
}
