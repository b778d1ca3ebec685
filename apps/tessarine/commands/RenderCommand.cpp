#include "apps/tessarine/commands/CommandLine.h"
#include "apps/tessarine/console/Failure.h"
#include "apps/tessarine/files/TemporaryFile.h"
#include "apps/tessarine/pictures/Report.h"

namespace App {

namespace fs = std::filesystem;

namespace {

constexpr uint32_t kLargestBlock = 1u << 16; // frames
constexpr double kLowestLoudness = -70.0;    // LUFS, where measuring ends
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

/// One file must not take the place of another; only the output may take that of the input.
void requireDistinct(const RenderOptions &options)
{
    const NamedFile input = {"input", options.in}, output = {"output", options.out};
    const NamedFile chunk = {"chunk", options.effect.chunk}, dry = {"dry file", options.dry};
    const NamedFile report = {"report", options.report};
    // what is written, and what it would take the place of
    const std::pair<NamedFile, NamedFile> pairs[] = {
        {report, output}, {report, input}, {dry, output}, {dry, input},
        {dry, report},    {output, chunk}, {dry, chunk},  {report, chunk},
    };
    for (const auto &[written, taken] : pairs) {
        if (written.path.empty() || taken.path.empty() || !isSameFile(written.path, taken.path)) continue;
        throw Failure(fmt::format("the {} would overwrite the {} {}; give it another name", written.role,
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
    // opened first, so that a place that cannot be written costs no rendering
    std::optional<TemporaryFile> report;
    if (!options.report.empty()) report.emplace(options.report);

    const Rendering rendering = render(options);
    const Summary summary = summarise(options, rendering);
    for (const std::string &remark : summary.remarks) fmt::print(stderr, "tessarine: {}\n", remark);
    if (report) {
        report->write(makeReport(options, rendering, summary));
        report->commit();
    }
    fmt::print("{}", toScreen(summary));
}

/// Refuses an empty name, which would mean that the option was not given.
auto named(const char *what)
{
    return [what](const std::string &path) {
        return path.empty() ? fmt::format("the name of the {} is empty", what) : std::string();
    };
}

/// Refuses all but a number in the range.
auto within(const char *what, double low, double high, const char *unit)
{
    return [=](const std::string &text) {
        const std::optional<double> value = readNumber<double>(text);
        return value && *value >= low && *value <= high
                   ? std::string()
                   : fmt::format("{} cannot be '{}'; give a number from {:g} to {:g} {}", what, text, low,
                                 high, unit);
    };
}

void addLoudness(CLI::App *command, std::optional<double> &level, std::optional<double> &truePeak)
{
    CLI::Option *const loudness =
        command
            ->add_option("--loudness", level,
                         "Integrated loudness of the output. The file is heard once before; 'Gain', 'Limiter "
                         "Threshold' and 'Limiter Margin' are then chosen to limit as little as possible, in "
                         "brickwall mode only if asked for or needed")
            ->type_name("LUFS")
            ->check(within("the loudness", kLowestLoudness, 0.0, "LUFS"), "");
    command
        ->add_option("--true-peak", truePeak,
                     "Highest true peak of the output with --loudness; without it 0, the full scale")
        ->type_name("DBTP")
        ->check(within("the true peak", kLowestTruePeak, 0.0, "dBTP"), "")
        ->needs(loudness);
}

} // namespace

void addRender(CLI::App &app)
{
    const auto options = std::make_shared<RenderOptions>();
    const auto loudness = std::make_shared<std::optional<double>>();
    const auto truePeak = std::make_shared<std::optional<double>>();
    CLI::App *const command = app.add_subcommand("render", "Process a sound file");
    command->add_option("IN", options->in, "File to read: WAV, FLAC, AIFF, Ogg, mono or stereo")->required();
    command->add_option("OUT", options->out, "File to write; its ending chooses the format")->required();
    addSettings(command, options->effect.settings);
    addChunkFile(command, options->effect.chunk)->check(named("chunk"), "");
    command->add_option("--block", options->blockFrames, "Frames handed to the effect at a time")
        ->check(CLI::Range(1u, kLargestBlock))
        ->capture_default_str();
    command->add_flag_callback(
        "--no-compensate", [options] { options->compensate = false; },
        "Keep the delay of the effect; without this the output is aligned with the input to the sample");
    const auto knownReport = [](const std::string &path) {
        return isReportPath(path) ? std::string()
                                  : "'" + path + "' ends in neither .html nor .png; choose one of them";
    };
    command->add_option("--report", options->report, "Picture of levels and gain reduction: .html or .png")
        ->check(knownReport, "");
    addLoudness(command, *loudness, *truePeak);
    command
        ->add_option("--dry", options->dry,
                     "Write the input too, aligned with the output and as loud, to compare by ear; its "
                     "ending chooses the format")
        ->check(named("dry file"), "");
    command->callback([options, loudness, truePeak] {
        if (*loudness) options->goal = {**loudness, truePeak->value_or(0.0)};
        renderFile(*options);
    });
}

} // namespace App
