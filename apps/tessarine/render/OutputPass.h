#pragma once
#include <vector>

#include "apps/tessarine/effect/EffectPass.h"
#include "apps/tessarine/files/AudioWriter.h"
#include "apps/tessarine/loudness/LoudnessMeter.h"
#include "apps/tessarine/render/History.h"

namespace App {

/// Writes and measures the effect's output.
/// Thread  one at a time, which need not be the effect's
class OutputPass {
public:
    struct Layout {
        uint32_t rate, channels;
        uint32_t delay; // of the effect, in samples
        uint64_t inBegin, outBegin,
            length = 0; // frames of the pass that are part of the input and of the output
        double mix;     // share of the effect's output in a mix with that of the neutral effect, 0 to 1
    };
    /// `delta` receives the output minus the input; null for none.
    OutputPass(const Layout &layout, AudioWriter &writer, AudioWriter *delta);

    /// `columns` divide the chunk and contain its gains.
    void take(const Chunk &chunk, const std::vector<Column> &columns);

    LoudnessMeter::Figures inFigures() { return loudnessIn.figures(); }
    LoudnessMeter::Figures outFigures() { return loudnessOut.figures(); }
    const History &history() const { return measured; }

private:
    void mixWithNeutral(const Chunk &chunk);
    void writeDelta(uint32_t first, uint32_t frames);
    void addColumns(const Chunk &chunk, const std::vector<Column> &columns);

    const Layout layout;
    AudioWriter &writer;
    AudioWriter *const deltaWriter;
    LoudnessMeter loudnessIn, loudnessOut;
    History measured;
    std::vector<float>
        aligned; // input, delayed like the output: that of the chunk after the latest `delay` frames
    std::vector<float> out, neutral, difference;
};

} // namespace App
