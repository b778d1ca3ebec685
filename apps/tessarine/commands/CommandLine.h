#pragma once
#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "apps/tessarine/console/Text.h"

namespace App {

/// Thrown if the command line is wrong.
struct Usage {
    int exitCode;     // 2
    std::string text; // ends with a line feed
};

/// Thrown after all output is complete, to end the program with an exit status other than 0.
struct ExitStatus {
    int code;
};
constexpr int kGoalMissed = 3;

/// Runs the command named on the command line, or prints help. Writes results to standard output, warnings and progress to
/// standard error.
/// Errors  Usage and ExitStatus; Failure and Interrupted, after which no incomplete file remains
void runCommandLine(int argc, const char *const *argv);

// Each function adds one command with its options and callback.
void addRender(CLI::App &app);
void addParams(CLI::App &app);
void addLatency(CLI::App &app);
void addResponse(CLI::App &app);
void addChunk(CLI::App &app);
void addEditor(CLI::App &app);

// Options shared by several commands.
CLI::Option *addSettings(CLI::App *command, std::vector<std::string> &settings);
CLI::Option *addChunkFile(CLI::App *command, std::filesystem::path &chunk);
void addRate(CLI::App *command, uint32_t &rate);

/// Makes a validator for CLI::Option::transform that accepts a number from `low` to `high`, with or without
/// its unit, and passes it on in `unit`; see readQuantity. `what` names the value in the error message.
CLI::Validator quantity(std::string what, double low, double high, std::string unit);

/// Ends the command's help with examples, one per line, and the exit statuses.
void endHelp(CLI::App *command, const std::vector<std::string> &examples);

/// Flushes standard output.
/// Errors  Failure if standard output cannot be written
void flushOutput();

} // namespace App
