#include "dsp/kernels/DenormalGuard.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

namespace {

using namespace DSP;
using Floats = std::vector<float>;

TEST(DenormalGuard, DoesNotDependOnBlockSizes)
{
    constexpr uint32_t kFrames = 1000;
    for (const uint8_t start : {0, 127, 200, 255})
        for (const uint32_t block : {1u, 7u, 128u, 129u, kFrames}) {
            Floats stereo[] = {Floats(kFrames), Floats(kFrames)}, mono(kFrames);
            uint8_t phase = start;
            for (uint32_t i = 0; i < kFrames; i += block) {
                const uint32_t count = std::min(block, kFrames - i);
                addDenormalGuard(count, mono.data() + i, nullptr, &phase, false);
                addDenormalGuard(count, stereo[0].data() + i, stereo[1].data() + i, &phase, true);
            }
            for (uint32_t i = 0; i < kFrames; ++i) {
                const float sign = static_cast<uint8_t>(start + i) > 127 ? -1.0f : 1.0f;
                ASSERT_EQ(stereo[0][i], sign * 1e-10f) << i << " by " << block;
                ASSERT_EQ(stereo[1][i], sign * 2e-10f);
                ASSERT_EQ(mono[i], stereo[0][i]);
            }
        }
}

} // namespace
