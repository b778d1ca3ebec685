#include "tests/apps/Sandbox.h"

#include <cmath>
#include <ebur128.h>

#include <gmock/gmock.h>

#include "apps/tessarine/console/Failure.h"
#include "apps/tessarine/loudness/LoudnessChoice.h"
#include "apps/tessarine/loudness/LoudnessMeter.h"

using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;

namespace {

constexpr uint32_t kRate = 44100;

struct Measured {
    double loudness, truePeak; // LUFS, dBTP
};

/// Measures with libebur128's own integration, which stores every block.
Measured measure(const Sound &sound)
{
    const auto channels = static_cast<unsigned>(sound.info.channels);
    ebur128_state *state = ebur128_init(channels, static_cast<unsigned long>(sound.info.samplerate),
                                        EBUR128_MODE_I | EBUR128_MODE_TRUE_PEAK);
    ebur128_add_frames_float(state, sound.samples.data(), static_cast<size_t>(sound.info.frames));
    Measured measured{};
    ebur128_loudness_global(state, &measured.loudness);
    double highest = 0.0;
    for (unsigned channel = 0; channel < channels; ++channel) {
        double peak = 0.0;
        ebur128_true_peak(state, channel, &peak);
        highest = std::max(highest, peak);
    }
    ebur128_destroy(&state);
    measured.truePeak = 20.0 * std::log10(highest);
    return measured;
}

TEST(LoudnessMeter, MeasuresTheSameInPiecesAsAtOnce)
{
    // constant level, varying level, and pauses that the gates must exclude
    const Audio sounds[] = {
        Signals::sine(48000, 997.0, 48000 * 3, -20.03), Signals::music(4, 48000, 48000 * 8, -6.0),
        Signals::musicThenSilence(2, 48000, 48000 * 9, -3.0),
        Signals::append(Signals::noise(1, 48000 * 4, -40.0), Signals::noise(2, 48000 * 4, -18.0))};
    for (const Audio &audio : sounds) {
        Sound sound;
        sound.info.channels = 2;
        sound.info.samplerate = 48000;
        sound.info.frames = static_cast<sf_count_t>(audio.frames());
        for (uint32_t i = 0; i < audio.frames(); ++i)
            sound.samples.insert(sound.samples.end(), {audio.left[i], audio.right[i]});
        App::LoudnessMeter meter(2, 48000);
        for (uint32_t done = 0; done < audio.frames(); done += 777)
            meter.add(sound.samples.data() + 2 * size_t{done}, std::min(777u, audio.frames() - done));
        EXPECT_NEAR(measure(sound).loudness, meter.figures().loudness, 1e-9);
        EXPECT_NEAR(measure(sound).truePeak, meter.figures().truePeakDb, 0.001);
    }
}

using App::LimiterMode;

constexpr App::GainLimits kLimits = {-18.0, 18.0, -5.0};

/// Limiter output for a steady tone at `level` dBFS, which is limited to the threshold. Its loudness is 10 LU
/// below its peak.
App::LimiterCurve tone(double level, LimiterMode mode = LimiterMode::soft)
{
    App::LimiterCurve curve{mode, {}};
    for (double threshold = -20.0; threshold <= 0.0; threshold += 2.0) {
        const double left = std::min(level, threshold);
        curve.points.push_back({threshold, left - 10.0, left});
    }
    return curve;
}

TEST(LoudnessChoice, UsesTheFullRangesAndNotMore)
{
    // down: 18 dB of gain and 5 dB of margin; up: 18 dB of gain and 20 dB of threshold
    EXPECT_NEAR(-5.0, choose({-43.0, 0.0}, kLimits, {tone(-10.0)}).margin, 1e-9);
    const App::LoudnessChoice most = choose({-12.0, 0.0}, kLimits, {tone(-40.0)});
    EXPECT_NEAR(38.0, most.gain + most.margin - most.threshold, 1e-9);
    const App::LimiterCurve bypassed = {LimiterMode::bypassed, {{0.0, -50.0, -40.0}}};
    EXPECT_NEAR(18.0, choose({-32.0, 0.0}, kLimits, {bypassed}).gain, 1e-9);
    for (const auto &[loudness, curve] :
         {std::pair(-43.1, tone(-10.0)), {-11.9, tone(-40.0)}, {-31.9, bypassed}})
        EXPECT_THROW(choose({loudness, 0.0}, kLimits, {curve}), App::Failure);
}

TEST(LoudnessChoice, UsesBrickwallOnlyIfSoftModeExceedsThePeak)
{
    App::LimiterCurve soft = tone(0.0), wall = tone(0.0, LimiterMode::brickwall);
    for (App::LimiterPoint &point : soft.points) point.truePeak += 1.0;
    for (App::LimiterPoint &point : wall.points) point.truePeak -= 0.1 * point.threshold;
    EXPECT_EQ(LimiterMode::soft, choose({-14.0, 0.0}, kLimits, {soft, wall}).mode);
    for (App::LimiterPoint &point : wall.points) point.loudness += 2.0;
    EXPECT_EQ(LimiterMode::brickwall, choose({-10.0, 0.0}, kLimits, {soft, wall}).mode);
}

struct Goal {
    double loudness, truePeak, tolerance; // LUFS, dBTP, LU
    std::string settings;
};
void PrintTo(const Goal &goal, std::ostream *out) { *out << goal.loudness << " LUFS"; }

class ReachesLoudness : public Sandbox, public testing::WithParamInterface<Goal> {};

/// The value after `name` in the printed tables.
std::string shown(const std::string &screen, const std::string &name)
{
    const size_t at = screen.find(name + " ");
    if (at == std::string::npos) return {};
    const size_t begin = screen.find_first_not_of(' ', at + name.size());
    return screen.substr(begin, screen.find_first_of(" \n", begin) - begin);
}

TEST_P(ReachesLoudness, BelowThePeakAndItsValuesRenderTheSameBytes)
{
    const auto &[loudness, truePeak, tolerance, settings] = GetParam();
    for (const Audio &audio : {Signals::music(1, kRate, kRate * 4, -2.0),
                               Signals::mono(Signals::music(9, kRate, kRate * 4, 6.0))}) {
        write("in.wav", kWavFloat, kRate, audio);
        const std::string screen =
            succeed("render in.wav out.wav" + settings + " --loudness " + std::to_string(loudness) +
                    " --true-peak " + std::to_string(truePeak));
        const Measured out = measure(read("out.wav"));
        EXPECT_NEAR(loudness, out.loudness, tolerance) << screen;
        EXPECT_LE(out.truePeak, truePeak + 0.001) << screen;

        std::string byHand = "render in.wav again.wav" + settings;
        for (const std::string name :
             {"Gain", "Limiter Threshold", "Limiter Margin", "Limiter Brickwall Mode"})
            byHand += " --set '" + name + "=" + shown(screen, name) + "'";
        succeed(byHand);
        EXPECT_EQ(readBytes("again.wav"), readBytes("out.wav")) << screen;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Goals, ReachesLoudness,
    testing::Values(Goal{-23.0, -1.0, 0.05, ""},
                    Goal{-13.9, -1.0, 0.25, " --set 'Limiter Release=60' --set 'Limiter Brickwall Mode=off'"},
                    Goal{-11.0, -1.3, 0.25, " --set 'Limiter Release=40' --set 'Limiter Brickwall Mode=on'"},
                    Goal{-12.8, -0.5, 0.25, " --set 'Limiter Release=40'"}));

class Loudness : public Sandbox {
protected:
    Loudness() { write("in.wav", kWavFloat, kRate, Signals::music(3, kRate, kRate * 4, -1.0)); }
};

TEST_F(Loudness, RefusalNamesAReachableLoudness)
{
    const std::string call = "render in.wav out.wav --true-peak -2 --loudness ",
                      message = run(call + "-3").err;
    const size_t number = message.find("--loudness ") + 11;
    const std::string named = message.substr(number, message.find(' ', number) - number);
    succeed(call + named);
    EXPECT_NEAR(std::stod(named), measure(read("out.wav")).loudness, 0.5);
}

TEST_F(Loudness, ReportShowsTargetChosenValuesAndResult)
{
    const std::string screen =
        succeed("render in.wav out.wav --loudness -20 --dry dry.wav --report report.html");
    EXPECT_THAT(screen, ContainsRegex("Loudness +-20.00 LUFS +-20.0[01] LUFS +-20.0[01] LUFS"));
    EXPECT_THAT(screen, ContainsRegex("Gain +-?[0-9.]+ dB"));
    EXPECT_THAT(readBytes("report.html"),
                AllOf(HasSubstr("Predicted"), HasSubstr("<li>Limiter Threshold=0.00</li>"),
                      HasSubstr("dB, as loud as the output")));
}

TEST_F(Loudness, DryFileIsAlignedWithTheOutputAndEquallyLoud)
{
    for (const bool compensated : {true, false}) {
        SCOPED_TRACE(compensated);
        succeed(
            "render in.wav out.wav --dry dry.wav --set 'Band 2 Comp Threshold=-40' --set 'Band 2 Ratio=5'" +
            std::string(compensated ? "" : " --no-compensate"));
        const Sound in = read("in.wav"), out = read("out.wav"), dry = read("dry.wav");
        EXPECT_EQ(out.info.format, dry.info.format);
        ASSERT_EQ(out.info.frames, dry.info.frames);
        EXPECT_NEAR(measure(out).loudness, measure(dry).loudness, 0.05);
        const size_t delay = compensated ? 0 : 305, frames = static_cast<size_t>(dry.info.frames);
        const double gain = std::pow(10.0, (measure(out).loudness - measure(in).loudness) / 20.0);
        for (size_t i = 0; i < frames; ++i)
            ASSERT_NEAR(i < delay ? 0.0 : gain * in.at(i - delay, 1), dry.at(i, 1), 0.002) << i;
    }
}

TEST_F(Loudness, DryFileIsTheInputEvenIfTheOutputReplacesIt)
{
    const std::string before = readBytes("in.wav");
    succeed("render in.wav out.wav --dry dry.wav");
    const std::string expected = readBytes("dry.wav");
    succeed("render in.wav in.wav --dry dry.wav");
    EXPECT_NE(before, readBytes("in.wav"));
    EXPECT_EQ(readBytes("out.wav"), readBytes("in.wav"));
    EXPECT_EQ((std::set<std::string>{"dry.wav", "in.wav", "out.wav"}), contents());
    EXPECT_EQ(expected, readBytes("dry.wav"));
}

} // namespace
