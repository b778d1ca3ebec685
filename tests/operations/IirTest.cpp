#include "dsp/operations/Iir.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

#include "tests/signals/Signals.h"

namespace {

using namespace DSP;

using Signal = std::vector<double>;

/// A low-pass and a high-pass section, with a0 other than 1.
const Signal kTaps = {0.02, 0.04, 0.02, 2.0, -3.1, 1.25, 0.9, -1.8, 0.9, 0.5, -0.85, 0.4};

/// y[n] = (b[0] x[n] + b[1] x[n-1] + b[2] x[n-2] - a[1] y[n-1] - a[2] y[n-2]) / a[0]
Signal section(const double *b, const Signal &x)
{
    const double *const a = b + 3;
    Signal y(x.size());
    for (size_t n = 0; n < x.size(); ++n) {
        long double sum = (long double)b[0] * x[n];
        for (size_t k = 1; k <= std::min<size_t>(2, n); ++k)
            sum += (long double)b[k] * x[n - k] - (long double)a[k] * y[n - k];
        y[n] = static_cast<double>(sum / a[0]);
    }
    return y;
}

using Filter = std::unique_ptr<IppsIIRState_64f, VectorStatus (*)(IppsIIRState_64f *)>;

Filter cascade(const double *delay)
{
    IppsIIRState_64f *state = nullptr;
    EXPECT_EQ(ippsIIRInitAlloc_BiQuad_64f(&state, kTaps.data(), 2, delay), 0);
    return {state, ippsIIRFree_64f};
}
/// The same filter as a direct form of order 4.
Filter direct(const double *delay)
{
    double taps[10] = {};
    for (int i = 0; i < 6; ++i)
        for (int k = 0; k < 3; ++k) taps[i / 3 * 5 + i % 3 + k] += kTaps[i] * kTaps[6 + i / 3 * 3 + k];
    IppsIIRState_64f *state = nullptr;
    EXPECT_EQ(ippsIIRInitAlloc_64f(&state, taps, 4, delay), 0);
    return {state, ippsIIRFree_64f};
}

class Iir : public testing::TestWithParam<Filter (*)(const double *)> {};

TEST_P(Iir, MatchesTheDifferenceEquationForAnyBlocksAndRestoredState)
{
    const Audio noise = Signals::noise(11, 2000, 0);
    const Signal in(noise.left.begin(), noise.left.end()),
        expected = section(&kTaps[6], section(&kTaps[0], in));
    for (const int block : {1, 3, 64, 2000}) {
        Filter filter = GetParam()(nullptr);
        Signal out = in, line(4);
        for (int i = 0; i < 2000; i += block) {
            double *part = out.data() + i;
            ASSERT_EQ(ippsIIR_64f(part, part, std::min(block, 2000 - i), filter.get()), 0);
            ASSERT_EQ(ippsIIRGetDlyLine_64f(filter.get(), line.data()), 0);
            if (i / block % 2) filter = GetParam()(line.data()); // the delay line is the whole state
            ASSERT_EQ(ippsIIRSetDlyLine_64f(filter.get(), line.data()), 0);
        }
        for (size_t i = 0; i < in.size(); ++i)
            ASSERT_NEAR(out[i], expected[i], 1e-11) << i << ", block " << block;
    }
}

INSTANTIATE_TEST_SUITE_P(CascadeAndDirect, Iir, testing::Values(cascade, direct));

} // namespace
