#include "dsp/operations/FourierTransform.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "dsp/kernels/Fft.h"
#include "tests/signals/Signals.h"

namespace {

using namespace DSP;
using Buffer = Util::AlignedBuffer<float>;

class FourierTransform : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(Orders, FourierTransform,
                         testing::Range(FftPlan::kLeastOrder, FftPlan::kMostOrder + 1));

TEST_P(FourierTransform, IsBitExactWithFftPlanAtAnyAddress)
{
    const int order = GetParam();
    const size_t length = size_t{1} << order;
    const FftPlan plan(order);
    Buffer in(length), expected(length + 2), planWork(plan.workLength());
    std::ranges::copy(Signals::noise(11, static_cast<uint32_t>(length), 0).left, in.data());
    plan.forward(in.data(), expected.data(), planWork.data());

    IppsFFTSpec_R_32f *spec = nullptr;
    ASSERT_EQ(ippsFFTInitAlloc_R_32f(&spec, order, kFftScaleInverse, 1), 0);
    int bytes = 0;
    ASSERT_EQ(ippsFFTGetBufSize_R_32f(spec, &bytes), 0);
    Util::AlignedBuffer<uint8_t> work(static_cast<size_t>(bytes) + 1);
    Buffer shared(length + 3); // samples and bins, one float off the alignment
    for (const size_t offset : {0u, 1u}) {
        float *const place = shared.data() + offset;
        std::ranges::copy(in, place);
        EXPECT_EQ(ippsFFTFwd_RToCCS_32f(place, place, spec, work.data() + offset), 0);
        EXPECT_TRUE(std::equal(expected.begin(), expected.end(), place)) << offset;
    }
    EXPECT_EQ(ippsFFTFree_R_32f(spec), 0);
}

TEST(FourierTransformArguments, AreRefusedIfTheyFitNoPlan)
{
    IppsFFTSpec_R_32f *spec = nullptr;
    for (const int order : {-1, 0, FftPlan::kLeastOrder - 1, FftPlan::kMostOrder + 1, 31, 40})
        EXPECT_EQ(ippsFFTInitAlloc_R_32f(&spec, order, kFftNoScale, 0), -6) << order;
    EXPECT_EQ(ippsFFTInitAlloc_R_32f(&spec, 9, 1, 0), -6) << "scaled";
    EXPECT_EQ(ippsFFTInitAlloc_R_32f(nullptr, 9, kFftNoScale, 0), -8);
    EXPECT_EQ(ippsFFTFwd_RToCCS_32f(nullptr, nullptr, spec, nullptr), -8);
    EXPECT_EQ(spec, nullptr);
}

} // namespace
