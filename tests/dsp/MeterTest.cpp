#include <array>
#include <cmath>
#include <gtest/gtest.h>

#include "dsp/meter/Level.h"
#include "dsp/meter/Spectrum.h"
#include "tests/dsp/FakePlugin.h"
#include "tests/reference/Level.h"
#include "tests/reference/Settings.h"
#include "tests/signals/Blocks.h"
#include "tests/signals/Compare.h"

namespace {

using Signals::Random;

class MeterSeeds : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(All, MeterSeeds, testing::Range(0, seedCount(8)));

TEST_P(MeterSeeds, LevelMatchesTheReferenceExactly)
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

TEST(Meter, SpectrumRemovesTheDenormalGuard)
{
    for (bool guarded : {false, true}) {
        Rig<DSP::Meter::Spectrum> rig(String("Band 1 Spectrum"));
        std::vector<float> samples(4096), magnitudes(DSP::Meter::Spectrum::kMostMagnitudes);
        for (uint32_t i = 0; guarded && i < 4096; ++i) samples[i] = 1e-10f * Reference::guardSign(uint8_t(i));
        rig->feed(4096, samples.data(), nullptr);
        uint32_t count = 0;
        ASSERT_TRUE(rig->readSpectrum(magnitudes.data(), count));
        const double peak = peakOf(magnitudes);
        EXPECT_TRUE(guarded ? peak == 0 : peak > 5e-11 && peak < 1e-10) << peak;
    }
}

} // namespace
