#pragma once
#include <cfenv>
#include <utility>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

/// Floating-point mode that a host may set before it calls the effect.
struct FloatEnvironment {
    const char *name;
    int rounding;
    bool flushing; // flush-to-zero and denormals-are-zero
};

constexpr FloatEnvironment kFloatEnvironments[] = {
    {"default", FE_TONEAREST, false},           {"flushing denormals", FE_TONEAREST, true},
    {"rounding up", FE_UPWARD, false},          {"rounding down and flushing", FE_DOWNWARD, true},
    {"rounding to zero", FE_TOWARDZERO, false},
};

/// Sets a floating-point mode during its lifetime.
class InFloatEnvironment {
public:
    explicit InFloatEnvironment(const FloatEnvironment &environment)
    {
        std::fesetround(environment.rounding);
        if (environment.flushing) setVector(vector() | kFlush);
        set = now();
    }
    ~InFloatEnvironment()
    {
        setVector(before.second); // fesetround does not restore it on every system
        std::fesetround(before.first);
    }
    InFloatEnvironment(const InFloatEnvironment &) = delete;

    bool isUntouched() const { return now() == set; }

private:
    using State = std::pair<int, unsigned>;                   // rounding mode and MXCSR
    static constexpr unsigned kFlush = 0x8040, kFlags = 0x3F; // kFlags: exception flags

#if defined(__SSE2__)
    static unsigned vector() { return _mm_getcsr() & ~kFlags; }
    static void setVector(unsigned control) { _mm_setcsr(control); }
#else
    static unsigned vector() { return 0; }
    static void setVector(unsigned) {}
#endif
    static State now() { return {std::fegetround(), vector()}; }

    const State before = now();
    State set;
};
