#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <fmt/format.h>
#include <map>
#include <regex>

#include "apps/tessarine/pictures/Palette.h"
#include "apps/tessarine/pictures/ReportPicture.h"
#include "apps/tessarine/pictures/ResponsePicture.h"

// Parses the charts' SVG and compares labels, grid lines and curves with the values shown.

namespace {

namespace Palette = App::Palette;
using App::Box;
using App::Colour;
using App::Position;

std::vector<std::smatch> findAll(const std::string &text, const char *pattern)
{
    const std::regex regex(pattern);
    return {std::sregex_iterator(text.begin(), text.end(), regex), {}};
}

bool near(Position a, Position b) { return std::hypot(a.x - b.x, a.y - b.y) < 0.05; }

/// A parsed chart. Cairo writes glyphs instead of characters; the outline of a glyph identifies its character.
class Svg {
public:
    struct Text {
        std::string words; // '?' for a character of another size or orientation
        Position at;       // its left end
    };
    struct Path {
        double width;
        std::string colour;
        std::vector<Position> points;
    };

    explicit Svg(const std::string &svg, const std::map<std::string, char> &letters = alphabet())
    {
        std::map<std::string, std::string> outlines;
        for (const auto &glyph : findAll(svg, "<symbol[^>]*id=\"([^\"]+)\">\\s*<path[^>]* d=\"([^\"]*)\""))
            outlines[glyph[1]] = glyph[2];
        for (const auto &group : findAll(svg, "<g style=\"fill[^>]*>((?:\\s*<use[^>]*>)+)")) {
            const std::string body = group[1];
            Text text{};
            for (const auto &use :
                 findAll(body, "<use xlink:href=\"#([^\"]+)\" x=\"([^\"]+)\" y=\"([^\"]+)\"")) {
                if (text.words.empty()) text.at = {std::stod(use[2]), std::stod(use[3])};
                glyphs.push_back(outlines.at(use[1]));
                const auto letter = letters.find(glyphs.back());
                text.words += letter == letters.end() ? '?' : letter->second;
            }
            texts.push_back(text);
        }
        for (const auto &path :
             findAll(svg, "stroke-width:([0-9.]+);[^\"]*stroke:(rgb[^;]*);[^\"]*\"[^>]* d=\"([^\"]*)\"")) {
            paths.push_back({std::stod(path[1]), path[2], {}});
            const std::string data = path[3];
            for (const auto &point : findAll(data, "(-?[0-9.]+) (-?[0-9.]+)"))
                paths.back().points.push_back({std::stod(point[1]), std::stod(point[2])});
            if (paths.back().points.size() == 5 && paths.back().colour == nameOf(Palette::kFrame))
                charts.push_back({paths.back().points[0].x, paths.back().points[0].y,
                                  paths.back().points[2].x, paths.back().points[2].y});
        }
    }
    static std::string nameOf(Colour colour)
    {
        return fmt::format("rgb({:.0f}%,{:.0f}%,{:.0f}%)", 100 * colour.red, 100 * colour.green,
                           100 * colour.blue);
    }
    /// True if a line of this colour and width has a vertex at `at`.
    bool passes(Colour colour, double width, Position at) const
    {
        return std::ranges::any_of(paths, [&](const Path &path) {
            return path.colour == nameOf(colour) && path.width == width &&
                   std::ranges::any_of(path.points, [&](Position each) { return near(each, at); });
        });
    }
    /// Number of texts to the left of the labels.
    long titlesOfVerticalAxes() const
    {
        return std::ranges::count_if(texts,
                                     [&](const Text &text) { return text.at.x < charts[0].left - 40.0; });
    }

    std::vector<Box> charts; // their frames, from the top
    std::vector<Text> texts;
    std::vector<Path> paths;
    std::vector<std::string> glyphs; // outlines of all characters, in order

private:
    /// Outlines at the font size of the labels.
    static const std::map<std::string, char> &alphabet()
    {
        static const std::map<std::string, char> letters = [] {
            std::string all;
            for (char letter = ' '; letter <= '~'; ++letter) all += letter;
            App::Drawing drawing(App::PictureFormat::svg, 2000.0, 100.0);
            drawing.text({0.0, 50.0}, all, 11.0, Palette::kInk);
            const std::vector<std::string> used = Svg(drawing.finish(), {}).glyphs;
            std::map<std::string, char> made;
            for (size_t i = 0; i < used.size(); ++i) made.emplace(used[i], all[i]);
            return made;
        }();
        return letters;
    }
};

struct Label {
    std::string words;
    double share; // of the length of the axis, from its lower end
};

/// Expects exactly these labels on the axis below the chart or on its left, each at a grid line.
void expectAxis(const Svg &svg, const Box &chart, bool below, const std::vector<Label> &labels)
{
    std::vector<std::string> shown, wanted;
    for (const auto &[words, at] : svg.texts) {
        const bool isHere = below ? at.y > chart.bottom + 10.0 && at.y < chart.bottom + 20.0
                                  : at.x < chart.left && at.y > chart.top && at.y < chart.bottom + 5.0;
        if (isHere && words[0] != '?') shown.push_back(words);
    }
    for (const auto &[label, share] : labels) {
        SCOPED_TRACE(label);
        wanted.push_back(label);
        const double x = chart.left + share * chart.width(), y = chart.bottom - share * chart.height(),
                     width = App::Drawing(App::PictureFormat::svg, 9.0, 9.0).text({}, label, 11.0, {});
        EXPECT_TRUE(
            svg.passes(Palette::kGrid, 1.0, below ? Position{x, chart.top} : Position{chart.left, y}));
        const Position corner = below ? Position{x - width / 2.0, chart.bottom + 16.0}
                                      : Position{chart.left - 7.0 - width, y + 4.0};
        EXPECT_TRUE(std::ranges::any_of(svg.texts, [&, words = label](const Svg::Text &text) {
            return text.words == words && near(text.at, corner);
        }));
    }
    EXPECT_THAT(shown, testing::UnorderedElementsAreArray(wanted));
}

Position placed(const Box &chart, double share, double value, double low, double high)
{
    return {chart.left + share * chart.width(), chart.bottom - (value - low) / (high - low) * chart.height()};
}

TEST(ResponsePicture, ShowsLabelsAndCurvesAtTheirValues)
{
    App::Response response{.frequencies = {20.0, 200.0, 20000.0}, .bands = {}, .sum = {9.5, -0.5, 0.25}};
    for (size_t band = 0; band < 4; ++band) {
        const double db = -12.0 * static_cast<double>(band + 1);
        response.bands[band] = {db, db + 3.0, db};
    }
    const Svg svg(drawResponse(response, App::PictureFormat::svg));
    ASSERT_EQ(svg.charts.size(), 2u);
    EXPECT_EQ(svg.titlesOfVerticalAxes(), 2);
    std::vector<Label> levels, frequencies;
    for (int db = -60; db <= 12; db += 6)
        levels.push_back({fmt::format(fmt::runtime(db > 0 ? "+{}" : "{}"), db), (db + 60.0) / 72.0});
    for (const int hz : {20, 50, 100, 200, 500, 1000, 2000, 5000, 10000, 20000})
        frequencies.push_back(
            {hz < 1000 ? std::to_string(hz) : std::to_string(hz / 1000) + "k", std::log10(hz / 20.0) / 3.0});
    expectAxis(svg, svg.charts[0], false, levels);
    expectAxis(svg, svg.charts[1], false,
               {{"0", 1 / 11.0},
                {"+2", 3 / 11.0},
                {"+4", 5 / 11.0},
                {"+6", 7 / 11.0},
                {"+8", 9 / 11.0},
                {"+10", 1.0}});
    for (const Box &chart : svg.charts) expectAxis(svg, chart, true, frequencies);
    for (size_t i = 0; i < 3; ++i) {
        const double share = std::log10(response.frequencies[i] / 20.0) / 3.0;
        for (size_t band = 0; band < 4; ++band)
            EXPECT_TRUE(svg.passes(Palette::kBands[band], 2.0,
                                   placed(svg.charts[0], share, response.bands[band][i], -60.0, 12.0)));
        EXPECT_TRUE(
            svg.passes(Palette::kInk, 2.2, placed(svg.charts[0], share, response.sum[i], -60.0, 12.0)));
        EXPECT_TRUE(
            svg.passes(Palette::kInk, 2.0, placed(svg.charts[1], share, response.sum[i], -1.0, 10.0)));
    }
}

std::string timeLabel(double seconds, double step)
{
    if (step < 1.0) return fmt::format("{:.5g} s", seconds);
    const auto whole = static_cast<int>(std::lround(seconds));
    return step < 3600.0 ? fmt::format("{}:{:02}", whole / 60, whole % 60)
                         : fmt::format("{} h", whole / 3600);
}

TEST(ReportPicture, ShowsLabelsAndCurvesAtTheirValues)
{
    constexpr double kSteps[] = {0.001, 0.002, 0.005, 0.01, 0.02, 0.05,  0.1,  0.2, 0.5,
                                 1,     2,     5,     10,   15,   30,    60,   120, 300,
                                 600,   900,   1800,  3600, 7200, 14400, 36000};
    constexpr double kRanges[] = {3, 6, 9, 12, 15, 18, 24, 36, 48, 72, 96}; // dB
    for (size_t i = 0; i < std::size(kSteps); ++i) {
        const double step = kSteps[i], range = kRanges[i % std::size(kRanges)];
        SCOPED_TRACE(testing::Message() << "12 steps of " << step << " s, " << range << " dB");
        App::Rendering rendering;
        rendering.rate = 1000;
        const auto half = static_cast<uint64_t>(std::lround(6.0 * step * rendering.rate));
        for (const float factor : {1.0f, 0.5f}) { // linear for levels, in dB for gains
            App::Column column{.frames = half, .peakIn = 0.5f * factor, .peakOut = 0.25f * factor};
            column.squaresIn = 0.01 * factor * factor * static_cast<double>(half);
            column.squaresOut = 0.001 * factor * factor * static_cast<double>(half);
            for (size_t gain = 0; gain < App::Column::kGains; ++gain)
                column.gainDbFrames[gain] = -0.5 * factor * static_cast<double>((gain + 1) * half);
            column.leastGain[2] = static_cast<float>(std::pow(10.0, -(range - 0.01) / 20.0)); // just fits
            rendering.history.add(column);
        }
        const Svg svg(drawReport({}, rendering, App::PictureFormat::svg));
        ASSERT_EQ(svg.charts.size(), 6u);
        EXPECT_EQ(svg.titlesOfVerticalAxes(), 2);
        std::vector<Label> times, reductions;
        for (int tick = 0; tick <= 12; ++tick) times.push_back({timeLabel(tick * step, step), tick / 12.0});
        expectAxis(svg, svg.charts[5], true, times);
        expectAxis(svg, svg.charts[0], false,
                   {{"-60", 0.0},
                    {"-48", 12 / 66.0},
                    {"-36", 24 / 66.0},
                    {"-24", 36 / 66.0},
                    {"-12", 48 / 66.0},
                    {"0", 60 / 66.0}});
        for (int third = 0; third <= 3; ++third)
            reductions.push_back(
                {fmt::format("{:g}", third == 0 ? 0.0 : -range * third / 3.0), 1.0 - third / 3.0});
        for (const auto &[share, factor] : {std::pair{0.25, 1.0}, {0.75, 0.5}}) {
            const double fall = 20.0 * std::log10(factor);
            for (const auto &[colour, width, db] : {std::tuple{Palette::kInput, 0.8, 20.0 * std::log10(0.5)},
                                                    {Palette::kOutput, 0.8, 20.0 * std::log10(0.25)},
                                                    {Palette::kInput, 2.0, -20.0},
                                                    {Palette::kOutput, 2.0, -30.0}})
                EXPECT_TRUE(svg.passes(colour, width, placed(svg.charts[0], share, db + fall, -60.0, 6.0)));
            for (size_t gain = 0; gain < App::Column::kGains; ++gain)
                EXPECT_TRUE(svg.passes(gain == 4 ? Palette::kLimiter : Palette::kBands[gain], 1.4,
                                       placed(svg.charts[gain + 1], share,
                                              -0.5 * factor * static_cast<double>(gain + 1), -range, 0.0)));
        }
        for (size_t gain = 0; gain < App::Column::kGains; ++gain)
            expectAxis(svg, svg.charts[gain + 1], false, reductions);
    }
}

} // namespace
