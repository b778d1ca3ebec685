#include <algorithm>
#include <functional>
#include <gtest/gtest.h>

#include "dsp/chain/Transform.h"
#include "platform/System.h"
#include "tests/dsp/Envelopes.h"
#include "tests/dsp/FakePlugin.h"
#include "tests/signals/Blocks.h"
#include "tests/signals/Compare.h"

namespace {

using DSP::ParamKind;
using Reference::playEnvelope;
using Signals::Random;
using namespace Envelopes;

constexpr uint32_t kRate = 44100;

/// The effect's chain with an input, played from time 0.
struct ChainRig {
    explicit ChainRig(const Audio &sound) : input(sound)
    {
        chain.resume(kRate);
        chain.resume(kRate);
    }
    void play(uint32_t frames)
    {
        Audio in = Signals::slice(input, output.frames(), frames);
        Audio out = Signals::silence(frames);
        EXPECT_EQ(chain.process({frames, in.left.data(), in.right.data()},
                                {frames, out.left.data(), out.right.data()}, timeOf(output.frames(), kRate)),
                  frames);
        output = Signals::append(std::move(output), out);
        refreshes += chain.takeRefresh();
    }

    FakePlugin plugin;
    DSP::Transform chain{plugin};
    Audio input, output;
    int refreshes = 0;
};

class AutomationSeeds : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(All, AutomationSeeds, testing::Range(0, seedCount(32)));

TEST_P(AutomationSeeds, EnvelopesMatchValuesSetStepByStep)
{
    Random random(GetParam());
    const Audio sound = Signals::any(random.next(), kRate, kFrames).audio;
    ChainRig automatic(sound), manual(sound);
    const auto step = static_cast<uint32_t>(random.pick(std::array{10, 50, 600}));
    automatic.chain.global()->setAutomationZipperSamples(static_cast<float>(step));

    std::vector<std::function<void(uint32_t sample)>> setters;
    for (uint32_t c = 0; c < automatic.plugin.components.size(); ++c) {
        DSP::Component &component = *automatic.plugin.components[c], &twin = *manual.plugin.components[c];
        DSP::EnvelopeHandler &envelopes = component.envelopeHandler();
        for (uint32_t i = 0; i < component.numFloatParams(); ++i) {
            if (random.chance(0.7)) continue;
            const auto [low, high] = component.floatParamRange(i);
            const auto segments = drawSegments(random, kRate, low, high);
            envelopes.setEnvelope(ParamKind::real, i, toEnvelope(segments));
            if (!component.floatParamAutomatable(i)) continue; // the envelope must have no effect
            const auto values = playEnvelope(segments, kRate, kFrames, component.floatParamValue(i));
            setters.emplace_back([=, &twin](uint32_t at) { twin.setFloatParamValue(i, values[at]); });
        }
        for (uint32_t i = 0; i < component.numBoolParams(); ++i) {
            if (!component.boolParamAutomatable(i) || random.chance(0.9)) continue;
            const auto segments = drawSegments(random, kRate, 0, 1);
            envelopes.setEnvelope(ParamKind::boolean, i, toEnvelope(segments));
            const auto values = playEnvelope(hold(segments), kRate, kFrames, component.boolParamValue(i));
            setters.emplace_back([=, &twin](uint32_t at) { twin.setBoolParamValue(i, values[at] >= 0.5f); });
        }
        envelopes.setEnabled(true);
    }
    DSP::EnvelopeHandler &options = automatic.chain.global()->envelopeHandler();
    options.setEnabled(false); // does not affect the bypass envelope
    std::vector<float> bypassed(kFrames);
    if (random.chance(0.5)) {
        const auto bypass = drawSegments(random, kRate, 0, 1);
        options.setEnvelope(ParamKind::boolean, DSP::Global::kBypassParam, toEnvelope(bypass));
        bypassed = playEnvelope(hold(bypass), kRate, kFrames, 0);
    }

    for (const uint32_t frames : cutIntoBlocks(random, kFrames)) {
        automatic.play(frames);
        for (uint32_t end = automatic.output.frames(), at = manual.output.frames(); at < end; at += step) {
            const bool off = bypassed[at] >= 0.5f;
            manual.chain.global()->setBypass(off);
            if (!off) // automation stops in a bypassed chain
                for (const auto &setValue : setters) setValue(at);
            manual.play(std::min(step, end - at));
        }
    }
    EXPECT_LT(errorDb(automatic.output, manual.output, peakOf(sound)), -100);
    EXPECT_EQ(automatic.plugin.chainResets, manual.plugin.chainResets);
    EXPECT_EQ(automatic.chain.maximizer()->ratio(), manual.chain.maximizer()->ratio());
}

TEST(Automation, BypassEnvelopeYieldsToTheUser)
{
    ChainRig rig(Signals::noise(1, 1000, -20));
    DSP::Global &global = *rig.chain.global();
    global.envelopeHandler().setEnvelope(ParamKind::boolean, DSP::Global::kBypassParam,
                                         {{0, 10000000, 1, 1, 0, 1}});
    global.setBoolParamEditing(DSP::Global::kBypassParam, true);
    rig.play(500);
    EXPECT_FALSE(global.getBypass());
    global.setBoolParamEditing(DSP::Global::kBypassParam, false);
    rig.play(500);
    EXPECT_TRUE(global.getBypass());
    EXPECT_EQ(rig.output.left[999], rig.input.left[999]);
}

TEST(Automation, RunBlockFollowsEnvelopesOnlyIfEnabled)
{
    ChainRig rig({});
    DSP::Gain &gain = *rig.chain.gain();
    gain.envelopeHandler().setEnvelope(ParamKind::real, DSP::Gain::Param::gain,
                                       {{0, 10000000, 6, 6, 0, DSP::EnvelopeSegment::step}});
    for (const bool on : {false, true}) {
        gain.envelopeHandler().setEnabled(on);
        float sample = 0.5f;
        EXPECT_EQ(gain.runBlock({kRate, 0, 10}, {1, &sample, nullptr}), on);
        EXPECT_EQ(gain.gain(), on ? 6.0f : 0.0f);
        EXPECT_NEAR(sample, on ? 0.9976f : 0.5f, 1e-4f);
    }
}

TEST(Automation, LimitsTheRateOfEditorRefreshes)
{
    constexpr uint32_t kBlocks = 100, kIntervalMs = 67;
    ChainRig rig(Signals::noise(1, kBlocks * 100, -20));
    DSP::EnvelopeHandler &envelopes = rig.chain.maximizer()->envelopeHandler();
    envelopes.setEnvelope(ParamKind::real, 0, {{0, 10000000, -20, 0, 0, 2}});
    envelopes.setEnabled(true);
    const uint32_t begin = Platform::tickCount();
    for (uint32_t i = 0; i < kBlocks; ++i) rig.play(100);
    EXPECT_GE(rig.refreshes, 1);
    EXPECT_LE(rig.refreshes, 1 + static_cast<int>((Platform::tickCount() - begin) / kIntervalMs));
}

} // namespace
