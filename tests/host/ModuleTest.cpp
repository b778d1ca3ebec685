#include <gtest/gtest.h>

#include "tests/host/Module.h"
#include "tests/host/ResourceUsage.h"
#include "tests/signals/Compare.h"

namespace {

TEST(Module, ExportsTheEffectUnderBothNames)
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

TEST(Module, LeavesNothingBehindAfterManyLoads)
{
    FakeHost host;
    const Audio music = Signals::music(1, 44100, 1000, 0);
    constexpr int kLoads = SANITIZED ? 25 : 250;
    ResourceUsage left = leastGrowth(kLoads, [&] {
        {
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
        }
        ASSERT_FALSE(Module::isLoaded());
    });
    EXPECT_LT(left["heap"], kLoads * Module::kKeptPerLoad);
    // The heap keeps some free pages. Sanitizers keep more, but detect leaks themselves.
    EXPECT_TRUE(SANITIZED || left["memory"] < kLoads * 2000) << left["memory"];
    EXPECT_LE(left["threads"], 0);
    EXPECT_LE(left["handles"], 0);
}

} // namespace
