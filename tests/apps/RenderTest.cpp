#include "tests/apps/Sandbox.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <malloc.h>

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
                                     " --set 'crossover low cutoff=20000 Hz' --set 'Limiter Bypass=on'"
                                     " --dither none",
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

TEST_F(Render, BitsAndLossyFormatsAreChosen)
{
    const struct {
        const char *call;
        int expected;
    } cases[] = {{"o.wav --bits 24", kWav24},
                 {"o.wav --bits float", kWavFloat},
                 {"o.aiff --bits 32", SF_FORMAT_AIFF | SF_FORMAT_PCM_32},
                 {"o.flac --bits 16", SF_FORMAT_FLAC | SF_FORMAT_PCM_16},
                 {"o.mp3", SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III},
                 {"o.opus", SF_FORMAT_OGG | SF_FORMAT_OPUS}};
    write("in.wav", kWav16, 48000, Signals::music(5, 48000, 20000, -1.0));
    for (const auto &[call, expected] : cases) {
        const std::string table = succeed(std::string("render in.wav ") + call);
        const std::string name(call, std::strcspn(call, " "));
        EXPECT_EQ(expected, read(name).info.format) << call;
        const bool isLossy = name == "o.mp3" || name == "o.opus";
        EXPECT_EQ(isLossy, table.find("True peak, encoded") != std::string::npos) << table;
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

TEST_F(Render, MemoryUseDoesNotDependOnTheLength)
{
    if (SANITIZED) GTEST_SKIP() << "sanitizers use additional memory";
    constexpr int kRate = 8000;
    constexpr long kLimitKiB = 64 * 1024, kGrowthKiB = 2048;
    long peaks[2];
    for (int i = 0; i < 2; ++i) {
        const uint32_t frames = static_cast<uint32_t>(kRate) * (i == 0 ? 60 : 900);
        write("in.wav", kWav16, kRate, Signals::noise(4, frames, -10.0));
        malloc_trim(0); // the system counts the test's own memory as the program's until it starts
        const Program::Outcome outcome = run("render in.wav out.flac --report report.png");
        EXPECT_EQ(0, outcome.exitCode);
        EXPECT_LT(outcome.peakKiB, kLimitKiB);
        peaks[i] = outcome.peakKiB;
    }
    EXPECT_LT(peaks[1], peaks[0] + kGrowthKiB);
}

TEST_F(Render, FiguresDescribeTheWrittenFile)
{
    write("in.wav", kWavFloat, 44100, Signals::noise(1, 44100, 6.0));
    const std::string call = "render in.wav out.wav --set 'Limiter Bypass=on'";
    EXPECT_THAT(succeed(call), ContainsRegex("Sample peak +6.0 dBFS +12.7 dBFS"));
    write("in.wav", kWav16, 44100, Signals::noise(1, 44100, 0.0));
    EXPECT_THAT(run(call + " --set Gain=6").out, ContainsRegex("Sample peak +0.0 dBFS +0.0 dBFS"));
}

TEST_F(Render, OneHugeSampleSpoilsNeitherTheFiguresNorTheDryFile)
{
    Audio sound = Signals::noise(1, 44100, -12.0);
    sound.left[20000] = 1e30f;
    write("in.wav", kWavFloat, 44100, sound);
    EXPECT_THAT(run("render in.wav out.wav --dry dry.wav").out,
                ContainsRegex("Sample peak +-1[12]\\.[0-9] dBFS"));
    for (const float sample : read("dry.wav").samples) ASSERT_LT(std::abs(sample), 1.0f);
}

TEST_F(Render, ExcerptEqualsThatPartOfTheWholeFile)
{
    write("in.wav", kWavFloat, 44100, Signals::music(1, 44100, 44100 * 16, -3.0));
    const std::string settings = " --set 'Band 2 Comp Threshold=-30' --set 'Band 2 Ratio=4'";
    succeed("render in.wav whole.wav" + settings);
    succeed("render in.wav part.wav --start 12.5 --length 2 --dry dry.wav" + settings);
    const Sound whole = read("whole.wav"), part = read("part.wav");
    ASSERT_EQ(2 * 44100, part.info.frames);
    EXPECT_EQ(2 * 44100, read("dry.wav").info.frames);
    for (size_t i = 0; i < 2 * 44100; ++i)
        ASSERT_NEAR(whole.at(i + 12 * 44100 + 22050, 0), part.at(i, 0), 1e-5) << i;
    EXPECT_THAT(run("render in.wav part.wav --start 17").err, HasSubstr("--start 17 is after the end"));
}

TEST_F(Render, DifferenceUsesTheAlignedInput)
{
    write("in.wav", kWavFloat, 44100, Signals::music(1, 44100, 44100, -3.0));
    for (const size_t delay : {0, 305}) {
        succeed(std::string("render in.wav out.wav --set 'Band 2 Gain=6' --delta delta.wav") +
                (delay == 0 ? "" : " --no-compensate"));
        const Sound in = read("in.wav"), wet = read("out.wav"), delta = read("delta.wav");
        for (size_t i = delay; i < 44100; ++i)
            ASSERT_EQ(wet.at(i, 0) - in.at(i - delay, 0), delta.at(i, 0)) << i;
    }
}

TEST_F(Render, MixHasNoCancellation)
{
    write("in.wav", kWavFloat, 44100, Signals::music(1, 44100, 44100, -9.0));
    const std::string settings =
        "render in.wav out.wav --set 'Band 2 Comp Threshold=-40' --set 'Band 2 Ratio=9'"
        " --set 'Limiter Bypass=on'";
    succeed(settings);
    const Sound wet = read("out.wav");
    succeed(settings + " --set 'Band 2 Bypass=on'");
    const Sound dry = read("out.wav");
    succeed(settings + " --mix 25%");
    const Sound mixed = read("out.wav");
    for (size_t i = 0; i < 44100; ++i)
        ASSERT_NEAR(0.25f * wet.at(i, 0) + 0.75f * dry.at(i, 0), mixed.at(i, 0), 1e-6) << i;
    EXPECT_EQ(2, run("render in.wav out.wav --mix 50 --loudness -20").exitCode);
}

TEST_F(Render, OutputKeepsModeLinksAndSymbolicLinks)
{
    namespace fs = std::filesystem;
    write("in.wav", kWav16, 44100, Signals::noise(1, 1000, -12.0));
    succeed("render in.wav expected.wav");
    for (const char *name : {"mode.wav", "linked.wav"}) writeText(name, "old");
    fs::permissions(pathOf("mode.wav"), fs::perms(0640));
    fs::create_hard_link(pathOf("linked.wav"), pathOf("other.wav"));
    fs::create_symlink("target.wav", pathOf("dangling.wav"));
    writeText(".tessarine-99999999-1.part", "of a killed process"); // no process has this number
    for (const char *name : {"mode.wav", "linked.wav", "dangling.wav"})
        succeed(std::string("render in.wav ") + name);
    for (const char *name : {"mode.wav", "linked.wav", "other.wav", "target.wav"})
        EXPECT_EQ(readBytes("expected.wav"), readBytes(name)) << name;
    EXPECT_EQ(fs::perms(0640), fs::status(pathOf("mode.wav")).permissions());
    EXPECT_EQ(2u, fs::hard_link_count(pathOf("linked.wav")));
    EXPECT_TRUE(fs::is_symlink(pathOf("dangling.wav")));
    EXPECT_EQ(0u, contents().count(".tessarine-99999999-1.part"));
}

TEST_F(Render, LossyCodecsBecome24BitsWhereTheContainerLacksThem)
{
    for (const auto &[name, format] : {std::pair{"in.mp3", SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III},
                                       {"in.opus", SF_FORMAT_OGG | SF_FORMAT_OPUS},
                                       {"in.ogg", SF_FORMAT_OGG | SF_FORMAT_VORBIS},
                                       {"in.gsm", SF_FORMAT_WAV | SF_FORMAT_GSM610}}) {
        write(name, format, 48000, Signals::mono(Signals::noise(1, 9600, -24.0)));
        succeed(std::string("render ") + name + " out.flac");
        EXPECT_EQ(SF_FORMAT_FLAC | SF_FORMAT_PCM_24, read("out.flac").info.format) << name;
        if (format == (SF_FORMAT_WAV | SF_FORMAT_GSM610)) continue; // WAV supports it
        succeed(std::string("render ") + name + " out.wav");
        EXPECT_EQ(kWav24, read("out.wav").info.format) << name;
    }
}

} // namespace
