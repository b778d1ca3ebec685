#include <gtest/gtest.h>

#include "tests/host/Module.h"
#include "tests/signals/Compare.h"

namespace {

TEST(Module, ServesAHostThroughEitherName)
{
    FakeHost host;
    const Module module;
    ASSERT_NE(nullptr, module.entry());
    EXPECT_EQ(module.entry(), module.entry("main"));
    EXPECT_EQ(nullptr, module.entry("other"));
    const Audio music = Signals::music(1, 44100, 10000, 0);
    const LoadedEffect loaded(module.entry()), linkedIn;
    EXPECT_EQ(linkedIn.process(music), loaded.process(music));
}

TEST(Module, LeavesNothingBehindInAThousandLoads)
{
    FakeHost host;
    const Audio music = Signals::music(1, 44100, 1000, 0);
    const auto use = [&] {
        const Module module;
        ASSERT_NE(nullptr, module.entry());
        const LoadedEffect effect(module.entry());
        effect.dispatch(effOpen);
        effect.setRate(48000);
        effect.switchOn();
        effect.set(0, 1.0f);
        effect.process(music);
        EXPECT_NE(0, effect.load(effect.chunk()));
        host.takeCalls();
    };
    for (int i = 0; i < 50; ++i) use(); // what the system sets up once
    const Holdings before = Holdings::now();
    constexpr int kLoads = 1000;
    for (int i = 0; i < kLoads; ++i) {
        use();
        ASSERT_FALSE(Module::isLoaded());
    }
    const Holdings after = Holdings::now();

    const int64_t heap = after.heapBytes - before.heapBytes, all = after.privateBytes - before.privateBytes;
    RecordProperty("heap", std::to_string(heap));
    RecordProperty("memory", std::to_string(all));
    constexpr int64_t kMostNotes =
        SANITIZED ? 50000 : 2000; // in pages, some of which the heap keeps for later
    EXPECT_LT(heap, kLoads * Module::kKeptOfALoad);
    EXPECT_LT(all, kLoads * kMostNotes);
    EXPECT_EQ(before.threads, after.threads);
    EXPECT_EQ(before.handles, after.handles);
}

} // namespace
