#include <algorithm>
#include <bit>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

#include "dsp/kernels/Kernels.h"

namespace {

using DSP::Kernels::available;

constexpr float kMost = std::numeric_limits<float>::max();

/// Every `stride`-th float from `low` to `high`.
std::vector<float> floats(float low, float high, uint32_t stride)
{
    std::vector<float> list;
    for (uint32_t bits = std::bit_cast<uint32_t>(low); bits <= std::bit_cast<uint32_t>(high); bits += stride)
        list.push_back(std::bit_cast<float>(bits));
    list.push_back(high);
    return list;
}

std::vector<float> powers(const DSP::Kernels::Table &table, const std::vector<float> &bases, float exponent)
{
    std::vector<float> results(bases.size());
    table.power.power(bases.data(), exponent, results.data(), int(bases.size()));
    return results;
}

/// Largest error in ULPs of a 32-bit float.
double worstError(const std::vector<float> &bases, float exponent)
{
    const std::vector<float> results = powers(*available().back(), bases, exponent);
    long double worst = 0;
    for (size_t i = 0; i < bases.size(); ++i) {
        const long double truth = powl(bases[i], exponent);
        worst = std::max(worst, std::fabs(results[i] - truth) /
                                    std::ldexp(1.0L, std::max(std::ilogb(truth), -126) - 23));
    }
    return static_cast<double>(worst);
}

TEST(Power, StaysWithinTwoUlpsOverTheWholeRange)
{
    for (const auto &bases :
         {floats(1.0f, kMost, 4999), floats(0.5f, 2.5f, 503), floats(0x1p-100f, 1.0f, 49999)})
        for (float exponent : {-1.0f, 1.0f / 30 - 1, -0.9f, -0.5f, -1.0f / 3, -0.01f, 0.77f})
            EXPECT_LT(worstError(bases, exponent), 1.75) << exponent << " from " << bases[0];
}

TEST(Power, IsNeverNaNAndIsOneForBaseOneOrExponentZero)
{
    const float infinity = HUGE_VALF, nan = std::nanf("");
    const std::vector<float> odd = {0.0f, -0.0f, 1e-45f, 2.0f, kMost, infinity, -1.0f, -infinity, nan};
    for (const auto *table : available()) {
        for (float exponent : {-infinity, -1e30f, -1.0f, -1e-40f, 0.0f, 1e-40f, 1.0f, 77.0f, infinity, nan})
            for (float result : powers(*table, odd, exponent)) EXPECT_FALSE(std::isnan(result)) << exponent;
        for (float exponent : {-1.0f, -0.7f, -1e-9f, 0.0f, 0.3f, 1.0f})
            EXPECT_EQ(powers(*table, {1.0f}, exponent)[0], 1.0f) << exponent;
        for (float one : powers(*table, {1e-30f, 0.1f, 7.0f, kMost}, 0.0f)) EXPECT_EQ(one, 1.0f);
    }
}

} // namespace
