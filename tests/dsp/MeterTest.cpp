#include <array>
#include <cmath>
#include <gtest/gtest.h>

#include "dsp/Gain.h"
#include "dsp/meter/Level.h"
#include "dsp/meter/Spectrum.h"
#include "tests/dsp/FakePlugin.h"
#include "tests/reference/Level.h"
#include "tests/reference/Spectrum.h"
#include "tests/signals/Blocks.h"
#include "tests/signals/Compare.h"

namespace {

using Signals::Random;

class MeterSeeds : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(All, MeterSeeds, testing::Range(0, 32));

TEST_P(MeterSeeds, LevelHoldsAndFallsExactlyAsTheReference)
{
    Random random(GetParam());
    auto audio = Signals::any(random.next(), 44100, 100000).audio;
    if (random.chance(0.3)) audio.right.clear();
    for (uint32_t i = 0; i < 50; ++i) audio.left[random.below(100000)] = std::nanf("");
    FakePlugin plugin;
    DSP::Meter::Level level(plugin);
    Reference::Level reference;
    const double reading = random.pick(std::array{0.0, 0.02, 0.5});
    uint32_t from = 0;
    for (uint32_t frames : cutIntoBlocks(random, audio.frames())) {
        const float *left = audio.left.data() + from,
                    *right = audio.stereo() ? audio.right.data() + from : nullptr;
        level.measure(frames, left, right);
        reference.measure(frames, left, right);
        if (random.chance(0.001)) {
            level.suspend();
            reference.reset();
        }
        if (random.chance(reading)) {
            float peak[2], held[2];
            level.read(peak[0], peak[1], held[0], held[1]);
            for (int channel = 0; channel < 2; ++channel)
                ASSERT_EQ(std::pair(peak[channel], held[channel]), reference.read(channel))
                    << "frame " << from;
        }
        from += frames;
    }
}

TEST(Meter, APeakIsHeldForAFixedNumberOfSamples)
{
    FakePlugin plugin;
    DSP::Meter::Level level(plugin);
    const auto heldAfter = [&](const std::vector<float> &samples) {
        float peak[2], held[2];
        level.measure(static_cast<uint32_t>(samples.size()), samples.data(), nullptr);
        level.read(peak[0], peak[1], held[0], held[1]);
        EXPECT_EQ(held[0], held[1]);
        return held[0];
    };
    EXPECT_EQ(heldAfter({-0.5f}), 0.5f);
    EXPECT_EQ(heldAfter(std::vector<float>(17640)), 0.5f);
    EXPECT_EQ(heldAfter({0}), 0);
}

TEST(Meter, SpectrumTakesTheChainsGuardAway)
{
    for (bool guarded : {false, true}) {
        Rig<DSP::Meter::Spectrum> rig(String("Band 1 Spectrum"));
        std::vector<float> samples(4096), magnitudes(DSP::Meter::Spectrum::kMostMagnitudes);
        for (uint32_t i = 0; guarded && i < 4096; ++i) samples[i] = 1e-10f * Reference::guardSign(uint8_t(i));
        for (uint32_t from = 0; from < 4096; from += 100)
            rig->feed(std::min(100u, 4096 - from), samples.data() + from, nullptr);
        uint32_t count = 0;
        ASSERT_TRUE(rig->readSpectrum(magnitudes.data(), count));
        const double peak = peakOf(magnitudes);
        EXPECT_TRUE(guarded ? peak == 0 : peak > 5e-11 && peak < 1e-10) << peak;
    }
}

TEST(Meter, SpectrumSizeSuitsTheRate)
{
    Rig<DSP::Meter::Spectrum> rig(String("Band 1 Spectrum"));
    constexpr std::pair<uint32_t, uint32_t> rows[] = {{8000, 0},  {10999, 0}, {11000, 1}, {21999, 1},
                                                      {22000, 2}, {37999, 2}, {38000, 3}, {192000, 3}};
    for (const auto &[hz, size] : rows) {
        rig->setSampleRate(hz);
        EXPECT_EQ(rig->getWindowSize(), size) << hz;
    }
    rig->setWindowSize(4);
    rig->setSampleRate(192000);
    EXPECT_EQ(rig->getWindowSize(), 4u) << "no new rate, no new choice";
}

TEST_P(MeterSeeds, SpectrumMatchesTheReference)
{
    Random random(GetParam());
    Rig<DSP::Meter::Spectrum> rig(String("Band 1 Spectrum"));
    Reference::Spectrum reference;
    const auto chooseSettings = [&] {
        const Reference::SpectrumSettings settings = Reference::drawSpectrum(random);
        // one setter at a time: each starts the frame anew
        rig->setWindowSize(settings.size);
        rig->setOverlap(settings.overlap);
        rig->setWindowType(settings.window);
        reference.set(settings);
    };
    const uint32_t rate = drawRate(random);
    const auto resume = [&] {
        rig.resume(rate);
        reference.reset();
        reference.setSampleRate(rate);
        EXPECT_EQ(rig->getWindowSize(), reference.getSettings().size);
    };
    resume();
    if (random.chance(0.7)) chooseSettings();
    auto audio = Signals::any(random.next(), rate, 50000).audio;
    if (random.chance(0.3)) audio.right.clear();
    const double scale = std::max(1.0, peakOf(audio));
    const double reading = random.pick(std::array{0.01, 0.3, 1.0});

    uint32_t from = 0;
    std::vector<float> magnitudes(DSP::Meter::Spectrum::kMostMagnitudes);
    for (uint32_t frames : cutIntoBlocks(random, audio.frames())) {
        const float *left = audio.left.data() + from,
                    *right = audio.stereo() ? audio.right.data() + from : nullptr;
        rig->feed(frames, left, right);
        reference.feed(frames, left, right);
        if (random.chance(0.02)) chooseSettings();
        if (random.chance(0.02)) resume();
        from += frames;
        if (random.chance(reading)) {
            uint32_t count = 1;
            const bool fresh = rig->readSpectrum(magnitudes.data(), count);
            const auto expected = reference.read();
            ASSERT_EQ(fresh, expected.has_value()) << "frame " << from;
            ASSERT_EQ(count, expected ? expected->size() : 0);
            if (!expected) continue;
            ASSERT_LT(differenceOf(std::span(magnitudes.data(), count), *expected), 1e-6 * scale)
                << "frame " << from;
        }
    }
}

TEST(Meter, GainMultipliesAndKeepsToItsRange)
{
    Rig<DSP::Gain> rig;
    const Audio input = Signals::noise(1, 1000, 0);
    for (const auto &[wanted, stored] :
         {std::pair{24.0f, 18.0f}, {-30.0f, -18.0f}, {3.5f, 3.5f}, {0.0f, 0.0f}}) {
        rig->setGain(wanted);
        EXPECT_EQ(rig->gain(), stored);
        Audio output = input;
        rig.run(1000, output.left.data(), nullptr);
        const float factor = Reference::linear(stored);
        for (uint32_t i = 0; i < 1000; ++i) ASSERT_EQ(output.left[i], input.left[i] * factor);
        EXPECT_EQ(output.right, input.right) << "mono";
    }
}

} // namespace
