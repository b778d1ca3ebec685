#include "dsp/kernels/FloatState.h"

#include <cfenv>
#include <gtest/gtest.h>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace {

/// Not known to the compiler, so that it is computed where it stands.
volatile float one = 1.0f, tiny = 1e-30f;

TEST(FloatState, RoundsToNearestAndKeepsDenormalsWhateverTheHostHasSet)
{
    std::fenv_t before;
    std::fegetenv(&before);
    const float nearest = one + tiny;

    std::fesetround(FE_UPWARD);
#if defined(__SSE2__)
    _mm_setcsr(_mm_getcsr() | 0x8040); // flush to zero, denormals are zero
    const unsigned hosts = _mm_getcsr();
#endif
    const float upward = one + tiny;
    float inside, denormal;
    {
        const DSP::FloatState state;
        inside = one + tiny;
        denormal = tiny * 1e-10f;
    }
    const int roundingAfter = std::fegetround();
#if defined(__SSE2__)
    const unsigned after = _mm_getcsr();
#endif
    std::fesetenv(&before);

    EXPECT_GT(upward, nearest);
    EXPECT_EQ(inside, nearest);
    EXPECT_GT(denormal, 0.0f);
    EXPECT_EQ(roundingAfter, FE_UPWARD);
#if defined(__SSE2__)
    EXPECT_EQ(after & ~0x3Fu,
              hosts & ~0x3Fu); // but for the sticky flags, which the additions above may raise
#endif
}

} // namespace
