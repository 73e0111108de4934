#include "Programs/CommandLine/SignalEvents.h"

#include <gtest/gtest.h>

#include <csignal>

TEST(SignalEventsTest, SignalsAreEventsFromBeginToEnd) {
    SignalEvents events;
    EXPECT_EQ(events.Wait(0), std::nullopt);
    events.Begin();
    for (const int signal : {SIGTERM, SIGUSR1, SIGINT, SIGHUP}) {
        ASSERT_EQ(std::raise(signal), 0);
        EXPECT_EQ(events.Wait(0), signal);
        EXPECT_EQ(events.Wait(0), std::nullopt);
    }
    ASSERT_EQ(std::raise(SIGTERM), 0);
    events.End();  // drops it; it would end this process
    EXPECT_EXIT(std::raise(SIGTERM), testing::KilledBySignal(SIGTERM), "");
}

TEST(SignalEventsTest, AnIgnoredHangupStaysIgnoredAndAStatusRequestHarmless) {
    std::signal(SIGHUP, SIG_IGN);
    SignalEvents events;
    std::raise(SIGUSR1);  // before the test begins
    events.Begin();
    std::raise(SIGHUP);
    EXPECT_EQ(events.Wait(0), SIGUSR1);
    EXPECT_EQ(events.Wait(0), std::nullopt);
    events.End();
    std::signal(SIGHUP, SIG_DFL);
}
