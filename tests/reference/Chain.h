#pragma once
#include "tests/reference/CrossOver.h"
#include "tests/reference/Dynamics.h"
#include "tests/reference/Level.h"
#include "tests/reference/Maximizer.h"
#include "tests/reference/Spectrum.h"

namespace Reference {

/// The whole signal path: input, denormal guard, crossover, compressors, sum, limiter, gain, meter.
class Chain {
public:
    /// The spectrum of each band is analysed `stagger` samples after the next lower band's.
    explicit Chain(uint32_t stagger = 0)
        : spectra{Spectrum(0), Spectrum(stagger), Spectrum(2 * stagger), Spectrum(3 * stagger)}
    {
    }
    void set(const Settings &next);
    void resume(uint32_t hz);
    void reset();
    /// Processes one block. Needs the block sizes of the effect under test, as crossfades depend on them.
    Audio process(Audio input);
    /// Largest gain error that rounding can cause.
    float roundingBound() const { return dynamics.roundingBound() + maximizer.roundingBound(); }
    uint32_t latency() const { return dynamics.latency() + 262; }

    CrossOver crossOver;
    Dynamics dynamics;
    Maximizer maximizer;
    Level level;
    Spectrum spectra[4];

private:
    void run(Audio &audio);

    uint32_t sampleRate = 44100;
    Settings settings;
    bool monoActive = false;
    uint8_t inputGuardPhase = 0, splitGuardPhase = 0, sumGuardPhase = 0;
};

} // namespace Reference
