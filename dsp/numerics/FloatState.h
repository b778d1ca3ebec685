#pragma once
#include <cfenv>
#include <cstdint>

namespace DSP {

/// The processor's default floating-point state for the length of a scope: round to nearest, denormals kept,
/// all exceptions masked, full precision. The host's own state, whatever it was, returns with the end of the
/// scope.
/// Thread  the state is the thread's; the object must end on the thread that made it
class FloatState {
public:
    FloatState();
    ~FloatState();
    FloatState(const FloatState &) = delete;
    FloatState &operator=(const FloatState &) = delete;

private:
#if defined(__SSE2__)
    uint32_t hostsVector; // MXCSR
#if defined(__i386__)
    uint16_t hostsStack; // x87 control word, which still passes floats between functions
#endif
#else
    std::fenv_t hosts;
#endif
};

} // namespace DSP
