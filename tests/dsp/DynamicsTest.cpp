#include "dsp/stages/Dynamics.h"

#include <array>
#include <gtest/gtest.h>

#include "tests/dsp/Apply.h"
#include "tests/dsp/FakePlugin.h"
#include "tests/reference/Dynamics.h"
#include "tests/signals/Blocks.h"
#include "tests/signals/Compare.h"

namespace {

using Reference::BandSettings;
using Signals::Random;

using BandAudio = std::array<Audio, 4>;

/// Runs one block through the four-band call or band by band. `bypassed` is a bit mask of bands to leave out.
void compress(Rig<DSP::Dynamics> &rig, BandAudio &bands, bool together, unsigned bypassed = 0)
{
    DSP::Bands pointers = {};
    for (uint32_t b = 0; b < 4; ++b) {
        if (bypassed >> b & 1) continue;
        pointers.left[b] = bands[b].left.data();
        pointers.right[b] = bands[b].rightOrNull();
        if (together) continue;
        rig->setBandIndex(b);
        rig.run({bands[b].frames(), pointers.left[b], pointers.right[b]});
    }
    Audio input{std::vector<float>(bands[0].frames(), 9), std::vector<float>(bands[0].frames(), 9)};
    const Audio before = input;
    if (together) rig.run({input.frames(), input.left.data(), input.right.data(), pointers});
    EXPECT_EQ(input, before) << "four-band call changed the input";
}

void compress(Reference::Dynamics &reference, BandAudio &bands, unsigned bypassed = 0)
{
    for (int b = 0; b < 4; ++b)
        if (!(bypassed >> b & 1))
            reference.process(b, bands[b].frames(), bands[b].left.data(), bands[b].rightOrNull());
}

BandAudio slice(const BandAudio &whole, uint32_t from, uint32_t frames)
{
    BandAudio part;
    for (int b = 0; b < 4; ++b) part[b] = Signals::slice(whole[b], from, frames);
    return part;
}

BandAudio drawAudio(Random &random, uint32_t rate, uint32_t frames)
{
    const bool stereo = random.chance(0.7);
    BandAudio bands;
    for (Audio &band : bands) {
        band = Signals::any(random.next(), rate, frames).audio;
        if (!stereo) band.right.clear();
    }
    return bands;
}

class DynamicsSeeds : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(All, DynamicsSeeds, testing::Range(0, seedCount(24)));

// At a ratio of 1 the power function is not used, so results are bit-exact. ChainTest covers other ratios.
TEST_P(DynamicsSeeds, IsBitExactAtUnityRatioThroughEveryChange)
{
    Random random(1000 + GetParam());
    Rig<DSP::Dynamics> rig;
    Reference::Dynamics reference;
    unsigned bypassed = 0;
    const auto chooseSettings = [&] {
        const bool solo = random.chance(0.3);
        for (int b = 0; b < 4; ++b) {
            BandSettings settings = Reference::drawBand(random);
            if (!solo) settings.solo = false;
            settings.ratio = 1, settings.gainDb = 0;
            apply(rig.component, b, settings);
            reference.set(b, settings);
        }
        bypassed = random.chance(0.2) ? random.below(15) : 0; // at least one band stays
    };
    chooseSettings();
    const uint32_t rate = rig.drawRate(random, reference);
    const BandAudio audio = drawAudio(random, rate, 30000);
    const double changes = random.pick(std::array{0.0, 0.05, 0.3});

    uint32_t from = 0;
    for (uint32_t frames : cutIntoBlocks(random, audio[0].frames())) {
        if (random.chance(changes)) chooseSettings();
        if (random.chance(changes / 20)) rig.drawRate(random, reference);
        ASSERT_EQ(rig->latency(), reference.latency());
        BandAudio actual = slice(audio, from, frames), expected = actual;
        compress(rig, actual, random.chance(0.7), bypassed); // both calls share their state
        compress(reference, expected, bypassed);
        for (uint32_t b = 0; b < 4; ++b) {
            ASSERT_EQ(actual[b], expected[b]) << "band " << b << " at " << rate << ", frame " << from;
            if (!random.chance(0.2)) continue;
            float left, right, expectedLeft, expectedRight;
            rig->readPeaks(b, left, right);
            reference.readPeaks(static_cast<int>(b), expectedLeft, expectedRight);
            ASSERT_EQ(left, expectedLeft);
            ASSERT_EQ(right, expectedRight);
        }
        from += frames;
    }
}

} // namespace
