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

    /// One block; false after the last.
    bool play()
    {
        if (next == blocks.size()) return false;
        effect.set(static_cast<int32_t>(random.below(30)), random.real(0, 1)); // no switch
        const Audio played = effect.process(Signals::slice(music, output.frames(), blocks[next++]));
        output = Signals::append(std::move(output), played);
        return true;
    }
    Audio playAll()
    {
        while (play()) {}
        return output;
    }

    Audio output;

private:
    Random random;
    uint32_t rate;
    Audio music;
    std::vector<uint32_t> blocks;
    size_t next = 0;
    LoadedEffect effect;
};

class Instances : public testing::TestWithParam<uint64_t> {
protected:
    Instances()
    {
        for (uint64_t seed = 0; seed < GetParam(); ++seed) alone.push_back(Player(seed).playAll());
        for (uint64_t seed = 0; seed < GetParam(); ++seed) players.emplace_back(seed);
    }
    void expectAsAlone() const
    {
        for (size_t i = 0; i < players.size(); ++i) EXPECT_EQ(alone[i], players[i].output) << i;
    }

    FakeHost host;
    std::vector<Audio> alone;
    std::deque<Player> players;
};
INSTANTIATE_TEST_SUITE_P(Count, Instances, testing::Values(2, 20));

TEST_P(Instances, PlayInTurnsAsEachAlone)
{
    Random random(GetParam());
    for (std::vector<Player *> playing; !playing.empty() || players.front().output.left.empty();) {
        if (playing.empty())
            for (Player &player : players) playing.push_back(&player);
        const uint32_t turn = random.below(static_cast<uint32_t>(playing.size()));
        if (!playing[turn]->play()) playing.erase(playing.begin() + turn);
    }
    expectAsAlone();
}

TEST_P(Instances, PlayInThreadsAsEachAlone)
{
    {
        std::vector<std::jthread> threads;
        for (Player &player : players) threads.emplace_back([&player] { player.playAll(); });
    }
    expectAsAlone();
}

} // namespace
