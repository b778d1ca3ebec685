#pragma once
#include <cstdint>
#include <vector>

#include "tests/host/FakeHost.h"

using Bytes = std::vector<uint8_t>;

/// Ends the program, whereupon the fuzzer keeps the input that led here.
void require(bool holds, const char *what);

/// The one effect of a fuzzer, switched on and with every parameter away from its default. It serves all inputs,
/// so each begins with reset(): what an input finds must not depend on those before it.
class FuzzedEffect {
public:
    static FuzzedEffect &instance();

    /// Loads the parameters of the start, which also has to give the start's chunk again.
    void reset();

    Bytes chunk() const;
    bool setChunk(const Bytes &chunk, bool isPreset) const;
    std::vector<float> parameters() const;
    const Bytes &startChunk() const { return start; }
    const LoadedEffect &loaded() const { return effect; }

    // Required of the effect, whatever it has been told.
    void requireFiniteParameters() const;
    void requireTextsThatFit() const;
    void requireFiniteSound() const; // of a block that begins in a chain without a past

private:
    FuzzedEffect();

    FakeHost host;
    LoadedEffect effect;
    Bytes start;
};
