#include "apps/tessarine/files/Dither.h"

namespace App {

namespace {

/// Rounds to the nearest whole number, ties to even, for magnitudes below 2^51.
double nearest(double value)
{
    constexpr double kShift = 6755399441055744.0; // 1.5 x 2^52: the sum has no fraction bits
    return (value + kShift) - kShift;
}

/// Marsaglia, "Xorshift RNGs", 2003.
uint32_t next(uint32_t &state)
{
    state ^= state << 13;
    state ^= state >> 17;
    state ^= state << 5;
    return state;
}

/// Triangular distribution between -1 and 1: the difference of two uniform values.
double triangular(uint32_t random)
{
    constexpr double kUnit = 1.0 / 65536.0;
    return (static_cast<int32_t>(random >> 16) - static_cast<int32_t>(random & 0xFFFF)) * kUnit;
}

double roundOne(float sample, double scale, uint32_t random)
{
    const double exact = static_cast<double>(sample) * scale, whole = nearest(exact);
    const double dithered = nearest(exact + triangular(random));
    return exact == whole ? whole : dithered;
}

} // namespace

Dither::Dither(bool wanted) : on(wanted)
{
    uint32_t seed = 2463534242;
    for (uint32_t &each : state) {
        for (int i = 0; i < 64; ++i) next(seed);
        each = seed;
    }
}

void Dither::round(const float *samples, double scale, size_t count)
{
    values.resize(count);
    if (!on) {
        for (size_t i = 0; i < count; ++i) values[i] = nearest(static_cast<double>(samples[i]) * scale);
        return;
    }
    size_t i = 0;
    for (; i < count && lane != 0; ++i, lane = (lane + 1) % kLanes)
        values[i] = roundOne(samples[i], scale, next(state[lane]));
    for (; i + kLanes <= count; i += kLanes) {
        for (size_t k = 0; k < kLanes; ++k) values[i + k] = roundOne(samples[i + k], scale, next(state[k]));
    }
    for (; i < count; ++i, ++lane) values[i] = roundOne(samples[i], scale, next(state[lane]));
}

} // namespace App
