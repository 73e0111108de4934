#include "Programs/CommandLine/SignalEvents.h"

#include <gtest/gtest.h>

#include <csignal>

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
