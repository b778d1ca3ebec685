#pragma once
#include <cstdint>
#include <span>

#include "dsp/component/Block.h"
#include "dsp/kernels/CrossOverKernels.h"
#include "dsp/kernels/DenormalGuard.h"

namespace DSP {

/// One complete set of crossover filters for two channels and four bands, with its own state.
class FilterBank {
public:
    /// Designs all filters for ascending `cutoffsHz` (three) and clears their state. Cutoffs at or above half
    /// the rate are left out, and the bands above them are silent.
    void design(std::span<const float> cutoffsHz, uint32_t sampleRate);
    void clear() { state = {}; }
    /// Writes the bands of a block, with a guard added to each. False if a filter has lost its stability, as an
    /// absurd rate or cutoff can make it: the bands then hold garbage.
    bool run(const Block &block, const GuardWave &guard);

private:
    void filter(const Block &block, const GuardWave &guard);

    Kernels::FilterBankCoeffs coeffs;
    Kernels::FilterBankState state;
    uint32_t bandsInUse = 1;
};

} // namespace DSP
