#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "platform/offscreen/OffscreenWindowSystem.h"

namespace {

constexpr uint32_t kFirst = 377, kRows = 45, kLanguages = 6;

// Compares every row of resources/strings with the string that the program loads.
TEST(StringFiles, LoadEveryRowUnchangedAndNoOtherIds)
{
    Platform::OffscreenWindowSystem system;
    uint32_t rows = 0;
    for (const auto &entry : std::filesystem::directory_iterator(STRINGS_FOLDER)) {
        const std::string name = entry.path().filename().string();
        const auto language = static_cast<uint32_t>(name.front() - '0');
        std::ifstream file(entry.path());
        for (std::string line; std::getline(file, line);) {
            if (line.starts_with('#')) continue;
            const size_t from = line.find('"') + 1;
            const auto row = static_cast<uint32_t>(std::stoul(line));
            const std::string text = line.substr(from, line.rfind('"') - from);
            EXPECT_EQ(std::filesystem::path(system.loadString(kFirst + kRows * language + row)).native(),
                      text)
                << name << ", row " << row;
            ++rows;
        }
    }
    EXPECT_EQ(rows, kLanguages * kRows);
    for (const uint32_t id : {0u, kFirst - 1, kFirst + kRows * kLanguages, 65535u})
        EXPECT_TRUE(system.loadString(id).empty()) << id;
}

} // namespace
