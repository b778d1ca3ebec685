#include "apps/tessarine/commands/CommandLine.h"

#include <sstream>

#include "plugin/Product.h"

namespace App {

namespace {

constexpr uint32_t kLowestRate = 1000, kHighestRate = 768000; // Hz

/// Returns the requested help text or a one-line error message. `firstWord` is the first argument, if any.
Usage explain(const CLI::App &app, const CLI::ParseError &problem, const std::string &firstWord)
{
    if (problem.get_exit_code() == 0) {
        std::ostringstream text;
        app.exit(problem, text, text);
        return {0, text.str()};
    }
    std::string sentence = problem.what();
    if (app.get_subcommands().empty() && !firstWord.empty() && !firstWord.starts_with('-'))
        sentence = fmt::format("unknown command '{}'", firstWord);
    else if (app.get_subcommands().empty() && firstWord.empty())
        sentence = "no command given; choose render, params, latency, response, chunk or editor";
    return {2, fmt::format("tessarine: {}; for help, run 'tessarine --help-all'\n", sentence)};
}

} // namespace

CLI::Option *addSettings(CLI::App *command, std::vector<std::string> &settings)
{
    const auto hasValue = [](const std::string &text) {
        return text.find('=') == std::string::npos
                   ? "'" + text + "' has no value; write NAME=VALUE, for example \"Band 1 Ratio=4\""
                   : std::string();
    };
    return command
        ->add_option("--set", settings,
                     "Parameter value in its own unit, for example \"Band 1 Ratio=4\"; may be repeated")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false)
        ->check(hasValue, "");
}

CLI::Option *addChunkFile(CLI::App *command, std::filesystem::path &chunk)
{
    return command
        ->add_option("--chunk", chunk,
                     "Chunk file to load first, as written by 'tessarine chunk'; --set overrides its values")
        ->type_name("FILE");
}

void addRate(CLI::App *command, uint32_t &rate)
{
    command
        ->add_option("--rate", rate,
                     fmt::format("Sample rate: {} to {} (default: {} Hz)", kLowestRate, kHighestRate, rate))
        ->type_name("HZ")
        ->check(CLI::Range(kLowestRate, kHighestRate).description(""));
}

void runCommandLine(int argc, const char *const *argv)
{
    CLI::App app("Tessarine: four-band dynamics processing for audio files", "tessarine");
    app.require_subcommand(1);
    app.set_help_all_flag("--help-all", "Print the help of all commands and exit");
    app.set_version_flag("--version", fmt::format("tessarine {}", Product::kVersionText),
                         "Print the version and exit");
    for (const auto add : {addRender, addParams, addLatency, addResponse, addChunk, addEditor}) add(app);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &problem) {
        throw explain(app, problem, argc > 1 ? argv[1] : "");
    }
}

} // namespace App
