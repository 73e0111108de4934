#include "Support/SimulatedClock.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>

TEST(SimulatedClockTest, ThreadsThatTakePartRunOneAtATimeInTheOrderOfTheirSleeps) {
    SimulatedClock clock;
    std::string log;  // no lock: between the sleeps one thread runs alone
    const auto sleep = [&](const char* who, std::uint32_t ms) {
        clock.SleepMilliseconds(ms);
        log += who + std::to_string(clock.ElapsedMicroseconds() / 1000);
    };
    const SimulatedClock::Participant self(clock);
    clock.ExpectThread();
    std::thread other([&] {
        for (int i = 0; i < 4; ++i) {
            sleep(" other ", 15);
        }
    });
    for (int i = 0; i < 7; ++i) {
        sleep(" main ", 10);
    }
    EXPECT_EQ(log, " main 10 other 15 main 20 main 30 other 30 main 40 other 45 main 50 main 60 other 60 main 70");
    other.join();
}

TEST(SimulatedClockTest, AThreadThatOnlyReadsTheClockLetsTheOthersWakeInTime) {
    SimulatedClock clock;
    clock.SetMicrosecondsPerReading(100);
    const SimulatedClock::Participant self(clock);
    clock.ExpectThread();
    std::atomic<bool> stop = false;
    std::uint64_t readings = 0;
    std::thread reader([&] {
        for (; !stop; ++readings) {
            static_cast<void>(clock.Microseconds());
        }
    });
    for (const std::uint64_t waking : {333'000U, 666'000U, 999'000U}) {
        clock.SleepMilliseconds(333);
        EXPECT_EQ(clock.ElapsedMicroseconds(), waking);
    }
    stop = true;
    clock.SleepMilliseconds(5000);  // the reader ends in this time; for ever if a thread that has ended were waited for
    EXPECT_EQ(readings, 9990U);
    reader.join();
}
