#include "apps/tessarine/render/Summary.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>

#include "apps/tessarine/files/FileFormat.h"

namespace App {

const std::vector<std::string> kGainNames = {"Band 1", "Band 2", "Band 3", "Band 4", "Limiter"};

namespace {

std::string number(double value, const char *unit)
{
    if (std::isinf(value)) return std::string(value < 0 ? "-inf " : "inf ") + unit;
    // avoids "-0.0"
    return fmt::format("{:.1f} {}", std::abs(value) < 0.05 ? 0.0 : value, unit);
}

std::string exactly(double value, const char *unit) { return fmt::format("{:.2f} {}", value, unit); }

/// True if the dry file could be matched to the output's loudness.
bool isMatched(const Rendering &r) { return std::isfinite(r.in.loudness) && std::isfinite(r.out.loudness); }

std::string duration(const Rendering &rendering)
{
    const double seconds = static_cast<double>(rendering.frames) / rendering.rate;
    if (seconds < 60.0) return fmt::format("{:.1f} s", seconds);
    const auto minutes = static_cast<uint64_t>(seconds / 60.0);
    return fmt::format("{}:{:04.1f} min", minutes, seconds - static_cast<double>(minutes) * 60.0);
}

Table files(const RenderOptions &options, const Rendering &r)
{
    Table table;
    table.rows = {
        {"Input", options.in.string()},
        {"", fmt::format("{}, {} Hz, {}, {}", duration(r), r.rate, r.channels == 2 ? "stereo" : "mono",
                         describeFormat(r.formatIn))},
        {"Output", options.out.string()},
        {"", describeFormat(r.formatOut)},
    };
    if (!options.dry.empty()) {
        table.rows.push_back({"Dry", options.dry.string()});
        table.rows.push_back({"", fmt::format("{}, {:+.2f} dB, {}", describeFormat(r.formatDry), r.dryGainDb,
                                              isMatched(r) ? "as loud as the output" : "level unchanged")});
    }
    if (!options.delta.empty()) table.rows.push_back({"Difference", options.delta.string()});
    if (!options.report.empty()) table.rows.push_back({"Report", options.report.string()});
    return table;
}

Table goal(const LoudnessChoice &choice, const Rendering &r)
{
    return {.headed = true,
            .rows = {{"Target", "Requested", "Predicted", "Measured"},
                     {"Loudness", exactly(choice.goal.loudness, "LUFS"),
                      exactly(choice.predicted.loudness, "LUFS"), exactly(r.out.loudness, "LUFS")},
                     {"Maximum true peak", exactly(choice.goal.truePeak, "dBTP"),
                      exactly(choice.predicted.truePeak, "dBTP"), exactly(r.out.truePeakDb, "dBTP")}}};
}

Table chosen(const LoudnessChoice &choice)
{
    Table table;
    for (const std::string &setting : choice.settings()) {
        const size_t equals = setting.find('=');
        const std::string value = setting.substr(equals + 1);
        const bool isNumber = value.find('.') != std::string::npos;
        table.rows.push_back({setting.substr(0, equals), isNumber ? value + " dB" : value});
    }
    return table;
}

Table work(const RenderOptions &options, const Rendering &r)
{
    const double length = static_cast<double>(r.frames) / r.rate;
    return {.rows = {
                {"Speed", fmt::format("{:.0f} x real time; effect alone: {:.0f} x", length / r.seconds,
                                      length / r.effectSeconds)},
                {"Delay", fmt::format("{} samples, {}", r.delay,
                                      options.compensate ? "compensated" : "not compensated")},
            }};
}

/// "1 sample was", "2 samples were"
std::string counted(uint64_t count, std::string_view noun)
{
    return fmt::format("{} {}", count, noun) + (count == 1 ? " was" : "s were");
}

std::vector<std::string> remarks(const RenderOptions &options, const Rendering &r)
{
    std::vector<std::string> sentences;
    if (!r.warning.empty()) sentences.push_back(r.warning);
    if (r.clipped > 0)
        sentences.push_back(
            fmt::format("{} clipped at full scale (integer output format); lower 'Limiter Margin' or 'Gain'",
                        counted(r.clipped, "sample")));
    if (r.dryClipped > 0)
        sentences.push_back(
            fmt::format("{} clipped in the dry file after {:+.2f} dB of gain; lower the output's "
                        "loudness",
                        counted(r.dryClipped, "sample"), r.dryGainDb));
    if (r.formatDry != 0 && !isMatched(r))
        sentences.emplace_back("the dry file was not matched to the output's loudness, because the input or "
                               "the output is silent, "
                               "below -70 LUFS or shorter than 0.4 s");
    if (r.choice && r.out.truePeakDb > r.choice->goal.truePeak)
        sentences.push_back(fmt::format("the true peak is {:.2f} dBTP, above the requested {:g} dBTP; give a "
                                        "lower --true-peak",
                                        r.out.truePeakDb, r.choice->goal.truePeak));
    if (r.missesLoudness())
        sentences.push_back(
            fmt::format("the loudness is {:.2f} LUFS instead of {:g} LUFS, as near as the true peak "
                        "allows; give a lower --loudness or a higher --true-peak",
                        r.out.loudness, r.choice->goal.loudness));
    const std::optional<double> ceiling = r.choice ? r.choice->goal.truePeak : options.truePeak;
    if (ceiling && r.encodedTruePeakDb && *r.encodedTruePeakDb > *ceiling)
        sentences.push_back(
            fmt::format("lossy encoding raises the true peak to {:.2f} dBTP, above the requested {:g} "
                        "dBTP; give a lower --true-peak",
                        *r.encodedTruePeakDb, *ceiling));
    if (options.truePeak && r.loweredDb > 0.0)
        sentences.push_back(fmt::format("'Gain' was lowered by {:.2f} dB to keep the true peak at {:g} dBTP",
                                        r.loweredDb, *options.truePeak));
    if (options.truePeak && r.out.truePeakDb > *options.truePeak)
        sentences.push_back(
            fmt::format("the true peak is {:.2f} dBTP, above the requested {:g} dBTP, because "
                        "'Gain' is at its minimum; lower 'Limiter Margin'",
                        r.out.truePeakDb, *options.truePeak));
    if (r.deltaClipped > 0)
        sentences.push_back(
            fmt::format("{} clipped in the difference; add --bits float", counted(r.deltaClipped, "sample")));
    if (r.silenced > 0)
        sentences.push_back(
            fmt::format("{} zeroed: NaN, infinite or absurdly loud", counted(r.silenced, "input sample")));
    sentences.insert(sentences.end(), r.metadataRemarks.begin(), r.metadataRemarks.end());
    return sentences;
}

} // namespace

Summary summarise(const RenderOptions &options, const Rendering &r)
{
    Summary summary;
    summary.files = files(options, r);
    summary.levels.headed = true;
    summary.levels.rows = {
        {"", "In", "Out"},
        {"Sample peak", number(r.in.samplePeakDb, "dBFS"), number(r.out.samplePeakDb, "dBFS")},
        {"True peak", number(r.in.truePeakDb, "dBTP"), number(r.out.truePeakDb, "dBTP")},
        {"Loudness", number(r.in.loudness, "LUFS"), number(r.out.loudness, "LUFS")},
        {"Loudness range", number(r.in.range, "LU"), number(r.out.range, "LU")},
        {"Maximum short-term", number(r.in.maxShortTerm, "LUFS"), number(r.out.maxShortTerm, "LUFS")},
        {"Maximum momentary", number(r.in.maxMomentary, "LUFS"), number(r.out.maxMomentary, "LUFS")},
    };
    if (r.encodedTruePeakDb)
        summary.levels.rows.push_back({"True peak, encoded", "", number(*r.encodedTruePeakDb, "dBTP")});
    if (r.choice) {
        summary.goal = goal(*r.choice, r);
        summary.choice = chosen(*r.choice);
    }
    summary.reduction = {.headed = true, .rows = {{"Gain reduction", "Maximum", "Mean"}}};
    for (int i = 0; i < Column::kGains; ++i)
        summary.reduction.rows.push_back({kGainNames[static_cast<size_t>(i)],
                                          number(r.history.total().leastGainDb(i), "dB"),
                                          number(r.history.total().meanGainDb(i), "dB")});
    summary.work = work(options, r);
    summary.remarks = remarks(options, r);
    return summary;
}

std::string toText(const Table &table)
{
    std::vector<size_t> widths;
    for (const auto &row : table.rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], row[i].size());
    }
    std::string text;
    for (const auto &row : table.rows) {
        std::string line;
        for (size_t i = 0; i < row.size(); ++i)
            line += table.headed && i > 0 ? fmt::format("  {:>{}}", row[i], widths[i])
                                          : fmt::format("  {:<{}}", row[i], widths[i]);
        line.erase(line.find_last_not_of(' ') + 1);
        text += line + "\n";
    }
    return text;
}

} // namespace App
