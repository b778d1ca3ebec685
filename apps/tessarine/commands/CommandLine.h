#pragma once
#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "apps/tessarine/console/Text.h"

namespace App {

/// There is nothing to run: help was asked for (exit code 0), or the command line is wrong (2).
struct Usage {
    int exitCode;
    std::string text; // ends in a line feed
};

/// Runs the command that the command line names. Results go to standard output, warnings and progress to
/// standard error.
/// Errors  Usage; Failure and Interrupted, with nothing half-written left behind
void runCommandLine(int argc, const char *const *argv);

/// Each adds one command with its options, and its work as the callback.
void addRender(CLI::App &app);
void addParams(CLI::App &app);
void addLatency(CLI::App &app);
void addResponse(CLI::App &app);
void addChunk(CLI::App &app);
void addEditor(CLI::App &app);

// Options that several commands have.
CLI::Option *addSettings(CLI::App *command, std::vector<std::string> &settings);
CLI::Option *addChunkFile(CLI::App *command, std::filesystem::path &chunk);
void addRate(CLI::App *command, uint32_t &rate);

} // namespace App
