#pragma once
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "apps/tessarine/effect/EffectHost.h"

namespace App {

/// What an effect starts from: the chunk, then the settings.
struct EffectSetup {
    std::filesystem::path chunk;       // empty for none
    std::vector<std::string> settings; // each "NAME=VALUE"
};

/// The effect set up, not started yet.
/// Errors  Failure for a chunk or a setting that is refused, and for cutoffs that do not ascend
std::unique_ptr<EffectHost> makeEffect(const EffectHost::Layout &layout, const EffectSetup &setup);

/// Gives the effect the chunk in the file. What a chunk does not hold keeps its value.
/// Errors  Failure if the file cannot be read, is above 1 MiB or is refused by the effect, which then stays
/// as it was
void loadChunk(EffectHost &host, const std::filesystem::path &path);

/// Throws Failure if the cutoffs do not ascend: the crossover would silently keep the filters it had.
void requireAscendingCutoffs(const EffectHost &host);

/// One sentence if two neighbouring cutoffs are so close that the sum of the bands is not flat; else empty. A
/// cutoff of half the rate (Hz) or more has no filter and does not count.
std::string closeCutoffsWarning(const EffectHost &host, uint32_t rate);

} // namespace App
