#pragma once
#include "tests/realtime/AudioThread.h"

/// Prints the figures as a table, and the places of what should not be. True if all is as it has to be.
bool report(const Figures &figures, uint64_t settings, uint64_t messages);
