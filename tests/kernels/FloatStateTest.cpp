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
#if defined(__SSE2__)
    const unsigned vectorBefore = _mm_getcsr(); // not every system's fesetenv brings it back
#endif
    std::fesetround(FE_UPWARD);
    unsigned hosts = 0, after = 0;
#if defined(__SSE2__)
    _mm_setcsr(_mm_getcsr() | 0x8040); // flush to zero, denormals are zero
    hosts = _mm_getcsr();
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
    after = _mm_getcsr();
#endif
    std::fesetenv(&before);
#if defined(__SSE2__)
    _mm_setcsr(vectorBefore);
#endif

    EXPECT_GT(upward, 1.0f);
    EXPECT_EQ(inside, 1.0f);
    EXPECT_GT(denormal, 0.0f);
    EXPECT_EQ(roundingAfter, FE_UPWARD);
    EXPECT_EQ(after & ~0x3Fu, hosts & ~0x3Fu); // but for the sticky flags, which the additions may raise
}

} // namespace
