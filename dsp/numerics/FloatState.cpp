#include "dsp/numerics/FloatState.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace DSP {

#if defined(__SSE2__)

namespace {

constexpr uint32_t kVectorDefault = 0x1F80; // no flush to zero, round to nearest, exceptions masked
#if defined(__i386__)
constexpr uint16_t kStackDefault = 0x037F; // 64-bit mantissa, round to nearest, exceptions masked
#endif

} // namespace

FloatState::FloatState() : hostsVector(_mm_getcsr())
{
    _mm_setcsr(kVectorDefault);
#if defined(__i386__)
    asm volatile("fnstcw %0" : "=m"(hostsStack));
    asm volatile("fldcw %0" : : "m"(kStackDefault));
#endif
}

FloatState::~FloatState()
{
#if defined(__i386__)
    // Clears the exception flags: a pending one would trap if the host has unmasked that exception.
    asm volatile("fnclex\n\tfldcw %0" : : "m"(hostsStack));
#endif
    _mm_setcsr(hostsVector);
}

#else

FloatState::FloatState()
{
    std::fegetenv(&hosts);
    std::fesetenv(FE_DFL_ENV);
}

FloatState::~FloatState() { std::fesetenv(&hosts); }

#endif

} // namespace DSP
