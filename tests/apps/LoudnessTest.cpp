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
    double loudness = 0.0, truePeak = 0.0, range = 0.0, maxMomentary, maxShortTerm; // LUFS, dBTP, LU
};

/// Measures with libebur128 alone.
Measured measure(const Sound &sound)
{
    const auto channels = static_cast<unsigned>(sound.info.channels);
    ebur128_state *state = ebur128_init(channels, static_cast<unsigned long>(sound.info.samplerate),
                                        EBUR128_MODE_I | EBUR128_MODE_LRA | EBUR128_MODE_TRUE_PEAK);
    Measured measured{.maxMomentary = -INFINITY, .maxShortTerm = -INFINITY};
    const auto hop = static_cast<size_t>(sound.info.samplerate / 10),
               frames = static_cast<size_t>(sound.info.frames);
    for (size_t done = 0; done < frames; done += hop) {
        ebur128_add_frames_float(state, sound.samples.data() + done * channels, std::min(hop, frames - done));
        double loudness = -INFINITY;
        if (done + hop >= 4 * hop && ebur128_loudness_momentary(state, &loudness) == EBUR128_SUCCESS)
            measured.maxMomentary = std::max(measured.maxMomentary, loudness);
        if (done + hop >= 30 * hop && ebur128_loudness_shortterm(state, &loudness) == EBUR128_SUCCESS)
            measured.maxShortTerm = std::max(measured.maxShortTerm, loudness);
    }
    ebur128_loudness_global(state, &measured.loudness);
    ebur128_loudness_range(state, &measured.range);
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

Sound toSound(const Audio &audio, int rate)
{
    Sound sound;
    sound.info.channels = audio.right.empty() ? 1 : 2;
    sound.info.samplerate = rate;
    sound.info.frames = static_cast<sf_count_t>(audio.frames());
    for (uint32_t i = 0; i < audio.frames(); ++i) {
        sound.samples.push_back(audio.left[i]);
        if (!audio.right.empty()) sound.samples.push_back(audio.right[i]);
    }
    return sound;
}

/// Finite for minus infinity, too.
double toEnergy(double loudness) { return std::pow(10.0, loudness / 10.0); }

TEST(LoudnessMeter, AgreesWithLibebur128)
{
    for (const int rate : {8000, 48000, 96000, 192000}) { // oversampled by 4, 4, 2 and 1
        const auto hz = static_cast<uint32_t>(rate);
        // constant level, varying level, pauses that the gates must exclude, peaks between the samples
        Audio square = Signals::silence(hz);
        for (uint32_t i = 0; i < square.frames(); ++i) square.left[i] = i % 10 < 5 ? 0.5f : -0.5f;
        for (const Audio &audio : {Signals::sine(hz, 997.0, hz, -20.03), Signals::music(4, hz, hz * 6, -6.0),
                                   Signals::musicThenSilence(2, hz, hz * 4, -3.0), square,
                                   Signals::mono(Signals::append(Signals::noise(1, hz * 4, -40.0),
                                                                 Signals::noise(2, hz * 4, -18.0)))}) {
            const Sound sound = toSound(audio, rate);
            const auto channels = static_cast<uint32_t>(sound.info.channels);
            App::LoudnessMeter meter(channels, hz, App::LoudnessMeter::Scope::full);
            for (uint32_t done = 0; done < audio.frames(); done += 777)
                meter.add(sound.samples.data() + channels * size_t{done},
                          std::min(777u, audio.frames() - done));
            const Measured expected = measure(sound);
            const App::LoudnessMeter::Figures figures = meter.figures();
            EXPECT_NEAR(expected.loudness, figures.loudness, 1e-9);
            EXPECT_NEAR(expected.truePeak, figures.truePeakDb, 1e-4);
            EXPECT_NEAR(expected.range, figures.range, 1.0); // it samples the short-term loudness less often
            EXPECT_NEAR(toEnergy(expected.maxMomentary), toEnergy(figures.maxMomentary), 1e-9);
            EXPECT_NEAR(toEnergy(expected.maxShortTerm), toEnergy(figures.maxShortTerm), 1e-9);
        }
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
    EXPECT_NEAR(-5.0, findOn(tone(-10.0), {-43.0, 0.0}, kLimits).choice.value().margin, 1e-9);
    EXPECT_NEAR(38.0, findOn(tone(-40.0), {-12.0, 0.0}, kLimits).choice.value().lift(), 1e-9);
    const App::LimiterCurve bypassed = {LimiterMode::bypassed, {{0.0, -50.0, -40.0}}};
    EXPECT_NEAR(18.0, findOn(bypassed, {-32.0, 0.0}, kLimits).choice.value().gain, 1e-9);
    for (const auto &[loudness, curve, nearest] :
         {std::tuple(-43.1, tone(-10.0), -43.0), {-11.9, tone(-40.0), -12.0}, {-31.9, bypassed, -32.0}}) {
        const App::LoudnessAttempt attempt = findOn(curve, {loudness, 0.0}, kLimits);
        EXPECT_FALSE(attempt.choice);
        EXPECT_NEAR(nearest, loudness < nearest ? attempt.softest : attempt.loudest, 0.011);
    }
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
             {"Gain", "Limiter Bypass", "Limiter Threshold", "Limiter Margin", "Limiter Brickwall Mode"}) {
            const std::string value = shown(screen, name);
            if (!value.empty()) byHand += " --set '" + name + "=" + value + "'";
        }
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
                AllOf(HasSubstr("Predicted"), HasSubstr("<li>Limiter Bypass=on</li>"),
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

TEST_F(Loudness, TriesTheBypassedLimiterFirst)
{
    write("hot.wav", kWavFloat, kRate, Signals::music(3, kRate, kRate * 4, 6.0)); // above full scale
    for (const std::string file : {"in.wav", "hot.wav"}) {
        const std::string screen = succeed("render " + file + " out.wav --loudness -22 --true-peak -1");
        EXPECT_EQ("on", shown(screen, "Limiter Bypass"));
        EXPECT_THAT(screen, ContainsRegex("\n +Limiter +0.0 dB +0.0 dB\n"));
        EXPECT_NEAR(-22.0, measure(read("out.wav")).loudness, 0.02);
        EXPECT_EQ("off",
                  shown(succeed("render " + file + " out.wav --loudness -22 --set 'Limiter Bypass=off'"),
                        "Limiter Bypass"));
    }
}

TEST_F(Loudness, ModesAreTriedFromTheGentlest)
{
    const std::string call = "render in.wav out.wav --set 'Limiter Release=40' --true-peak -1 --loudness ";
    std::vector<std::string> modes;
    for (const double loudness : {-25.0, -14.5, -10.0}) {
        const std::string screen = succeed(call + std::to_string(loudness));
        modes.push_back(shown(screen, "Limiter Bypass") + " " + shown(screen, "Limiter Brickwall Mode"));
    }
    EXPECT_THAT(modes, testing::ElementsAre("on ", "off off", "off on"));
}

TEST_F(Loudness, ChecksTheTruePeakWithoutATarget)
{
    const std::string call = "render in.wav out.wav --set Gain=3 --true-peak ";
    EXPECT_THAT(run(call + "-2").err, HasSubstr("'Gain' was lowered by"));
    EXPECT_NEAR(-2.0, measure(read("out.wav")).truePeak, 0.02);
    EXPECT_LE(measure(read("out.wav")).truePeak, -2.0);
    EXPECT_EQ(3, run(call + "-40").exitCode) << "'Gain' cannot be lowered that far";
    EXPECT_EQ(0, run(call + "0").exitCode);
}

} // namespace
