#include "dsp/automation/EnvelopeHandler.h"

#include <array>
#include <cmath>
#include <gtest/gtest.h>

#include "dsp/numerics/Conversions.h"
#include "dsp/stages/Gain.h"
#include "tests/dsp/Envelopes.h"
#include "tests/dsp/FakePlugin.h"
#include "tests/signals/Blocks.h"

namespace {

using DSP::EnvelopeHandler;
using DSP::ParamKind;
using Reference::playEnvelope;
using Signals::Random;
using namespace Envelopes;

class EnvelopeSeeds : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(All, EnvelopeSeeds, testing::Range(0, seedCount(16)));

TEST_P(EnvelopeSeeds, AreReadAsWrittenSampleBySample)
{
    Random random(GetParam());
    const uint32_t rate = drawRate(random), step = random.pick(std::array{1u, 10u, 50u, 600u});
    const auto curves = drawSegments(random, rate, -60, 20), switches = drawSegments(random, rate, 0, 1);
    const float initial = random.real(-60, 20);
    const bool initiallyOn = random.chance(0.5);
    const auto expected = playEnvelope(curves, rate, kFrames, initial);
    const auto expectedSwitch = playEnvelope(hold(switches), rate, kFrames, initiallyOn);

    EnvelopeHandler handler("Test", 1, 2, 2);
    handler.setEnvelope(ParamKind::real, 0, toEnvelope(curves));
    handler.setEnvelope(ParamKind::boolean, 1, toEnvelope(switches));
    handler.setEnvelope(ParamKind::integer, 1, toEnvelope(switches));
    std::vector<float> values;
    std::vector<bool> bits;
    std::vector<uint32_t> numbers;
    uint32_t from = 0;
    for (uint32_t frames : cutIntoBlocks(random, kFrames)) {
        const DSP::EnvelopeGrid grid = {timeOf(from, rate), rate, frames, step};
        handler.evaluateFloats(0, grid, initial, values);
        handler.evaluateBools(1, grid, initiallyOn, bits);
        handler.evaluateInts(1, grid, initiallyOn, numbers);
        ASSERT_EQ(values.size(), (frames + step - 1) / step);
        ASSERT_EQ(bits.size(), values.size());
        ASSERT_EQ(numbers.size(), values.size());
        for (uint32_t k = 0; k < values.size(); ++k) {
            const uint32_t sample = from + k * step;
            ASSERT_NEAR(values[k], expected[sample], 1e-5) << "sample " << sample << " at " << rate;
            ASSERT_EQ(bits[k], expectedSwitch[sample] >= 0.5f) << sample;
            ASSERT_EQ(numbers[k], static_cast<uint32_t>(std::lround(expectedSwitch[sample]))) << sample;
        }
        from += frames;
    }
}

TEST(Envelope, IsReadAtTheEndsOfTimeAndLeavesOutWhatIsNone)
{
    constexpr uint32_t rate = 10000;
    EnvelopeHandler handler("Test", 1, 0, 0);
    const auto read = [&](int64_t time) {
        std::vector<float> values;
        handler.evaluateFloats(0, {time, rate, 100, 50}, 7, values);
        return std::pair(values[0], values[1]);
    };
    const float nan = std::nanf(""), infinity = HUGE_VALF;
    handler.setEnvelope(ParamKind::real, 0,
                        {{0, 10, nan, 1, 0, 0}, {0, 10, 1, infinity, 0, 0}, {9, 8, 1, 1, 0, 0}});
    EXPECT_FALSE(handler.hasEnvelope(ParamKind::real, 0));
    EXPECT_EQ(read(0), std::pair(7.0f, 7.0f));

    handler.setEnvelope(ParamKind::real, 0, // not in order
                        {{timeOf(300, rate), timeOf(350, rate), 1, 2, 0, 0},
                         {INT64_MIN, timeOf(50, rate), -1e38f, 3e38f, 0, 1},
                         {INT64_MAX - 1, INT64_MAX, 5, 6, 0, 0}});
    EXPECT_TRUE(handler.hasEnvelope(ParamKind::real, 0));
    EXPECT_EQ(read(0), std::pair(-1e38f, 3e38f));
    EXPECT_EQ(read(timeOf(200, rate)), std::pair(3e38f, 3e38f));
    EXPECT_EQ(read(timeOf(300, rate)), std::pair(1.0f, 2.0f));
    EXPECT_EQ(read(INT64_MAX), std::pair(2.0f, 2.0f)) << "far from any sound";
}

TEST(Automation, WaitsUntilItIsEnabledAndYieldsToTheUser)
{
    Rig<DSP::Gain> rig;
    const auto firstAndLast = [&rig] {
        std::vector<float> left(120, 1.0f), right = left;
        rig.run(120, left.data(), right.data());
        return std::pair(left.front(), left.back());
    };
    const float loud = DSP::gainFactor(6), soft = DSP::gainFactor(-6);
    EnvelopeHandler &envelopes = rig->envelopeHandler();
    envelopes.setEnvelope(ParamKind::real, 0,
                          {{0, timeOf(100, 44100), 6, -6, 0, DSP::EnvelopeSegment::step}});
    EXPECT_EQ(firstAndLast(), std::pair(1.0f, 1.0f));
    envelopes.setEnabled(true);
    rig->setFloatParamEditing(0, true);
    EXPECT_EQ(firstAndLast(), std::pair(1.0f, 1.0f)) << "the user holds the control";
    EXPECT_FALSE(rig.refresh);
    rig->setFloatParamEditing(0, false);
    EXPECT_EQ(firstAndLast(), std::pair(loud, soft));
    EXPECT_TRUE(rig.refresh);
    rig.refresh = false;
    envelopes.setEnvelope(ParamKind::real, 0, {{timeOf(-10, 44100), timeOf(-5, 44100), 6, -6, 0, 0}});
    EXPECT_EQ(firstAndLast(), std::pair(soft, soft)) << "what has ended holds";
    EXPECT_FALSE(rig.refresh) << "nothing moved";
    envelopes.setEnvelope(ParamKind::real, 0, {});
    EXPECT_FALSE(rig->hasAutomation());
}

} // namespace
