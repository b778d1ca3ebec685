#include "dsp/kernels/Fft.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <complex>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <vector>

namespace {

using namespace DSP;
using DSP::Kernels::available;
using Buffer = Util::AlignedBuffer<float>;

using Bin = std::complex<long double>;

/// Discrete Fourier transform by direct summation.
std::vector<Bin> directTransform(const Buffer &in)
{
    const size_t length = in.size();
    std::vector<Bin> unit(length), bins(length / 2 + 1);
    for (size_t n = 0; n < length; ++n) unit[n] = std::polar(1.0L, -2 * std::acos(-1.0L) * n / length);
    for (size_t k = 0; k < bins.size(); ++k)
        for (size_t n = 0; n < length; ++n) bins[k] += (long double)in[n] * unit[n * k % length];
    return bins;
}

/// Noise with a DC offset.
Buffer offsetNoise(size_t length)
{
    Buffer samples(length);
    std::mt19937 random(11);
    for (float &sample : samples) sample = 0.1f + float(int32_t(random())) * 0x1p-31f;
    return samples;
}

Buffer forward(const FftPlan &plan, const Buffer &in)
{
    Buffer out(size_t(plan.length()) + 2), work(plan.workLength());
    plan.forward(in.data(), out.data(), work.data());
    return out;
}

/// Magnitudes with a rectangular window, or `before` where that is higher. Shape: [in.size() / 2 + 1]
Buffer magnitudesOf(const FftPlan &plan, const Buffer &in, float before = 0)
{
    Buffer window(in.size()), magnitudes(in.size() / 2 + 1), work(plan.workLength());
    std::fill(window.begin(), window.end(), 1.0f);
    std::fill(magnitudes.begin(), magnitudes.end(), before);
    plan.raiseMagnitudes(in.data(), window.data(), magnitudes.data(), work.data());
    return magnitudes;
}

bool sameBits(const Buffer &a, const Buffer &b)
{
    return std::ranges::equal(a, b, {}, std::bit_cast<uint32_t, float>, std::bit_cast<uint32_t, float>);
}

class Fft : public testing::TestWithParam<int> {};

TEST_P(Fft, MatchesTheDirectTransformInEveryVariant)
{
    const size_t length = size_t(1) << GetParam();
    const Buffer sound = offsetNoise(length);
    const std::vector<Bin> expected = directTransform(sound);
    long double largest = 0;
    for (const Bin &bin : expected) largest = std::max(largest, std::abs(bin));
    const auto tolerance = double(4e-7L * largest);
    const FftPlan baseline(GetParam(), *available().front());
    const Buffer bins = forward(baseline, sound), magnitudes = magnitudesOf(baseline, sound);
    for (size_t k = 0; k < expected.size(); ++k) {
        ASSERT_NEAR(bins[2 * k], static_cast<double>(expected[k].real()), tolerance) << k;
        ASSERT_NEAR(bins[2 * k + 1], static_cast<double>(expected[k].imag()), tolerance) << k;
        ASSERT_NEAR(magnitudes[k], double(2 * std::abs(expected[k])), 2 * tolerance) << k;
    }
    EXPECT_EQ(bins[1], 0.0f);
    EXPECT_EQ(bins[length + 1], 0.0f);
    for (const auto *table : available()) {
        const FftPlan plan(GetParam(), *table);
        EXPECT_TRUE(sameBits(forward(plan, sound), bins)) << table->name;
        EXPECT_TRUE(sameBits(magnitudesOf(plan, sound), magnitudes)) << table->name;
    }
}

INSTANTIATE_TEST_SUITE_P(Orders, Fft, testing::Range(FftPlan::kLeastOrder, FftPlan::kMostOrder + 1));

TEST(FftMagnitudes, StayFiniteForNonFiniteInput)
{
    using Limits = std::numeric_limits<float>;
    for (const auto *table : available())
        for (float bad : {Limits::max(), Limits::infinity(), Limits::quiet_NaN()}) {
            Buffer in(512);
            in[3] = bad;
            in[300] = -bad;
            for (float magnitude : magnitudesOf(FftPlan(9, *table), in, 0.5f))
                ASSERT_TRUE(magnitude >= 0.5f && magnitude <= Limits::max()) << magnitude;
        }
}

} // namespace
