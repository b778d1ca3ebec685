#include <gtest/gtest.h>

#include <cstdio>
#include <dlfcn.h>
#include <memory>
#include <set>

#include "tests/host/FakeHost.h"

// The library as it ships. TESSARINE_MODULE and NM come from the build.

namespace {

using Entry = AEffect *(*)(audioMasterCallback);

TEST(Module, ExportsItsEntriesAndNothingElse)
{
    const std::string command = NM " -D --defined-only " TESSARINE_MODULE;
    const std::unique_ptr<FILE, int (*)(FILE *)> pipe(popen(command.c_str(), "r"), pclose);
    ASSERT_TRUE(pipe);
    std::set<std::string> names;
    char line[512];
    while (fgets(line, sizeof line, pipe.get())) {
        const std::string text(line); // address, type and name
        names.insert(text.substr(text.rfind(' ') + 1, text.size() - text.rfind(' ') - 2));
    }
    EXPECT_EQ((std::set<std::string>{"VSTPluginMain", "main"}), names);
}

TEST(Module, ServesAHostThroughEitherName)
{
    const std::unique_ptr<void, int (*)(void *)> module(dlopen(TESSARINE_MODULE, RTLD_NOW | RTLD_LOCAL),
                                                        dlclose);
    ASSERT_TRUE(module) << dlerror();
    const auto entry = reinterpret_cast<Entry>(dlsym(module.get(), "main"));
    ASSERT_NE(nullptr, entry);
    EXPECT_EQ(entry, reinterpret_cast<Entry>(dlsym(module.get(), "VSTPluginMain")));

    FakeHost host;
    AEffect *const effect = entry(FakeHost::callback);
    ASSERT_NE(nullptr, effect);
    EXPECT_EQ(39, effect->numParams);
    std::vector<float> left(1024, 0.25f), right(1024, -0.25f);
    float *channels[] = {left.data(), right.data()};
    for (int i = 0; i < 3; ++i) effect->processReplacing(effect, channels, channels, 1024);
    EXPECT_EQ(1, effect->dispatcher(effect, effClose, 0, 0, nullptr, 0.0f));
}

} // namespace
