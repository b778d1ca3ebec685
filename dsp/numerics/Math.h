#pragma once
#include <cstdint>

/// Scalar mathematics with the same bits on every system: plain IEEE operations and exact library calls only.
/// Unit    double in and out, angles in radians
/// Errors  at most 0.51 units in the last place for exp, log, pow and their kin and 0.8 for sin, cos and tan,
///         where the result is a normal number; besselI0 4 up to 100, more beyond. NaN gives NaN, an overflow
///         infinity, an underflow 0
/// Cost    sin, cos and tan 20 to 40 ns, the others up to 1 us: for setters and tables, not for samples
/// Thread  any; the floating-point state must be the default one (FloatState)
/// Origin  pairs of doubles after Dekker, Numerische Mathematik 18 (1971); reduction after Cody and Waite
namespace DSP::Math {

inline constexpr double kPi = 3.14159265358979323846;

double exp(double x);
double exp2(double x);

/// Logarithms: -infinity at 0, NaN below.
double log(double x);
double log2(double x);
double log10(double x);

/// NaN for a base below 0; a base of 0 gives 0, 1 or infinity by the sign of the exponent.
double pow(double base, double exponent);

/// NaN for an angle beyond a million.
double sin(double angle);
double cos(double angle);
double tan(double angle);

/// Modified Bessel function of the first kind, order 0; infinite from about |x| = 713.
double besselI0(double x);

/// log2 and log10 of what may be silence: -1e35 where |x| is below 1e-36.
double flooredLog2(double x);
double flooredLog10(double x);

/// 10^(dB / 20), where 1/20 is rounded to 32 bits, so that a level typed in gives the factor it always gave.
double decibelsToLinear(double decibels);

/// 20 log10(x), floored as flooredLog10 is.
double linearToDecibels(double linear);

/// Feedback of a one-pole follower whose stated time is `ms`: exp((-1000 / ms) / (sampleRate x 0.5)), 0 for
/// no time. The half of the rate makes the time constant half of what is stated.
double timeCoeff(double ms, double sampleRate);

/// Nearest whole number, halves away from zero, held to the range of the result; NaN gives 0.
uint32_t roundHalfAwayFromZero(double x);

} // namespace DSP::Math
