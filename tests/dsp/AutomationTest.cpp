#include <algorithm>
#include <gtest/gtest.h>

#include "dsp/Transform.h"
#include "tests/dsp/Envelopes.h"
#include "tests/dsp/FakePlugin.h"
#include "tests/host/AllocationCount.h"
#include "tests/signals/Compare.h"

namespace {

using DSP::ParamKind;
using Reference::playEnvelope;
using Signals::Random;
using namespace Envelopes;

constexpr uint32_t kRate = 44100, kStep = 50; // samples between two values, by default

/// The chain of the effect with a sound, and a clock of its own.
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
        chain.setStreamTime(timeOf(output.frames(), kRate));
        EXPECT_EQ(chain.process(frames, in.left.data(), in.right.data(), out.left.data(), out.right.data()),
                  frames);
        output = Signals::append(std::move(output), out);
    }

    FakePlugin plugin;
    DSP::Transform chain{plugin};
    Audio input, output;
};

class AutomationSeeds : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(All, AutomationSeeds, testing::Range(0, 64));

TEST_P(AutomationSeeds, OfTheChainIsWhatAHostDoesThatSetsValuesStepByStep)
{
    Random random(GetParam());
    const Audio sound = Signals::any(random.next(), kRate, kFrames).audio;
    ChainRig whole(sound), cut(sound), byHand(sound);
    const auto bypass = drawSegments(random, kRate, 0, 1);
    auto held = bypass;
    for (auto &segment : held) segment.curve = DSP::EnvelopeSegment::step;
    const auto bypassed = playEnvelope(held, kRate, kFrames, 0);
    const bool automateBypass = random.chance(0.5);

    struct Automated {
        uint32_t component, index;
        std::vector<float> values;
    };
    std::vector<Automated> automated;
    for (uint32_t c = 0; c < whole.plugin.components.size(); ++c) {
        DSP::Component &component = *whole.plugin.components[c];
        for (uint32_t i = 0; i < component.numFloatParams(); ++i) {
            if (!component.floatParamAutomatable(i) || random.chance(0.7)) continue;
            const auto [low, high] = component.floatParamRange(i);
            const auto segments = drawSegments(random, kRate, low, high);
            for (ChainRig *rig : {&whole, &cut})
                rig->plugin.components[c]->envelopeHandler().setEnvelope(ParamKind::real, i,
                                                                         toEnvelope(segments));
            automated.push_back({c, i, playEnvelope(segments, kRate, kFrames, component.floatParamValue(i))});
        }
    }
    for (ChainRig *rig : {&whole, &cut}) {
        for (DSP::Component *component : rig->plugin.components)
            component->envelopeHandler().setEnabled(true);
        DSP::EnvelopeHandler &options = rig->chain.global()->envelopeHandler();
        options.setEnabled(false); // the bypass does not ask for it
        if (automateBypass)
            options.setEnvelope(ParamKind::boolean, DSP::Global::kBypassParam, toEnvelope(bypass));
    }
    whole.play(kFrames);
    while (cut.output.frames() < kFrames)
        cut.play(std::min(kStep * (1 + random.below(40)), kFrames - cut.output.frames()));
    EXPECT_EQ(whole.output, cut.output);
    for (uint32_t from = 0; from < kFrames; from += kStep) {
        const bool off = automateBypass && bypassed[from] >= 0.5f;
        byHand.chain.global()->setBypass(off);
        for (const Automated &a : automated) // a component that does not run moves nothing
            if (!off) byHand.plugin.components[a.component]->setFloatParamValue(a.index, a.values[from]);
        byHand.play(kStep);
    }
    EXPECT_LT(errorDb(whole.output, byHand.output, peakOf(sound)), -100);
    EXPECT_EQ(whole.plugin.chainResets, byHand.plugin.chainResets);
}

TEST(Automation, OfTheBypassYieldsToTheUser)
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

TEST(Automation, AllocatesInTheFirstBlocksOnly)
{
    constexpr uint32_t largest = 4096;
    Random random(1);
    FakePlugin plugin;
    DSP::Transform chain(plugin);
    chain.resume(kRate);
    for (DSP::Component *component : plugin.components) {
        for (uint32_t i = 0; i < component->numFloatParams(); ++i) {
            const auto [low, high] = component->floatParamRange(i);
            component->envelopeHandler().setEnvelope(ParamKind::real, i,
                                                     toEnvelope(drawSegments(random, kRate, low, high)));
        }
        component->envelopeHandler().setEnabled(true);
    }
    chain.global()->envelopeHandler().setEnvelope(ParamKind::boolean, DSP::Global::kBypassParam,
                                                  toEnvelope(drawSegments(random, kRate, 0, 1)));
    const Audio audio = Signals::noise(1, largest, 0);
    Audio input = audio, output = audio;
    uint32_t position = 0;
    const auto run = [&](uint32_t frames) {
        input = audio;
        chain.setStreamTime(timeOf(position, kRate));
        chain.process(frames, input.left.data(), input.right.data(), output.left.data(), output.right.data());
        position = (position + frames) % kFrames;
    };
    for (int block = 0; block < 8; ++block) run(largest);
    const uint64_t before = allocationCount();
    for (int block = 0; block < 200; ++block) run(1 + random.below(largest));
    EXPECT_EQ(allocationCount() - before, 0u);
}

} // namespace
