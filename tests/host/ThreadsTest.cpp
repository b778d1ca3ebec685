#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <thread>

#include "tests/host/FakeHost.h"
#include "tests/signals/Compare.h"

namespace {

using Signals::Random;

/// How long the threads run at least; TESSARINE_LONG_TESTS=1 asks for a minute.
std::chrono::seconds span()
{
    const char *const wish = std::getenv("TESSARINE_LONG_TESTS");
    return std::chrono::seconds(wish && wish[0] == '1' ? 60 : 0);
}

struct Threads : testing::Test {
    FakeHost host;
    const LoadedEffect effect;
    std::atomic<bool> over = false;

    /// `work` again and again until the end, with random numbers of its own. Each does so kRounds times, however
    /// little of the machine it gets.
    template <class Work>
    std::jthread repeating(Work work)
    {
        return std::jthread([this, work, random = Random(++seeds)]() mutable {
            for (int round = 1; !over; ++round) {
                work(random);
                if (round == kRounds) ++done;
            }
        });
    }
    static constexpr int kRounds = 300;
    uint64_t seeds = 0;
    std::atomic<uint64_t> done = 0;

    /// The host's window thread: states, programs, pauses, settings.
    void useProject(Random &random, const std::vector<LoadedEffect::Bytes> &chunks) const
    {
        effect.load(random.pick(chunks));
        effect.dispatch(effSetProgram);
        EXPECT_EQ(chunks[0].size(), effect.chunk().size());
        effect.global().setDelayCompensation(random.chance(0.5));
        effect.global().setProcessAsMono(random.chance(0.2));
        effect.plugin().applyLatency();
        effect.plugin().refreshServed();
        if (random.chance(0.05)) effect.switchOff();
        if (random.chance(0.05)) effect.switchOn();
    }
    /// All that an editor or a host shows.
    void look(Random &random) const
    {
        const TransformHandle &parts = effect.plugin().transformHandle();
        const auto index = static_cast<int32_t>(random.below(39));
        const uint32_t band = random.below(4);
        EXPECT_TRUE(std::isfinite(effect.get(index)));
        for (int32_t opcode : {effGetParamDisplay, effGetParamLabel, effGetParamName})
            EXPECT_NE(LoadedEffect::kUntouched, effect.text(opcode, index));
        float peaks[4] = {};
        parts.level()->read(peaks[0], peaks[1], peaks[2], peaks[3]);
        uint32_t count = 0;
        std::vector<float> seen(DSP::Meter::Spectrum::kMostMagnitudes);
        parts.spectrum(band)->readSpectrum(seen.data(), count);
        seen.insert(seen.end(), std::begin(peaks), std::end(peaks));
        seen.push_back(parts.dynamics()->readGainReduction(band));
        EXPECT_TRUE(std::isfinite(peakOf(seen)));
    }
};

TEST_F(Threads, MoveAndShowEverythingWhileAudioRuns)
{
    std::vector<LoadedEffect::Bytes> chunks = {effect.chunk()};
    Random draw(0);
    while (chunks.size() < 8) {
        effect.setAll(draw);
        chunks.push_back(effect.chunk());
    }
    const Audio music = Signals::append(Signals::music(1, 44100, 40000, 3), Signals::noise(2, 40000, 0));
    {
        const RecordingWindow window(effect.plugin());
        const std::jthread threads[] = {
            repeating([&](Random &random) { useProject(random, chunks); }),
            repeating([&](Random &random) {
                effect.set(static_cast<int32_t>(random.below(39)), random.real(-0.1, 1.1));
            }),
            repeating([&](Random &random) { look(random); }),
        };
        for (const auto end = std::chrono::steady_clock::now() + span();
             done < seeds || std::chrono::steady_clock::now() < end;) {
            Audio block = Signals::slice(music, draw.below(70000), 1 + draw.below(4096));
            if (draw.chance(0.01)) block.left[0] = std::numeric_limits<float>::quiet_NaN();
            EXPECT_TRUE(std::isfinite(peakOf(effect.process(std::move(block)))));
        }
        over = true;
    }
    effect.global().setProcessAsMono(false);
    effect.global().setDelayCompensation(true);
    const LoadedEffect fresh;
    for (const LoadedEffect *each : {&effect, &fresh}) {
        each->load(chunks[3]);
        each->switchOff();
        each->switchOn();
    }
    EXPECT_EQ(fresh.process(music), effect.process(music)) << "nothing of it stays";
}

} // namespace
