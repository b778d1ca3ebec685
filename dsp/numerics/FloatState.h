#pragma once
#include <cfenv>
#include <cstdint>

namespace DSP {

/// Sets the processor's default floating-point state within a scope: round to nearest, denormals enabled,
/// exceptions masked, full precision. The destructor restores the host's state.
/// Thread  the state belongs to the thread; destroy the object on the thread that created it
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
    uint16_t hostsStack; // x87 control word; 32-bit functions return floats on the x87 stack
#endif
#else
    std::fenv_t hosts;
#endif
};

} // namespace DSP
