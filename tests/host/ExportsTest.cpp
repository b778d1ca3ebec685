#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <set>
#include <string>

// TESSARINE_MODULE and NM come from the build.

namespace {

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

} // namespace
