#include "tests/apps/Sandbox.h"

#include <algorithm>
#include <cmath>

#include <gmock/gmock.h>

using testing::ContainsRegex;
using testing::HasSubstr;

namespace {

/// Louder than the noise added to prevent denormals.
constexpr float kAudible = 1e-6f;

size_t firstAudible(const Sound &sound)
{
    const auto found = std::ranges::find_if(sound.samples, [](float x) { return std::abs(x) > kAudible; });
    return static_cast<size_t>((found - sound.samples.begin()) / sound.info.channels);
}

using Render = Sandbox;

TEST_F(Render, OutputIsAlignedWithTheInputToTheSample)
{
    constexpr uint32_t kFrames = 3000;
    for (const int rate : {8000, 44100, 192000})
        for (const uint32_t at : {0u, 777u, kFrames - 1}) {
            SCOPED_TRACE(testing::Message() << at << " at " << rate);
            const bool stereo = at != 777;
            Audio click = Signals::silence(kFrames);
            click.left[at] = click.right[at] = 0.5f;
            write("in.wav", kWavFloat, rate, stereo ? click : Signals::mono(click));
            succeed("render in.wav out.wav --block 97");
            const Sound out = read("out.wav");
            EXPECT_EQ(kFrames, out.info.frames);
            EXPECT_EQ(rate, out.info.samplerate);
            EXPECT_EQ(stereo ? 2 : 1, out.info.channels);
            EXPECT_EQ(at, firstAudible(out));
        }
}

TEST_F(Render, UncompensatedOutputStartsWithTheDelay)
{
    Audio click = Signals::silence(2000);
    click.left[10] = 0.5f;
    write("in.wav", kWavFloat, 48000, click);
    succeed("render in.wav out.wav --no-compensate");
    EXPECT_EQ(2000, read("out.wav").info.frames);
    EXPECT_EQ(10u + 309u, firstAudible(read("out.wav")));
}

TEST_F(Render, NeutralAndBypassedChainsAreBitExactForIntegerFiles)
{
    const std::pair<std::string, int> formats[] = {{"a.wav", kWav16},
                                                   {"b.wav", kWav24},
                                                   {"c.aiff", SF_FORMAT_AIFF | SF_FORMAT_PCM_S8},
                                                   {"d.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_24}};
    for (const auto &[name, format] : formats) {
        write(name, format, 32000, Signals::noise(7, 20000, 0.0));
        // the first settings are neutral: with all cutoffs above Nyquist, one band passes unfiltered
        for (const char *settings : {" --set 'Crossover High Cutoff=20000' --set 'Crossover Mid Cutoff=20000'"
                                     " --set 'crossover low cutoff=20000 Hz' --set 'Limiter Bypass=on'",
                                     " --set 'Global Bypass=on'"}) {
            succeed("render " + name + " out-" + name + settings);
            EXPECT_EQ(read(name).samples, read("out-" + name).samples) << name << settings;
        }
    }
}

TEST_F(Render, SampleFormatIsKeptIfTheContainerSupportsIt)
{
    const struct {
        int in;
        const char *out;
        int expected;
    } cases[] = {{kWav16, "o.wav", kWav16},
                 {kWav24, "o.WAV", kWav24},
                 {kWav24, "o.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_24},
                 {kWav16, "o.aiff", SF_FORMAT_AIFF | SF_FORMAT_PCM_16},
                 {kWavFloat, "o.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_24},
                 {SF_FORMAT_WAV | SF_FORMAT_DOUBLE, "o.w64", SF_FORMAT_W64 | SF_FORMAT_DOUBLE},
                 {SF_FORMAT_WAV | SF_FORMAT_PCM_U8, "o.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_S8},
                 {kWav16, "o.ogg", SF_FORMAT_OGG | SF_FORMAT_VORBIS},
                 {SF_FORMAT_OGG | SF_FORMAT_VORBIS, "o.wav", kWav24}};
    for (const auto &[in, out, expected] : cases) {
        write("in.any", in, 44100, Signals::music(5, 44100, 20000, -6.0));
        succeed(std::string("render in.any ") + out);
        EXPECT_EQ(expected, read(out).info.format) << out;
        EXPECT_EQ(20000, read(out).info.frames) << out;
    }
}

TEST_F(Render, ReportsClippedSamplesOnlyIfThereAreAny)
{
    write("in.wav", kWavFloat, 44100, Signals::sine(44100, 1000.0, 44100, 0.0));
    const std::string louder = " --set 'Limiter Bypass=yes' --set Gain=+6";
    EXPECT_THAT(succeed("render in.wav out.wav" + louder), ContainsRegex("Sample peak +0.0 dBFS"));
    const Program::Outcome clipped = run("render in.wav out.flac" + louder);
    EXPECT_EQ(0, clipped.exitCode);
    EXPECT_THAT(clipped.err, HasSubstr("were clipped"));
    const Sound out = read("out.flac");
    for (size_t i = 1; i < static_cast<size_t>(out.info.frames); ++i)
        ASSERT_LT(std::abs(out.at(i) - out.at(i - 1)), 1.0f) << "a sample wrapped around";
}

TEST_F(Render, ZeroesAndReportsNanAndInfiniteSamples)
{
    Audio audio = Signals::sine(44100, 300.0, 20000, -12.0);
    audio.left[5000] = std::nanf("");
    audio.right[9000] = INFINITY;
    write("in.wav", kWavFloat, 44100, audio);
    const Program::Outcome outcome = run("render in.wav out.wav");
    EXPECT_EQ(0, outcome.exitCode);
    EXPECT_THAT(outcome.err, HasSubstr("2 input samples"));
    for (const float sample : read("out.wav").samples) ASSERT_TRUE(std::isfinite(sample));
}

TEST_F(Render, WarnsInOneLineAboutCloseCutoffs)
{
    write("in.wav", kWav16, 44100, Signals::noise(2, 5000, -20.0));
    const Program::Outcome outcome = run("render in.wav out.wav --set 'Crossover Low Cutoff=1000'");
    EXPECT_EQ(0, outcome.exitCode);
    EXPECT_THAT(outcome.err,
                HasSubstr("'Crossover Low Cutoff' (1000 Hz) and 'Crossover Mid Cutoff' (2000 Hz) are less "
                          "than two octaves apart"));
    EXPECT_EQ(1, std::count(outcome.err.begin(), outcome.err.end(), '\n'));
}

TEST_F(Render, MemoryUseDoesNotDependOnTheLength)
{
    if (SANITIZED) GTEST_SKIP() << "sanitizers use additional memory";
    constexpr int kRate = 8000;
    constexpr long kLimitKiB = 64 * 1024, kGrowthKiB = 2048;
    long peaks[2];
    for (int i = 0; i < 2; ++i) {
        const uint32_t frames = static_cast<uint32_t>(kRate) * (i == 0 ? 60 : 900);
        write("in.wav", kWav16, kRate, Signals::noise(4, frames, -10.0));
        const Program::Outcome outcome = run("render in.wav out.flac --report report.png");
        EXPECT_EQ(0, outcome.exitCode);
        EXPECT_LT(outcome.peakKiB, kLimitKiB);
        peaks[i] = outcome.peakKiB;
    }
    EXPECT_LT(peaks[1], peaks[0] + kGrowthKiB);
}

} // namespace
