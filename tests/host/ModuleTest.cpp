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
    constexpr int kLoads = SANITIZED ? 100 : 1000;
    for (int i = 0; i < kLoads; ++i) {
        use();
        ASSERT_FALSE(Module::isLoaded());
    }
    const Holdings after = Holdings::now();

    const int64_t heap = after.heapBytes - before.heapBytes, all = after.privateBytes - before.privateBytes;
    RecordProperty("heap", std::to_string(heap));
    RecordProperty("memory", std::to_string(all));
    EXPECT_LT(heap, kLoads * Module::kKeptOfALoad);
    // Some pages of the heap stay for later; sanitizers keep whole ones, and find what is lost by themselves.
    EXPECT_TRUE(SANITIZED || all < kLoads * 2000) << all;
    EXPECT_EQ(before.threads, after.threads);
    EXPECT_EQ(before.handles, after.handles);
}

} // namespace
