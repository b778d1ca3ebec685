#include "tests/apps/Sandbox.h"

#include <filesystem>
#include <memory>
#include <regex>
#include <sstream>

#include <fmt/format.h>
#include <gmock/gmock.h>

#include "apps/tessarine/console/Failure.h"
#include "apps/tessarine/effect/EffectHost.h"
#include "apps/tessarine/files/FileFormat.h"
#include "apps/tessarine/pictures/Report.h"
#include "apps/tessarine/render/Summary.h"

// The renderer's complete output: every row of its lists and every number of its messages.

using testing::ElementsAre;
using testing::ElementsAreArray;

namespace {

using Rows = std::vector<std::vector<std::string>>;

/// Columns of each line, separated by two or more spaces.
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
    Rows wanted;
    uint32_t spectra = 0;
    const auto add = [&](const DSP::ParameterAddress &address) {
        const DSP::ParamRecord &record = address.record();
        const bool isSwitch = address.kind == DSP::ParamKind::boolean;
        const double initial = DSP::toNumber(record.defaultValue);
        Rows::value_type row{record.name.c_str()};
        if (record.group == DSP::ParamGroup::spectrum) // four settings in each of four bands
            row[0] = fmt::format("Band {} {}", spectra++ / 4 + 1, row[0]);
        if (record.hostIndex) row.insert(row.begin(), std::to_string(record.hostIndex.value));
        if (!record.label.isEmpty()) row.emplace_back(record.label.c_str());
        row.push_back(isSwitch ? "off, on"
                               : fmt::format("{:g} to {:g}", DSP::toNumber(record.range.minimum),
                                             DSP::toNumber(record.range.maximum)));
        row.push_back(isSwitch ? (initial != 0.0 ? "on" : "off") : fmt::format("{:g}", initial));
        wanted.push_back(row);
    };
    for (const DSP::ParameterAddress &address : table.hostRows()) add(address);
    for (const DSP::ParameterAddress &address : table.hiddenRows()) add(address);
    const auto listed = [this](const char *line) {
        Rows rows = rowsOf(succeed(line));
        rows.erase(rows.begin());                                            // the heading
        std::erase_if(rows, [](const auto &row) { return row.size() < 2; }); // headings and blank lines
        for (auto &row : rows) row.pop_back();                               // the present value
        return rows;
    };
    EXPECT_THAT(listed("params --all"), testing::UnorderedElementsAreArray(wanted));
    const Rows audible = listed("params");
    ASSERT_EQ(49u, audible.size()); // 39 of hosts, Global Bypass, Process As Mono, 8 of the crossover
    EXPECT_TRUE(std::equal(audible.begin(), audible.begin() + 39, wanted.begin()));
    for (const auto &row : audible) EXPECT_EQ(std::string::npos, row[0].find("Spectrum"));
}

TEST_F(Output, ShowsEachNumber)
{
    EXPECT_THAT(numbersIn(succeed("latency --rate 192000")),
                ElementsAre("192000", "305", "1.589", "453", "2.359", "453", "2.359"));
    EXPECT_THAT(numbersIn(succeed("response --png a.png")),
                ElementsAre("120", "2000", "10000", "44100", "-0.26", "2060", "+0.09", testing::_));
    EXPECT_THAT(numbersIn(succeed("chunk a.chunk")), ElementsAre("258"));
    write("in.wav", kWav16, 20000, Signals::noise(2, 5000, -20.0));
    const std::tuple<const char *, const char *, const char *, std::vector<const char *>> warnings[] = {
        {"100", "399", "3000", {"100", "399"}},
        {"100", "400", "1599", {"400", "1599"}},
        {"900", "1000", "1100", {"900", "1000", "1000", "1100"}},
        {"9000", "10000", "11000", {}}}; // above the Nyquist frequency
    for (const auto &[low, mid, high, expected] : warnings)
        EXPECT_THAT(
            numbersIn(
                run(fmt::format("render in.wav out.wav --set 'Crossover Low Cutoff={}' --set 'Crossover Mid "
                                "Cutoff={}' --set 'Crossover High Cutoff={}'",
                                low, mid, high))
                    .err),
            ElementsAreArray(expected));
}

TEST_F(Output, CountsTheFramesAndBytesOfTruncatedFiles)
{
    const Audio sound = Signals::noise(1, 44100, -20.0);
    for (const auto &[name, format] : {std::pair{"cut.wav", kWav16},
                                       {"cut.aiff", SF_FORMAT_AIFF | SF_FORMAT_PCM_16},
                                       {"cut.sony", SF_FORMAT_W64 | SF_FORMAT_PCM_16},
                                       {"cut.large", SF_FORMAT_RF64 | SF_FORMAT_PCM_16},
                                       {"cut.caf", SF_FORMAT_CAF | SF_FORMAT_PCM_16},
                                       {"cut.au", SF_FORMAT_AU | SF_FORMAT_PCM_16},
                                       {"cut.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_16}})
        for (const int percent : {30, 50, 90}) {
            SCOPED_TRACE(testing::Message() << name << ", " << percent << " %");
            write(name, format, 44100, sound);
            std::string bytes =
                readBytes(name); // WAV: insert a chunk of odd length and its pad byte before the audio
            if (format == kWav16) writeText(name, bytes.insert(bytes.find("data"), "odd \3\0\0\0abc\0", 12));
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

TEST(OutputFormat, HoldsMoreThanFourGigabytes)
{
    SF_INFO input{};
    input.channels = 2;
    input.samplerate = 44100;
    input.format = kWav16;
    for (const auto &[frames, container] :
         {std::pair{1'072'000'000, SF_FORMAT_WAV}, {1'073'000'000, SF_FORMAT_RF64}}) {
        input.frames = frames;
        EXPECT_EQ(container, App::outputFormat("a.wav", input).format & SF_FORMAT_TYPEMASK) << frames;
    }
    EXPECT_THROW(App::outputFormat("a.aiff", input), App::Failure);
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
    r.in = {-1.1, -0.9, -17.3, 6.1, -14.2, -15.3};
    r.out = {-0.04, 0.4, -12.2, 5.1, -9.2, -10.3};
    r.encodedTruePeakDb = 0.87;
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
    EXPECT_THAT(numbers(summary.levels), ElementsAre("-1.1", "0.0", "-0.9", "0.4", "-17.3", "-12.2", "6.1",
                                                     "5.1", "-15.3", "-10.3", "-14.2", "-9.2", "0.9"));
    EXPECT_THAT(numbers(summary.goal), ElementsAre("-11.00", "-11.30", "-12.20", "-1.00", "-1.20", "0.40"));
    EXPECT_THAT(numbers(summary.choice), ElementsAre("2.50", "-3.50", "-4.50"));
    EXPECT_THAT(numbers(summary.reduction), ElementsAre("1", "-2.0", "-0.1", "2", "-4.0", "-0.2", "3", "-6.0",
                                                        "-0.3", "4", "-8.0", "-0.4", "-10.0", "-0.5"));
    EXPECT_THAT(numbers(summary.work), ElementsAre("42", "167", "305"));
    std::vector<std::string> remarked;
    for (const std::string &remark : summary.remarks)
        for (const std::string &each : numbersIn(remark)) remarked.push_back(each);
    EXPECT_THAT(remarked,
                ElementsAre("17", "23", "+5.10", "0.40", "-1", "-12.20", "-11", "0.87", "-1", "29"));

    options.report = "report.html";
    const std::string page = makeReport(options, r, summary);
    for (const App::Table &table :
         {summary.files, summary.levels, summary.goal, summary.choice, summary.reduction, summary.work})
        for (const auto &row : table.rows)
            for (const std::string &cell : row) EXPECT_THAT(page, testing::HasSubstr(">" + cell + "</t"));
    for (const std::string &remark : summary.remarks)
        EXPECT_THAT(page, testing::HasSubstr(remark.substr(0, 40)));
}

} // namespace
