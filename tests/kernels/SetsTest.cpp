#include "dsp/kernels/Kernels.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace DSP::Kernels;

struct Block {
    alignas(32) float samples[128];
};

/// Sound in which, if asked, values stand in which an implementation may go its own way.
template <int blocks>
void fill(Block (&target)[blocks], std::mt19937 &random, bool odd)
{
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    const float values[] = {0.f,   -0.f,   1.f,       1e-40f,     -1e-42f,
                            3e38f, -3e38f, kInfinity, -kInfinity, std::nanf("")};
    for (Block &block : target)
        for (float &sample : block.samples)
            sample = odd && random() % 8 == 0 ? values[random() % 10] : float(int32_t(random())) * 0x1p-31f;
}

struct States {
    FilterBankState bank{};
    DynamicsState dynamics{};
    MinimumLadder ladder{};
    float envelope = 0, followed = 1, smoothed = 1, held = 1;
};

/// All that the kernels of a set write, block after block; any NaN counts as 7.
std::vector<float> transcript(const Table &set, bool odd)
{
    std::vector<float> heard;
    const auto hear = [&](const float *values, int count) {
        for (int i = 0; i < count; ++i) heard.push_back(std::isnan(values[i]) ? 7 : values[i]);
    };
    std::mt19937 random{5};
    States states;
    FilterBankCoeffs bank;
    for (FilterPair *pair : {&bank.outer, &bank.inner, &bank.second})
        for (int i = 0; i < 4; ++i)
            pair->a1[i] = -1.1 - 0.1 * i, pair->a2[i] = 0.4 + 0.05 * i, pair->gain[i] = 0.1f;
    DynamicsCoeffs dynamics{};
    for (int band = 0; band < 4; ++band) {
        dynamics.threshold[band] = 0.1f * float(band + 1);
        dynamics.exponent[band] = -0.2f * float(band + 1);
        dynamics.attackComplement[band] = 0.1f;
        dynamics.releaseComplement[band] = 1 - (dynamics.releaseCoeff[band] = 0.99f);
        dynamics.smoothCoeff[band] = 0.8f;
    }
    dynamics.envelopeDecay = 0.995f;
    const MaximizerFollower follower = {0.9f, 0.1f, 0.99f, 0.01f};

    for (int round = 0; round < 200; ++round) {
        if (odd) states = {}; // what is no number would stay
        Block in[8], out[8];
        fill(in, random, odd);
        fill(out, random, odd);
        const int frames = 1 + int(random() % 64);
        float *a = in[0].samples, *b = in[1].samples, *c = out[0].samples, *d = out[1].samples;

        FilterBankOutput bands = {{}, {}, a, b};
        for (int i = 0; i < 4; ++i) bands.left[i] = out[i].samples, bands.right[i] = out[4 + i].samples;
        set.crossOver.split(bank, states.bank, a, b, bands, frames);
        const bool within = set.crossOver.isWithin(states.bank, 10);
        for (Block &block : out) hear(block.samples, frames);

        DynamicsPeaks peaks;
        float *gains[4], *sound[2] = {out[4].samples, out[5].samples},
                         *lines[2] = {in[6].samples + 40, in[7].samples + 40};
        for (int i = 0; i < 4; ++i) gains[i] = out[i].samples;
        const float *left[4] = {a, b, nullptr, in[2].samples},
                    *right[4] = {b, nullptr, nullptr, in[3].samples};
        set.dynamics.computeGains(dynamics, states.dynamics, left, right, gains, peaks, frames);
        for (const float *gain : gains) hear(gain, frames);
        hear(peaks.left, 12);
        const float *guards[2] = {in[4].samples, in[5].samples};
        set.dynamics.applyGains(sound, lines, guards, 2, 37, gains[0], 1.5f, frames);
        for (int side = 0; side < 2; ++side) hear(sound[side], frames), hear(lines[side], frames);

        set.maximizer.detect(a, b, 0.99f, states.envelope, c, frames);
        hear(c, frames);
        set.maximizer.softGains(0.3f, -0.9f, follower, 0.8f, states.followed, states.smoothed, c, frames);
        hear(c, frames);
        set.maximizer.holdingGains(0.5f, a, frames);
        set.maximizer.slidingMinimum(states.ladder, a, frames);
        hear(a, frames);
        set.maximizer.followMinimum(follower, states.held, a, frames);
        set.maximizer.weightedSum(b, in[2].samples + 64, d, frames);
        set.maximizer.apply(in[3].samples, d, 0.7f, b, frames);
        for (const float *values : {a, b, d}) hear(values, frames);

        const float *sources[4] = {a, b, c, in[4].samples};
        set.block.sum(sources, 1 + round % 4, in[5].samples, frames);
        set.block.monoMix(in[6].samples, round % 2 ? b : nullptr, c, in[7].samples, frames);
        set.block.add(a, b, frames);
        set.block.multiply(in[6].samples, c, frames);
        set.block.scale(0.3f, d, frames);
        set.power.power(in[2].samples, -1.0f + 0.01f * float(round), out[6].samples, frames);
        const float found[] = {set.block.peak(a, frames), set.block.least(a, 0.5f, frames), float(within),
                               float(set.block.silenceGarbage(a, 2, frames))};
        for (const float *values : {in[5].samples, in[7].samples, out[6].samples, a, b, c, d})
            hear(values, frames);
        hear(found, 4);
    }
    return heard;
}

/// What each value must be, the tests of the stages say; they run with the best set only.
TEST(Sets, WriteTheSameBits)
{
    for (const bool odd : {false, true}) {
        const std::vector<float> expected = transcript(*available().front(), odd);
        for (const Table *set : available()) {
            const std::vector<float> heard = transcript(*set, odd);
            ASSERT_EQ(heard.size(), expected.size());
            for (size_t i = 0; i < heard.size(); ++i)
                ASSERT_TRUE(heard[i] == expected[i] && std::signbit(heard[i]) == std::signbit(expected[i]))
                    << set->name << ", value " << i << ": " << heard[i] << " for " << expected[i];
        }
    }
}

TEST(Sets, FallBackToTheBestForAnUnknownWish)
{
    const Table &best = *available().back();
    for (const char *wish : {static_cast<const char *>(nullptr), "", "avx9000"})
        EXPECT_EQ(&choose(wish), &best);
    for (const Table *table : available()) EXPECT_EQ(&choose(table->name), table);
}

} // namespace
