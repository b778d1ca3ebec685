#include "dsp/kernels/VectorOperations.h"

#include "dsp/kernels/DenormalGuard.h"
#include "dsp/kernels/Memory.h"
#include "dsp/kernels/PixelOperations.h"
#include "dsp/kernels/Windows.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <numeric>
#include <random>
#include <vector>

namespace {

using namespace DSP;
using Floats = std::vector<float>;

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

Floats noise(int length, unsigned seed)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> sample(-1.0f, 1.0f);
    Floats result(static_cast<size_t>(length));
    for (float &value : result) value = sample(random);
    return result;
}

/// One operation on floats: `in` and `out` are its arrays, the same ones where it works in place.
const struct {
    std::function<int(const float *in, float *out, int len)> call;
    float (*expected)(float in, float out); ///< of each element
    int onEmpty;                            ///< what a length of 0 answers
} kOperations[] = {
    {ippsAdd_32f_I, [](auto in, auto out) { return out + in; }, -6},
    {ippsMul_32f_I, [](auto in, auto out) { return out * in; }, -6},
    {[](auto, auto out, int len) { return ippsMulC_32f_I(0.3f, out, len); },
     [](auto, auto out) { return out * 0.3f; }, -6},
    {[](auto, auto out, int len) { return ippsThreshold_GT_32f_I(out, len, 0.2f); },
     [](auto, auto out) { return std::min(out, 0.2f); }, -6},
    {ippsMove_32f, [](auto in, auto) { return in; }, 0},
    {ippsCopy_32f, [](auto in, auto) { return in; }, 0},
    {[](auto in, auto out, int len) { return ippsCopy_8u((const uint8_t *)in, (uint8_t *)out, 4 * len); },
     [](auto in, auto) { return in; }, 0},
    {[](auto, auto out, int len) { return ippsSet_32f(0.7f, out, len); }, [](auto, auto) { return 0.7f; }, 0},
    {[](auto, auto out, int len) { return ippsZero_32f(out, len); }, [](auto, auto) { return 0.0f; }, 0},
};

TEST(VectorOperations, DoToEveryElementWhatTheySayAtAnyLengthAndAddress)
{
    for (const auto &[call, expectedOf, onEmpty] : kOperations) {
        for (int len = -1; len < 40; ++len)
            for (int from = 0; from < 3; ++from) {
                const Floats in = noise(len + 4, 3), before = noise(len + 4, 4);
                Floats out = before, expected = before;
                for (int i = from; i < from + len; ++i) expected[i] = expectedOf(in[i], before[i]);
                const int answers[] = {-6, onEmpty, 0};
                ASSERT_EQ(call(in.data() + from, out.data() + from, len),
                          answers[std::clamp(len, -1, 1) + 1]);
                ASSERT_EQ(out, expected) << "length " << len << " from " << from;
            }
        EXPECT_EQ(call(nullptr, nullptr, 8), -8);
    }
    for (const int shift : {1, -1, 5, -5}) { // and moves within one array
        Floats values = noise(40, 5);
        ippsMove_32f(values.data() + 8, values.data() + 8 + shift, 20);
        EXPECT_TRUE(
            std::equal(values.begin() + 8 + shift, values.begin() + 28 + shift, noise(40, 5).begin() + 8));
    }
}

TEST(VectorOperations, OddValuesSurviveOrGoAsPromised)
{
    const Floats odd = {1e-40f, kInfinity, -kInfinity, kNaN};
    Floats one = odd, silenced = odd, held = odd;
    ippsMulC_32f_I(1.0f, one.data(), 4);
    EXPECT_EQ(one[0], odd[0]);
    EXPECT_TRUE(std::isnan(one[3]));
    ippsMulC_32f_I(-0.0f, silenced.data(), 4);
    EXPECT_EQ(silenced, Floats(4));
    ippsThreshold_GT_32f_I(held.data(), 4, 0.5f);
    EXPECT_TRUE(held[0] == odd[0] && held[1] == 0.5f && held[2] == -kInfinity && std::isnan(held[3]));

    const double wide[] = {1e300, -1e300, HUGE_VAL, 0.1, -(double)FLT_MAX, 1e-300};
    Floats narrow(6);
    ippsConvert_64f32f(wide, narrow.data(), 6);
    EXPECT_EQ(narrow, (Floats{FLT_MAX, -FLT_MAX, FLT_MAX, 0.1f, -FLT_MAX, 0.0f}));
}

TEST(VectorOperations, DotProductIsCloseToTheExactSum)
{
    for (int len = 1; len <= 200; ++len) {
        const Floats a = noise(len, 6), b = noise(len, 7);
        float result = kNaN;
        ASSERT_EQ(ippsDotProd_32f(a.data(), b.data(), len, &result), 0);
        const double exact = std::inner_product(a.begin(), a.end(), b.begin(), 0.0);
        ASSERT_NEAR(result, exact, len * FLT_EPSILON * (len / 4 + 4) / 4) << len;
    }
}

TEST(Windows, FollowTheirFormulas)
{
    const auto cosine = [](long double turns) { return std::cos(2 * std::acos(-1.0L) * turns); };
    const auto bessel = [](long double x) {
        long double term = 1, sum = 1;
        for (int k = 1; k < 200; ++k) sum += term *= (x / 2 / k) * (x / 2 / k);
        return sum;
    };
    const struct {
        int shortest;
        std::function<int(float *, int)> apply;
        std::function<long double(long double n, long double last)> formula;
    } windows[] = {
        {3, ippsWinBartlett_32f_I, [](auto n, auto last) { return 1 - std::fabs(2 * n / last - 1); }},
        {3, ippsWinHann_32f_I, [&](auto n, auto last) { return 0.5L - 0.5L * cosine(n / last); }},
        {3, ippsWinHamming_32f_I, [&](auto n, auto last) { return 0.54L - 0.46L * cosine(n / last); }},
        {3, [](float *v, int len) { return ippsWinBlackman_32f_I(v, len, -0.16f); },
         [&](auto n, auto last) {
             return (1 - 0.16L) / 2 - 0.5L * cosine(n / last) + 0.16L / 2 * cosine(2 * n / last);
         }},
        {1, [](float *v, int len) { return ippsWinKaiser_32f_I(v, len, 0.006f); },
         [&](auto n, auto last) {
             return bessel(0.006f * std::sqrt(n * (last - n))) / bessel(0.006f * last / 2);
         }},
    };
    for (const auto &[shortest, apply, formula] : windows)
        for (const int len : {0, 1, 2, 3, 4, 5, 512, 4096, 8192}) {
            Floats values(static_cast<size_t>(len + 1), 0.5f); // a power of two, which keeps the rounding
            ASSERT_EQ(apply(values.data(), len), len < shortest ? -6 : 0) << len;
            for (int n = 0; n < len && len >= shortest; ++n) {
                const auto truth = len > 1 ? static_cast<double>(formula(n, len - 1)) : 1.0;
                ASSERT_NEAR(2 * values[n], truth, 6.1e-8 * std::max(1.0, truth)) << n << " of " << len;
                ASSERT_EQ(values[n], values[len - 1 - n]);
            }
        }
}

TEST(DenormalGuard, IsTheSameWaveHoweverTheBlocksAreCut)
{
    constexpr uint32_t kFrames = 1000;
    for (const uint8_t start : {0, 127, 200, 255})
        for (const uint32_t block : {1u, 7u, 128u, 129u, kFrames}) {
            Floats stereo[] = {Floats(kFrames), Floats(kFrames)}, mono(kFrames);
            uint8_t counter = start;
            for (uint32_t i = 0; i < kFrames; i += block) {
                const uint32_t count = std::min(block, kFrames - i);
                addDenormalGuard(count, mono.data() + i, nullptr, &counter, false);
                addDenormalGuard(count, stereo[0].data() + i, stereo[1].data() + i, &counter, true);
            }
            for (uint32_t i = 0; i < kFrames; ++i) {
                const float sign = static_cast<uint8_t>(start + i) > 127 ? -1.0f : 1.0f;
                ASSERT_EQ(stereo[0][i], sign * 1e-10f) << i << " by " << block;
                ASSERT_EQ(stereo[1][i], sign * 2e-10f);
                ASSERT_EQ(mono[i], stereo[0][i]);
            }
        }
}

TEST(PixelOperations, ChangeTheRectangleAndNothingElse)
{
    constexpr int kStep = 24, kRows = 4, kWidth = 4, kHeight = 3;
    std::vector<uint8_t> before(kStep * kRows);
    for (size_t i = 0; i < before.size(); ++i) before[i] = static_cast<uint8_t>(i * 37);
    const uint8_t constants[3] = {10, 0, 200};
    for (int alpha = 0; alpha < 256; ++alpha) {
        std::vector<uint8_t> sum = before, scaled = before;
        ASSERT_EQ(ippiAddC_8u_AC4IRSfs(constants, sum.data(), kStep, kWidth, kHeight, 0), 0);
        ASSERT_EQ(ippiAlphaPremulC_8u_AC4IR(uint8_t(alpha), scaled.data(), kStep, kWidth, kHeight), 0);
        for (int i = 0; i < kStep * kRows; ++i) {
            const bool inside = i / kStep < kHeight && i % kStep < kWidth * 4;
            const int channel = i % 4, c = before[i];
            ASSERT_EQ(sum[i], inside && channel < 3 ? std::min(c + constants[channel], 255) : c) << i;
            ASSERT_NEAR(scaled[i],
                        !inside       ? c
                        : channel < 3 ? c * alpha / 255.0
                                      : alpha,
                        inside && channel < 3)
                << i;
        }
    }
    EXPECT_EQ(ippiAddC_8u_AC4IRSfs(constants, before.data(), kStep, 1, 0, 0), -6);
    EXPECT_EQ(ippiAlphaPremulC_8u_AC4IR(1, nullptr, kStep, 1, 1), -8);
}

} // namespace
