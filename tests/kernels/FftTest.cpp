#include "dsp/kernels/Fft.h"

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace {

using DSP::FftPlan;
using DSP::Kernels::available;
using Floats = Util::AlignedBuffer<float>;

struct Bin {
    long double re, im;
    long double size() const { return std::hypot(re, im); }
};

/// The sum itself.
std::vector<Bin> plainTransform(const Floats &in)
{
    const size_t length = in.size();
    std::vector<Bin> unit(length), bins(length / 2 + 1);
    for (size_t n = 0; n < length; ++n) {
        const long double angle = 2 * std::acos(-1.0L) * n / length;
        unit[n] = {std::cos(angle), -std::sin(angle)};
    }
    for (size_t k = 0; k < bins.size(); ++k)
        for (size_t n = 0; n < length; ++n) {
            bins[k].re += in[n] * unit[n * k % length].re;
            bins[k].im += in[n] * unit[n * k % length].im;
        }
    return bins;
}

struct Sound {
    std::string name;
    Floats samples;
};

std::vector<Sound> sounds(size_t length)
{
    std::vector<Sound> list;
    const auto add = [&](const char *name, auto &&sample) {
        Floats samples(length);
        for (size_t n = 0; n < length; ++n) samples[n] = float(sample(n));
        list.push_back({name, std::move(samples)});
    };
    std::mt19937 random(11);
    std::uniform_real_distribution<double> any(-1, 1);
    add("noise", [&](size_t) { return any(random); });
    add("impulse", [](size_t n) { return n == 5 ? 1. : 0.; });
    add("constant", [](size_t) { return 0.75; });
    add("highest", [](size_t n) { return n % 2 ? -1. : 1.; });
    add("sine between bins", [&](size_t n) { return std::sin(0.37 * double(n) + 1); });
    return list;
}

Floats forward(const FftPlan &plan, const Floats &in)
{
    Floats out(size_t(plan.length()) + 2), work(plan.workLength());
    plan.forward(in.data(), out.data(), work.data());
    return out;
}

/// The magnitudes that stay over `before`, with a window of ones.
Floats raised(const FftPlan &plan, const Floats &in, float before = 0)
{
    Floats window(in.size()), magnitudes(in.size() / 2 + 1), work(plan.workLength());
    std::fill(window.begin(), window.end(), 1.f);
    std::fill(magnitudes.begin(), magnitudes.end(), before);
    plan.raiseMagnitudes(in.data(), window.data(), magnitudes.data(), work.data());
    return magnitudes;
}

bool sameBits(const Floats &a, const Floats &b)
{
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(float)) == 0;
}

class Fft : public testing::TestWithParam<int> {};

TEST_P(Fft, IsThePlainSumInEverySet)
{
    const size_t length = size_t(1) << GetParam();
    for (const Sound &sound : sounds(length)) {
        SCOPED_TRACE(sound.name);
        const std::vector<Bin> expected = plainTransform(sound.samples);
        long double largest = 0;
        for (const Bin &bin : expected) largest = std::max(largest, bin.size());
        const auto tolerance = double(4e-7L * largest);
        const FftPlan plainest(GetParam(), *available().front());
        const Floats bins = forward(plainest, sound.samples), magnitudes = raised(plainest, sound.samples);
        for (size_t k = 0; k < expected.size(); ++k) {
            ASSERT_NEAR(bins[2 * k], double(expected[k].re), tolerance) << k;
            ASSERT_NEAR(bins[2 * k + 1], double(expected[k].im), tolerance) << k;
            ASSERT_NEAR(magnitudes[k], double(2 * expected[k].size()), 2 * tolerance) << k;
        }
        EXPECT_EQ(bins[1], 0.f);
        EXPECT_EQ(bins[length + 1], 0.f);
        for (const auto *table : available()) {
            const FftPlan plan(GetParam(), *table);
            EXPECT_TRUE(sameBits(forward(plan, sound.samples), bins)) << table->name;
            EXPECT_TRUE(sameBits(raised(plan, sound.samples), magnitudes)) << table->name;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Orders, Fft, testing::Range(FftPlan::kLeastOrder, FftPlan::kMostOrder + 1));

TEST(FftMagnitudes, AreWindowedAndOnlyRise)
{
    const FftPlan plan(9);
    const size_t length = 512;
    Floats in = std::move(sounds(length)[0].samples), window(length), magnitudes(length / 2 + 1),
           work(plan.workLength()), product(length);
    for (size_t n = 0; n < length; ++n) {
        window[n] = float(n % 7) / 7;
        product[n] = in[n] * window[n];
    }
    plan.raiseMagnitudes(in.data(), window.data(), magnitudes.data(), work.data());
    EXPECT_TRUE(sameBits(magnitudes, raised(plan, product)));

    const float threshold = magnitudes[100];
    const Floats held = raised(plan, product, threshold);
    for (size_t k = 0; k < held.size(); ++k) ASSERT_EQ(held[k], std::max(magnitudes[k], threshold)) << k;
}

TEST(FftMagnitudes, KeepNeitherInfinityNorNaN)
{
    const float most = std::numeric_limits<float>::max();
    for (const auto *table : available())
        for (float bad :
             {most, std::numeric_limits<float>::infinity(), std::numeric_limits<float>::quiet_NaN()}) {
            const FftPlan plan(9, *table);
            Floats in(512);
            in[3] = bad;
            in[300] = -bad;
            for (float magnitude : raised(plan, in, 0.5f)) {
                ASSERT_GE(magnitude, 0.5f);
                ASSERT_LE(magnitude, most);
            }
        }
}

} // namespace
