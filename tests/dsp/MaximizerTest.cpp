#include "dsp/Maximizer.h"

#include <array>
#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>

#include "tests/dsp/Apply.h"
#include "tests/dsp/FakePlugin.h"
#include "tests/reference/Limiter.h"
#include "tests/signals/Blocks.h"
#include "tests/signals/Compare.h"

namespace {

using Reference::LimiterSettings;
using Signals::Random;
using Signals::slice;

template <class Limiter>
void limit(Limiter &limiter, Audio &audio)
{
    float *const right = audio.rightOrNull();
    if constexpr (std::is_same_v<Limiter, Reference::Limiter>)
        limiter.process(audio.frames(), audio.left.data(), right);
    else
        limiter.run(audio.frames(), audio.left.data(), right);
}

class MaximizerSeeds : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(All, MaximizerSeeds, testing::Range(0, 96));

TEST_P(MaximizerSeeds, MatchesTheReferenceThroughEveryChange)
{
    Random random(GetParam());
    Rig<DSP::Maximizer> rig;
    Reference::Limiter reference;
    const auto chooseSettings = [&] {
        const LimiterSettings settings = Reference::drawLimiter(random);
        apply(rig.component, settings);
        rig->setRatio(random.real(1, 25)); // heard by nobody
        reference.set(settings);
    };
    const auto resume = [&] {
        const uint32_t rate = drawRate(random);
        if (random.chance(0.5)) {
            rig->resetComponent();
            reference.reset();
        }
        rig.setSampleRate(rate);
        reference.setSampleRate(rate);
        return rate;
    };
    chooseSettings();
    const uint32_t rate = resume();
    auto [name, audio] = Signals::any(random.next(), rate, 40000);
    if (random.chance(0.3)) audio = Signals::mono(audio);
    const double changes = random.pick(std::array{0.0, 0.05, 0.5});
    SCOPED_TRACE(name + " at " + std::to_string(rate));
    const double loudest = peakOf(audio);

    uint32_t from = 0;
    for (uint32_t frames : cutIntoBlocks(random, audio.frames())) {
        if (random.chance(changes)) chooseSettings();
        if (random.chance(changes / 20)) resume();
        Audio actual = slice(audio, from, frames), expected = actual;
        limit(rig, actual);
        limit(reference, expected);
        ASSERT_LT(errorDb(actual, expected, loudest), std::max(-120.0, toDb(10 * reference.doubt())))
            << "frame " << from << ", " << frames << " frames";
        from += frames;
        if (!random.chance(0.1)) continue;
        ASSERT_NEAR(rig->readGainReduction(), reference.readGainReduction(), 1e-6 + reference.doubt());
    }
}

TEST_P(MaximizerSeeds, DoesNotDependOnHowTheAudioIsCut)
{
    Random random(GetParam());
    Rig<DSP::Maximizer> whole, cut;
    const LimiterSettings settings = Reference::drawLimiter(random);
    const uint32_t rate = drawRate(random);
    for (auto *rig : {&whole, &cut}) {
        apply(rig->component, settings);
        rig->resume(rate);
    }
    const Audio audio = Signals::hostile(GetParam(), rate, 20000);
    Audio expected = audio;
    limit(whole, expected);
    uint32_t from = 0;
    for (uint32_t frames : cutIntoBlocks(random, 20000)) {
        Audio actual = slice(audio, from, frames);
        limit(cut, actual);
        ASSERT_EQ(actual, slice(expected, from, frames)) << "frame " << from;
        from += frames;
    }
}

TEST(Maximizer, DelaysBy262SamplesWhenBypassedOrIdle)
{
    for (uint32_t rate : {8000u, 44100u, 192000u})
        for (bool brickwall : {false, true})
            for (bool bypass : {false, true}) {
                Rig<DSP::Maximizer> rig;
                rig.resume(rate);
                rig->setBrickwall(brickwall);
                rig->setBypass(bypass);
                if (bypass) rig->setThreshold(-20);
                const Audio input = Signals::noise(rate, 5000, bypass ? 24 : -0.1);
                Audio output = input;
                limit(rig, output);
                for (uint32_t i = 0; i < 5000; ++i) {
                    const float expected = i < 262 ? 0 : input.left[i - 262];
                    ASSERT_NEAR(output.left[i], expected, bypass ? 0 : 2e-6) << i;
                }
                EXPECT_EQ(rig->latency(), 262u);
            }
}

/// How far the loudest of `seconds` of hostile sound comes out above the ceiling.
double overshootDb(bool brickwall, int seconds)
{
    Random random(7);
    double most = -200;
    for (int second = 0; second < seconds; second += 10) {
        LimiterSettings settings = Reference::drawLimiter(random);
        settings.bypass = false;
        settings.brickwall = brickwall;
        const uint32_t rate = random.pick(std::array{22050u, 44100u, 48000u, 96000u});
        Rig<DSP::Maximizer> rig;
        apply(rig.component, settings);
        rig.resume(rate);
        Audio audio = Signals::hostile(random.next(), rate, 10 * rate);
        limit(rig, audio);
        most = std::max(most, toDb(peakOf(audio)) - settings.marginDb);
    }
    return most;
}

/// Minutes of sound; TESSARINE_LONG_TESTS=1 makes it an hour.
int hostileSeconds(int usual) { return std::getenv("TESSARINE_LONG_TESTS") ? 3600 : usual; }

TEST(Maximizer, BrickwallNeverPassesItsCeiling)
{
    const double overshoot = overshootDb(true, hostileSeconds(240));
    RecordProperty("overshootDb", std::to_string(overshoot));
    EXPECT_LT(overshoot, 0.001);
}

TEST(Maximizer, SoftModeMayPassTheCeilingButNotWithoutEnd)
{
    const double overshoot = overshootDb(false, hostileSeconds(60));
    RecordProperty("overshootDb", std::to_string(overshoot));
    std::printf("soft mode reaches %.2f dB over the ceiling\n", overshoot);
    EXPECT_GT(overshoot, 0);
    EXPECT_LT(overshoot, 24 + 20); // never more than the input itself, lifted
}

} // namespace
