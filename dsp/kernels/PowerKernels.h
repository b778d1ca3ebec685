#pragma once
#include <stdint.h>

namespace DSP::Kernels {

/// The power function over arrays; other kernels take it inline from Power.h, which also states its accuracy.
struct PowerKernels {
    /// result[i] = base[i]^exponent; result may be base.
    void (*power)(const float *base, float exponent, float *result, uint32_t count);
};

} // namespace DSP::Kernels
