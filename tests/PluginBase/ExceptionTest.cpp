#include "PluginBase/Util/Exception.h"
#include <gtest/gtest.h>

namespace {

using Util::FileErrorKind;

TEST(Exception, ReportSaysWhereAndWhy)
{
    Exception::Base failure("it failed");
    EXPECT_EQ(failure.report(), "Base:\n\tit failed\n\t (-1): Thrown, GetLastError(): 4294967295\n");
    failure.setOrigin("File.cpp", 12, 5);
    EXPECT_EQ(failure.report(), "Base:\n\tit failed\n\tFile.cpp (12): Thrown, GetLastError(): 5\n");
    EXPECT_EQ(Exception::Base(failure).report(), failure.report());
}

TEST(Exception, FileReportNamesThePathAndTheKind)
{
    const struct {
        uint32_t kind;
        const char *text;
    } kKinds[] = {{0, "File not found"}, {1, "Open error"},    {2, "Read error"},   {3, "Write error"},
                  {4, "Delete error"},   {5, "Remove error"},  {6, "Rename error"}, {7, "Unexpected error"},
                  {8, " Unknown error"}, {9, " Unknown error"}};
    for (const auto &row : kKinds) {
        const Util::Exception::FileIO failure("n", "a/b", static_cast<FileErrorKind>(row.kind));
        const Exception::Base &base = failure;
        EXPECT_EQ(base.report(), Exception::Base("n").report() + "\nFileIO:\na/b: " + row.text);
    }
    Util::Exception::FileIO failure("n", "", FileErrorKind::read);
    failure.detail = "chunk";
    EXPECT_TRUE(failure.report().right(17) == "chunk: Read error");
}

} // namespace
