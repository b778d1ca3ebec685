#include <cmath>
#include <gtest/gtest.h>

#include "dsp/stages/DynamicsDesign.h"
#include "dsp/stages/MaximizerDesign.h"

namespace {

using namespace DSP;

TEST(BandDesign, CoefficientsMatchTheFormulas)
{
    for (const uint32_t rate : {8000u, 44100u, 192000u}) {
        const BandCoefficients c = design(
            BandSettings{.thresholdDb = -20, .gainDb = 6, .ratio = 4, .attackMs = 10, .releaseMs = 50}, rate);
        EXPECT_FLOAT_EQ(c.threshold, 0.1f);
        EXPECT_NEAR(c.makeUp, std::pow(10.0, 0.3), 1e-6);
        EXPECT_FLOAT_EQ(c.exponent, -0.75f);
        const auto pole = [rate](double ms) { return std::exp(-2000.0 / (ms * rate)); };
        EXPECT_NEAR(c.attackComplement, 1 - pole(10), 1e-6);
        EXPECT_NEAR(c.releaseCoeff, pole(50), 1e-6);
        EXPECT_EQ(c.releaseComplement, 1.0f - c.releaseCoeff);
        EXPECT_NEAR(c.smoothCoeff, 1 - pole(5), 1e-6);
    }
    const BandCoefficients instant = design(BandSettings{.ratio = 0.5f}, 44100);
    EXPECT_EQ(instant.exponent, 0.0f) << "a ratio below 1 counts as 1";
    EXPECT_EQ(instant.attackComplement, 1.0f);
    EXPECT_EQ(instant.releaseCoeff, 0.0f);
    EXPECT_EQ(instant.smoothCoeff, 1.0f);
    EXPECT_EQ(lookAheadSamples(44100), 44u);
    EXPECT_EQ(lookAheadSamples(100), 1u);
}

TEST(MaximizerDesign, LookAheadFollowsAttackAndGainReachesMargin)
{
    MaximizerSettings settings{.thresholdDb = -6, .marginDb = -1, .attackMs = 1, .releaseMs = 500};
    EXPECT_NEAR(design(settings, 44100).outputGain, std::pow(10.0, 0.25), 1e-6);
    EXPECT_EQ(design(settings, 44100).lookAhead, 76u);
    EXPECT_EQ(design(settings, 8000).lookAhead, 64u) << "minimum: the window length";
    EXPECT_NEAR(design(settings, 44100).follower.attackCoeff, std::exp(-2000.0 / 44100), 1e-6);
    settings.attackMs = 20;
    settings.brickwall = true;
    for (const uint32_t rate : {44100u, 192000u}) {
        EXPECT_EQ(design(settings, rate).lookAhead, 199u) << "maximum: the ring buffer";
        EXPECT_NEAR(design(settings, rate).follower.attackCoeff, std::exp(-0.01), 1e-6);
    }
}

} // namespace
