#include "apps/tessarine/commands/CommandLine.h"

#include <cerrno>
#include <cstring>
#include <sstream>
#include <system_error>

#include "apps/tessarine/console/Failure.h"
#include "plugin/Product.h"

namespace App {

namespace {

constexpr uint32_t kLowestRate = 1000, kHighestRate = 768000; // Hz

constexpr const char *kStatuses =
    "Exit status: 0 success, 1 failure, 2 wrong usage, 3 a loudness goal was missed";

std::string helpText(const CLI::App &app, const CLI::ParseError &request)
{
    std::ostringstream text;
    app.exit(request, text, text);
    return text.str();
}

/// Returns a one-line error message. `firstWord` is the first argument, if any.
Usage explain(const CLI::App &app, const CLI::ParseError &problem, const std::string &firstWord)
{
    std::string sentence = problem.what();
    if (app.get_subcommands().empty() && !firstWord.empty() && !firstWord.starts_with('-'))
        sentence = fmt::format("unknown command '{}'", firstWord);
    else if (app.get_subcommands().empty() && firstWord.empty())
        sentence = "no command given; choose render, params, latency, response, chunk or editor";
    return {2, fmt::format("tessarine: {}; for help, run 'tessarine --help-all'\n", sentence)};
}

[[noreturn]] void refuseOutput(int reason)
{
    if (reason == EPIPE) stopIfInterrupted(); // unless the caller ignores SIGPIPE
    throw Failure(fmt::format("cannot write to standard output: {}; check the redirection and the disk",
                              std::strerror(reason)));
}

void parse(CLI::App &app, int argc, const char *const *argv)
{
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &problem) {
        if (problem.get_exit_code() != 0) throw explain(app, problem, argc > 1 ? argv[1] : "");
        fmt::print("{}", helpText(app, problem));
    }
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
        ->add_option(
            "--set", settings,
            "Parameter value, for example \"Band 1 Ratio=3:1\" or \"Crossover Low Cutoff=1.2 kHz\"; may be "
            "repeated; 'tessarine params' lists the names (default: none)")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false)
        ->check(hasValue, "");
}

CLI::Option *addChunkFile(CLI::App *command, std::filesystem::path &chunk)
{
    return command
        ->add_option("--chunk", chunk,
                     "Chunk file to load first, as written by 'tessarine chunk'; --set overrides its values "
                     "(default: none)")
        ->type_name("FILE");
}

void addRate(CLI::App *command, uint32_t &rate)
{
    command
        ->add_option("--rate", rate,
                     fmt::format("Sample rate: {} to {} (default: {} Hz)", kLowestRate, kHighestRate, rate))
        ->type_name("HZ")
        ->transform(quantity("the sample rate", kLowestRate, kHighestRate, "Hz"))
        ->check(
            [](const std::string &hertz) {
                return readNumber<uint32_t>(hertz)
                           ? std::string()
                           : fmt::format("'{}' Hz is not a whole number; round the sample rate", hertz);
            },
            "");
}

CLI::Validator quantity(std::string what, double low, double high, std::string unit)
{
    const auto read = [=](std::string &text) {
        const std::optional<double> value = readQuantity(text, unit);
        if (!value || *value < low || *value > high)
            return fmt::format("{} cannot be '{}'; give a number from {:g} to {:g} {}", what, text, low, high,
                               unit);
        text = fmt::format("{}", *value); // the number alone, for CLI11's conversion
        return std::string();
    };
    return CLI::Validator(read, "");
}

void endHelp(CLI::App *command, const std::vector<std::string> &examples)
{
    std::string text = examples.size() == 1 ? "Example:\n" : "Examples:\n";
    for (const std::string &example : examples) text += "  " + example + "\n";
    command->footer(text + "\n" + kStatuses);
}

void flushOutput()
{
    errno = 0;
    if (std::fflush(stdout) != 0 || std::ferror(stdout)) refuseOutput(errno != 0 ? errno : EIO);
}

void runCommandLine(int argc, const char *const *argv)
{
    CLI::App app("Tessarine: four-band dynamics processing for audio files", "tessarine");
    app.require_subcommand(1);
    app.set_help_all_flag("--help-all", "Print the help of all commands and exit");
    app.set_version_flag("--version", fmt::format("tessarine {}", Product::kVersionText),
                         "Print the version and exit");
    for (const auto add : {addRender, addParams, addLatency, addResponse, addChunk, addEditor}) add(app);
    app.footer(fmt::format("Help of one command: tessarine COMMAND --help\n{}", kStatuses));
    try {
        parse(app, argc, argv);
    } catch (const std::system_error &problem) { // fmt::print throws it
        if (std::ferror(stdout) || problem.code().value() == EPIPE) refuseOutput(problem.code().value());
        throw;
    }
    flushOutput();
}

} // namespace App
