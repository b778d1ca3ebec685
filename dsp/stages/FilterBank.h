#pragma once
#include <cstdint>
#include <span>

#include "dsp/component/Block.h"
#include "dsp/kernels/CrossOverKernels.h"
#include "dsp/kernels/DenormalGuard.h"

namespace DSP {

/// All crossover filters for two channels and four bands, with their state.
class FilterBank {
public:
    /// Designs all filters for three ascending cutoffs and clears their state. Cutoffs at or above Nyquist are
    /// skipped; the bands above them are silent.
    void design(std::span<const float> cutoffsHz, uint32_t sampleRate);
    void clear() { state = {}; }
    /// Writes the bands of a block and adds the guard to each. Returns false if a filter has become unstable,
    /// which an absurd rate or cutoff can cause; the bands are then invalid.
    bool run(const Block &block, const GuardWave &guard);

private:
    void filter(const Block &block, const GuardWave &guard);

    Kernels::FilterBankCoeffs coeffs;
    Kernels::FilterBankState state;
    uint32_t bandsInUse = 1;
};

} // namespace DSP
