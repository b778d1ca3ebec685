#pragma once
#include <string>

#include "dsp/stages/CrossOver.h"

namespace App {

/// Throws Failure if the cutoffs do not ascend: the crossover would silently keep the filters it had.
void requireAscendingCutoffs(const DSP::CrossOver &crossOver);

/// One sentence if two neighbouring cutoffs are so close that the sum of the bands is not flat; else empty. A
/// cutoff of half the rate (Hz) or more has no filter and does not count.
std::string closeCutoffsWarning(const DSP::CrossOver &crossOver, uint32_t rate);

} // namespace App
