#include "dsp/kernels/FourierTransform.h"

#include "dsp/kernels/Memory.h"

#include <cmath>
#include <gtest/gtest.h>
#include <memory>
#include <random>

namespace {

using namespace DSP;

struct Free {
    void operator()(void *storage) const { ippsFree(storage); }
    void operator()(IppsFFTSpec_R_32f *spec) const { ippsFFTFree_R_32f(spec); }
};

TEST(FourierTransform, IsTheUnscaledSumWithBothEndsReal)
{
    constexpr int kOrder = 9, kLength = 1 << kOrder;
    IppsFFTSpec_R_32f *made = nullptr;
    ASSERT_EQ(ippsFFTInitAlloc_R_32f(&made, kOrder, kFftScaleInverse, 1), 0);
    const std::unique_ptr<IppsFFTSpec_R_32f, Free> spec(made);
    int bytes = 0;
    ASSERT_EQ(ippsFFTGetBufSize_R_32f(spec.get(), &bytes), 0);
    const std::unique_ptr<uint8_t, Free> work(ippsMalloc_8u(bytes));
    const std::unique_ptr<float, Free> in(ippsMalloc_32f(kLength)), out(ippsMalloc_32f(kLength + 2));

    std::mt19937 random(21);
    std::uniform_real_distribution<float> sample(-1.0f, 1.0f);
    for (int n = 0; n < kLength; ++n) in.get()[n] = sample(random);
    ASSERT_EQ(ippsFFTFwd_RToCCS_32f(in.get(), out.get(), spec.get(), work.get()), 0);

    for (int k = 0; k <= kLength / 2; ++k) {
        long double re = 0, im = 0;
        for (int n = 0; n < kLength; ++n) {
            const long double angle = -2 * std::acos(-1.0L) * (k * n % kLength) / kLength;
            re += in.get()[n] * std::cos(angle);
            im += in.get()[n] * std::sin(angle);
        }
        ASSERT_NEAR(out.get()[2 * k], (double)re, 1e-5) << k;
        ASSERT_NEAR(out.get()[2 * k + 1], (double)im, 1e-5) << k;
    }
    EXPECT_EQ(out.get()[1], 0.0f);
    EXPECT_EQ(out.get()[kLength + 1], 0.0f);
}

TEST(FourierTransform, RefusesBadArguments)
{
    IppsFFTSpec_R_32f *spec = nullptr;
    float samples[4] = {};
    uint8_t work[4];
    int bytes = 0;
    EXPECT_EQ(ippsFFTInitAlloc_R_32f(nullptr, 9, 2, 1), -8);
    EXPECT_EQ(ippsFFTInitAlloc_R_32f(&spec, -1, 2, 1), -6);
    EXPECT_EQ(ippsFFTInitAlloc_R_32f(&spec, 60, 2, 1), -6);
    EXPECT_EQ(ippsFFTInitAlloc_R_32f(&spec, 9, 1, 1), -6) << "a scaled forward transform";
    EXPECT_EQ(spec, nullptr);
    EXPECT_EQ(ippsFFTGetBufSize_R_32f(nullptr, &bytes), -8);
    EXPECT_EQ(ippsFFTFwd_RToCCS_32f(samples, samples, nullptr, work), -8);
    EXPECT_EQ(ippsFFTFree_R_32f(nullptr), -8);
}

} // namespace
