#include "dsp/EnvelopeHandler.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>

#include "dsp/ComponentImpl.h"
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
    const float initial = random.real(-60, 20), limit = random.chance(0.5) ? random.real(0.001, 1) : 0;
    const bool initiallyOn = random.chance(0.5);
    const auto expected = playEnvelope(curves, rate, kFrames, initial);
    const auto expectedSwitch = playEnvelope(hold(switches), rate, kFrames, initiallyOn);

    EnvelopeHandler handler("Test", 1, 2, 2);
    handler.setEnvelope(ParamKind::real, 0, toEnvelope(curves));
    handler.setEnvelope(ParamKind::boolean, 1, toEnvelope(switches));
    handler.setEnvelope(ParamKind::integer, 1, toEnvelope(switches));
    std::vector<float> values, raw;
    std::vector<bool> bits;
    std::vector<uint32_t> numbers;
    uint32_t from = 0;
    for (uint32_t frames : cutIntoBlocks(random, kFrames)) {
        const DSP::EnvelopeGrid grid = {timeOf(from, rate), rate, frames, step};
        handler.evaluateFloats(0, grid, initial, values, {limit, &raw});
        handler.evaluateBools(1, grid, initiallyOn, bits);
        handler.evaluateInts(1, grid, initiallyOn, numbers);
        ASSERT_EQ(values.size(), (frames + step - 1) / step);
        ASSERT_EQ(bits.size(), values.size());
        ASSERT_EQ(numbers.size(), values.size());
        float previous = initial;
        for (uint32_t k = 0; k < values.size(); ++k) {
            const uint32_t sample = from + k * step;
            const float value = limit > 0 ? raw[k] : values[k], close = 1e-5f;
            ASSERT_NEAR(value, expected[sample], close) << "sample " << sample << " at " << rate;
            if (limit > 0) {
                ASSERT_NEAR(values[k], std::clamp(value, previous - limit, previous + limit), close)
                    << sample;
            }
            previous = values[k];
            ASSERT_EQ(bits[k], expectedSwitch[sample] >= 0.5f) << sample;
            ASSERT_EQ(numbers[k], static_cast<uint32_t>(std::lround(expectedSwitch[sample]))) << sample;
        }
        from += frames;
    }
}

TEST(Envelope, SaysWhetherASegmentIsUnderWayAndLeavesOutWhatIsNone)
{
    constexpr uint32_t rate = 10000;
    EnvelopeHandler handler("Test", 1, 0, 0);
    std::vector<float> values;
    const auto read = [&](int64_t from) {
        return handler.evaluateFloats(0, {timeOf(from, rate), rate, 100, 50}, 7, values);
    };
    const float nan = std::nanf(""), infinity = HUGE_VALF;
    handler.setEnvelope(ParamKind::real, 0,
                        {{0, 10, nan, 1, 0, 0}, {0, 10, 1, infinity, 0, 0}, {9, 8, 1, 1, 0, 0}});
    EXPECT_FALSE(handler.hasEnvelope(ParamKind::real, 0));
    EXPECT_FALSE(read(0));
    EXPECT_EQ(values, (std::vector<float>{7, 7}));

    // not in order, and at the ends of time
    handler.setEnvelope(ParamKind::real, 0,
                        {{timeOf(300, rate), timeOf(350, rate), 1, 2, 0, 0},
                         {INT64_MIN, timeOf(50, rate), -1e38f, 3e38f, 0, 1},
                         {INT64_MAX - 1, INT64_MAX, 5, 6, 0, 0}});
    EXPECT_TRUE(handler.hasEnvelope(ParamKind::real, 0));
    EXPECT_TRUE(read(0));
    EXPECT_EQ(values, (std::vector<float>{-1e38f, 3e38f}));
    EXPECT_FALSE(read(100));
    EXPECT_TRUE(read(200)) << "begins with the sample behind the block";
    EXPECT_EQ(values, (std::vector<float>{3e38f, 3e38f}));
    EXPECT_TRUE(read(300));
    EXPECT_EQ(values, (std::vector<float>{1, 2}));
    EXPECT_FALSE(read(400));
    handler.evaluateFloats(0, {INT64_MAX, 4000000000u, 100, 50}, 7,
                           values); // far from any sound
    EXPECT_EQ(values[0], 2);
}

/// Writes the value of its parameter into the sound, and the cuts of the block into a list.
class Recorder final : public DSP::ComponentImpl<Recorder> {
public:
    explicit Recorder(DSP::PluginLink &link) : ComponentImpl(link, "Recorder", 0)
    {
        owner = this;
        floatParams.push_back({.name = "",
                               .label = "",
                               .range = {-60, 20},
                               .defaultValue = 0,
                               .getters = {.one = &Recorder::get},
                               .setters = {.one = &Recorder::set},
                               .indices = {OptionalIndex(0)},
                               .automatable = true});
        finishConstruction();
    }

    bool isActive() const override { return wantsToRun; }
    bool ownsTiming() const override { return timesItself; }
    void reset() override {}
    uint32_t process(uint32_t frames, float *left, float *) override
    {
        pieces.push_back(frames);
        std::fill_n(left, frames, value);
        return frames;
    }

    float get(uint32_t) const { return value; }
    void set(uint32_t, float v)
    {
        const Util::Hold setting(settingLock);
        value = v;
        if (cutsWhenSet) setFraming(4, 2, 2);
        if (leavesWhenSet) wantsToRun = false;
    }
    void leave() { deactivating = true; }

    std::vector<uint32_t> pieces;
    float value = 1;
    bool wantsToRun = true, timesItself = false, cutsWhenSet = false, leavesWhenSet = false;
};

struct RecorderRig {
    RecorderRig() { component.setSwitchedOn(true); }
    /// The sound of a block at the sample where the last one ended.
    std::vector<float> run(uint32_t frames)
    {
        std::vector<float> left(frames), right(frames);
        const int64_t time = timeOf(position, 44100);
        component.run(44100, &time, 50, &refresh, frames, left.data(), right.data(), false, nullptr, nullptr);
        position += frames;
        return left;
    }
    EnvelopeHandler &envelopes() { return component.envelopeHandler(); }

    FakePlugin plugin;
    Recorder component{plugin};
    int64_t position = 0;
    bool refresh = false;
};

TEST(Automation, WaitsUntilItIsEnabledAndYieldsToTheUser)
{
    RecorderRig rig;
    rig.envelopes().setEnvelope(ParamKind::real, 0, {{0, timeOf(100, 44100), 5, 6, 0, 1}});
    EXPECT_EQ(rig.run(120)[0], 1);
    EXPECT_EQ(rig.component.pieces, std::vector<uint32_t>{120});
    rig.envelopes().setEnabled(true);
    rig.component.setFloatParamEditing(0, true);
    EXPECT_EQ(rig.run(120)[119], 1) << "the user holds the control";
    EXPECT_EQ(rig.component.pieces, (std::vector<uint32_t>{120, 50, 50, 20}));
    EXPECT_FALSE(rig.refresh);
    rig.component.setFloatParamEditing(0, false);
    EXPECT_EQ(rig.run(120)[0], 6) << "what has ended holds";
    EXPECT_TRUE(rig.refresh);
    rig.refresh = false;
    rig.run(120);
    EXPECT_FALSE(rig.refresh) << "nothing moved";
    rig.envelopes().setEnvelope(ParamKind::real, 0, {});
    rig.component.value = 2;
    EXPECT_EQ(rig.run(120)[119], 2);
    EXPECT_FALSE(rig.component.hasAutomation());
}

TEST(Automation, EndsWithTheBlockWhereAComponentLeavesOrCutsOtherwise)
{
    RecorderRig leaving, cutting, timing;
    for (RecorderRig *rig : {&leaving, &cutting, &timing}) {
        rig->envelopes().setEnvelope(ParamKind::real, 0,
                                     {{timeOf(50, 44100), timeOf(60, 44100), 4, 5, 0, 0}});
        rig->envelopes().setEnabled(true);
    }
    leaving.component.leave();
    leaving.component.leavesWhenSet = true;
    const std::vector<float> sound = leaving.run(150);
    EXPECT_EQ(leaving.component.pieces, std::vector<uint32_t>{50});
    EXPECT_EQ(sound[49], 1);
    EXPECT_EQ(sound[50], 0) << "passes untouched";
    EXPECT_FALSE(leaving.component.isSwitchedOn());

    cutting.component.cutsWhenSet = true;
    cutting.run(150);
    EXPECT_EQ(cutting.component.pieces, std::vector<uint32_t>{50});
    cutting.run(150);
    EXPECT_EQ(cutting.component.pieces, (std::vector<uint32_t>{50, 150})) << "frames are not cut further";

    timing.component.timesItself = true;
    timing.run(150);
    EXPECT_EQ(timing.component.pieces, std::vector<uint32_t>{150});
    EXPECT_EQ(timing.component.value, 1);
}

} // namespace
