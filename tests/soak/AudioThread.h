#pragma once
#include <span>

#include "tests/soak/Studio.h"

/// Plays a group of effects, a block of each in turn: of any length, with any sound, in place or not.
class AudioThread {
public:
    /// `first` to `last`, without the last.
    AudioThread(Studio &where, uint64_t seed, uint32_t first, uint32_t last);
    void step();

private:
    struct Block;
    Block draw();
    void play(SoakedEffect &effect, const Block &block);

    Studio &studio;
    Signals::Random random;
    const uint32_t from, to;
    std::vector<float> channels[4];
};
