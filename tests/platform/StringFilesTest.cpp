#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "tests/platform/TestWindowSystem.h"

namespace {

std::string utf8(const std::u16string &text)
{
    const std::u8string converted = std::filesystem::path(text).u8string();
    return std::string(converted.begin(), converted.end());
}

/// The build's way from resources/strings to the program, for every row.
TEST(StringFiles, ReachTheProgram)
{
    uint32_t rows = 0;
    for (const auto &entry : std::filesystem::directory_iterator(STRINGS_FOLDER)) {
        const std::string name = entry.path().filename().string();
        const auto language = static_cast<uint32_t>(name.front() - '0');
        std::ifstream file(entry.path());
        for (std::string line; std::getline(file, line);) {
            if (line.starts_with('#')) continue;
            const size_t from = line.find('"') + 1;
            const auto row = static_cast<uint32_t>(std::stoul(line));
            EXPECT_EQ(utf8(testWindowSystem().loadString(377 + 45 * language + row)),
                      line.substr(from, line.rfind('"') - from))
                << name << ", row " << row;
            ++rows;
        }
    }
    EXPECT_EQ(rows, 6u * 45u);
}

} // namespace
