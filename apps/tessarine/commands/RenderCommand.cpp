#include <algorithm>
#include <fmt/ranges.h>

#include "apps/tessarine/commands/CommandLine.h"
#include "apps/tessarine/console/Failure.h"
#include "apps/tessarine/files/OutputPath.h"
#include "apps/tessarine/files/TemporaryFile.h"
#include "apps/tessarine/pictures/Report.h"

namespace App {

namespace {

constexpr uint32_t kLargestBlock = 1u << 16; // frames
constexpr double kLowestLoudness = -70.0;    // LUFS, the absolute gate of BS.1770
constexpr double kLowestTruePeak = -40.0;    // dBTP

std::string toScreen(const Summary &summary)
{
    std::string text;
    for (const Table *table : {&summary.levels, &summary.goal, &summary.choice, &summary.reduction,
                               &summary.work, &summary.files}) {
        if (table->rows.empty()) continue;
        text += (text.empty() ? "" : "\n") + toText(*table);
    }
    return text;
}

void renderFile(const RenderOptions &options)
{
    requireDistinct({{"input", options.in}, {"chunk", options.effect.chunk}}, {{"output", options.out},
                                                                               {"dry file", options.dry},
                                                                               {"difference", options.delta},
                                                                               {"report", options.report}});
    // opened first, to fail before rendering if it cannot be written
    std::optional<TemporaryFile> report;
    if (!options.report.empty()) report.emplace(options.report);

    const Rendering rendering = render(options);
    const Summary summary = summarise(options, rendering);
    for (const std::string &remark : summary.remarks) fmt::print(stderr, "tessarine: {}\n", remark);
    fmt::print("{}", toScreen(summary));
    flushOutput(); // without the table there is no report
    if (report) {
        report->write(makeReport(options, rendering, summary));
        report->commit();
    }
    const std::optional<double> limit = options.goal ? options.goal->truePeak : options.truePeak;
    if (rendering.missesLoudness() || (limit && rendering.exceeds(*limit))) throw ExitStatus{kGoalMissed};
}

/// Makes a check that refuses an empty name, which would have the same effect as no option.
auto named(const char *what)
{
    return [what](const std::string &path) {
        return path.empty() ? fmt::format("the name of the {} is empty; name a file", what) : std::string();
    };
}

void addLoudness(CLI::App *command, std::optional<double> &level, std::optional<double> &truePeak)
{
    command
        ->add_option(
            "--loudness", level,
            "Target integrated loudness. The file is analysed first; 'Gain' and the limiter are then set "
            "for the least limiting: none, else soft mode, else brickwall mode (default: no target)")
        ->type_name("LUFS")
        ->transform(quantity("the loudness", kLowestLoudness, 0.0, "LUFS"));
    command
        ->add_option("--true-peak", truePeak,
                     "Maximum true peak of the output (default: 0 dBTP with --loudness, else none). Without "
                     "--loudness, 'Gain' is lowered if necessary")
        ->type_name("DBTP")
        ->transform(quantity("the true peak", kLowestTruePeak, 0.0, "dBTP"));
}

void addSampleFormat(CLI::App *command, SampleFormat &samples)
{
    const auto oneOf = [](std::vector<std::string> words) {
        return [words = std::move(words)](const std::string &text) {
            return std::ranges::find(words, text) != words.end()
                       ? std::string()
                       : fmt::format("unknown value '{}'; choose one of {}", text, fmt::join(words, ", "));
        };
    };
    command
        ->add_option("--bits", samples.bits,
                     "Bits per sample of the written files: 16, 24, 32 or float (default: the input's)")
        ->type_name("BITS")
        ->check(oneOf({"16", "24", "32", "float"}), "");
    command
        ->add_option_function<std::string>(
            "--dither", [&samples](const std::string &kind) { samples.dither = kind == "tpdf"; },
            "Dither where rounding to an integer format loses bits: tpdf or none (default: tpdf)")
        ->type_name("KIND")
        ->check(oneOf({"tpdf", "none"}), "");
}

void addExcerpt(CLI::App *command, RenderOptions &options)
{
    constexpr double kLongest = 1e7; // seconds
    command->add_option("--start", options.start, "Start of an excerpt (default: the start of the file)")
        ->type_name("SECONDS")
        ->transform(quantity("the start", 0.0, kLongest, "s"));
    command->add_option("--length", options.length, "Length of an excerpt (default: to the end of the file)")
        ->type_name("SECONDS")
        ->transform(quantity("the length", 1e-6, kLongest, "s"));
}

void addMix(CLI::App *command, double &percent)
{
    command
        ->add_option("--mix", percent,
                     "Share of the effect's output in a mix with the signal before compression and limiting; "
                     "both pass the "
                     "crossover, so their phase is equal (default: 100 per cent)")
        ->type_name("PERCENT")
        ->transform(quantity("the mix", 0.0, 100.0, "%"))
        ->excludes("--loudness");
}

} // namespace

void addRender(CLI::App &app)
{
    const auto options = std::make_shared<RenderOptions>();
    const auto loudness = std::make_shared<std::optional<double>>();
    const auto truePeak = std::make_shared<std::optional<double>>();
    CLI::App *const command = app.add_subcommand("render", "Process an audio file");
    command->add_option("IN", options->in, "Input file, mono or stereo: WAV, FLAC, AIFF, Ogg, Opus or MP3")
        ->type_name("FILE")
        ->required();
    command->add_option("OUT", options->out, "Output file; its extension selects the format")
        ->type_name("FILE")
        ->required();
    addSettings(command, options->effect.settings);
    addChunkFile(command, options->effect.chunk)->check(named("chunk"), "");
    command
        ->add_option(
            "--block", options->blockFrames,
            fmt::format("Block size: 1 to {} (default: {} frames)", kLargestBlock, options->blockFrames))
        ->type_name("FRAMES")
        ->check(CLI::Range(1u, kLargestBlock).description(""));
    command->add_flag_callback(
        "--no-compensate", [options] { options->compensate = false; },
        "Keep the effect's delay in the output (default: output aligned with the input)");
    const auto knownReport = [](const std::string &path) {
        return isReportPath(path)
                   ? std::string()
                   : "'" + path + "' ends in neither .html nor .png; use one of these extensions";
    };
    command
        ->add_option(
            "--report", options->report,
            "Report to write, with charts of levels and gain reduction: .html or .png (default: none)")
        ->type_name("FILE")
        ->check(knownReport, "");
    addLoudness(command, *loudness, *truePeak);
    command
        ->add_option("--dry", options->dry,
                     "Dry file to write: the input, aligned with the output and matched to its loudness, for "
                     "listening comparisons; its extension selects the format (default: none)")
        ->type_name("FILE")
        ->check(named("dry file"), "");
    command
        ->add_option("--delta", options->delta,
                     "File to write with the difference: the output minus the input, aligned (default: none)")
        ->type_name("FILE")
        ->check(named("difference"), "");
    addSampleFormat(command, options->samples);
    addExcerpt(command, *options);
    addMix(command, options->mixPercent);
    command->callback([options, loudness, truePeak] {
        if (*loudness)
            options->goal = {**loudness, truePeak->value_or(0.0)};
        else
            options->truePeak = *truePeak;
        renderFile(*options);
    });
    endHelp(command, {"tessarine render in.wav out.flac --set \"Band 1 Ratio=3:1\" --report report.html",
                      "tessarine render in.wav out.wav --loudness -14LUFS --true-peak -1dBTP --dry dry.wav"});
}

} // namespace App
