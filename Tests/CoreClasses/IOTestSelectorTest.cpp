#include "CoreClasses/IOTestSelector.h"

#include "CoreClasses/FileReadWriteWorker.h"
#include "CoreClasses/WorkerFactory.h"
#include "Framework/Base/LThread.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

TEST(IOTestSelectorTest, AnExplicitMethodIsTakenAsItIsAndMayHaveAWorker) {
    for (const auto& [method, name] :
         {std::pair{1, "MAC File API"}, {2, "Self Test"}, {3, "Posix API Test"}, {7, ""}}) {
        IOTestSelector selector;
        EXPECT_EQ(selector.GetSelectedFileAccessMethod(), kAccessMacFileManager);
        EXPECT_FALSE(selector.IsDone());
        IOTestParameters parameters;
        parameters.m_fileAccessMethod = method;
        selector.BeginTestSelection(parameters);
        EXPECT_TRUE(selector.IsDone());
        EXPECT_EQ(selector.GetSelectedFileAccessMethod(), method);
        const SelectedWorker selected = MakeWorker(method);
        EXPECT_STREQ(selected.methodName, name);
        EXPECT_EQ(selected.worker != nullptr, method != 7);
    }
    EXPECT_EQ(MakeWorker(kAccessAutomatic).worker, nullptr);
    EXPECT_EQ(IOTestSelector::CheckAndSelectTest_ThreadControlFunc(nullptr), -1);
}

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
