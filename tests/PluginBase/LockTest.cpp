#include "PluginBase/Util/NamedLock.h"
#include <atomic>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace {

TEST(NamedLock, OwnerMayEnterAgainAndOthersWaitForTheLastLeave)
{
    Util::NamedLock lock("Test %1");
    EXPECT_EQ(lock.name(), "Test %1");
    std::atomic<bool> inside{false};
    std::thread other;
    {
        const Util::Hold outer(lock);
        {
            const Util::Hold inner(lock);
            other = std::thread([&] {
                const Util::Hold hold(lock);
                inside = true;
            });
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        EXPECT_FALSE(inside);
    }
    other.join();
    EXPECT_TRUE(inside);
}

TEST(NamedLock, NoWaiterIsForgottenAndNoTwoAreInside)
{
    constexpr int kThreads = 4, kRounds = 20000;
    Util::NamedLock lock("Count");
    int plainCount = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i)
        threads.emplace_back([&] {
            for (int round = 0; round < kRounds; ++round) {
                const Util::Hold outer(lock);
                const Util::Hold inner(lock);
                ++plainCount;
                if (round % 64 == 0) std::this_thread::yield(); // others arrive and have to sleep
            }
        });
    for (std::thread &thread : threads) thread.join();
    EXPECT_EQ(plainCount, kThreads * kRounds);
}

TEST(LowPriorityThread, RunsUntilAskedToStopAndMayRunAgain)
{
    Platform::LowPriorityThread thread;
    EXPECT_TRUE(thread.join(0));
    for (int round = 0; round < 2; ++round) {
        std::atomic<int> ticks{0};
        ASSERT_TRUE(thread.start([&] {
            while (thread.sleep(1)) ++ticks;
        }));
        while (ticks < 3) std::this_thread::yield();
        EXPECT_FALSE(thread.stopRequested());
        EXPECT_FALSE(thread.start([] {})) << "one at a time";
        EXPECT_FALSE(thread.join(5));
        thread.requestStop();
        EXPECT_TRUE(thread.join(5000));
    }
}

TEST(LowPriorityThread, LongSleepEndsWithItsOwner)
{
    const auto before = std::chrono::steady_clock::now();
    {
        Platform::LowPriorityThread thread;
        ASSERT_TRUE(thread.start([&] { thread.sleep(60000); }));
    }
    EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(30));
}

} // namespace
