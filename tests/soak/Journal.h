#pragma once
#include <atomic>
#include <cstdint>

/// What a run does: counted for its end, and the last of it remembered for a failure, which has to be made to
/// happen again.
/// Thread  counters any; note() the window thread's
namespace Journal {

struct Counts {
    std::atomic<uint64_t> windowSteps, blocks, frames, valuesSet, pauses, editorsOpened, editorsClosed,
        personActions, edits, actsInsideCalls, chunksTaken, chunksRefused, settings, envelopes, reloads,
        idleChecks;
};
extern Counts counts;

/// Says what a failure will be told with: how to have the same choices again.
void begin(uint64_t seed, uint32_t instances);
/// Remembers what is about to be done; the text lives as long as the program.
void note(const char *what, uint32_t instance);
/// Ends the program with the way to replay it, if something does not hold.
void require(bool holds, const char *what, uint32_t instance);
void print(double seconds);

} // namespace Journal
