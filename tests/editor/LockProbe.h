#pragma once
#include <cstdint>

/// Watches every lock of the effect: this program has locks of its own in the place of the platform's, which
/// count. Time is a thread's own processor time, so that a busy machine changes nothing.
namespace LockProbe {

/// What a thread is to the measurement; set it from that thread.
enum class Role { other, audio, window };
void setRole(Role role);

struct Figures {
    uint64_t audioEntries = 0; // of the audio thread, the repeated ones not counted
    uint64_t windowEntries = 0;
    /// Longest time that the window thread held a lock which the audio thread takes, ns.
    uint64_t longestHold = 0;
};
/// Since the last call.
Figures take();

uint64_t threadTimeNs();

} // namespace LockProbe
