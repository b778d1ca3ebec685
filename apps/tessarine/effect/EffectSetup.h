#pragma once
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "apps/tessarine/effect/EffectHost.h"

namespace App {

/// Initial state of an effect: the chunk is loaded first, then the settings are applied.
struct EffectSetup {
    std::filesystem::path chunk;       // empty for none
    std::vector<std::string> settings; // each "NAME=VALUE"
};

/// Makes an effect and sets it up; the caller starts it.
/// Errors  Failure if the chunk or a setting is refused, or if the cutoffs do not ascend
std::unique_ptr<EffectHost> makeEffect(const EffectHost::Layout &layout, const EffectSetup &setup);

/// The same setup without compression, limiting and gain. The crossover stays, so that the signal has the phase and the
/// delay of the effect's output and can be mixed with it: the unprocessed input would cancel parts of it.
EffectSetup neutralSetup(const EffectSetup &setup);

/// Loads the chunk from the file. Parameters that are not in the chunk keep their values.
/// Errors  Failure if the file cannot be read or is larger than 1 MiB, or if the effect refuses it; the
/// effect is then unchanged
void loadChunk(EffectHost &host, const std::filesystem::path &path);

/// Returns the first of the parameters called `names` that the chunk changes from its default, with the
/// chunk's value: "Gain=3.00". Returns an empty string if there is none.
/// Errors  Failure as for loadChunk
std::string changedByChunk(const std::filesystem::path &chunk, std::span<const char *const> names);

/// Throws Failure if the cutoffs do not ascend; the crossover would silently keep its previous filters.
void requireAscendingCutoffs(const EffectHost &host);

/// Returns a warning if two neighbouring cutoffs are so close that the sum of the bands is not flat, else an
/// empty string. Ignores cutoffs at or above Nyquist, which have no filter. `rate` in Hz.
std::string closeCutoffsWarning(const EffectHost &host, uint32_t rate);

} // namespace App
