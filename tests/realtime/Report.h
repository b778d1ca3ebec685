#pragma once
#include "tests/realtime/Watch.h"

/// What audio threads have done in their steady state.
struct Figures {
    Watch::Counts counts;
    bool armed = false;        // the kernel hands system calls over
    bool controlsFound = true; // by each of the threads
    uint64_t threads = 0, blocks = 0;
    uint64_t bypassedBlocks = 0; // went past the chain
    uint64_t waitingBlocks = 0;  // met a lock that another thread had
};

/// Prints the figures as a table, and the places of what should not be. True if all is as it has to be.
bool report(const Figures &figures);
