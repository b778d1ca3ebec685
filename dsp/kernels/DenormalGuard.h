#pragma once
#include <cstdint>

/// An inaudible square wave without DC that keeps filters and envelope followers out of the denormal range.
namespace DSP {

/// Amplitudes; they differ so that left - right does not become denormal either.
inline constexpr float kGuardLeft = 1e-10f, kGuardRight = 2e-10f;

/// One period of the wave, starting at any phase.
struct GuardWave {
    static constexpr uint32_t kLength = 256; // samples in a period, and readable at each pointer
    const float *left, *right;

    /// Returns kLength zeros: no guard.
    static GuardWave none();
};
GuardWave guardWave(uint8_t phase);

/// Adds a wave to a block of any length; `right` may be null.
void addGuard(const GuardWave &wave, uint32_t frames, float *left, float *right);

/// Adds the guard to a block: positive for 128 samples, negative for 128, and so on.
/// Shape   `right` may be null
/// State   `phase` is the caller's position in the wave; it advances only if `keep` is true. To add the same
///         wave to several buffers, pass false for every buffer except the last
/// Thread  audio, no allocation
void addDenormalGuard(uint32_t frames, float *left, float *right, uint8_t *phase, bool keep);

} // namespace DSP
