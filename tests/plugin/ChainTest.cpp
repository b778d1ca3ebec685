#include <array>
#include <cmath>
#include <gtest/gtest.h>

#include "tests/plugin/TestPlugin.h"
#include "tests/reference/Chain.h"
#include "tests/signals/Blocks.h"
#include "tests/signals/Compare.h"

namespace {

using Reference::Settings;
using Signals::Random;
using Signals::slice;

/// Samples by which the analysis of each band's spectrum follows that of the band below.
constexpr uint32_t kSpectrumStagger = 64;

void compareSpectra(TestPlugin &plugin, Reference::Chain &reference, double scale)
{
    std::vector<float> magnitudes(DSP::Meter::Spectrum::kMostMagnitudes);
    for (uint32_t b = 0; b < 4; ++b) {
        uint32_t count = 0;
        const bool fresh = plugin.transformHandle().spectrum(b)->readSpectrum(magnitudes.data(), count);
        const auto expected = reference.spectra[b].read();
        EXPECT_EQ(fresh, expected.has_value()) << "band " << b;
        if (!fresh || !expected) continue;
        EXPECT_LT(differenceOf(std::span(magnitudes.data(), count), *expected),
                  2 * (1e-6 + reference.doubt()) * scale)
            << "band " << b;
    }
}

void compareMeters(TestPlugin &plugin, Reference::Chain &reference, double scale)
{
    const double close = (1e-6 + reference.doubt()) * scale;
    const TransformHandle &chain = plugin.transformHandle();
    float peak[2], held[2];
    chain.level()->read(peak[0], peak[1], held[0], held[1]);
    // how long a peak is held depends on the last bit of peaks that are alike, so it is compared elsewhere
    for (int channel = 0; channel < 2; ++channel)
        EXPECT_NEAR(peak[channel], reference.level.read(channel).first, close);
    EXPECT_NEAR(chain.maximizer()->readGainReduction(), reference.maximizer.readGainReduction(),
                1e-6 + reference.doubt());
    for (int b = 0; b < 4; ++b) {
        const auto band = static_cast<uint32_t>(b);
        EXPECT_NEAR(chain.dynamics()->readGainReduction(band), reference.dynamics.readGainReduction(b),
                    1e-6 + reference.doubt());
        float left, right, expectedLeft, expectedRight;
        chain.dynamics()->readPeaks(band, left, right);
        reference.dynamics.readPeaks(b, expectedLeft, expectedRight);
        EXPECT_NEAR(left, expectedLeft, 1e-6 * scale);
        EXPECT_NEAR(right, expectedRight, 1e-6 * scale);
    }
}

class ChainSeeds : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(All, ChainSeeds, testing::Range(0, seedCount(32)));

TEST_P(ChainSeeds, MatchesTheReferenceThroughEveryChange)
{
    Random random(GetParam());
    TestPlugin plugin;
    Reference::Chain reference(kSpectrumStagger);
    const auto resume = [&](uint32_t rate) {
        plugin.resume(rate);
        reference.resume(rate);
        EXPECT_EQ(plugin.latency(), reference.latency());
    };
    const auto chooseSettings = [&] {
        Settings settings = Reference::draw(random);
        settings.bypass = random.chance(0.1);
        plugin.apply(settings);
        reference.set(settings);
    };
    const uint32_t rate = drawRate(random);
    if (random.chance(0.9)) chooseSettings();
    resume(rate);
    auto [name, audio] = Signals::any(random.next(), rate, 30000);
    if (random.chance(0.3)) audio = Signals::mono(audio);
    const std::vector<uint32_t> blocks = cutIntoBlocks(random, audio.frames());
    const double changes = random.pick(std::array{0.0, 3.0, 20.0}) / static_cast<double>(blocks.size());
    SCOPED_TRACE(name + (audio.stereo() ? ", stereo at " : ", mono at ") + std::to_string(rate));

    const double scale = 8 * std::max(1.0, peakOf(audio)); // bands may be lifted by 18 dB
    Audio actual, expected;
    for (uint32_t frames : blocks) {
        if (random.chance(changes)) chooseSettings();
        if (random.chance(changes / 10)) resume(drawRate(random));
        const Audio block = slice(audio, actual.frames(), frames);
        actual = Signals::append(std::move(actual), plugin.process(block));
        expected = Signals::append(std::move(expected), reference.process(block));
        if (!random.chance(0.1)) continue;
        SCOPED_TRACE(actual.frames());
        compareSpectra(plugin, reference, scale);
        compareMeters(plugin, reference, scale);
        if (HasFailure()) return;
    }
    EXPECT_LT(errorDb(actual, expected, peakOf(audio)), std::max(-120.0, toDb(512 * reference.doubt())));
}

TEST_P(ChainSeeds, DoesNotDependOnHowTheAudioIsCut)
{
    Random random(GetParam());
    const uint32_t rate = drawRate(random), frames = 20000;
    const Settings settings = Reference::draw(random);
    Audio audio = Signals::any(random.next(), rate, frames).audio;
    if (random.chance(0.3)) audio = Signals::mono(audio);
    TestPlugin whole(settings, rate), cut(settings, rate);
    if (random.chance(0.5)) { // meters are no part of the sound
        cut.transformHandle().global()->setMeterEnable(false);
        for (TestPlugin *plugin : {&whole, &cut}) plugin->resume(rate);
    }
    const Audio expected = whole.process(audio);
    Audio actual;
    for (uint32_t block : cutIntoBlocks(random, frames)) {
        const Audio part = slice(audio, actual.frames(), block);
        actual = Signals::append(std::move(actual), cut.process(part));
    }
    EXPECT_EQ(actual, expected);
}

TEST_P(ChainSeeds, BrickwallNeverPassesTheCeilingAndSoundStaysInItsChannel)
{
    Random random(GetParam());
    Settings settings = Reference::draw(random);
    settings.maximizer.brickwall = true;
    settings.maximizer.bypass = settings.processAsMono = false;
    const uint32_t rate = drawRate(random);
    TestPlugin plugin(settings, rate);
    Audio audio = Signals::hostile(random.next(), rate, 60000);
    const bool leftOnly = random.chance(0.5);
    auto &still = leftOnly ? audio.right : audio.left;
    std::fill(still.begin(), still.end(), 0.0f);
    const Audio output = plugin.process(audio, 441);
    EXPECT_LT(toDb(peakOf(output)), settings.maximizer.marginDb + settings.gainDb + 0.001);
    EXPECT_LT(peakOf(leftOnly ? output.right : output.left), 1e-5) << "the guard, lifted by at most 92 dB";
}

/// Largest fourth difference in dB: a click stands out of a low tone, whose own is next to nothing. Two cutoffs climb
/// four octaves in a second, moved before every block.
double sharpestCornerOfSweep(uint32_t blockFrames)
{
    constexpr uint32_t rate = 44100;
    const Audio tone = Signals::sine(rate, 440, rate, -12);
    TestPlugin plugin({}, rate);
    Audio output;
    while (output.frames() < rate) {
        const auto hz = static_cast<float>(100 * std::exp2(4.0 * output.frames() / rate));
        plugin.transformHandle().crossOver()->setCutoff(0, hz);
        plugin.transformHandle().crossOver()->setCutoff(1, 2 * hz + 1000);
        const Audio block = slice(tone, output.frames(), std::min(blockFrames, rate - output.frames()));
        output = Signals::append(std::move(output), plugin.process(block));
    }
    const std::vector<float> &x = output.left;
    double most = 0;
    for (size_t i = rate / 10; i < x.size(); ++i)
        most = std::max(most, std::fabs(x[i] - 4.0 * x[i - 1] + 6.0 * x[i - 2] - 4.0 * x[i - 3] + x[i - 4]));
    return toDb(most);
}

TEST(Chain, SweptCutoffsDoNotClick)
{
    EXPECT_GT(sharpestCornerOfSweep(16), -10) << "blocks shorter than the fade show what a click measures";
    for (uint32_t blockFrames : {64u, 441u})
        EXPECT_LT(sharpestCornerOfSweep(blockFrames), -45) << "blocks of " << blockFrames;
}

TEST(Chain, SilenceStaysSilence)
{
    for (uint32_t rate : {44100u, 192000u})
        for (bool brickwall : {false, true}) {
            Settings settings;
            settings.maximizer.brickwall = brickwall;
            TestPlugin plugin(settings, rate);
            const Audio silence = Signals::silence(rate / 2);
            EXPECT_LT(peakOf(plugin.process(silence, 512)), 3e-9);
            plugin.process(Signals::music(1, rate, rate / 4, -1), 512);
            plugin.process(silence, 512);
            EXPECT_LT(peakOf(plugin.process(silence, 512)), 3e-9) << rate;
        }
}

TEST_P(ChainSeeds, ResetLeavesNothingOfTheSoundBehind)
{
    Random random(GetParam());
    const uint32_t rate = drawRate(random);
    const Settings settings = Reference::draw(random);
    TestPlugin used(settings, rate), fresh(settings, rate);
    used.process(Signals::hostile(GetParam(), rate, 20000), 441);
    switch (random.below(3)) {
    case 0: used.resetChain(); break;
    case 1: used.resume(rate); break;
    default:
        used.transformHandle().global()->setBypass(true);
        used.process(Signals::noise(1, 1000, 0));
        used.transformHandle().global()->setBypass(false);
    }
    fresh.process(Signals::silence(16)); // folds to mono, if it is to
    fresh.resume(rate);
    const Audio audio = Signals::any(random.next(), rate, 20000).audio;
    EXPECT_EQ(used.process(audio, 512), fresh.process(audio, 512));
    float a[4], b[4];
    used.transformHandle().level()->read(a[0], a[1], a[2], a[3]);
    fresh.transformHandle().level()->read(b[0], b[1], b[2], b[3]);
    EXPECT_TRUE(std::equal(a, a + 4, b));
}

} // namespace
