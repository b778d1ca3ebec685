#pragma once
#include <cfenv>
#include <utility>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

/// How a host may have set the processor before it calls the effect.
struct FloatEnvironment {
    const char *name;
    int rounding;
    bool flushing; // denormals, of inputs and of results
};

constexpr FloatEnvironment kFloatEnvironments[] = {
    {"as a program starts", FE_TONEAREST, false},
    {"flushing denormals", FE_TONEAREST, true},
    {"rounding up", FE_UPWARD, false},
    {"rounding down and flushing", FE_DOWNWARD, true},
    {"rounding to zero", FE_TOWARDZERO, false},
};

/// Sets an environment to the end of the scope.
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
        setVector(before.second); // not every system's fesetround reaches it
        std::fesetround(before.first);
    }
    InFloatEnvironment(const InFloatEnvironment &) = delete;

    bool isUntouched() const { return now() == set; }

private:
    using State = std::pair<int, unsigned>;                    // rounding, and control of the vectors
    static constexpr unsigned kFlush = 0x8040, kRaised = 0x3F; // the exceptions that have occurred

#if defined(__SSE2__)
    static unsigned vector() { return _mm_getcsr() & ~kRaised; }
    static void setVector(unsigned control) { _mm_setcsr(control); }
#else
    static unsigned vector() { return 0; }
    static void setVector(unsigned) {}
#endif
    static State now() { return {std::fegetround(), vector()}; }

    const State before = now();
    State set;
};
