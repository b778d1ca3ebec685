#include "PluginBase/Util/NamedLock.h"

#include <atomic>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace {

TEST(NamedLock, AdmitsOneThreadAtATimeAndWakesEveryWaiter)
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
                if (round % 64 == 0) std::this_thread::yield(); // makes other threads wait for the lock
            }
        });
    for (std::thread &thread : threads) thread.join();
    EXPECT_EQ(plainCount, kThreads * kRounds);
}

TEST(LowPriorityThread, StopsOnRequestAndRestarts)
{
    Platform::LowPriorityThread thread;
    for (int round = 0; round < 2; ++round) {
        std::atomic<int> ticks{0};
        ASSERT_TRUE(thread.start([&] {
            while (thread.sleep(1)) ++ticks;
        }));
        while (ticks < 3) std::this_thread::yield();
        EXPECT_FALSE(thread.start([] {})) << "already running";
        EXPECT_FALSE(thread.join(5));
        thread.requestStop();
        EXPECT_TRUE(thread.join(5000));
    }
    ASSERT_TRUE(thread.start([&] { thread.sleep(60000); })); // the destructor stops it
}

} // namespace
