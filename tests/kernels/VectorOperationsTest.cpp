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
#include <random>
#include <string>
#include <vector>

namespace {

using namespace DSP;

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kDenormal = 1e-40f;

std::vector<float> noise(int length, unsigned seed)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> sample(-1.0f, 1.0f);
    std::vector<float> result(static_cast<size_t>(length));
    for (float &value : result) value = sample(random);
    return result;
}

/// One operation on floats: `in` and `out` are its arrays, the same ones where it works in place.
struct Operation {
    const char *name;
    std::function<int(const float *in, float *out, int len)> call;
    std::function<float(float in, float out)> expected; ///< of each element; none for the windows
    bool readsIn;
    int onEmpty; ///< what a length of 0 answers
};

const Operation kOperations[] = {
    {"Add", ippsAdd_32f_I, [](float in, float out) { return out + in; }, true, -6},
    {"Mul", ippsMul_32f_I, [](float in, float out) { return out * in; }, true, -6},
    {"MulC", [](auto, float *out, int len) { return ippsMulC_32f_I(0.3f, out, len); },
     [](float, float out) { return out * 0.3f; }, false, -6},
    {"MulCByOne", [](auto, float *out, int len) { return ippsMulC_32f_I(1.0f, out, len); },
     [](float, float out) { return out; }, false, -6},
    {"MulCByZero", [](auto, float *out, int len) { return ippsMulC_32f_I(0.0f, out, len); },
     [](float, float) { return 0.0f; }, false, -6},
    {"Threshold", [](auto, float *out, int len) { return ippsThreshold_GT_32f_I(out, len, 0.2f); },
     [](float, float out) { return std::min(out, 0.2f); }, false, -6},
    {"Copy", ippsCopy_32f, [](float in, float) { return in; }, true, 0},
    {"CopyBytes",
     [](const float *in, float *out, int len) {
         return ippsCopy_8u((const uint8_t *)in, (uint8_t *)out, len * (int)sizeof(float));
     },
     [](float in, float) { return in; }, true, 0},
    {"Move", ippsMove_32f, [](float in, float) { return in; }, true, 0},
    {"Set", [](auto, float *out, int len) { return ippsSet_32f(0.7f, out, len); },
     [](float, float) { return 0.7f; }, false, 0},
    {"Zero", [](auto, float *out, int len) { return ippsZero_32f(out, len); },
     [](float, float) { return 0.0f; }, false, 0},
    {"Bartlett", [](auto, float *out, int len) { return ippsWinBartlett_32f_I(out, len); }, nullptr, false,
     -6},
    {"Hann", [](auto, float *out, int len) { return ippsWinHann_32f_I(out, len); }, nullptr, false, -6},
    {"Hamming", [](auto, float *out, int len) { return ippsWinHamming_32f_I(out, len); }, nullptr, false, -6},
    {"Blackman", [](auto, float *out, int len) { return ippsWinBlackman_32f_I(out, len, -0.16f); }, nullptr,
     false, -6},
    {"Kaiser", [](auto, float *out, int len) { return ippsWinKaiser_32f_I(out, len, 0.006f); }, nullptr,
     false, -6},
};

class VectorOperation : public testing::TestWithParam<Operation> {};

TEST_P(VectorOperation, RefusesBadArgumentsAndChangesNothing)
{
    const Operation &op = GetParam();
    const std::vector<float> in = noise(8, 1), before = noise(8, 2);
    std::vector<float> out = before;
    EXPECT_EQ(op.call(in.data(), nullptr, 8), -8);
    EXPECT_EQ(op.call(nullptr, nullptr, 8), -8);
    EXPECT_EQ(op.readsIn ? op.call(nullptr, out.data(), 8) : -8, -8);
    EXPECT_EQ(op.call(in.data(), out.data(), -1), -6);
    EXPECT_EQ(op.call(in.data(), out.data(), 0), op.onEmpty);
    EXPECT_EQ(op.call(nullptr, nullptr, 0), op.onEmpty == 0 ? 0 : -8);
    EXPECT_EQ(out, before);
}

TEST_P(VectorOperation, DoesToEveryElementWhatItSaysAtAnyLengthAndAddress)
{
    const Operation &op = GetParam();
    if (!op.expected) return; // the windows have a test of their own
    for (int len = 1; len < 40; ++len) {
        for (int offset = 0; offset < 3; ++offset) {
            const std::vector<float> in = noise(len + 4, 3), before = noise(len + 4, 4);
            std::vector<float> out = before, expected = before;
            for (int i = offset; i < offset + len; ++i) expected[i] = op.expected(in[i], before[i]);
            ASSERT_EQ(op.call(in.data() + offset, out.data() + offset, len), 0);
            ASSERT_EQ(out, expected) << "length " << len << " from " << offset;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, VectorOperation, testing::ValuesIn(kOperations),
                         [](const auto &row) { return std::string(row.param.name); });

TEST(VectorOperations, OddValuesSurviveOrGoAsPromised)
{
    const float odd[] = {kNaN, kDenormal, kInfinity, -kInfinity};
    std::vector<float> one(odd, odd + 4), zero = one, minusZero = one, held = one;
    ippsMulC_32f_I(1.0f, one.data(), 4);
    EXPECT_TRUE(std::isnan(one[0]));
    EXPECT_EQ(one[1], kDenormal);
    ippsMulC_32f_I(0.0f, zero.data(), 4);
    ippsMulC_32f_I(-0.0f, minusZero.data(), 4);
    EXPECT_EQ(zero, std::vector<float>(4));
    EXPECT_EQ(minusZero, std::vector<float>(4));
    ippsThreshold_GT_32f_I(held.data(), 4, 0.5f);
    EXPECT_TRUE(std::isnan(held[0]));
    EXPECT_EQ(std::vector<float>(held.begin() + 1, held.end()),
              (std::vector<float>{kDenormal, 0.5f, -kInfinity}));
}

TEST(VectorOperations, NarrowingHoldsToTheRangeOfAFloat)
{
    const double wide[] = {1e300, -1e300, (double)kInfinity, 0.1, -(double)FLT_MAX, 1e-300, (double)kNaN};
    float narrow[7];
    ASSERT_EQ(ippsConvert_64f32f(wide, narrow, 7), 0);
    const float expected[] = {FLT_MAX, -FLT_MAX, FLT_MAX, 0.1f, -FLT_MAX, 0.0f};
    for (int i = 0; i < 6; ++i) EXPECT_EQ(narrow[i], expected[i]) << wide[i];
    EXPECT_TRUE(std::isnan(narrow[6]));

    double widened[7];
    ASSERT_EQ(ippsConvert_32f64f(narrow, widened, 7), 0);
    for (int i = 0; i < 6; ++i) EXPECT_EQ(widened[i], (double)narrow[i]);
    EXPECT_EQ(ippsConvert_64f32f(wide, narrow, 0), -6);
    EXPECT_EQ(ippsConvert_32f64f(nullptr, widened, 3), -8);
}

TEST(VectorOperations, MoveMayOverlapEitherWay)
{
    for (const int shift : {1, -1, 5, -5}) {
        std::vector<float> values = noise(40, 5);
        const std::vector<float> before = values;
        ippsMove_32f(values.data() + 8, values.data() + 8 + shift, 20);
        EXPECT_TRUE(std::equal(before.begin() + 8, before.begin() + 28, values.begin() + 8 + shift)) << shift;
    }
}

TEST(VectorOperations, DotProductIsCloseToTheExactSumAndZeroWhenRefused)
{
    for (int len = 1; len <= 200; ++len) {
        const std::vector<float> a = noise(len, 6), b = noise(len, 7);
        double exact = 0.0, size = 0.0;
        for (int i = 0; i < len; ++i) {
            exact += (double)a[i] * b[i];
            size += std::fabs((double)a[i] * b[i]);
        }
        float result = kNaN;
        ASSERT_EQ(ippsDotProd_32f(a.data(), b.data(), len, &result), 0);
        ASSERT_NEAR(result, exact, size * FLT_EPSILON * (len / 4 + 4)) << len;
    }
    const float some[] = {1.0f};
    float result = kNaN;
    EXPECT_EQ(ippsDotProd_32f(some, nullptr, 1, &result), -8);
    EXPECT_EQ(result, 0.0f);
    result = kNaN;
    EXPECT_EQ(ippsDotProd_32f(some, some, 0, &result), -6);
    EXPECT_EQ(result, 0.0f);
    EXPECT_EQ(ippsDotProd_32f(some, some, 1, nullptr), -8);
}

TEST(Windows, FollowTheirFormulas)
{
    const auto cosine = [](long double turns) { return std::cos(2 * std::acos(-1.0L) * turns); };
    const auto bessel = [](long double x) {
        long double term = 1, sum = 1;
        for (int k = 1; k < 200; ++k) sum += term *= (x / 2 / k) * (x / 2 / k);
        return sum;
    };
    using Formula = std::function<long double(long double n, long double last)>;
    const struct {
        const char *name;
        std::function<int(float *, int)> apply;
        Formula formula;
        int shortest;
    } windows[] = {
        {"Bartlett", ippsWinBartlett_32f_I, [](auto n, auto last) { return 1 - std::fabs(2 * n / last - 1); },
         3},
        {"Hann", ippsWinHann_32f_I, [&](auto n, auto last) { return 0.5L - 0.5L * cosine(n / last); }, 3},
        {"Hamming", ippsWinHamming_32f_I, [&](auto n, auto last) { return 0.54L - 0.46L * cosine(n / last); },
         3},
        {"Blackman", [](float *v, int len) { return ippsWinBlackman_32f_I(v, len, -0.16f); },
         [&](auto n, auto last) {
             return (1 - (long double)0.16f) / 2 - 0.5L * cosine(n / last) +
                    (long double)0.16f / 2 * cosine(2 * n / last);
         },
         3},
        {"Kaiser", [](float *v, int len) { return ippsWinKaiser_32f_I(v, len, 0.006f); },
         [&](auto n, auto last) {
             return bessel(0.006f * std::sqrt(n * (last - n))) / bessel(0.006f * last / 2);
         },
         1},
    };
    for (const auto &window : windows) {
        SCOPED_TRACE(window.name);
        for (const int len : {1, 2, 3, 4, 5, 512, 4096, 8192}) {
            std::vector<float> values(static_cast<size_t>(len), 1.0f);
            const int status = window.apply(values.data(), len);
            ASSERT_EQ(status, len < window.shortest ? -6 : 0) << len;
            for (int n = 0; n < len && status == 0; ++n) {
                const long double truth = len > 1 ? window.formula(n, len - 1) : 1;
                ASSERT_NEAR(values[n], (double)truth, 6.1e-8 * std::max(1.0, (double)truth))
                    << n << " of " << len;
                ASSERT_EQ(values[n], values[len - 1 - n]);
            }
        }
    }
}

TEST(Windows, MultiplyWhatIsThere)
{
    float values[] = {8.0f, 8.0f, -8.0f, 8.0f, 8.0f};
    ippsWinBartlett_32f_I(values, 5);
    EXPECT_EQ(std::vector<float>(values, values + 5), (std::vector<float>{0.0f, 4.0f, -8.0f, 4.0f, 0.0f}));
}

TEST(Memory, IsAlignedWhollyUsableAndKnowsItsRawPointer)
{
    for (int len = 1; len < 100; ++len) {
        double *storage = ippsMalloc_64f(len);
        ASSERT_EQ(reinterpret_cast<uintptr_t>(storage) % 32, 0u);
        for (int i = 0; i < len; ++i) storage[i] = i;
        const auto raw = reinterpret_cast<uintptr_t>(reinterpret_cast<void **>(storage)[-1]);
        EXPECT_GE(reinterpret_cast<uintptr_t>(storage) - raw, sizeof(void *));
        ippsFree(storage);
    }
    for (const int len : {0, -1}) {
        EXPECT_EQ(ippsMalloc_8u(len), nullptr);
        EXPECT_EQ(ippsMalloc_32f(len), nullptr);
        EXPECT_EQ(ippsMalloc_64f(len), nullptr);
    }
    ippsFree(nullptr);
}

TEST(DenormalGuard, IsTheSameWaveHoweverTheBlocksAreCut)
{
    constexpr int kFrames = 1000;
    std::vector<float> left = noise(kFrames, 8), right = noise(kFrames, 9);
    for (auto *channel : {&left, &right})
        ippsMulC_32f_I(1e-9f, channel->data(), kFrames); // else it is rounded away
    for (const int start : {0, 127, 128, 200, 255}) {
        std::vector<float> expectedLeft = left, expectedRight = right;
        for (int i = 0; i < kFrames; ++i) {
            const float sign = static_cast<uint8_t>(start + i) > 127 ? -1.0f : 1.0f;
            expectedLeft[i] += sign * 1e-10f;
            expectedRight[i] += sign * 2e-10f;
        }
        for (const int block : {1, 7, 128, 129, 300, kFrames}) {
            SCOPED_TRACE(testing::Message() << "from " << start << " in blocks of " << block);
            std::vector<float> gotLeft = left, gotRight = right, mono = left;
            auto counter = static_cast<uint8_t>(start);
            for (int i = 0; i < kFrames; i += block) {
                const auto count = static_cast<uint32_t>(std::min(block, kFrames - i));
                addDenormalGuard(count, mono.data() + i, nullptr, &counter, false);
                addDenormalGuard(count, gotLeft.data() + i, gotRight.data() + i, &counter, true);
            }
            EXPECT_EQ(gotLeft, expectedLeft);
            EXPECT_EQ(gotRight, expectedRight);
            EXPECT_EQ(mono, expectedLeft);
            EXPECT_EQ(counter, static_cast<uint8_t>(start + kFrames));
        }
    }
}

TEST(PixelOperations, ChangeTheRectangleAndNothingElse)
{
    constexpr int kStep = 24, kRows = 4, kWidth = 4, kHeight = 3;
    std::vector<uint8_t> before(kStep * kRows);
    for (size_t i = 0; i < before.size(); ++i) before[i] = static_cast<uint8_t>(i * 37);
    std::vector<uint8_t> sum = before, scaled = before;
    const uint8_t constants[3] = {10, 0, 200};
    ASSERT_EQ(ippiAddC_8u_AC4IRSfs(constants, sum.data(), kStep, kWidth, kHeight, 0), 0);
    ASSERT_EQ(ippiAlphaPremulC_8u_AC4IR(100, scaled.data(), kStep, kWidth, kHeight), 0);
    for (int i = 0; i < kStep * kRows; ++i) {
        const bool inside = i / kStep < kHeight && i % kStep < kWidth * 4;
        const int channel = i % 4, c = before[i], product = c * 100;
        EXPECT_EQ(sum[i], inside && channel < 3 ? std::min(c + constants[channel], 255) : c) << i;
        EXPECT_EQ(scaled[i], !inside ? c : channel < 3 ? (product + (product >> 8) + 1) >> 8 : 100) << i;
    }
    EXPECT_EQ(ippiAddC_8u_AC4IRSfs(nullptr, sum.data(), kStep, 1, 1, 0), -8);
    EXPECT_EQ(ippiAddC_8u_AC4IRSfs(constants, sum.data(), kStep, 1, 0, 0), -6);
    EXPECT_EQ(ippiAlphaPremulC_8u_AC4IR(1, sum.data(), kStep, 0, 1), -6);
    EXPECT_EQ(ippiAlphaPremulC_8u_AC4IR(1, nullptr, kStep, 1, 1), -8);
}

TEST(PixelOperations, PremultiplyingIsTheRoundedQuotientForAllValues)
{
    for (int alpha = 0; alpha < 256; ++alpha) {
        for (int c = 0; c < 256; ++c) {
            uint8_t pixel[4] = {static_cast<uint8_t>(c), 255, 0, 7};
            ippiAlphaPremulC_8u_AC4IR(static_cast<uint8_t>(alpha), pixel, 4, 1, 1);
            ASSERT_NEAR(pixel[0], c * alpha / 255.0, 1.0);
            ASSERT_EQ(pixel[1], alpha);
            ASSERT_EQ(pixel[2], 0);
            ASSERT_EQ(pixel[3], alpha);
        }
    }
}

} // namespace
