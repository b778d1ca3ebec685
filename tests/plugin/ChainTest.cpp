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

/// Samples between the analyses of one band's spectrum and the next.
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
                  2 * (1e-6 + reference.roundingBound()) * scale)
            << "band " << b;
    }
}

void compareMeters(TestPlugin &plugin, Reference::Chain &reference, double scale)
{
    const double close = (1e-6 + reference.roundingBound()) * scale;
    const TransformHandle &chain = plugin.transformHandle();
    float peak[2], held[2];
    chain.level()->read(peak[0], peak[1], held[0], held[1]);
    // MeterTest compares the held peaks: their time depends on the last bit of similar peaks.
    for (int channel = 0; channel < 2; ++channel)
        EXPECT_NEAR(peak[channel], reference.level.read(channel).first, close);
    EXPECT_NEAR(chain.maximizer()->readGainReduction(), reference.maximizer.readGainReduction(),
                1e-6 + reference.roundingBound());
    for (int b = 0; b < 4; ++b) {
        const auto band = static_cast<uint32_t>(b);
        EXPECT_NEAR(chain.dynamics()->readGainReduction(band), reference.dynamics.readGainReduction(b),
                    1e-6 + reference.roundingBound());
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

    const double scale = 8 * std::max(1.0, peakOf(audio)); // up to 18 dB of make-up gain
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
    EXPECT_LT(errorDb(actual, expected, peakOf(audio)),
              std::max(-120.0, toDb(512 * reference.roundingBound())));
}

TEST_P(ChainSeeds, DoesNotDependOnBlockSizes)
{
    Random random(GetParam());
    const uint32_t rate = drawRate(random), frames = 20000;
    const Settings settings = Reference::draw(random);
    Audio audio = Signals::any(random.next(), rate, frames).audio;
    if (random.chance(0.3)) audio = Signals::mono(audio);
    TestPlugin whole(settings, rate), cut(settings, rate);
    if (random.chance(0.5)) { // meters must not affect the audio
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

TEST_P(ChainSeeds, BrickwallNeverExceedsTheCeilingOrMixesChannels)
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
    EXPECT_LT(peakOf(leftOnly ? output.right : output.left), 1e-5)
        << "denormal guard, amplified by up to 92 dB";
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

} // namespace
