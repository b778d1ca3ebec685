#pragma once
#include <atomic>
#include <cstdint>

/// What a run does: counted for its end, and the last of it remembered for a failure, which has to be made to
/// happen again.
/// Thread  tallies any; note() the window thread's
namespace Journal {

/// Counts in relaxed order, which orders nothing else: a race between those who count has to show.
struct Tally {
    const char *const what;
    std::atomic<uint64_t> count = 0;
    void add(uint64_t more = 1) { count.fetch_add(more, std::memory_order_relaxed); }
};
inline Tally steps{"steps of the window thread"}, blocks{"blocks"}, frames{"frames"},
    valuesSet{"values set by the host"}, edits{"edits told to the host"},
    actsInsideCalls{"acts of the host inside a call"}, chunksTaken{"chunks taken"},
    chunksRefused{"chunks refused, nothing changed"}, checksAtRest{"checks at rest"};

/// Says what a failure will be told with: how to have the same choices again.
void begin(uint64_t seed, uint32_t instances);
/// Remembers what is about to be done; the text lives as long as the program.
void note(const char *what, uint32_t instance);
/// Ends the program with the way to replay it, if something does not hold.
void require(bool holds, const char *what, uint32_t instance);
void print();

} // namespace Journal
