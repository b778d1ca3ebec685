#pragma once
#include <memory>

#include "apps/tessarine/AudioReader.h"
#include "apps/tessarine/EffectHost.h"
#include "apps/tessarine/Options.h"

namespace App {

/// The effect for one file, with the chunk and then the settings of the command line; not started yet.
/// Errors  Failure for a chunk or a setting that is refused, and for cutoffs that do not ascend
std::unique_ptr<EffectHost> makeEffect(const RenderOptions &options, const AudioReader &reader,
                                       uint32_t blockFrames);

} // namespace App
