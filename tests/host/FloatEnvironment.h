#pragma once
#include <cfenv>

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
#if defined(__SSE2__)
        if (environment.flushing) _mm_setcsr(_mm_getcsr() | kFlush);
#endif
        set = now();
    }
    ~InFloatEnvironment()
    {
#if defined(__SSE2__)
        _mm_setcsr(vectorBefore); // not every system's fesetround reaches it
#endif
        std::fesetround(roundingBefore);
    }
    InFloatEnvironment(const InFloatEnvironment &) = delete;

    bool isUntouched() const { return now() == set; }

private:
    struct State {
        int rounding = 0;
        unsigned vector = 0;
        bool operator==(const State &) const = default;
    };
    static State now()
    {
        State state{std::fegetround()};
#if defined(__SSE2__)
        state.vector = _mm_getcsr() & ~kRaised;
#endif
        return state;
    }

    static constexpr unsigned kFlush = 0x8040, kRaised = 0x3F; // the exceptions that have occurred
    State set;
    const int roundingBefore = std::fegetround();
#if defined(__SSE2__)
    const unsigned vectorBefore = _mm_getcsr();
#endif
};
