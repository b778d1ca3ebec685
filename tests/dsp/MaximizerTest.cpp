#include "dsp/stages/Maximizer.h"

#include <array>
#include <gtest/gtest.h>

#include "tests/dsp/Apply.h"
#include "tests/dsp/FakePlugin.h"
#include "tests/reference/Maximizer.h"
#include "tests/signals/Blocks.h"
#include "tests/signals/Compare.h"

namespace {

using Reference::MaximizerSettings;
using Signals::Random;
using Signals::slice;

class MaximizerSeeds : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(All, MaximizerSeeds, testing::Range(0, seedCount(32)));

TEST_P(MaximizerSeeds, MatchesTheReferenceThroughEveryChange)
{
    Random random(GetParam());
    Rig<DSP::Maximizer> rig;
    Reference::Maximizer reference;
    const auto chooseSettings = [&] {
        const MaximizerSettings settings = Reference::drawMaximizer(random);
        apply(rig.component, settings);
        rig->setRatio(random.real(1, 25)); // heard by nobody
        reference.set(settings);
    };
    chooseSettings();
    const uint32_t rate = rig.drawRate(random, reference);
    auto [name, audio] = Signals::any(random.next(), rate, 40000);
    if (random.chance(0.3)) audio = Signals::mono(audio);
    const double changes = random.pick(std::array{0.0, 0.05, 0.5});
    SCOPED_TRACE(name + " at " + std::to_string(rate));
    const double loudest = peakOf(audio);

    uint32_t from = 0;
    for (uint32_t frames : cutIntoBlocks(random, audio.frames())) {
        if (random.chance(changes)) chooseSettings();
        if (random.chance(changes / 20)) rig.drawRate(random, reference);
        Audio actual = slice(audio, from, frames), expected = actual;
        rig.run({frames, actual.left.data(), actual.rightOrNull()});
        reference.process(frames, expected.left.data(), expected.rightOrNull());
        ASSERT_LT(errorDb(actual, expected, loudest), std::max(-120.0, toDb(10 * reference.doubt())))
            << "frame " << from << ", " << frames << " frames";
        from += frames;
        if (!random.chance(0.1)) continue;
        ASSERT_NEAR(rig->readGainReduction(), reference.readGainReduction(), 1e-6 + reference.doubt());
    }
}

} // namespace
