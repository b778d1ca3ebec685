#include "dsp/operations/Arithmetic.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <numeric>
#include <vector>

#include "dsp/kernels/VectorOperations.h"
#include "tests/signals/Signals.h"

namespace {

using namespace DSP;
using Floats = std::vector<float>;

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

Floats noise(int length, unsigned seed)
{
    return Signals::noise(seed, static_cast<uint32_t>(length), 0).left;
}

const struct {
    std::function<int(const float *in, float *out, int len)> call; ///< returns the status
    float (*expected)(float in, float out);                        ///< result for one element
} kOperations[] = {
    {ippsAdd_32f_I, [](auto in, auto out) { return out + in; }},
    {ippsMul_32f_I, [](auto in, auto out) { return out * in; }},
    {[](auto, auto out, int len) { return ippsMulC_32f_I(0.3f, out, len); },
     [](auto, auto out) { return out * 0.3f; }},
    {[](auto, auto out, int len) { return ippsThreshold_GT_32f_I(out, len, 0.2f); },
     [](auto, auto out) { return std::min(out, 0.2f); }},
    {ippsMove_32f, [](auto in, auto) { return in; }},
    {ippsCopy_32f, [](auto in, auto) { return in; }},
    {[](auto in, auto out, int len) { return ippsCopy_8u((const uint8_t *)in, (uint8_t *)out, 4 * len); },
     [](auto in, auto) { return in; }},
    {[](auto, auto out, int len) { return ippsSet_32f(0.7f, out, len); }, [](auto, auto) { return 0.7f; }},
    {[](auto, auto out, int len) { return ippsZero_32f(out, len); }, [](auto, auto) { return 0.0f; }},
};

TEST(VectorOperations, AreCorrectAtAnyLengthAndAddress)
{
    for (const auto &[call, expectedOf] : kOperations)
        for (int len = -1; len < 40; ++len)
            for (int from = 0; from < 3; ++from) {
                const Floats in = noise(len + 4, 3), before = noise(len + 4, 4);
                Floats out = before, expected = before;
                for (int i = from; i < from + len; ++i) expected[i] = expectedOf(in[i], before[i]);
                const int status = call(in.data() + from, out.data() + from, len);
                ASSERT_TRUE(len > 0 ? status == 0 : len == 0 || status == -6) << status;
                ASSERT_EQ(out, expected) << "length " << len << " from " << from;
            }
    for (const int shift : {1, -1, 5, -5}) { // overlapping moves
        Floats values = noise(40, 5);
        ippsMove_32f(values.data() + 8, values.data() + 8 + shift, 20);
        EXPECT_TRUE(
            std::equal(values.begin() + 8 + shift, values.begin() + 28 + shift, noise(40, 5).begin() + 8));
    }
}

TEST(VectorOperations, HandleSpecialValuesAndSumAccurately)
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

    const double wide[] = {1e300, -1e300, 0.1, 1e-300};
    Floats narrow(4);
    ippsConvert_64f32f(wide, narrow.data(), 4);
    EXPECT_EQ(narrow, (Floats{FLT_MAX, -FLT_MAX, 0.1f, 0.0f}));

    const Floats a = noise(101, 6), b = noise(101, 7);
    float product = 0;
    ippsDotProd_32f(a.data(), b.data(), 101, &product);
    EXPECT_NEAR(product, std::inner_product(a.begin(), a.end(), b.begin(), 0.0), 1e-4);
}

} // namespace
