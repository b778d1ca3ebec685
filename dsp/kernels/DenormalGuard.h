#pragma once
#include <cstdint>

/// A square wave far below hearing that keeps filters and followers out of denormal numbers, without offset.
namespace DSP {

/// Left and right differ, so their difference is guarded too.
inline constexpr float kGuardLeft = 1e-10f, kGuardRight = 2e-10f;

/// The wave as samples, from a phase on.
struct GuardWave {
    static constexpr uint32_t kLength = 256; // valid samples behind each pointer: a whole period
    const float *left, *right;

    /// As many zeros: no guard.
    static GuardWave none();
};
GuardWave guardWave(uint8_t phase);

/// Adds a wave to a block; `right` may be null.
void addGuard(const GuardWave &wave, uint32_t frames, float *left, float *right);

/// Adds the guard to a block: plus for 128 samples, minus for 128, and so on.
/// Shape   right may be null
/// State   `phase` is the position in the wave, the caller's own, moving on only if `keep` is set: who guards
///         several buffers alike passes false until the last
/// Thread  audio, no allocation
void addDenormalGuard(uint32_t frames, float *left, float *right, uint8_t *phase, bool keep);

} // namespace DSP
