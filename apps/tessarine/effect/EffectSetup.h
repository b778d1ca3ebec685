#pragma once
#include <memory>

#include "apps/tessarine/commands/Options.h"
#include "apps/tessarine/effect/EffectHost.h"
#include "apps/tessarine/files/AudioReader.h"

namespace App {

/// The effect for one file, with the chunk and then the settings of the command line; not started yet.
/// Errors  Failure for a chunk or a setting that is refused, and for cutoffs that do not ascend
std::unique_ptr<EffectHost> makeEffect(const RenderOptions &options, const AudioReader &reader,
                                       uint32_t blockFrames);

} // namespace App
