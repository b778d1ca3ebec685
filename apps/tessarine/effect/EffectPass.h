#pragma once
#include <cstdint>
#include <functional>
#include <vector>

#include "apps/tessarine/effect/EffectHost.h"
#include "apps/tessarine/files/AudioReader.h"

namespace App {

/// Consecutive frames of a file and the effect's output for them, which lags by the effect's delay.
struct Chunk {
    uint64_t position = 0; // of the first frame, counted from the start of the pass
    uint32_t frames = 0;
    std::vector<float> in;                        // interleaved
    std::vector<float> left, right;               // output; `right` is silent for mono
    std::vector<float> neutralLeft, neutralRight; // output of the neutral effect, if there is one
};

/// Reads a file from the reader's position and processes it with a started effect. Continues with silence after the
/// end of the file, which flushes the effect's delay.
class EffectPass {
public:
    /// `blockFrames` is the size of the effect's blocks. `neutral` processes the same input; null for none.
    EffectPass(AudioReader &reader, EffectHost &host, uint32_t blockFrames, EffectHost *neutral = nullptr);

    /// Processes the next `frames` frames. Calls `afterBlock`, if set, with the size of each block.
    void run(uint32_t frames, Chunk &chunk);
    std::function<void(uint32_t)> afterBlock;

    double effectSeconds() const { return seconds; } // elapsed time inside the effect

private:
    void separateInput(const Chunk &chunk, std::vector<float> &left, std::vector<float> &right) const;

    AudioReader &reader;
    EffectHost &host;
    EffectHost *const neutral;
    const uint32_t blockFrames;
    uint64_t position = 0;
    double seconds = 0.0;
};

} // namespace App
