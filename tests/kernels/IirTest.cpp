#include "dsp/kernels/Iir.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <vector>

namespace {

using namespace DSP;

using Signal = std::vector<double>;

/// Two different sections with an a0 that is not 1: a low pass and a high pass.
const Signal kTaps = {0.02, 0.04, 0.02, 2.0, -3.1, 1.25, 0.9, -1.8, 0.9, 0.5, -0.85, 0.4};

Signal noise(size_t length)
{
    std::mt19937 random(11);
    std::uniform_real_distribution<double> sample(-1.0, 1.0);
    Signal result(length);
    for (double &value : result) value = sample(random);
    return result;
}

/// b[0] x[n] + b[1] x[n-1] ... - a[1] y[n-1] ..., over a[0], straight from the definition.
Signal difference(const double *b, const double *a, int order, const Signal &x)
{
    Signal y(x.size());
    for (int n = 0; n < static_cast<int>(x.size()); ++n) {
        long double sum = 0;
        for (int k = 0; k <= order && k <= n; ++k) sum += (long double)b[k] * x[n - k];
        for (int k = 1; k <= order && k <= n; ++k) sum -= (long double)a[k] * y[n - k];
        y[n] = static_cast<double>(sum / a[0]);
    }
    return y;
}

Signal referenceCascade(const Signal &x)
{
    const Signal first = difference(&kTaps[0], &kTaps[3], 2, x);
    return difference(&kTaps[6], &kTaps[9], 2, first);
}

/// The same filter as one form of order 4: b0 to b4, a0 to a4.
Signal productTaps()
{
    Signal taps(10);
    for (int i = 0; i < 3; ++i) {
        for (int k = 0; k < 3; ++k) {
            taps[i + k] += kTaps[i] * kTaps[6 + k];
            taps[5 + i + k] += kTaps[3 + i] * kTaps[9 + k];
        }
    }
    return taps;
}

struct Free {
    void operator()(IppsIIRState_64f *state) const { ippsIIRFree_64f(state); }
};
using Filter = std::unique_ptr<IppsIIRState_64f, Free>;

Filter cascade(const double *delay = nullptr)
{
    IppsIIRState_64f *state = nullptr;
    EXPECT_EQ(ippsIIRInitAlloc_BiQuad_64f(&state, kTaps.data(), 2, delay), 0);
    return Filter(state);
}

Filter direct(const double *delay = nullptr)
{
    IppsIIRState_64f *state = nullptr;
    EXPECT_EQ(ippsIIRInitAlloc_64f(&state, productTaps().data(), 4, delay), 0);
    return Filter(state);
}

class Iir : public testing::TestWithParam<Filter (*)(const double *)> {};

TEST_P(Iir, FollowsTheDifferenceEquationHoweverTheBlocksAreCut)
{
    const Signal in = noise(2000), expected = referenceCascade(in);
    for (const int block : {1, 3, 64, 2000}) {
        const Filter filter = GetParam()(nullptr);
        Signal out = in;
        for (int i = 0; i < 2000; i += block) {
            double *part = out.data() + i;
            ASSERT_EQ(ippsIIR_64f(part, part, std::min(block, 2000 - i), filter.get()), 0);
        }
        for (size_t i = 0; i < in.size(); ++i)
            ASSERT_NEAR(out[i], expected[i], 1e-11) << i << ", block " << block;
    }
}

TEST_P(Iir, DelayLineCarriesTheWholeState)
{
    const Signal in = noise(300);
    Signal expected(300), loaded(200), made(200), fresh(100), cleared(100), line(4);
    const Filter filter = GetParam()(nullptr);
    ippsIIR_64f(in.data(), expected.data(), 100, filter.get());
    ASSERT_EQ(ippsIIRGetDlyLine_64f(filter.get(), line.data()), 0);
    ippsIIR_64f(in.data() + 100, expected.data() + 100, 200, filter.get());

    ASSERT_EQ(ippsIIRSetDlyLine_64f(filter.get(), line.data()), 0);
    ippsIIR_64f(in.data() + 100, loaded.data(), 200, filter.get());
    const Filter another = GetParam()(line.data());
    ippsIIR_64f(in.data() + 100, made.data(), 200, another.get());
    EXPECT_EQ(loaded, Signal(expected.begin() + 100, expected.end()));
    EXPECT_EQ(made, loaded);

    ASSERT_EQ(ippsIIRSetDlyLine_64f(filter.get(), nullptr), 0);
    ippsIIR_64f(in.data(), cleared.data(), 100, filter.get());
    EXPECT_EQ(cleared, Signal(expected.begin(), expected.begin() + 100));
}

INSTANTIATE_TEST_SUITE_P(Forms, Iir, testing::Values(cascade, direct),
                         [](const auto &row) { return row.index == 0 ? "Cascade" : "Direct"; });

TEST(IirSection, PairOfLanesGivesTheBitsOfTwoChannels)
{
    typedef double Two __attribute__((vector_size(16)));
    const SectionCoeffs section = SectionCoeffs::fromTaps(kTaps.data());
    const Signal in = noise(500);
    std::vector<Two> both(250);
    Signal channel[2] = {Signal(250), Signal(250)};
    for (size_t i = 0; i < 250; ++i) {
        both[i] = Two{in[2 * i], in[2 * i + 1]};
        for (size_t side = 0; side < 2; ++side) channel[side][i] = in[2 * i + side];
    }
    SectionState<Two> pair;
    run(section, pair, both.data(), both.data(), 250);
    for (size_t side = 0; side < 2; ++side) {
        SectionState<double> single;
        run(section, single, channel[side].data(), channel[side].data(), 250);
        for (size_t i = 0; i < 250; ++i) ASSERT_EQ(both[i][side], channel[side][i]);
    }
}

TEST(IirFilter, RefusesBadArguments)
{
    IppsIIRState_64f *state = nullptr;
    double samples[2] = {1.0, 2.0};
    EXPECT_EQ(ippsIIRInitAlloc_64f(nullptr, kTaps.data(), 2, nullptr), -8);
    EXPECT_EQ(ippsIIRInitAlloc_64f(&state, nullptr, 2, nullptr), -8);
    EXPECT_EQ(ippsIIRInitAlloc_64f(&state, kTaps.data(), 0, nullptr), -6);
    EXPECT_EQ(ippsIIRInitAlloc_BiQuad_64f(&state, kTaps.data(), 0, nullptr), -6);
    EXPECT_EQ(state, nullptr);
    EXPECT_EQ(ippsIIR_64f(samples, samples, 2, nullptr), -8);
    EXPECT_EQ(ippsIIR_64f(samples, samples, 0, cascade().get()), -6);
    EXPECT_EQ(ippsIIRGetDlyLine_64f(nullptr, samples), -8);
    EXPECT_EQ(ippsIIRGetDlyLine_64f(cascade().get(), nullptr), -8);
    EXPECT_EQ(ippsIIRSetDlyLine_64f(nullptr, nullptr), -8);
    EXPECT_EQ(ippsIIRFree_64f(nullptr), -8);
    EXPECT_EQ(samples[1], 2.0);
}

} // namespace
