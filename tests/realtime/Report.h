#pragma once
#include "tests/realtime/RealtimeCheck.h"

/// Sums over all audio threads, each in its steady state.
struct Figures {
    RealtimeCheck::Counts counts;
    bool armed = false;         // the kernel traps system calls
    bool selfTestPassed = true; // on every audio thread
    uint64_t threads = 0, blocks = 0;
    uint64_t bypassedBlocks = 0;
    uint64_t waitingBlocks = 0; // waited for a lock that another thread held
};

/// Prints a table, and the backtraces of all findings. Returns true if the audio threads were real-time safe.
bool report(const Figures &figures);
