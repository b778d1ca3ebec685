#pragma once
#include "tests/reference/CrossOver.h"
#include "tests/reference/Dynamics.h"
#include "tests/reference/Level.h"
#include "tests/reference/Maximizer.h"
#include "tests/reference/Spectrum.h"

namespace Reference {

/// The whole effect behind the host shell: input, guard, bands, compressors, sum, limiter, gain, meter.
class Chain {
public:
    /// Each band's spectrum is analysed `stagger` samples later than that of the band below.
    explicit Chain(uint32_t stagger = 0)
        : spectra{Spectrum(0), Spectrum(stagger), Spectrum(2 * stagger), Spectrum(3 * stagger)}
    {
    }
    void set(const Settings &next);
    void resume(uint32_t hz);
    void reset();
    /// One block, as long as the host's.
    Audio process(Audio input);
    /// Bound of what rounding may add to a gain.
    float doubt() const { return dynamics.doubt() + maximizer.doubt(); }
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
