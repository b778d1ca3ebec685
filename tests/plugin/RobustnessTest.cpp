#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

#include "tests/plugin/TestPlugin.h"
#include "tests/signals/Blocks.h"
#include "tests/signals/Compare.h"

namespace {

using Reference::Settings;
using Signals::Random;
using Signals::slice;

/// Expects both plug-ins to agree to -60 dB in the last second, as a 32-bit release never ends completely, and to be
/// bit-exact after resume().
void expectRecovery(TestPlugin &disturbed, TestPlugin &undisturbed, const Audio &audio)
{
    const uint32_t from = audio.frames() - 44100;
    const Audio actual = disturbed.process(audio, 4096), expected = undisturbed.process(audio, 4096);
    EXPECT_LT(errorDb(slice(actual, from, 44100), slice(expected, from, 44100)), -60);
    for (TestPlugin *plugin : {&disturbed, &undisturbed}) plugin->resume(44100);
    const Audio again = slice(audio, 0, 20000);
    EXPECT_EQ(disturbed.process(again, 4096), undisturbed.process(again, 4096));
}

class RobustnessSeeds : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(All, RobustnessSeeds, testing::Range(0, seedCount(6)));

TEST_P(RobustnessSeeds, InvalidSamplesAreZeroed)
{
    constexpr float infinity = std::numeric_limits<float>::infinity();
    constexpr std::array garbage = {std::numeric_limits<float>::quiet_NaN(), infinity, -infinity, 1e38f,
                                    -1e11f};
    Random random(GetParam());
    const uint32_t rate = drawRate(random);
    const Settings settings = Reference::draw(random);
    TestPlugin dirty(settings, rate), clean(settings, rate);
    Audio silenced = Signals::music(GetParam(), rate, 20000, -3), input = silenced;
    const bool flood = GetParam() % 2 == 0; // hits the last samples of blocks, too
    uint64_t count = 0;
    for (auto channel : {&Audio::left, &Audio::right})
        for (uint32_t i = 0; i < 15000; ++i) {
            if (!random.chance(flood ? 0.9 : 0.001)) continue;
            (input.*channel)[i] = random.pick(garbage);
            (silenced.*channel)[i] = 0;
            ++count;
        }
    EXPECT_EQ(dirty.process(input, 509), clean.process(silenced, 509)); // not a multiple of the SIMD width
    EXPECT_EQ(dirty.transformHandle().transformBase()->refusedSamples(), count);
}

TEST_P(RobustnessSeeds, RecoversFromTheLoudestSamples)
{
    Random random(100 + GetParam());
    Settings settings = Reference::draw(random);
    for (auto &band : settings.bands) band.releaseMs = std::min(band.releaseMs, 200.0f);
    TestPlugin disturbed(settings, 44100), undisturbed(settings, 44100);
    const Audio loudest = Signals::noise(GetParam(), 5000, random.pick(std::array{100.0, 199.9}));
    const Audio silence = Signals::silence(5000);
    const Audio output = disturbed.process(loudest, 512);
    EXPECT_LT(peakOf(output), HUGE_VAL);
    undisturbed.process(silence, 512);
    expectRecovery(disturbed, undisturbed, Signals::music(GetParam(), 44100, 4 * 44100, -3));
    float peak[2], held[2];
    disturbed.transformHandle().level()->read(peak[0], peak[1], held[0], held[1]);
    for (float value : {peak[0], peak[1], held[0], held[1]}) EXPECT_TRUE(std::isfinite(value));
}

TEST_P(RobustnessSeeds, RecoversFromOutOfRangeParameters)
{
    constexpr std::array absurd = {-3e38f, -1e6f, -1.0f, 0.0f, 1e-38f, 0.5f, 1e6f, 3e38f};
    Random random(200 + GetParam());
    TestPlugin plugin({}, 44100), fresh({}, 44100);
    const auto all = [&](auto &&value) {
        for (DSP::Component *component : plugin.componentList())
            for (uint32_t i = 0; i < component->numFloatParams(); ++i)
                component->setFloatParamValue(i, value(*component, i));
    };
    for (int turn = 0; turn < 20; ++turn) {
        all([&](const DSP::Component &component, uint32_t i) {
            return random.chance(0.3) ? random.pick(absurd) : component.floatParamDefault(i);
        });
        const Audio audio = Signals::noise(turn, 2000, 0);
        EXPECT_LT(peakOf(plugin.process(audio, random.chance(0.5) ? 64 : 512)), HUGE_VAL);
    }
    // Crossed cutoffs keep the previous filters; valid cutoffs replace them.
    all([](const DSP::Component &component, uint32_t i) { return component.floatParamDefault(i); });
    expectRecovery(plugin, fresh, Signals::noise(7, 4 * 44100, -10));
}

} // namespace
