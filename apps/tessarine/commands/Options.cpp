#include "apps/tessarine/commands/Options.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <fmt/format.h>
#include <sstream>

#include "apps/tessarine/pictures/Report.h"

namespace App {

namespace {

constexpr uint32_t kLargestBlock = 1u << 16;                  // frames
constexpr double kLowestLoudness = -70.0;                     // LUFS, where measuring ends
constexpr double kLowestTruePeak = -40.0;                     // dBTP
constexpr uint32_t kLowestRate = 1000, kHighestRate = 768000; // Hz

CLI::Option *addSettings(CLI::App *command, std::vector<std::string> &settings)
{
    const auto hasValue = [](const std::string &text) {
        return text.find('=') == std::string::npos
                   ? "'" + text + "' has no value; write NAME=VALUE, for example \"Band 1 Ratio=4\""
                   : std::string();
    };
    return command
        ->add_option("--set", settings,
                     "Value of a parameter in its own unit, \"Band 1 Ratio=4\"; may be given more than once")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false)
        ->check(hasValue, "");
}

void addRate(CLI::App *command, uint32_t &rate)
{
    command->add_option("--rate", rate, "Sample rate in Hz")
        ->check(CLI::Range(kLowestRate, kHighestRate))
        ->capture_default_str();
}

/// Refuses an empty name, which would mean that the option was not given.
auto named(const char *what)
{
    return [what](const std::string &path) {
        return path.empty() ? fmt::format("the name of the {} is empty", what) : std::string();
    };
}

/// Refuses what is no number or outside of the range.
auto within(const char *what, double low, double high, const char *unit)
{
    return [=](const std::string &text) {
        double value = 0.0;
        const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), value);
        const bool isNumber = error == std::errc() && rest == text.data() + text.size();
        return isNumber && value >= low && value <= high
                   ? std::string()
                   : fmt::format("{} cannot be '{}'; give a number from {:g} to {:g} {}", what, text, low,
                                 high, unit);
    };
}

void addLoudness(CLI::App *command, RenderOptions &options)
{
    CLI::Option *const loudness =
        command
            ->add_option("--loudness", options.loudness,
                         "Integrated loudness of the output. The file is heard once before; 'Gain', 'Limiter "
                         "Threshold' and 'Limiter Margin' are then chosen to limit as little as possible, in "
                         "brickwall mode only if asked for or needed")
            ->type_name("LUFS")
            ->check(within("the loudness", kLowestLoudness, 0.0, "LUFS"), "");
    command
        ->add_option("--true-peak", options.truePeak,
                     "Highest true peak of the output with --loudness; without it 0, the full scale")
        ->type_name("DBTP")
        ->check(within("the true peak", kLowestTruePeak, 0.0, "dBTP"), "")
        ->needs(loudness);
}

CLI::App *addRender(CLI::App &app, RenderOptions &options)
{
    CLI::App *const command = app.add_subcommand("render", "Process a sound file");
    command->add_option("IN", options.in, "File to read: WAV, FLAC, AIFF, Ogg, mono or stereo")->required();
    command->add_option("OUT", options.out, "File to write; its ending chooses the format")->required();
    addSettings(command, options.settings);
    command
        ->add_option("--chunk", options.chunk,
                     "Settings to start from: a file that 'tessarine chunk' wrote; --set comes after it")
        ->check(named("chunk"), "");
    command->add_option("--block", options.blockFrames, "Frames handed to the effect at a time")
        ->check(CLI::Range(1u, kLargestBlock))
        ->capture_default_str();
    command->add_flag_callback(
        "--no-compensate", [&options] { options.compensate = false; },
        "Keep the delay of the effect; without this the output is aligned with the input to the sample");
    const auto knownReport = [](const std::string &path) {
        return isReportPath(path) ? std::string()
                                  : "'" + path + "' ends in neither .html nor .png; choose one of them";
    };
    command->add_option("--report", options.report, "Picture of levels and gain reduction: .html or .png")
        ->check(knownReport, "");
    addLoudness(command, options);
    command
        ->add_option("--dry", options.dry,
                     "Write the input too, aligned with the output and as loud, to compare by ear; its "
                     "ending chooses the format")
        ->check(named("dry file"), "");
    return command;
}

CLI::App *addResponse(CLI::App &app, ResponseOptions &options)
{
    CLI::App *const command =
        app.add_subcommand("response", "Measure the frequency response of the bands and of their sum");
    addSettings(command, options.settings);
    addRate(command, options.rate);
    command->add_option("--png", options.png, "Picture to write")->required();
    return command;
}

CLI::App *addChunk(CLI::App &app, ChunkOptions &options)
{
    CLI::App *const command =
        app.add_subcommand("chunk", "Write settings to a file, in the form in which hosts keep them");
    command->add_option("FILE", options.file, "File to write, or to read with --print")->required();
    command->add_flag("--print", options.print, "Read the file and show all values in it")
        ->excludes(addSettings(command, options.settings));
    return command;
}

/// Help, or what is wrong in one line.
Usage explain(const CLI::App &app, const CLI::ParseError &problem, const std::string &firstWord)
{
    if (problem.get_exit_code() == 0) {
        std::ostringstream text;
        app.exit(problem, text, text);
        return {0, text.str()};
    }
    std::string sentence = problem.what();
    if (app.get_subcommands().empty() && !firstWord.empty() && !firstWord.starts_with('-'))
        sentence = fmt::format("there is no command '{}'", firstWord);
    else if (app.get_subcommands().empty() && firstWord.empty())
        sentence = "a command is missing: render, params, latency, response, chunk or editor";
    return {2, fmt::format("tessarine: {}; 'tessarine --help-all' shows how to call it\n", sentence)};
}

} // namespace

Options readCommandLine(int argc, const char *const *argv)
{
    CLI::App app("Tessarine: four-band dynamics for sound files", "tessarine");
    app.require_subcommand(1);
    app.set_help_all_flag("--help-all", "Help of all commands");

    RenderOptions render;
    LatencyOptions latency;
    ResponseOptions response;
    ChunkOptions chunk;
    EditorOptions editor;
    const CLI::App *const renderCommand = addRender(app, render);
    const CLI::App *const paramsCommand =
        app.add_subcommand("params", "List the parameters: index, name, unit, range, default, present text");
    CLI::App *const latencyCommand =
        app.add_subcommand("latency", "Show the delay: reported to hosts, known by the effect, measured");
    addRate(latencyCommand, latency.rate);
    addResponse(app, response);
    const CLI::App *const chunkCommand = addChunk(app, chunk);
    CLI::App *const editorCommand = addEditor(app, editor);
    addSettings(editorCommand, editor.settings);

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &problem) {
        throw explain(app, problem, argc > 1 ? argv[1] : "");
    }
    if (renderCommand->parsed()) return render;
    if (paramsCommand->parsed()) return ParamsOptions{};
    if (latencyCommand->parsed()) return latency;
    if (chunkCommand->parsed()) return chunk;
    if (editorCommand->parsed()) return editor;
    return response;
}

} // namespace App
