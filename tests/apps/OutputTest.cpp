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
    Rows wanted, saved;
    const auto add = [&](const DSP::ParameterAddress &address, const std::string &prefix) {
        const DSP::ParamRecord &record = address.record();
        const bool isSwitch = address.kind == DSP::ParamKind::boolean;
        const auto textOf = [&](const DSP::ParameterValue &value, const char *format, bool ofHost) {
            const double number = DSP::toNumber(value);
            if (!isSwitch) return fmt::format(fmt::runtime(format), number);
            return std::string(ofHost ? (number != 0.0 ? "True" : "False") : number != 0.0 ? "on" : "off");
        };
        const bool isReal = address.kind == DSP::ParamKind::real;
        const std::string name = prefix + record.name.c_str(),
                          initial = textOf(record.defaultValue, "{:g}", false),
                          range = fmt::format("{:g} to {:g}", DSP::toNumber(record.range.minimum),
                                              DSP::toNumber(record.range.maximum)),
                          shown = textOf(address.value(), isReal ? "{:.2f}" : "{:g}", bool(record.hostIndex));
        Rows::value_type row{name, isSwitch ? "off, on" : range, initial, shown}, print{name, shown};
        if (!record.label.isEmpty()) {
            row.emplace(row.begin() + 1, record.label.c_str());
            print.emplace_back(record.label.c_str());
        }
        if (record.hostIndex) row.insert(row.begin(), std::to_string(record.hostIndex.value));
        if (record.isSaved()) saved.push_back(print);
        if (prefix.empty()) wanted.push_back(row);
    };
    for (const DSP::ParameterAddress &address : table.hostRows()) add(address, "");
    ASSERT_EQ(wanted.size(), 39u);
    for (const bool spectrum :
         {false, true}) // their settings have one name for all bands, and are not listed
        for (const DSP::ParameterAddress &address : table.hiddenRows()) {
            if ((address.record().group == DSP::ParamGroup::spectrum) != spectrum) continue;
            int band = 0;
            while (spectrum &&
                   host.plugin().transformHandle().spectrum(static_cast<uint32_t>(band)) != address.component)
                ++band;
            add(address, spectrum ? fmt::format("Band {} ", band + 1) : "");
        }
    Rows listed = rowsOf(succeed("params"));
    ASSERT_GT(listed.size(), 42u);
    listed.erase(listed.begin());                           // the heading
    listed.erase(listed.begin() + 39, listed.begin() + 41); // and that of the settings
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
