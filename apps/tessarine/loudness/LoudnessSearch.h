#pragma once
#include "apps/tessarine/effect/EffectSetup.h"
#include "apps/tessarine/loudness/LoudnessChoice.h"

namespace App {

/// The first of two passes to a wanted loudness: one reading of the file through effects side by side, all
/// with the same setup but each with another limiter threshold, and the choice from what
/// comes out of them. The soft limiter is taken if it can hold the peak, unless brickwall mode was asked for;
/// brickwall mode if it alone can, unless it was switched off by name.
/// Errors  Failure if the loudness is out of reach or `setup` itself sets what is to be chosen; Interrupted
LoudnessChoice findLoudness(const std::filesystem::path &in, const EffectSetup &setup, bool compensate,
                            const LoudnessGoal &goal);

} // namespace App
