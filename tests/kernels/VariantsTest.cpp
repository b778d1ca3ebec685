#include "dsp/kernels/Kernels.h"

#include <algorithm>
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

/// Fills the blocks with noise. If `odd`, adds special values that implementations may treat differently.
template <int blocks>
void fill(Block (&target)[blocks], std::mt19937 &random, bool odd)
{
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    const float values[] = {0.0f,  -0.0f,  1.0f,      1e-40f,     -1e-42f,
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

/// One output value of a kernel.
struct Written {
    const char *kernel;
    int block;
    uint32_t frame;
    float value;

    bool operator==(const Written &other) const
    {
        return value == other.value && std::signbit(value) == std::signbit(other.value);
    }
};

/// Runs all kernels of a variant and returns their outputs. NaN is replaced by 7, so that NaNs compare equal.
std::vector<Written> transcript(const Table &set, bool odd)
{
    std::vector<Written> written;
    int round = 0;
    const auto append = [&](const char *kernel, const float *values, uint32_t count) {
        for (uint32_t i = 0; i < count; ++i)
            written.push_back({kernel, round, i, std::isnan(values[i]) ? 7 : values[i]});
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

    for (; round < 200; ++round) {
        if (odd) states = {}; // otherwise NaN would stay in the feedback
        Block in[8], out[8];
        fill(in, random, odd);
        fill(out, random, odd);
        const uint32_t frames = 1 + random() % 64;
        float *a = in[0].samples, *b = in[1].samples, *c = out[0].samples, *d = out[1].samples;

        FilterBankOutput bands = {{}, {}, a, b};
        for (int i = 0; i < 4; ++i) bands.left[i] = out[i].samples, bands.right[i] = out[4 + i].samples;
        set.crossOver.split(bank, states.bank, a, b, bands, frames);
        const float within = set.crossOver.isWithin(states.bank, 10);
        for (Block &block : out) append("crossOver.split", block.samples, frames);
        append("crossOver.isWithin", &within, 1);

        DynamicsPeaks peaks;
        float *gains[4], *sound[2] = {out[4].samples, out[5].samples},
                         *lines[2] = {in[6].samples + 40, in[7].samples + 40};
        for (int i = 0; i < 4; ++i) gains[i] = out[i].samples;
        const float *left[4] = {a, b, nullptr, in[2].samples},
                    *right[4] = {b, nullptr, nullptr, in[3].samples};
        set.dynamics.computeGains(dynamics, states.dynamics, left, right, gains, peaks, frames);
        for (const float *gain : gains) append("dynamics.computeGains", gain, frames);
        for (const float *peak : {peaks.left, peaks.right, peaks.smallestGain})
            append("dynamics.computeGains, peaks by band", peak, 4);
        const float *guards[2] = {in[4].samples, in[5].samples};
        set.dynamics.applyGains(sound, lines, guards, 2, 37, gains[0], 1.5f, frames);
        for (int side = 0; side < 2; ++side) {
            append("dynamics.applyGains", sound[side], frames);
            append("dynamics.applyGains, delay line", lines[side], frames);
        }

        set.maximizer.detect(a, b, 0.99f, states.envelope, c, frames);
        append("maximizer.detect", c, frames);
        set.maximizer.softGains(0.3f, -0.9f, follower, 0.8f, states.followed, states.smoothed, c, frames);
        append("maximizer.softGains", c, frames);
        set.maximizer.holdingGains(0.5f, a, frames);
        append("maximizer.holdingGains", a, frames);
        set.maximizer.slidingMinimum(states.ladder, a, frames);
        append("maximizer.slidingMinimum", a, frames);
        set.maximizer.followMinimum(follower, states.held, a, frames);
        append("maximizer.followMinimum", a, frames);
        set.maximizer.weightedSum(b, in[2].samples + 64, d, frames);
        append("maximizer.weightedSum", d, frames);
        set.maximizer.apply(in[3].samples, d, 0.7f, b, frames);
        append("maximizer.apply", b, frames);

        const float *sources[4] = {a, b, c, in[4].samples};
        set.block.sum(sources, 1 + round % 4, in[5].samples, frames);
        append("block.sum", in[5].samples, frames);
        set.block.monoMix(in[6].samples, round % 2 ? b : nullptr, c, in[7].samples, frames);
        append("block.monoMix", in[7].samples, frames);
        set.block.add(a, b, frames);
        append("block.add", b, frames);
        set.block.multiply(in[6].samples, c, frames);
        append("block.multiply", c, frames);
        set.block.scale(0.3f, d, frames);
        append("block.scale", d, frames);
        set.block.copy(d, out[7].samples, frames);
        append("block.copy", out[7].samples, frames);
        set.power.power(in[2].samples, -1.0f + 0.01f * static_cast<float>(round), out[6].samples, frames);
        append("power.power", out[6].samples, frames);
        const float found[] = {set.block.peak(a, frames), set.block.least(a, 0.5f, frames)};
        append("block.peak and least", found, 2);
        const auto silenced = static_cast<float>(set.block.silenceGarbage(a, 2, frames));
        append("block.silenceGarbage, count", &silenced, 1);
        append("block.silenceGarbage", a, frames);
    }
    return written;
}

// The tests of the stages check the values, but only with the best variant.
TEST(KernelVariants, AreBitExact)
{
    for (const bool odd : {false, true}) {
        const std::vector<Written> expected = transcript(*available().front(), odd);
        for (const Table *set : available()) {
            const std::vector<Written> actual = transcript(*set, odd);
            ASSERT_EQ(actual.size(), expected.size());
            const auto [first, plain] = std::mismatch(actual.begin(), actual.end(), expected.begin());
            if (first == actual.end()) continue;
            FAIL() << set->name << ": " << first->kernel << ", block " << first->block << ", frame "
                   << first->frame << ": " << first->value << ", but " << plain->value << " with "
                   << available().front()->name << (odd ? ", among odd values" : "");
        }
    }
}

TEST(KernelVariants, UnknownNamesSelectTheBest)
{
    const Table &best = *available().back();
    for (const char *wish : {static_cast<const char *>(nullptr), "", "avx9000"})
        EXPECT_EQ(&choose(wish), &best);
    for (const Table *table : available()) EXPECT_EQ(&choose(table->name), table);
}

} // namespace
