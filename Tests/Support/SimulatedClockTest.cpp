#include "Support/SimulatedClock.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

using testing::ElementsAre;

namespace {

std::string NowInMilliseconds(const SimulatedClock& clock) {
    return std::to_string(clock.ElapsedMicroseconds() / 1000);
}

}  // namespace

TEST(SimulatedClockTest, SleepsOfALoneThreadMoveItsTime) {
    Clock* const before = &Clock::Current();
    {
        SimulatedClock clock;
        ASSERT_EQ(&Clock::Current(), &clock);
        const std::uint64_t start = clock.Microseconds();
        const std::uint32_t startSecond = clock.LocalSeconds();
        clock.SleepMilliseconds(53'001);
        clock.SleepUntil(start + 1);  // has passed
        EXPECT_EQ(clock.Microseconds(), start + 53'001'000);
        EXPECT_EQ(clock.LocalSeconds(), startSecond + 53);
        EXPECT_EQ(clock.LocalSecondsAt(start), startSecond);
        const std::tm date = clock.LocalDateTime();
        EXPECT_THAT((std::vector{date.tm_year, date.tm_mon, date.tm_mday, date.tm_wday, date.tm_hour, date.tm_min,
                                 date.tm_sec}),
                    ElementsAre(104, 0, 5, 1, 9, 4, 0));
        EXPECT_EQ(startSecond % 86'400, 9U * 3600 + 3 * 60 + 7);
    }
    EXPECT_EQ(&Clock::Current(), before);
}

TEST(SimulatedClockTest, ThreadsThatTakePartRunOneAtATimeInTheOrderOfTheirSleeps) {
    SimulatedClock clock;
    std::vector<std::string> log;  // no lock: between the sleeps one thread runs alone
    SimulatedClock::Participant self(clock);
    clock.ExpectThread();
    std::thread other([&] {
        for (int i = 0; i < 4; ++i) {
            clock.SleepMilliseconds(15);
            log.push_back("other " + NowInMilliseconds(clock));
        }
    });
    for (int i = 0; i < 7; ++i) {
        clock.SleepMilliseconds(10);
        log.push_back("main " + NowInMilliseconds(clock));
    }
    EXPECT_THAT(log, ElementsAre("main 10", "other 15", "main 20", "main 30", "other 30", "main 40", "other 45",
                                 "main 50", "main 60", "other 60", "main 70"));
    other.join();
}

TEST(SimulatedClockTest, AThreadThatOnlyReadsTheClockLetsTheOthersWakeInTime) {
    SimulatedClock clock;
    clock.SetMicrosecondsPerReading(100);
    SimulatedClock::Participant self(clock);
    clock.ExpectThread();
    std::atomic<bool> stop = false;
    std::uint64_t readings = 0;
    std::thread reader([&] {
        for (; !stop; ++readings) {
            static_cast<void>(clock.Microseconds());
        }
    });
    std::vector<std::string> wakings;
    for (int i = 0; i < 3; ++i) {
        clock.SleepMilliseconds(333);
        wakings.push_back(NowInMilliseconds(clock));
    }
    stop = true;
    clock.SleepMilliseconds(1);  // the reader comes to its end in this time
    EXPECT_THAT(wakings, ElementsAre("333", "666", "999"));
    EXPECT_EQ(readings, 9990U);
    reader.join();
}

TEST(SimulatedClockTest, ALoopThatWatchesAStandingClockComesToItsEnd) {
    SimulatedClock clock;
    SimulatedClock::Participant self(clock);
    clock.ExpectThread();
    std::thread watcher([&] {
        const std::uint32_t end = clock.LocalSeconds() + 2;
        while (clock.LocalSeconds() < end) {
        }
    });
    clock.SleepMilliseconds(5000);  // would last for ever if it waited for a thread that has ended
    EXPECT_EQ(clock.ElapsedMicroseconds(), 5'000'000U);
    watcher.join();
}

TEST(SimulatedClockTest, AThreadThatDoesNotTakePartSleepsInTheTimeOfTheOthers) {
    SimulatedClock clock;
    std::atomic<bool> takesPart = false;
    std::thread participant([&] {
        SimulatedClock::Participant self(clock);
        takesPart = true;
        takesPart.notify_one();
        for (int i = 0; i < 10; ++i) {
            clock.SleepMilliseconds(100);
        }
    });
    takesPart.wait(false);
    const std::uint64_t deadline = clock.Microseconds() + 250'000;
    clock.SleepUntil(deadline);
    EXPECT_GE(clock.Microseconds(), deadline);
    participant.join();
    EXPECT_GE(clock.ElapsedMicroseconds(), 1'000'000U);
}
