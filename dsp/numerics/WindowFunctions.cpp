#include "dsp/numerics/WindowFunctions.h"

#include "dsp/numerics/Math.h"

#include <cmath>

namespace DSP {
namespace {

void multiply(float &sample, double factor) { sample = static_cast<float>(sample * factor); }

/// Multiplies by shape(n, last). Evaluates it for the first half only, because all windows are symmetric.
template <class Shape>
VectorStatus applySymmetric(float *srcDst, int len, int shortest, Shape shape)
{
    const VectorStatus status = checkVectors(len, srcDst);
    if (status != kVectorOk) return status;
    if (len < shortest) return kVectorBadLength;

    const int last = len - 1;
    for (int n = 0; n <= last - n; ++n) {
        const double factor = shape(static_cast<double>(n), static_cast<double>(last));
        multiply(srcDst[n], factor);
        if (n != last - n) multiply(srcDst[last - n], factor);
    }
    return kVectorOk;
}

} // namespace

VectorStatus ippsWinBartlett_32f_I(float *srcDst, int len)
{
    return applySymmetric(srcDst, len, 3, [](double n, double last) { return 2.0 * n / last; });
}

VectorStatus ippsWinHann_32f_I(float *srcDst, int len)
{
    return applySymmetric(srcDst, len, 3, [](double n, double last) {
        return 0.5 - 0.5 * Math::cos(2.0 * Math::kPi * n / last);
    });
}

VectorStatus ippsWinHamming_32f_I(float *srcDst, int len)
{
    return applySymmetric(srcDst, len, 3, [](double n, double last) {
        return 0.54 - 0.46 * Math::cos(2.0 * Math::kPi * n / last);
    });
}

VectorStatus ippsWinBlackman_32f_I(float *srcDst, int len, float alpha)
{
    const double a = alpha;
    return applySymmetric(srcDst, len, 3, [a](double n, double last) {
        return (a + 1.0) / 2.0 - 0.5 * Math::cos(2.0 * Math::kPi * n / last) -
               a / 2.0 * Math::cos(4.0 * Math::kPi * n / last);
    });
}

VectorStatus ippsWinKaiser_32f_I(float *srcDst, int len, float alpha)
{
    const double a = alpha, middle = len > 0 ? Math::besselI0(a * (len - 1.0) / 2.0) : 1.0;
    return applySymmetric(srcDst, len, 1, [a, middle](double n, double last) {
        return Math::besselI0(a * std::sqrt(n * (last - n))) / middle;
    });
}

} // namespace DSP
