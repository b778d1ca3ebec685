#include "ui/draw/PixelOperations.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

namespace {

using namespace DSP;

TEST(PixelOperations, ChangeOnlyTheRectangle)
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
            const int channel = i % 4, old = before[i];
            const bool isColour = inside && channel < 3;
            ASSERT_EQ(sum[i], isColour ? std::min(old + constants[channel], 255) : old) << i;
            ASSERT_NEAR(scaled[i], isColour ? old * alpha / 255.0 : inside ? alpha : old, isColour) << i;
        }
    }
}

} // namespace
