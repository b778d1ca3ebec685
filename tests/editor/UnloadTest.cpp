#include <gtest/gtest.h>

#include "tests/editor/Win32Desk.h"
#include "tests/host/Module.h"

// Loads the shared library in a host that unloads it as early as possible.

namespace {

TEST(Unloading, MayFollowImmediatelyAfterTheEditor)
{
    const auto desk = Desk::make();
    FakeHost host;
    int64_t windows = 0;
    for (int i = 0; i < 6; ++i) {
        {
            const Module module;
            ASSERT_NE(nullptr, module.entry());
            const LoadedEffect effect(module.entry());
            ASSERT_EQ(1, effect.dispatch(effEditOpen, 0, 0, desk->window()));
            desk->wait(i % 3 == 0 ? 0 : 60);             // sometimes before the first tick
            effect.set(3, 0.1f * static_cast<float>(i)); // leaves a message in the queue
            desk->click({300, 300});
            if (i % 2 == 0) effect.dispatch(effEditClose);
        }
        EXPECT_FALSE(Module::isLoaded());
        desk->wait(60); // pending messages must not call the unloaded code
        desk->click({300, 300});
        if (i == 0) windows = desk->resourceUsage()["windows"];
        EXPECT_EQ(windows, desk->resourceUsage()["windows"]);
    }
}

} // namespace
