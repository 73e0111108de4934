#include "Platform/SharedLibrary.h"

#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <utility>

TEST(SharedLibraryTest, WhatIsNoLibraryIsNotLoadedAndHasNoFunctions) {
    const TemporaryFolder folder;
    std::ofstream(folder.Native("text.so")) << "no library";
    for (const std::string& path : {folder.Native("text.so"), folder.Native("missing.so"), folder.Native()}) {
        SharedLibrary library = SharedLibrary::Load(path);
        EXPECT_FALSE(library.IsLoaded()) << path;
        EXPECT_EQ(library.Find<void (*)()>("main"), nullptr);
        library.Release();
    }
}

TEST(SharedLibraryTest, AMoveTakesTheHoldAlong) {
    SharedLibrary first = SharedLibrary::Load("libm.so.6");
    ASSERT_TRUE(first.IsLoaded());
    SharedLibrary second(std::move(first));
    SharedLibrary third;
    third = std::move(second);
    const auto squareRoot = third.Find<double (*)(double)>("sqrt");
    ASSERT_NE(squareRoot, nullptr);
    EXPECT_EQ(squareRoot(81.0), 9.0);
    EXPECT_EQ(third.Find<void (*)()>("no such function"), nullptr);
    SharedLibrary& same = third;
    third = std::move(same);
    EXPECT_TRUE(third.IsLoaded());
    third.Release();
    EXPECT_FALSE(third.IsLoaded());
    third.Release();
}
