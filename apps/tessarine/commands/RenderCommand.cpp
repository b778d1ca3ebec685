#include "apps/tessarine/commands/CommandLine.h"
#include "apps/tessarine/console/Failure.h"
#include "apps/tessarine/files/TemporaryFile.h"
#include "apps/tessarine/pictures/Report.h"

namespace App {

namespace fs = std::filesystem;

namespace {

constexpr uint32_t kLargestBlock = 1u << 16; // frames
constexpr double kLowestLoudness = -70.0;    // LUFS, the absolute gate of BS.1770
constexpr double kLowestTruePeak = -40.0;    // dBTP

bool isSameFile(const fs::path &a, const fs::path &b)
{
    std::error_code ignored;
    const auto real = [&](const fs::path &path) {
        return fs::weakly_canonical(fs::absolute(path, ignored), ignored);
    };
    return real(a) == real(b);
}

struct NamedFile {
    const char *role;
    fs::path path;
};

/// Throws Failure if one file would overwrite another. Only the output may overwrite the input.
void requireDistinct(const RenderOptions &options)
{
    const NamedFile input = {"input", options.in}, output = {"output", options.out};
    const NamedFile chunk = {"chunk", options.effect.chunk}, dry = {"dry file", options.dry};
    const NamedFile report = {"report", options.report};
    // each pair: a file to write and a file that it must not overwrite
    const std::pair<NamedFile, NamedFile> pairs[] = {
        {report, output}, {report, input}, {dry, output}, {dry, input},
        {dry, report},    {output, chunk}, {dry, chunk},  {report, chunk},
    };
    for (const auto &[written, taken] : pairs) {
        if (written.path.empty() || taken.path.empty() || !isSameFile(written.path, taken.path)) continue;
        throw Failure(fmt::format("the {} would overwrite the {} {}; choose another name", written.role,
                                  taken.role, taken.path.string()));
    }
}

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
    requireDistinct(options);
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
    CLI::Option *const loudness =
        command
            ->add_option(
                "--loudness", level,
                "Target integrated loudness. The file is analysed first; 'Gain', 'Limiter Threshold' "
                "and 'Limiter Margin' are then set for the least limiting. Brickwall mode is used "
                "only if switched on or needed (default: no target)")
            ->type_name("LUFS")
            ->transform(quantity("the loudness", kLowestLoudness, 0.0, "LUFS"));
    command
        ->add_option("--true-peak", truePeak,
                     "Maximum true peak of the output with --loudness (default: 0 dBTP)")
        ->type_name("DBTP")
        ->transform(quantity("the true peak", kLowestTruePeak, 0.0, "dBTP"))
        ->needs(loudness);
}

} // namespace

void addRender(CLI::App &app)
{
    const auto options = std::make_shared<RenderOptions>();
    const auto loudness = std::make_shared<std::optional<double>>();
    const auto truePeak = std::make_shared<std::optional<double>>();
    CLI::App *const command = app.add_subcommand("render", "Process an audio file");
    command->add_option("IN", options->in, "Input file, mono or stereo: WAV, FLAC, AIFF or Ogg")
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
    command->callback([options, loudness, truePeak] {
        if (*loudness) options->goal = {**loudness, truePeak->value_or(0.0)};
        renderFile(*options);
    });
    endHelp(command, {"tessarine render in.wav out.flac --set \"Band 1 Ratio=3:1\" --report report.html",
                      "tessarine render in.wav out.wav --loudness -14LUFS --true-peak -1dBTP --dry dry.wav"});
}

} // namespace App
