#include "PluginBase/Util/Dir_win.h"
#include "PluginBase/Util/Exception.h"
#include "platform/System.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <random>

namespace {

namespace fs = std::filesystem;

/// Creates a temporary folder, and deletes it after the test.
class Dir : public testing::Test {
protected:
    Dir() : folder(fs::temp_directory_path() / ("tessarine_dir_" + std::to_string(std::random_device()())))
    {
        fs::create_directory(folder);
    }
    ~Dir() override { fs::remove_all(folder); }

    String inFolder(const char *rest) const { return String(folder.string()) + rest; }

    const fs::path folder;
};

TEST_F(Dir, HandlesTrailingAndNativeSeparators)
{
    const std::pair<const char *, const char *> slashed[] = {
        {"", ""}, {"C:\\x", "C:\\x/"}, {"C:\\x\\", "C:\\x\\"}, {"/x/", "/x/"}};
    for (const auto &[path, result] : slashed) EXPECT_EQ(Util::withTrailingSlash(path), result);
    const char native = Platform::pathSeparator();
    EXPECT_EQ(Util::nativeSeparators("a/b/c"), String("a") + native + "b" + native + "c");
    EXPECT_EQ(Util::longPath(inFolder("//")), Util::longPath(inFolder("")));
    EXPECT_EQ(Util::longPath("//"), "//");
    EXPECT_TRUE(Util::directoryExists(inFolder("")) && Util::directoryExists(inFolder("/")));
    EXPECT_FALSE(Util::directoryExists(inFolder("/none")) || Util::directoryExists(""));
}

TEST_F(Dir, CreatesTheLastPartOnlyBeforeATrailingSeparator)
{
    Util::makeDirectory(inFolder("/a/b"), true);
    EXPECT_TRUE(fs::is_directory(folder / "a") && !fs::exists(folder / "a" / "b"));
    for (int time = 0; time < 2; ++time) Util::makeDirectory(inFolder("/a/b/c/"), true);
    EXPECT_TRUE(fs::is_directory(folder / "a" / "b" / "c"));
    Util::makeDirectory(inFolder("/d/"), false);
    EXPECT_TRUE(fs::is_directory(folder / "d"));
}

TEST_F(Dir, FailedCreationThrowsWithThePath)
{
    std::ofstream(folder / "file") << "in the way";
    const String path = inFolder("/file/sub/");
    for (const bool withParents : {false, true}) {
        try {
            Util::makeDirectory(path, withParents);
            FAIL() << "created a directory inside a file";
        } catch (const Util::Exception::FileIO &failure) {
            EXPECT_TRUE(failure.path == path && failure.kind == Util::FileErrorKind::write);
        }
    }
}

TEST_F(Dir, ModuleDirectoryIgnoresTheWorkingDirectory)
{
    fs::current_path(folder);
    const String module = Util::moduleDirectory();
    EXPECT_EQ(module.at(module.length() - 1), Platform::pathSeparator());
    EXPECT_TRUE(fs::path(module.c_str()).is_absolute() && fs::exists(Platform::modulePath()));
    EXPECT_FALSE(fs::equivalent(module.c_str(), folder));
    fs::current_path(folder.parent_path());
}

} // namespace
