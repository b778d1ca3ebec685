#pragma once
#include "apps/tessarine/effect/EffectSetup.h"
#include "apps/tessarine/loudness/LoudnessChoice.h"

namespace App {

/// First pass of two: reads the file once, processes it at several limiter thresholds in parallel, and
/// chooses the parameters that reach the goal. Uses brickwall mode if it is on in `setup`, or if soft mode
/// cannot keep the maximum true peak and `setup` does not switch brickwall mode off by name.
/// Errors  Failure if the goal is out of reach or `setup` sets one of the chosen parameters; Interrupted
LoudnessChoice findLoudness(const std::filesystem::path &in, const EffectSetup &setup, bool compensate,
                            const LoudnessGoal &goal);

} // namespace App
