#pragma once
#include <atomic>
#include <cstdint>

/// Counts actions for the summary, and stores the latest ones for failure messages.
/// Thread: tallies any; note() the window thread
namespace Journal {

/// Counts in relaxed order: a stricter one would hide races between the counting threads.
struct Tally {
    const char *const what;
    std::atomic<uint64_t> count = 0;
    void add(uint64_t more = 1) { count.fetch_add(more, std::memory_order_relaxed); }
};
inline Tally steps{"steps of the window thread"}, blocks{"blocks"}, frames{"frames"},
    valuesSet{"values set by the host"}, edits{"edits reported to the host"},
    nestedCalls{"nested calls by the host"}, chunksLoaded{"damaged chunks accepted"},
    chunksRefused{"damaged chunks refused without a change"}, idleChecks{"checks while idle"};

/// Records the seed, so that a failure message can say how to replay it.
void begin(uint64_t seed, uint32_t instances);
/// Stores the action that is about to begin. `what` must be a literal.
void note(const char *what, uint32_t instance);
/// Unless `holds`, prints `what` and how to replay the run, then aborts.
void require(bool holds, const char *what, uint32_t instance);
void print();

} // namespace Journal
