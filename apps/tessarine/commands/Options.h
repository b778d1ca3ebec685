#pragma once
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "apps/tessarine/commands/EditorOptions.h"

namespace App {

struct RenderOptions {
    std::filesystem::path in, out;
    std::vector<std::string> settings; // each "NAME=VALUE"
    uint32_t blockFrames = 512;
    std::filesystem::path chunk; // loaded before the settings; empty for none
    bool compensate = true;
    std::filesystem::path report;   // empty for none
    std::optional<double> loudness; // LUFS, to be reached by the parameters behind the bands
    std::optional<double> truePeak; // dBTP, at most; only with a loudness
    std::filesystem::path dry;      // empty for none
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

struct ChunkOptions {
    std::filesystem::path file;
    std::vector<std::string> settings; // each "NAME=VALUE", for writing
    bool print = false;                // read the file instead of writing it
};

using Options =
    std::variant<RenderOptions, ParamsOptions, LatencyOptions, ResponseOptions, ChunkOptions, EditorOptions>;

/// There is nothing to run: help was asked for (exit code 0), or the command line is wrong (2).
struct Usage {
    int exitCode;
    std::string text; // ends in a line feed
};

/// Throws Usage.
Options readCommandLine(int argc, const char *const *argv);

} // namespace App
