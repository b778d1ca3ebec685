#include <gtest/gtest.h>

#include "tests/editor/Win32Desk.h"
#include "tests/host/FakeHost.h"

// The library as it ships, in a host that lets go of it as soon as it can.

namespace {

using Entry = AEffect *(*)(HostCallback);

constexpr char kLibrary[] = "tessarine.dll"; // Windows looks beside the program first

TEST(Unloading, MayFollowTheEditorsEndAtOnce)
{
    const auto desk = Desk::make();
    FakeHost host;
    int64_t windows = 0;
    for (int i = 0; i < 6; ++i) {
        const HMODULE library = LoadLibraryA(kLibrary);
        ASSERT_NE(nullptr, library);
        const auto entry =
            reinterpret_cast<Entry>(reinterpret_cast<void *>(GetProcAddress(library, "VSTPluginMain")));
        AEffect *const effect = entry(FakeHost::callback);
        ASSERT_NE(nullptr, effect);
        const auto dispatch = [&](int32_t opcode, void *ptr = nullptr) {
            return effect->dispatcher(effect, opcode, 0, 0, ptr, 0.0f);
        };
        ASSERT_EQ(1, dispatch(effEditOpen, desk->window()));
        desk->wait(i % 3 == 0 ? 0 : 60);                               // also before the first tick
        effect->setParameter(effect, 3, 0.1f * static_cast<float>(i)); // leaves a message in the queue
        desk->click({300, 300});
        if (i % 2 == 0) dispatch(effEditClose);
        dispatch(effClose);
        FreeLibrary(library);
        EXPECT_EQ(nullptr, GetModuleHandleA(kLibrary));
        desk->wait(60); // whatever still comes finds no code
        desk->click({300, 300});
        if (i == 0) windows = desk->holdings()["windows"];
        EXPECT_EQ(windows, desk->holdings()["windows"]);
    }
}

} // namespace
