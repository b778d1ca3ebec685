#include "tests/apps/Sandbox.h"

#include <filesystem>
#include <regex>
#include <sstream>

#include <fmt/format.h>
#include <gmock/gmock.h>

#include "apps/tessarine/effect/EffectHost.h"
#include "apps/tessarine/render/Summary.h"

// What the program prints, in full: every row of its lists and every number of its messages.

using testing::ElementsAre;
using testing::ElementsAreArray;

namespace {

using Rows = std::vector<std::vector<std::string>>;

/// The columns of each line; two blanks or more separate them.
Rows rowsOf(const std::string &text)
{
    static const std::regex column("\\S+( \\S+)*");
    Rows rows;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        rows.emplace_back();
        for (std::sregex_iterator it(line.begin(), line.end(), column), end; it != end; ++it)
            rows.back().push_back(it->str());
    }
    return rows;
}

std::vector<std::string> numbersIn(const std::string &text)
{
    static const std::regex number("[-+]?[0-9]+([.:][0-9]+)*");
    std::vector<std::string> found;
    for (std::sregex_iterator it(text.begin(), text.end(), number), end; it != end; ++it)
        found.push_back(it->str());
    return found;
}

using Output = Sandbox;

TEST_F(Output, ListsEveryParameterOnceWithItsRangeAndDefault)
{
    const App::EffectHost host({.rate = 44100, .channels = 2, .blockFrames = 512});
    const ParameterTable &table = host.plugin().parameters();
    Rows wanted, saved; // of "params" and of "chunk --print"
    int32_t spectra = 0;
    const auto add = [&](const DSP::ParameterAddress &address) {
        const DSP::ParamRecord &record = address.record();
        const bool isSwitch = address.kind == DSP::ParamKind::boolean,
                   isSpectrum = record.group == DSP::ParamGroup::spectrum;
        const auto text = [&](const DSP::ParameterValue &value, const char *format, const char *off,
                              const char *on) {
            const double number = DSP::toNumber(value);
            return isSwitch ? (number != 0.0 ? on : off) : fmt::format(fmt::runtime(format), number);
        };
        const std::string name = (isSpectrum ? fmt::format("Band {} ", spectra++ / 4 + 1) : "") +
                                 record.name.c_str(),
                          range = text(record.range.minimum, "{:g} to ", "off, on", "") +
                                  text(record.range.maximum, "{:g}", "", ""),
                          shown =
                              text(address.value(), address.kind == DSP::ParamKind::real ? "{:.2f}" : "{:g}",
                                   record.hostIndex ? "False" : "off", record.hostIndex ? "True" : "on");
        Rows::value_type row{name, range, text(record.defaultValue, "{:g}", "off", "on"), shown},
            value{name, shown};
        if (!record.label.isEmpty()) row.emplace(row.begin() + 1, record.label.c_str());
        if (!record.label.isEmpty()) value.emplace_back(record.label.c_str());
        if (record.hostIndex) row.insert(row.begin(), std::to_string(record.hostIndex.value));
        if (record.isSaved()) saved.push_back(value);
        if (!isSpectrum) wanted.push_back(row);
    };
    for (const DSP::ParameterAddress &address : table.hostRows()) add(address);
    wanted.insert(wanted.end(), {Rows::value_type{}, {}}); // a blank line and a heading
    for (const DSP::ParameterAddress &address : table.hiddenRows()) add(address);
    std::ranges::stable_partition(
        saved, [](const auto &row) { return row[0].find("Spectrum") == std::string::npos; });
    Rows listed = rowsOf(succeed("params"));
    ASSERT_GT(listed.size(), 42u);
    listed.erase(listed.begin()); // the heading
    listed[40].clear();
    EXPECT_THAT(listed, ElementsAreArray(wanted));
    succeed("chunk a.chunk");
    EXPECT_THAT(rowsOf(succeed("chunk --print a.chunk")), ElementsAreArray(saved));
}

TEST_F(Output, CountsTheFramesAndBytesOfTruncatedFiles)
{
    const Audio sound = Signals::noise(1, 44100, -20.0);
    for (const auto &[name, format] : {std::pair{"cut.wav", kWav16},
                                       {"cut.aiff", SF_FORMAT_AIFF | SF_FORMAT_PCM_16},
                                       {"cut.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_16}})
        for (const int percent : {30, 50, 90}) {
            SCOPED_TRACE(testing::Message() << name << ", " << percent << " %");
            write(name, format, 44100, sound);
            const uint64_t whole = std::filesystem::file_size(pathOf(name)),
                           kept = whole * static_cast<uint64_t>(percent) / 100;
            std::filesystem::resize_file(pathOf(name), kept);
            const std::string message = run(std::string("render ") + name + " out.wav --block 97").err;
            if (format != (SF_FORMAT_FLAC | SF_FORMAT_PCM_16)) {
                EXPECT_THAT(numbersIn(message), ElementsAre(std::to_string(whole - kept)));
                continue;
            }
            SF_INFO info{};
            SNDFILE *const file = sf_open(pathOf(name).c_str(), SFM_READ, &info);
            std::vector<float> samples(2 * 44100);
            const sf_count_t left = sf_readf_float(file, samples.data(), 44100);
            sf_close(file);
            EXPECT_THAT(numbersIn(message), ElementsAre(std::to_string(left), "44100"));
        }
}

TEST(Summary, ShowsEachNumberOfTheRenderingInItsPlace)
{
    App::RenderOptions options;
    options.dry = "dry.wav";
    App::Rendering r;
    r.rate = 1000;
    r.channels = 1;
    r.frames = 83'400;
    r.formatDry = kWav16;
    r.delay = 305;
    r.in = {-1.1, -0.9, -17.3};
    r.out = {-0.04, 0.4, -12.2};
    r.dryGainDb = 5.1;
    r.clipped = 17;
    r.dryClipped = 23;
    r.silenced = 29;
    r.seconds = 2.0;
    r.effectSeconds = 0.5;
    App::Column column{.frames = 1000};
    for (size_t gain = 0; gain < App::Column::kGains; ++gain) {
        column.leastGain[gain] = std::pow(10.0f, -0.1f * static_cast<float>(gain + 1));
        column.gainDbFrames[gain] = -100.0 * static_cast<double>(gain + 1);
    }
    r.history.add(column);
    r.choice =
        App::LoudnessChoice{{-11.0, -1.0}, 2.5, -3.5, -4.5, App::LimiterMode::brickwall, {-11.3, -1.2}};

    const App::Summary summary = summarise(options, r);
    const auto numbers = [](const App::Table &table) { return numbersIn(toText(table)); };
    EXPECT_THAT(numbers(summary.files), ElementsAre("1:23.4", "1000", "16", "+5.10"));
    EXPECT_THAT(numbers(summary.levels), ElementsAre("-1.1", "0.0", "-0.9", "0.4", "-17.3", "-12.2"));
    EXPECT_THAT(numbers(summary.goal), ElementsAre("-11.00", "-11.30", "-12.20", "-1.00", "-1.20", "0.40"));
    EXPECT_THAT(numbers(summary.choice), ElementsAre("2.50", "-3.50", "-4.50"));
    EXPECT_THAT(numbers(summary.reduction), ElementsAre("1", "-2.0", "-0.1", "2", "-4.0", "-0.2", "3", "-6.0",
                                                        "-0.3", "4", "-8.0", "-0.4", "-10.0", "-0.5"));
    EXPECT_THAT(numbers(summary.work), ElementsAre("42", "167", "305"));
    std::vector<std::string> remarked;
    for (const std::string &remark : summary.remarks)
        for (const std::string &each : numbersIn(remark)) remarked.push_back(each);
    EXPECT_THAT(remarked, ElementsAre("17", "23", "+5.10", "0.40", "-1", "-12.20", "-11", "29"));
}

} // namespace
