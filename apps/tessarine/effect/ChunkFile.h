#pragma once
#include <filesystem>

#include "apps/tessarine/effect/EffectHost.h"

namespace App {

/// Gives the effect the chunk in the file. What a chunk does not hold keeps its value.
/// Errors  Failure if the file cannot be read, is above 1 MiB or is refused by the effect, which then stays
/// as it was
void loadChunk(EffectHost &host, const std::filesystem::path &path);

} // namespace App
