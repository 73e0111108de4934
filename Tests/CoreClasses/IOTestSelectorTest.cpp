#include "CoreClasses/IOTestSelector.h"

#include "Framework/Base/LThread.h"

#include <gmock/gmock.h>

#include <memory>
#include <thread>

TEST(IOTestSelectorTest, TheAutomaticChoiceIsMadeOnAThreadThatLetsGoOfTheSelector) {
    for (int i = 0; i < 20; ++i) {
        auto selector = std::make_unique<IOTestSelector>();
        selector->BeginTestSelection(IOTestParameters());
        while (!selector->IsDone()) {
            std::this_thread::yield();
        }
        EXPECT_EQ(selector->GetSelectedFileAccessMethod(), kAccessMacFileManager);
    }
    EXPECT_THAT(LThread::JoinFinished(100'000), testing::IsEmpty());
}
