#pragma once
#include <cstdint>
#include <span>

#include "dsp/kernels/CrossOverKernels.h"

namespace DSP {

/// One complete set of crossover filters for two channels and four bands, with its own state.
class FilterBank {
public:
    /// Designs all filters for ascending `cutoffsHz` (three) and clears their state. Cutoffs at or above half
    /// the rate are left out, and the bands above them are silent.
    void design(std::span<const float> cutoffsHz, uint32_t sampleRate);
    void clear() { state = {}; }
    /// Writes `frames` samples of each band, with the denormal guard from `guardPhase` on if it is not
    /// null. `right` is null for mono, and then the right outputs are not used. False if a filter has lost
    /// its stability, as an absurd rate or cutoff can make it: what was written is then no sound.
    bool run(uint32_t frames, const float *left, const float *right, float *const *outLeft,
             float *const *outRight, const uint8_t *guardPhase);

private:
    void filter(uint32_t frames, const float *left, const float *right, float *const *outLeft,
                float *const *outRight, const uint8_t *guardPhase);

    Kernels::FilterBankCoeffs coeffs;
    Kernels::FilterBankState state;
    uint32_t bandsInUse = 1;
};

} // namespace DSP
