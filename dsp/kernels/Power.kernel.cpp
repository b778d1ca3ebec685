#include "dsp/kernels/Power.h"
#include "dsp/kernels/PowerKernels.h"

namespace DSP::Kernels::SET {

static void powerOfArray(const float *base, float exponent, float *result, uint32_t count)
{
    const PowerExponent<F8> prepared = powerExponent(F8::splat(exponent));
    size_t i = 0;
    for (; i + F8::kLanes <= count; i += F8::kLanes) store(result + i, power(F8::load(base + i), prepared));
    float rest[F8::kLanes] = {1.0f, 1.0f, 1.0f, 1.0f, 1.0f, 1.0f, 1.0f, 1.0f};
    if (i == count) return;
    for (size_t k = i; k < count; ++k) rest[k - i] = base[k];
    store(rest, power(F8::load(rest), prepared));
    for (size_t k = i; k < count; ++k) result[k] = rest[k - i];
}

extern const PowerKernels powerKernels;
const PowerKernels powerKernels = {.power = powerOfArray};

} // namespace DSP::Kernels::SET
