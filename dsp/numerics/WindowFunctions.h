#pragma once
#include "dsp/numerics/VectorStatus.h"

/// Window functions; each multiplies the array by its window. In the formulas, p = n / (len - 1).
/// Unit    factor, about 1 in the middle
/// Errors  -8 for a null pointer, -6 for a length below 3 (Kaiser: below 1)
/// Origin  Harris, Proceedings of the IEEE 66 (1978)
namespace DSP {

/// Triangular: 0 at both ends, 1 in the middle.
VectorStatus ippsWinBartlett_32f_I(float *srcDst, int len);

/// 0.5 - 0.5 cos(2 pi p)
VectorStatus ippsWinHann_32f_I(float *srcDst, int len);

/// 0.54 - 0.46 cos(2 pi p)
VectorStatus ippsWinHamming_32f_I(float *srcDst, int len);

/// (alpha + 1) / 2 - 0.5 cos(2 pi p) - alpha / 2 cos(4 pi p). alpha = -0.16 gives the standard Blackman window.
VectorStatus ippsWinBlackman_32f_I(float *srcDst, int len, float alpha);

/// I0(a sqrt(p (1 - p))) / I0(a / 2) with a = alpha (len - 1). |a| must not exceed 1400.
VectorStatus ippsWinKaiser_32f_I(float *srcDst, int len, float alpha);

} // namespace DSP
