#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <deque>
#include <functional>
#include <thread>

#include "tests/host/FakeHost.h"
#include "tests/signals/Blocks.h"
#include "tests/signals/Compare.h"

namespace {

using Signals::Random;

/// Plays one effect; `seed` decides rate, settings, audio, block sizes and automation.
struct Player {
    explicit Player(uint64_t seed) : random(seed)
    {
        effect.setRate(rate);
        effect.setAll(random);
        effect.switchOn();
    }
    void play()
    {
        const Audio music = Signals::music(random.next(), rate, 10000, 3);
        for (const uint32_t frames : cutIntoBlocks(random, music.frames())) {
            effect.set(static_cast<int32_t>(random.below(30)), random.real(0, 1)); // below the band switches
            const Audio played = effect.process(Signals::slice(music, output.frames(), frames));
            output = Signals::append(std::move(output), played);
        }
    }

    Random random;
    const uint32_t rate = drawRate(random);
    LoadedEffect effect;
    Audio output;
};

TEST(Instances, PlayIdenticallyInThreadsAndAlone)
{
    FakeHost host;
    std::deque<Player> alone, together;
    std::vector<std::jthread> threads;
    for (uint64_t seed = 0; seed < 12; ++seed) {
        alone.emplace_back(seed).play();
        together.emplace_back(seed);
    }
    for (Player &player : together) threads.emplace_back([&player] { player.play(); });
    for (std::jthread &thread : threads) thread.join();
    for (size_t i = 0; i < alone.size(); ++i) EXPECT_EQ(alone[i].output, together[i].output) << i;
}

/// One turn of the host's window thread: loads states and programs, suspends, changes settings.
void useHostControls(const LoadedEffect &effect, Random &random,
                     const std::vector<LoadedEffect::Bytes> &chunks)
{
    effect.load(random.pick(chunks));
    effect.dispatch(effSetProgram);
    EXPECT_EQ(chunks[0].size(), effect.chunk().size());
    effect.global().setDelayCompensation(random.chance(0.5));
    effect.global().setProcessAsMono(random.chance(0.2));
    effect.plugin().applyLatency();
    if (random.chance(0.05)) effect.switchOff();
    if (random.chance(0.05)) effect.switchOn();
}

/// Reads everything that an editor shows.
void readMeters(const LoadedEffect &effect, Random &random)
{
    const TransformHandle &parts = effect.plugin().transformHandle();
    EXPECT_NE(LoadedEffect::kUntouched,
              effect.text(effGetParamDisplay, static_cast<int32_t>(random.below(39))));
    float seen[5] = {};
    parts.level()->read(seen[0], seen[1], seen[2], seen[3]);
    seen[4] = parts.dynamics()->readGainReduction(random.below(4));
    EXPECT_TRUE(std::isfinite(peakOf(seen)));
    uint32_t count = 0;
    std::vector<float> magnitudes(DSP::Meter::Spectrum::kMostMagnitudes);
    parts.spectrum(random.below(4))->readSpectrum(magnitudes.data(), count);
    EXPECT_TRUE(std::isfinite(peakOf(magnitudes)));
}

TEST(Threads, ChangesAndMetersWhilePlayingHaveNoLastingEffect)
{
    FakeHost host;
    const LoadedEffect effect, fresh;
    Random draw(0);
    std::vector<LoadedEffect::Bytes> chunks;
    while (chunks.size() < 8) {
        effect.setAll(draw);
        chunks.push_back(effect.chunk());
    }
    const std::function<void(Random &)> works[] = {
        [&](Random &random) { useHostControls(effect, random, chunks); },
        [&](Random &random) { effect.set(static_cast<int32_t>(random.below(39)), random.real(-0.1, 1.1)); },
        [&](Random &random) { readMeters(effect, random); }};
    const int rounds = seedCount(300); // of each thread, even on a busy machine
    const Audio music = Signals::append(Signals::music(1, 44100, 40000, 3), Signals::noise(2, 40000, 0));
    {
        const RecordingWindow window(effect.plugin());
        std::atomic<size_t> done = 0;
        std::vector<std::jthread> threads;
        for (const auto &work : works)
            threads.emplace_back([&, random = Random(threads.size())]() mutable {
                for (int round = 1; done < std::size(works); ++round) {
                    work(random);
                    if (round == rounds) ++done;
                }
            });
        while (done < std::size(works)) {
            Audio block = Signals::slice(music, draw.below(70000), 1 + draw.below(4096));
            if (draw.chance(0.01)) block.left[0] = std::nanf("");
            EXPECT_TRUE(std::isfinite(peakOf(effect.process(std::move(block)))));
        }
    }
    effect.global().setProcessAsMono(false);
    effect.global().setDelayCompensation(true);
    for (const LoadedEffect *each : {&effect, &fresh}) {
        each->load(chunks[3]);
        each->switchOff();
        each->switchOn();
    }
    EXPECT_EQ(fresh.process(music), effect.process(music));
}

} // namespace
