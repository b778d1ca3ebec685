#include "PluginBase/Util/Exception.h"
#include <gtest/gtest.h>

namespace {

TEST(Exception, ReportSaysWhereAndWhy)
{
    Exception::Base failure("it failed");
    EXPECT_EQ(failure.report(), "Base:\n\tit failed\n\t (-1): Thrown, GetLastError(): 4294967295\n");
    failure.setOrigin("File.cpp", 12, 5);
    EXPECT_EQ(failure.report(), "Base:\n\tit failed\n\tFile.cpp (12): Thrown, GetLastError(): 5\n");
}

TEST(Exception, FileReportNamesThePathAndTheKind)
{
    const char *const kinds[] = {"File not found", "Open error",       "Read error",
                                 "Write error",    "Delete error",     "Remove error",
                                 "Rename error",   "Unexpected error", " Unknown error"};
    for (uint32_t kind = 0; kind < 9; ++kind) {
        Util::Exception::FileIO failure("n", "a/b", static_cast<Util::FileErrorKind>(kind));
        EXPECT_EQ(failure.report(), Exception::Base("n").report() + "\nFileIO:\na/b: " + kinds[kind]);
    }
}

} // namespace
