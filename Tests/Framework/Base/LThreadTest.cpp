#include "Framework/Base/LThread.h"

#include <gmock/gmock.h>

#include <array>
#include <functional>
#include <latch>

#include <pthread.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class TestThread final : public LThread {
public:
    TestThread(std::string name, std::function<void()> body) : LThread(std::move(name)), m_body(std::move(body)) {}
    void* Run() override {
        m_body();
        return nullptr;
    }

private:
    std::function<void()> m_body;
};

}  // namespace

TEST(LThreadTest, AThreadIsKeptUntilItsBodyHasReturnedAndThenDisposedOf) {
    std::latch release(1);
    std::array<char, 16> name{};
    const auto ownedByThread = std::make_shared<int>();
    LThread::Resume(std::make_unique<TestThread>("a name of 20 letters", [&release, &name, ownedByThread] {
        ::pthread_getname_np(::pthread_self(), name.data(), name.size());
        release.wait();
    }));
    EXPECT_THAT(LThread::JoinFinished(), ElementsAre("a name of 20 letters"));
    release.count_down();
    EXPECT_THAT(LThread::JoinFinished(100'000), IsEmpty());
    EXPECT_EQ(ownedByThread.use_count(), 1);
    EXPECT_STREQ(name.data(), "a name of 20 le");
}
