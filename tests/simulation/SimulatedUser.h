#pragma once
#include "tests/simulation/Choices.h"
#include "tests/simulation/SimulatedHost.h"

/// Random clicks, drags, wheel turns and keys anywhere in the editors.
class SimulatedUser {
public:
    explicit SimulatedUser(SimulatedHost &simulated) : host(simulated) {}
    /// Uses one editor once. The host may close it or make other calls in the middle.
    void step(Random &random);
    /// Uses the editor of effect `i` once. Calls `meanwhile` after each move of a drag.
    void use(uint32_t i, Random &random, const std::function<void()> &meanwhile);
    void use(uint32_t i, Random &random)
    {
        use(i, random, [] {});
    }

private:
    void interruptDrag(uint32_t i, Random &random);
    /// Calls that a host may make while it handles a callback of effect `i`.
    void actInside(uint32_t i, Random &random);

    SimulatedHost &host;
};
