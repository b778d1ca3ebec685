#include "dsp/stages/CrossOver.h"

#include <array>
#include <cmath>
#include <gtest/gtest.h>

#include "tests/dsp/FakePlugin.h"
#include "tests/reference/CrossOver.h"
#include "tests/reference/Settings.h"
#include "tests/signals/Blocks.h"
#include "tests/signals/Compare.h"

namespace {

using Signals::Random;
using Signals::slice;

/// Buffers for the four bands of a block.
struct Bands {
    explicit Bands(const Audio &like)
    {
        for (int b = 0; b < 4; ++b) {
            // not silence, so that a missing write fails the test
            audio[b] = {std::vector<float>(like.left.size(), 9.0f),
                        std::vector<float>(like.right.size(), 9.0f)};
            pointers.left[b] = audio[b].left.data();
            pointers.right[b] = like.stereo() ? audio[b].right.data() : nullptr;
        }
    }
    std::array<Audio, 4> audio;
    DSP::Bands pointers;
};

Bands split(Rig<DSP::CrossOver> &rig, Audio block)
{
    Bands bands(block);
    const Audio before = block;
    rig.run({block.frames(), block.left.data(), block.rightOrNull(), bands.pointers});
    EXPECT_EQ(block, before) << "input changed";
    return bands;
}

class CrossOverSeeds : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(All, CrossOverSeeds, testing::Range(0, seedCount(24)));

TEST_P(CrossOverSeeds, MatchesTheReferenceThroughEveryChange)
{
    Random random(GetParam());
    Rig<DSP::CrossOver> rig;
    Reference::CrossOver reference;
    const uint32_t rate = rig.drawRate(random, reference);
    auto [name, audio] = Signals::any(random.next(), rate, std::max(rate / 2, 20000u));
    if (random.chance(0.3)) audio = Signals::mono(audio);
    const double changes = random.pick(std::array{0.0, 0.1, 0.5});
    SCOPED_TRACE(name + " at " + std::to_string(rate));

    const double inputPeak = peakOf(audio);
    uint32_t from = 0;
    for (uint32_t frames : cutIntoBlocks(random, audio.frames())) {
        if (from == 0 || random.chance(changes)) {
            float hz[3];
            Reference::drawCutoffs(random, hz);
            for (int i = 0; i < 3; ++i) {
                rig->setCutoff(i, hz[i]);
                reference.setCutoff(i, hz[i]);
            }
        } else if (random.chance(changes)) { // unchanged cutoffs start no crossfade
            for (int i = 0; i < 3; ++i) rig->setCutoff(i, rig->cutoff(i));
        }
        if (random.chance(changes / 20)) rig.drawRate(random, reference);
        Audio block = slice(audio, from, frames);
        if (random.chance(changes / 5)) block.right.clear(); // the right channel's filters keep their state
        const Bands actual = split(rig, block);
        Bands expected(block);
        reference.process(frames, block.left.data(), block.rightOrNull(), expected.pointers.left,
                          expected.pointers.right);
        for (int b = 0; b < 4; ++b) {
            const double scale = std::max(inputPeak, peakOf(expected.audio[b]));
            ASSERT_LT(toDb(differenceOf(actual.audio[b], expected.audio[b]) / scale), -140)
                << "band " << b << " from " << from << ", " << frames << " frames";
        }
        from += frames;
    }
}

TEST(CrossOver, StaysFiniteAndRecoversFromExtremeCutoffs)
{
    // Close to Nyquist and far below 20 Hz the filters with rounded taps may be unstable.
    const Audio wild = Signals::noise(1, 60000, 0), audio = Signals::noise(2, 60000, 0);
    for (uint32_t rate : {8000u, 40001u, 1000000u})
        for (float hz :
             {std::nextafter(rate * 0.5f, 0.0f), rate * 0.49999f, rate * 0.4995f, 20.0f, 1e-30f, -5.0f}) {
            SCOPED_TRACE(testing::Message() << hz << " Hz at " << rate);
            Rig<DSP::CrossOver> rig, fresh;
            rig.resume(rate);
            fresh.resume(rate);
            rig->setCutoff(0, hz);
            for (int i : {1, 2}) rig->setCutoff(i, std::max(hz, rig->cutoff(i)));
            for (const Audio &band : split(rig, wild).audio) EXPECT_LT(peakOf(band), 1e13);
            for (int i = 0; i < 3; ++i) rig->setCutoff(i, DSP::CrossOver::kDefaultCutoffsHz[i]);
            split(rig, audio);
            split(fresh, audio);
            const Bands actual = split(rig, audio), expected = split(fresh, audio);
            for (int b = 0; b < 4; ++b) EXPECT_LT(errorDb(actual.audio[b], expected.audio[b]), -120);
        }
}

TEST(CrossOver, ResettingACutoffAlsoResetsCloseNeighbours)
{
    struct Row {
        std::array<float, 3> hz;
        uint32_t index;
        float minOctaves;
        std::vector<uint32_t> expected;
    };
    const Row rows[] = {
        {{200, 3000, 9000}, 1, 1, {1}},
        {{200, 1000, 2500}, 1, 1, {1, 2}}, // 2000 is less than an octave below 2500
        {{1500, 3000, 9000}, 1, 1, {0, 1}},
        {{9000, 11000, 20000}, 2, 0.2f, {0, 1, 2}}, // 10000 is below 11000, whose default is below 9000
        {{20, 20, 20}, 0, 1, {0, 1, 2}},
    };
    Rig<DSP::CrossOver> rig;
    for (const Row &row : rows) {
        for (int i = 0; i < 3; ++i) rig->setCutoff(i, row.hz[i]);
        std::vector<uint32_t> changed = {7};
        rig->defaultCutoffsFrom(row.index, changed, row.minOctaves);
        EXPECT_EQ(changed, row.expected)
            << row.hz[0] << ' ' << row.hz[1] << ' ' << row.hz[2] << ", " << row.index;
    }
}

} // namespace
