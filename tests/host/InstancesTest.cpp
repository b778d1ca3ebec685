#include <gtest/gtest.h>

#include <deque>
#include <thread>

#include "tests/host/FakeHost.h"
#include "tests/signals/Blocks.h"
#include "tests/signals/Compare.h"

namespace {

using Signals::Random;

/// An effect that plays: its rate, settings, sound, blocks and automation are all drawn from the seed.
class Player {
public:
    explicit Player(uint64_t seed)
        : random(seed),
          rate(drawRate(random)),
          music(Signals::music(seed, rate, 10000, 3)),
          blocks(cutIntoBlocks(random, music.frames()))
    {
        effect.setRate(rate);
        effect.setAll(random);
        effect.switchOn();
    }

    Audio playAll()
    {
        for (const uint32_t frames : blocks) {
            effect.set(static_cast<int32_t>(random.below(30)), random.real(0, 1)); // no switch
            const Audio played = effect.process(Signals::slice(music, output.frames(), frames));
            output = Signals::append(std::move(output), played);
        }
        return output;
    }

    Audio output;

private:
    Random random;
    uint32_t rate;
    Audio music;
    std::vector<uint32_t> blocks;
    LoadedEffect effect;
};

TEST(Instances, PlayInThreadsAsEachAlone)
{
    constexpr uint64_t kCount = 12;
    FakeHost host;
    std::vector<Audio> alone;
    std::deque<Player> players;
    for (uint64_t seed = 0; seed < kCount; ++seed) alone.push_back(Player(seed).playAll());
    for (uint64_t seed = 0; seed < kCount; ++seed) players.emplace_back(seed);
    {
        std::vector<std::jthread> threads;
        for (Player &player : players) threads.emplace_back([&player] { player.playAll(); });
    }
    for (size_t i = 0; i < kCount; ++i) EXPECT_EQ(alone[i], players[i].output) << i;
}

} // namespace
