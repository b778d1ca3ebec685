#pragma once
#include <stdint.h>

namespace DSP::Kernels {

/// The power function for arrays; see Power.h for range and accuracy.
struct PowerKernels {
    /// result[i] = base[i]^exponent; `result` may equal `base`.
    void (*power)(const float *base, float exponent, float *result, uint32_t count);
};

} // namespace DSP::Kernels
