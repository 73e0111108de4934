#include "SupportingClasses/CTime.h"

#include "Support/SimulatedClock.h"

#include <gtest/gtest.h>

#include <array>

TEST(CTimeTest, ReadsTheClockInForceAndPadsTheTimeButNotTheDay) {
    SimulatedClock clock;
    EXPECT_EQ(CTime::GetCurrentTime() % 86'400, 9U * 3600 + 3 * 60 + 7);
    EXPECT_EQ(CTime::GetCurrentDateTime(), "Mon January 5, 2004 09:03:07");
    clock.SleepMilliseconds(3'600'000 * 15);
    EXPECT_EQ(CTime::GetCurrentDateTime(), "Tue January 6, 2004 00:03:07");
}

TEST(CTimeTest, FormatsTheTimeOfDayWithoutLeadingZeroParts) {
    for (const auto& [seconds, text] : {std::pair{0U, "00"},
                                        {60U, "01:00"},
                                        {3599U, "59:59"},
                                        {3600U, "01:00:00"},
                                        {86'400U * 3 + 61, "01:01"},
                                        {0xFFFF'FFFFU, "06:28:15"}}) {
        std::array<char, 10> buffer{};
        buffer.fill('x');
        EXPECT_STREQ(CTime::FormatTime(seconds, buffer.data()), text);
        EXPECT_EQ(buffer.back(), 'x') << seconds;
    }
}
