#include "PluginBase/Util/Dir_win.h"
#include "PluginBase/Util/Exception.h"
#include "platform/System.h"
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <random>

namespace {

namespace fs = std::filesystem;

/// A fresh folder under the system's temporary one, gone with the test; nothing is made outside it.
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

TEST(Path, TrailingSlashIsAddedOnlyWhereNoSeparatorEnds)
{
    EXPECT_EQ(Util::withTrailingSlash(""), "");
    EXPECT_EQ(Util::withTrailingSlash("C:\\x"), "C:\\x/");
    EXPECT_EQ(Util::withTrailingSlash("C:\\x\\"), "C:\\x\\");
    EXPECT_EQ(Util::withTrailingSlash("/x/"), "/x/");
}

TEST(Path, SeparatorsBecomeNative)
{
    const char native = Platform::pathSeparator();
    EXPECT_EQ(Util::nativeSeparators("a/b/c"), String("a") + native + "b" + native + "c");
}

TEST_F(Dir, LongPathCutsSeparatorsAtTheEnd)
{
    EXPECT_EQ(Util::longPath(inFolder("//")), Util::longPath(inFolder("")));
    EXPECT_EQ(Util::longPath("//"), "//");
    EXPECT_EQ(Util::longPath(""), "");
}

TEST_F(Dir, ExistenceIgnoresSeparatorsAtTheEnd)
{
    EXPECT_TRUE(Util::directoryExists(inFolder("")));
    EXPECT_TRUE(Util::directoryExists(inFolder("/")));
    EXPECT_FALSE(Util::directoryExists(inFolder("/none")));
    EXPECT_FALSE(Util::directoryExists(""));
}

TEST_F(Dir, MakesParentsAndTheLastPartOnlyBeforeASeparator)
{
    Util::makeDirectory(inFolder("/a/b"), true);
    EXPECT_TRUE(fs::is_directory(folder / "a"));
    EXPECT_FALSE(fs::exists(folder / "a" / "b"));
    Util::makeDirectory(inFolder("/a/b/c/"), true);
    EXPECT_TRUE(fs::is_directory(folder / "a" / "b" / "c"));
    Util::makeDirectory(inFolder("/a/b/c/"), true);
    Util::makeDirectory(inFolder("/d/"), false);
    EXPECT_TRUE(fs::is_directory(folder / "d"));
}

TEST_F(Dir, MakesNothingWithoutASecondSeparator)
{
    fs::current_path(folder);
    Util::makeDirectory("none", true);
    Util::makeDirectory("none/", true);
    EXPECT_TRUE(fs::is_empty(folder));
    fs::current_path(folder.parent_path());
}

TEST_F(Dir, FailureToMakeThrowsWithPathAndOrigin)
{
    std::ofstream(folder / "file") << "in the way";
    for (const bool withParents : {false, true}) {
        const String path = inFolder("/file/sub/");
        try {
            Util::makeDirectory(path, withParents);
            FAIL() << "made a directory inside a file";
        } catch (const Exception::Base &failure) {
            const auto &file = dynamic_cast<const Util::Exception::FileIO &>(failure);
            EXPECT_EQ(file.name, "_mkdir() failed");
            EXPECT_EQ(file.path, path);
            EXPECT_EQ(file.kind, Util::FileErrorKind::write);
            EXPECT_FALSE(file.file.isEmpty());
            EXPECT_GT(file.line, 0);
            EXPECT_NE(file.lastError, 0u);
            EXPECT_NE(file.lastError, Exception::Base::kNoError);
        }
    }
}

TEST_F(Dir, ModuleDirectoryIsWhereThisProgramStands)
{
    fs::current_path(folder); // what the system answers must not depend on it
    const String module = Util::moduleDirectory();
    EXPECT_EQ(module.at(module.length() - 1), Platform::pathSeparator());
    EXPECT_TRUE(fs::path(module.c_str()).is_absolute());
    EXPECT_TRUE(fs::exists(Platform::modulePath()));
    EXPECT_FALSE(fs::equivalent(module.c_str(), folder));
    fs::current_path(folder.parent_path());
}

} // namespace
