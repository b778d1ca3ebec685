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
INSTANTIATE_TEST_SUITE_P(All, EnvelopeSeeds, testing::Range(0, 64));

TEST_P(EnvelopeSeeds, AreReadAsWrittenSampleBySample)
{
    Random random(GetParam());
    const uint32_t rate = drawRate(random), step = random.pick(std::array{1u, 10u, 50u, 600u});
    const auto curves = drawSegments(random, rate, -60, 20), switches = drawSegments(random, rate, 0, 1);
    const float initial = random.real(-60, 20), limit = random.chance(0.5) ? random.real(0.001, 1) : 0;
    const bool initiallyOn = random.chance(0.5);
    const auto expected = playEnvelope(curves, rate, kFrames, initial);
    auto held = switches;
    for (auto &segment : held) segment.curve = DSP::EnvelopeSegment::step;
    const auto expectedSwitch = playEnvelope(held, rate, kFrames, initiallyOn);

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
            SCOPED_TRACE(testing::Message() << "sample " << sample << " at " << rate);
            const float value = expected[sample], close = 1e-5f;
            if (limit > 0) {
                ASSERT_NEAR(raw[k], value, close);
                ASSERT_LE(std::fabs(values[k] - previous), limit + close);
                ASSERT_NEAR(values[k], std::clamp(raw[k], previous - limit, previous + limit), close);
                previous = values[k];
            } else {
                ASSERT_NEAR(values[k], value, close);
            }
            ASSERT_EQ(bits[k], expectedSwitch[sample] >= 0.5f);
            ASSERT_EQ(numbers[k], static_cast<uint32_t>(std::lround(expectedSwitch[sample])));
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

/// Writes the values of its parameters into the sound, and the cuts of the block into a list.
class Recorder final : public DSP::ComponentImpl<Recorder> {
public:
    explicit Recorder(DSP::PluginLink &link, uint32_t scratch = 0) : ComponentImpl(link, "Recorder", scratch)
    {
        owner = this;
        for (bool automatable : {true, false})
            floatParams.push_back({.name = "",
                                   .label = "",
                                   .range = {-60, 20},
                                   .defaultValue = 0,
                                   .getters = {.one = &Recorder::real},
                                   .setters = {.one = &Recorder::setReal},
                                   .indices = {OptionalIndex(automatable ? 0 : 1)},
                                   .automatable = automatable});
        boolParams.push_back({.name = "",
                              .label = "",
                              .range = {true, false},
                              .defaultValue = false,
                              .getters = {.plain = &Recorder::flag},
                              .setters = {.plain = &Recorder::setFlag},
                              .automatable = true});
        intParams.push_back({.name = "",
                             .label = "",
                             .range = {0, 9},
                             .defaultValue = 0,
                             .getters = {.plain = &Recorder::number},
                             .setters = {.plain = &Recorder::setNumber},
                             .automatable = true});
        finishConstruction();
        boolWatch = {0};
    }

    bool isActive() const override { return wantsToRun; }
    bool ownsTiming() const override { return timesItself; }
    void reset() override {}
    uint32_t process(uint32_t frames, float *left, float *right) override
    {
        pieces.push_back(frames);
        std::fill_n(left, frames, reals[0]);
        std::fill_n(right, frames, integer + (boolean ? 0.5f : 0.0f));
        if (bandOutLeft) std::fill_n(bandOutLeft[3], frames, reals[0]);
        EXPECT_TRUE(!bandOutLeft || !bandOutLeft[0]);
        return frames;
    }

    float real(uint32_t i) const { return reals[i]; }
    bool flag() const { return boolean; }
    uint32_t number() const { return integer; }
    void setReal(uint32_t i, float v)
    {
        const Util::Hold setting(settingLock);
        reals[i] = v;
        if (cutsWhenSet) setFraming(4, 2, 2);
        if (leavesWhenSet) wantsToRun = false;
    }
    void setFlag(bool on) { boolean = on; }
    void setNumber(uint32_t v) { integer = v; }
    void leave() { deactivating = true; }

    std::vector<uint32_t> pieces;
    float reals[2] = {1, 1};
    bool boolean = false, wantsToRun = true, timesItself = false, cutsWhenSet = false, leavesWhenSet = false;
    uint32_t integer = 3;
};

struct RecorderRig {
    explicit RecorderRig(uint32_t scratch = 0) : component(plugin, scratch) { component.setSwitchedOn(true); }
    /// A block at the sample where the last one ended.
    Audio run(uint32_t frames, bool withBands = false)
    {
        Audio audio = Signals::silence(frames);
        std::vector<float> band(frames);
        float *left[4] = {nullptr, nullptr, nullptr, band.data()}, *right[4] = {};
        const int64_t time = timeOf(position, rate);
        EXPECT_EQ(component.run(rate, &time, step, &refresh, frames, audio.left.data(), audio.right.data(),
                                false, withBands ? left : nullptr, withBands ? right : nullptr),
                  frames);
        if (withBands) {
            EXPECT_EQ(band, audio.left) << "bands advance with the steps";
        }
        position += frames;
        return audio;
    }
    EnvelopeHandler &envelopes() { return component.envelopeHandler(); }

    FakePlugin plugin;
    Recorder component;
    uint32_t rate = 44100, step = 50;
    int64_t position = 0;
    bool refresh = false;
};

TEST_P(EnvelopeSeeds, MoveParametersInStepsFromTheStartOfEachBlock)
{
    Random random(GetParam());
    RecorderRig rig(random.below(2));
    rig.rate = drawRate(random);
    rig.step = random.pick(std::array{10u, 50u, 600u});
    const auto reals = drawSegments(random, rig.rate, -60, 20), flags = drawSegments(random, rig.rate, 0, 1);
    auto held = flags;
    for (auto &segment : held) segment.curve = DSP::EnvelopeSegment::step;
    const auto expected = playEnvelope(reals, rig.rate, kFrames, 1);
    const auto expectedFlags = playEnvelope(held, rig.rate, kFrames, 0);
    rig.envelopes().setEnvelope(ParamKind::real, 0, toEnvelope(reals));
    rig.envelopes().setEnvelope(ParamKind::real, 1, toEnvelope(reals)); // the host does not see this one
    rig.envelopes().setEnvelope(ParamKind::boolean, 0, toEnvelope(flags));
    rig.envelopes().setEnabled(true);
    EXPECT_TRUE(rig.component.hasAutomation());
    uint32_t from = 0;
    for (uint32_t frames : cutIntoBlocks(random, kFrames)) {
        const Audio audio = rig.run(frames, random.chance(0.5));
        for (uint32_t i = 0; i < frames; ++i) {
            const uint32_t sample = from + i / rig.step * rig.step;
            ASSERT_NEAR(audio.left[i], expected[sample], 1e-5) << sample;
            ASSERT_EQ(audio.right[i], expectedFlags[sample] >= 0.5f ? 3.5f : 3.0f) << sample;
        }
        from += frames;
    }
    EXPECT_EQ(rig.component.reals[1], 1);
}

TEST(Automation, WaitsUntilItIsEnabledAndYieldsToTheUser)
{
    RecorderRig rig;
    rig.envelopes().setEnvelope(ParamKind::real, 0, {{0, timeOf(100, 44100), 5, 6, 0, 1}});
    EXPECT_EQ(rig.run(120).left[0], 1);
    EXPECT_EQ(rig.component.pieces, std::vector<uint32_t>{120});
    rig.envelopes().setEnabled(true);
    rig.component.setFloatParamEditing(0, true);
    EXPECT_EQ(rig.run(120).left[119], 1) << "the user holds the control";
    EXPECT_EQ(rig.component.pieces, (std::vector<uint32_t>{120, 50, 50, 20}));
    EXPECT_FALSE(rig.refresh);
    rig.component.setFloatParamEditing(0, false);
    EXPECT_EQ(rig.run(120).left[0], 6) << "what has ended holds";
    EXPECT_TRUE(rig.refresh);
    rig.refresh = false;
    rig.run(120);
    EXPECT_FALSE(rig.refresh) << "nothing moved";
    rig.envelopes().setEnvelope(ParamKind::real, 0, {});
    rig.component.reals[0] = 2;
    EXPECT_EQ(rig.run(120).left[119], 2);
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
    Audio audio = leaving.run(150);
    EXPECT_EQ(leaving.component.pieces, std::vector<uint32_t>{50});
    EXPECT_EQ(audio.left[49], 1);
    EXPECT_EQ(audio.left[50], 0) << "passes untouched";
    EXPECT_FALSE(leaving.component.isSwitchedOn());

    cutting.component.cutsWhenSet = true;
    cutting.run(150);
    EXPECT_EQ(cutting.component.pieces, std::vector<uint32_t>{50});
    cutting.run(150);
    EXPECT_EQ(cutting.component.pieces, (std::vector<uint32_t>{50, 150})) << "frames are not cut further";

    timing.component.timesItself = true;
    timing.run(150);
    EXPECT_EQ(timing.component.pieces, std::vector<uint32_t>{150});
    EXPECT_EQ(timing.component.reals[0], 1);
}

} // namespace
