#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "tests/host/FakeHost.h"
#include "tests/host/FloatEnvironment.h"
#include "tests/signals/Compare.h"

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kUntouched = LoadedEffect::kUntouchedSample;

enum class Entry { process, processReplacing };

/// Processes one block. If `hide` is not -1, one channel pointer is null: 0 and 1 are inputs, 2 and 3 outputs.
void block(const LoadedEffect &effect, Entry entry, const Audio &in, Audio &out, int32_t frames,
           int hide = -1)
{
    float *channels[] = {const_cast<float *>(in.left.data()), const_cast<float *>(in.right.data()),
                         out.left.data(), out.right.data()};
    if (hide >= 0) channels[hide] = nullptr;
    const auto call = entry == Entry::process ? effect->process : effect->processReplacing;
    call(effect.operator->(), channels, channels + 2, frames);
}

/// Makes all compressors and the limiter reduce the gain.
void compress(const LoadedEffect &effect)
{
    for (int32_t band = 0; band < 4; ++band) {
        effect.set(10 + band, 0.4f); // threshold
        effect.set(18 + band, 0.3f); // ratio
    }
    effect.set(4, 0.5f); // limiter threshold
}

struct AudioPath : testing::Test {
    FakeHost host;
    LoadedEffect effect;
    const Audio music = Signals::music(1, 44100, 4096, -3.0);
    const Audio untouched = {std::vector(4096, kUntouched), std::vector(4096, kUntouched)};
};

TEST_F(AudioPath, ProcessReplacingOverwritesAndProcessAdds)
{
    const Audio first = effect.process(music);
    EXPECT_NE(untouched, first);

    const LoadedEffect adding;
    Audio sum = untouched;
    block(adding, Entry::process, music, sum, 4096);
    for (uint32_t i = 0; i < sum.frames(); ++i) {
        ASSERT_EQ(kUntouched + first.left[i], sum.left[i]) << i;
        ASSERT_EQ(kUntouched + first.right[i], sum.right[i]) << i;
    }
    Audio inPlace = music; // one buffer for input and output
    block(LoadedEffect(), Entry::processReplacing, inPlace, inPlace, 4096);
    EXPECT_EQ(first, inPlace);
}

TEST_F(AudioPath, ResumesAtTheFirstBlock)
{
    EXPECT_FALSE(effect.plugin().isActive());
    Audio out = untouched;
    block(effect, Entry::processReplacing, music, out, 0);
    EXPECT_TRUE(effect.plugin().isActive());
    EXPECT_EQ(untouched, out);

    const LoadedEffect switchedOn;
    switchedOn.switchOn();
    EXPECT_EQ(switchedOn.process(music), effect.process(music));
    effect.switchOff();
    EXPECT_FALSE(effect.plugin().isActive());
}

TEST_F(AudioPath, RefusesMixedAndMissingConnections)
{
    for (const auto &[inputs, outputs] : {std::pair(1, 2), {2, 1}, {0, 2}, {2, 0}, {0, 0}}) {
        SCOPED_TRACE(testing::Message() << inputs << " in, " << outputs << " out");
        host.connectedInputs = inputs;
        host.connectedOutputs = outputs;
        effect.switchOn(); // without suspending first
        EXPECT_EQ(untouched, effect.process(music));
        EXPECT_FALSE(effect.plugin().isActive());
        host.connectedInputs = host.connectedOutputs = 2;
        EXPECT_NE(untouched, effect.process(music));
        EXPECT_TRUE(effect.plugin().isActive());
    }
}

TEST_F(AudioPath, MonoReadsAndWritesTheLeftChannelOnly)
{
    host.connectedInputs = host.connectedOutputs = 1;
    Audio out = untouched;
    block(effect, Entry::processReplacing, music, out, 4096);
    host.connectedInputs = host.connectedOutputs = 2;
    EXPECT_EQ(LoadedEffect().process(music).left, out.left);
    EXPECT_EQ(untouched.right, out.right);
}

TEST_F(AudioPath, IsBitExactInAnyFloatEnvironment)
{
    const auto play = [this] {
        const LoadedEffect fresh;
        compress(fresh);
        fresh.set(1, 0.01f); // a cutoff; computes filter coefficients at once
        return fresh.process(music);
    };
    const Audio expected = play();
    for (const FloatEnvironment &environment : kFloatEnvironments) {
        const InFloatEnvironment hosts(environment);
        const Audio actual = play();
        EXPECT_TRUE(hosts.isUntouched()) << environment.name;
        EXPECT_TRUE(expected == actual) << environment.name;
    }
}

TEST_F(AudioPath, WritesNothingIfBuffersOrFramesAreMissing)
{
    for (Entry entry : {Entry::process, Entry::processReplacing}) {
        Audio out = untouched;
        for (int hidden = 0; hidden < 4; ++hidden) block(effect, entry, music, out, 4096, hidden);
        for (int32_t frames : {0, -1, std::numeric_limits<int32_t>::min()})
            block(effect, entry, music, out, frames);
        const auto call = entry == Entry::process ? effect->process : effect->processReplacing;
        call(effect.operator->(), nullptr, nullptr, 4096);
        EXPECT_EQ(untouched, out);
    }
    EXPECT_EQ(LoadedEffect().process(music), effect.process(music)) << "a refused block changed the state";
}

TEST_F(AudioPath, DoesNotDependOnBlockSizes)
{
    const LoadedEffect other;
    compress(effect);
    compress(other);
    const Audio longMusic = Signals::music(2, 44100, 200005, -3.0);
    const Audio first = other.process(Signals::slice(longMusic, 0, 70001));
    const Audio rest = other.process(Signals::slice(longMusic, 70001, longMusic.frames() - 70001));
    EXPECT_TRUE(effect.process(longMusic) == Signals::append(first, rest));
}

TEST_F(AudioPath, AcceptsNewRatesAndIgnoresInvalidOnes)
{
    const auto setRate = [this](float rate) { effect.dispatch(effSetSampleRate, 0, 0, nullptr, rate); };
    for (float rate : {0.0f, 0.4f, -44100.0f, kNaN, kInfinity, -kInfinity, 1e30f}) {
        setRate(rate);
        effect.dispatch(effSetBlockSizeAndSampleRate, 0, 64, nullptr, rate);
        EXPECT_EQ(44100.0f, effect.plugin().getSampleRate()) << rate;
        EXPECT_EQ(44100u, effect.plugin().sampleRate()) << rate;
    }
    effect.dispatch(effSetBlockSizeAndSampleRate, 0, 256, nullptr, 48000.4f);
    EXPECT_FALSE(effect.plugin().isActive());
    EXPECT_EQ(48000u, effect.plugin().sampleRate());
    effect.switchOn();
    for (float rate : {96000.0f, 1.0f, 20.0f, 41.0f, 499.0f, 1e9f}) {
        setRate(rate);
        EXPECT_TRUE(effect.plugin().isActive());
        EXPECT_EQ(rate, static_cast<float>(effect.plugin().sampleRate()));
        EXPECT_TRUE(std::isfinite(peakOf(effect.process(music)))) << rate;
    }
    for (int turn = 0; turn < 2; ++turn) { // the look-ahead takes a new rate only at the second resume
        effect.setRate(44100);
        effect.switchOff();
        effect.switchOn();
    }
    EXPECT_EQ(LoadedEffect().process(music), effect.process(music)) << "an extreme rate changed the state";
}

TEST_F(AudioPath, ProcessAsMonoMakesBothChannelsIdentical)
{
    effect.global().setProcessAsMono(true);
    effect.switchOn();
    const Audio fromLeft = effect.process(music); // the chain processes only the left channel
    EXPECT_EQ(fromLeft.left, fromLeft.right);
    const LoadedEffect stereo;
    EXPECT_EQ(stereo.process(music).left, fromLeft.left);
    stereo.global().setProcessAsMono(true); // during playback: the chain mixes both channels
    const Audio folded = stereo.process(music);
    EXPECT_EQ(folded.left, folded.right);
    EXPECT_NE(fromLeft.left, folded.left);
}

TEST_F(AudioPath, ReportsANewDelayOnlyThroughTheEditor)
{
    effect.setRate(48000);
    effect.switchOn();
    EXPECT_EQ(309u, effect.plugin().latency());
    EXPECT_EQ(305, effect->initialDelay);

    RecordingWindow window(effect.plugin());
    const auto moved = [&] { return std::ranges::count(window.codes, DSP::PluginLink::latencyMoved); };
    effect.switchOn();
    EXPECT_EQ(305, effect->initialDelay) << "the audio thread must not report the delay";
    EXPECT_EQ(0, host.count(audioMasterIOChanged));
    ASSERT_EQ(1, moved());
    effect.plugin().applyLatency();
    EXPECT_EQ(309, effect->initialDelay);
    EXPECT_EQ(1, host.count(audioMasterIOChanged));

    effect.switchOn();
    EXPECT_EQ(1, moved()) << "delay unchanged";
    effect.global().setDelayCompensation(false);
    EXPECT_EQ(2, moved());
    effect.plugin().applyLatency();
    EXPECT_EQ(0, effect->initialDelay);
}

} // namespace
