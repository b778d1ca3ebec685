#pragma once
#include "tests/soak/Studio.h"

/// Sets and reads parameters, pauses and resumes, from a thread that neither plays nor has windows.
class AutomationThread {
public:
    AutomationThread(Studio &where, uint64_t seed) : studio(where), random(seed) {}
    void step();

private:
    Studio &studio;
    Signals::Random random;
};
