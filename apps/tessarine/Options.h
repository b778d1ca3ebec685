#pragma once
#include <cstdint>
#include <filesystem>
#include <string>
#include <variant>
#include <vector>

namespace App {

struct RenderOptions {
    std::filesystem::path in, out;
    std::vector<std::string> settings; // each "NAME=VALUE"
    uint32_t blockFrames = 512;
    bool compensate = true;
    std::filesystem::path report; // empty for none
};

struct ParamsOptions {};

struct LatencyOptions {
    uint32_t rate = 44100; // Hz
};

struct ResponseOptions {
    std::vector<std::string> settings; // each "NAME=VALUE"
    uint32_t rate = 44100;             // Hz
    std::filesystem::path png;
};

using Options = std::variant<RenderOptions, ParamsOptions, LatencyOptions, ResponseOptions>;

/// There is nothing to run: help was asked for (exit code 0), or the command line is wrong (2).
struct Usage {
    int exitCode;
    std::string text; // ends in a line feed
};

/// Throws Usage.
Options readCommandLine(int argc, const char *const *argv);

} // namespace App
