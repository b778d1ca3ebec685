#pragma once
#include <bit>
#include <cfloat>
#include <climits>
#include <cmath>

#include "tests/signals/Signals.h"

using Signals::Random;

// Special cases for the effect and numeric edge cases.
inline constexpr float kOddReals[] = {
    0,       -0.0f, 1,      -1,     20,      -60,      8000,    44100,        96000,    1e5f,      -1e5f,
    0x1p31f, 1e30f, -1e30f, 1e-30f, FLT_MAX, -FLT_MAX, FLT_MIN, FLT_TRUE_MIN, INFINITY, -INFINITY, NAN};
inline constexpr uint32_t kOddWords[] = {
    0,    1,     2,      6,      38,     39,         40,      242,        243,        244,     254,
    4096, 65536, 200000, 200001, 400008, 0x0001B38A, INT_MAX, 0x80000000, 0xFFFFFFF0, UINT_MAX};

inline float anyReal(Random &random)
{
    switch (random.below(4)) {
    case 0: return random.pick(kOddReals);
    case 1: return std::bit_cast<float>(static_cast<uint32_t>(random.next()));
    default: return random.real(0, 1);
    }
}

inline uint32_t anyWord(Random &random)
{
    switch (random.below(4)) {
    case 0: return random.pick(kOddWords);
    case 1: return static_cast<uint32_t>(random.next());
    default: return random.below(48);
    }
}
