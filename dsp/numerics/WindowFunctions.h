#pragma once
#include "dsp/numerics/VectorStatus.h"

/// Window functions for spectra, each multiplied into the array. With p = n / (len - 1) running from 0 to 1:
/// Unit    1 or nearly so in the middle
/// Errors  a null pointer gives -8, a length below 3 gives -6 (Kaiser: below 1)
/// Origin  Harris, Proceedings of the IEEE 66 (1978)
namespace DSP {

/// The triangle: 0 at both ends, 1 in the middle.
VectorStatus ippsWinBartlett_32f_I(float *srcDst, int len);

/// 0.5 - 0.5 cos(2 pi p)
VectorStatus ippsWinHann_32f_I(float *srcDst, int len);

/// 0.54 - 0.46 cos(2 pi p)
VectorStatus ippsWinHamming_32f_I(float *srcDst, int len);

/// (alpha + 1) / 2 - 0.5 cos(2 pi p) - alpha / 2 cos(4 pi p); the usual window has alpha = -0.16.
VectorStatus ippsWinBlackman_32f_I(float *srcDst, int len, float alpha);

/// I0(a sqrt(p (1 - p))) / I0(a / 2) with a = alpha (len - 1); for |a| up to 1400.
VectorStatus ippsWinKaiser_32f_I(float *srcDst, int len, float alpha);

} // namespace DSP
