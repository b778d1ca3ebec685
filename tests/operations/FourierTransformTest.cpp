#include "dsp/operations/FourierTransform.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "dsp/kernels/Fft.h"
#include "tests/signals/Signals.h"

namespace {

using namespace DSP;
using Buffer = Util::AlignedBuffer<float>;

TEST(FourierTransform, IsBitExactWithFftPlan)
{
    constexpr int kOrder = 9, kLength = 1 << kOrder;
    const FftPlan plan(kOrder);
    Buffer in(kLength), expected(kLength + 2), out(kLength + 2), planWork(plan.workLength());
    std::ranges::copy(Signals::noise(11, kLength, 0).left, in.data());
    plan.forward(in.data(), expected.data(), planWork.data());

    IppsFFTSpec_R_32f *spec = nullptr;
    ASSERT_EQ(ippsFFTInitAlloc_R_32f(&spec, kOrder, kFftScaleInverse, 1), 0);
    int bytes = 0;
    ASSERT_EQ(ippsFFTGetBufSize_R_32f(spec, &bytes), 0);
    Util::AlignedBuffer<uint8_t> work(static_cast<size_t>(bytes));
    EXPECT_EQ(ippsFFTFwd_RToCCS_32f(in.data(), out.data(), spec, work.data()), 0);
    EXPECT_TRUE(std::ranges::equal(out, expected));
    EXPECT_EQ(ippsFFTFree_R_32f(spec), 0);
}

} // namespace
