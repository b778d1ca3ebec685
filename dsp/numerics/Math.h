#pragma once
#include <cstdint>

/// Scalar functions with identical bits on every system: IEEE operations and exact library calls only.
/// Unit    doubles; angles in radians
/// Errors  for normal results at most 0.51 ulp in exp, log and pow functions, 0.8 ulp in sin, cos and tan;
///         besselI0 4 ulp up to x = 100, more above. NaN gives NaN, overflow infinity, underflow 0
/// Cost    sin, cos and tan 20 to 40 ns, others up to 1 us: for setters and tables, not per sample
/// Thread  any; requires the default floating-point state (FloatState)
/// Origin  double-double arithmetic: Dekker, Numerische Mathematik 18 (1971); range reduction: Cody and Waite
namespace DSP::Math {

inline constexpr double kPi = 3.14159265358979323846;

double exp(double x);
double exp2(double x);

/// Logarithms: -infinity at 0, NaN below.
double log(double x);
double log2(double x);
double log10(double x);

/// NaN for a negative base. A base of 0 gives 0, 1 or infinity for a positive, zero or negative exponent.
double pow(double base, double exponent);

// NaN for angles above 1e6 in magnitude.
double sin(double angle);
double cos(double angle);
double tan(double angle);

/// Modified Bessel function of the first kind, order 0. Overflows to infinity from about |x| = 713.
double besselI0(double x);

/// log2 and log10, but -1e35 for |x| below 1e-36, so that silence gives a finite level.
double flooredLog2(double x);
double flooredLog10(double x);

/// 10^(dB / 20). 1/20 is rounded to 32 bits: part of the sound; see SameBitsTest.
double decibelsToLinear(double decibels);

/// 20 flooredLog10(x).
double linearToDecibels(double linear);

/// Feedback coefficient of a one-pole follower: exp((-1000 / ms) / (sampleRate x 0.5)), or 0 if `ms` is 0 or less.
/// The time constant is ms / 2: part of the sound; see SameBitsTest.
double timeCoeff(double ms, double sampleRate);

/// Rounds to the nearest integer, halves away from zero, clamped to the range of uint32_t. NaN gives 0.
uint32_t roundHalfAwayFromZero(double x);

} // namespace DSP::Math
