#pragma once
#include "apps/tessarine/commands/Options.h"
#include "apps/tessarine/loudness/LoudnessChoice.h"

namespace App {

/// The first of two passes to a wanted loudness: one reading of the file through effects side by side, all
/// with the settings of the command line but each with another limiter threshold, and the choice from what
/// comes out of them. The soft limiter is taken if it can hold the peak, unless brickwall mode was asked for;
/// brickwall mode if it alone can, unless it was switched off by name.
/// Errors  Failure if the loudness is out of reach or `options` themselves set what is to be chosen; Interrupted
LoudnessChoice findLoudness(const RenderOptions &options);

} // namespace App
