#include "dsp/numerics/Math.h"

#include <array>
#include <bit>
#include <cfloat>
#include <cmath>
#include <limits>

namespace DSP::Math {
namespace {

static_assert(FLT_EVAL_METHOD == 0, "the error terms below require each operation to be rounded to double");
static_assert(std::numeric_limits<double>::is_iec559);

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// Double-double number: an unevaluated sum with |lo| at most half an ulp of hi; about 106 bits.
struct Pair {
    double hi, lo;
};

constexpr Pair kInverseLn2{0x1.71547652b82fep+0, 0x1.777d0ffda0d24p-56};
constexpr Pair kInverseLn10{0x1.bcb7b1526e50ep-2, 0x1.95355baaafad3p-57};
/// The constant split into parts; all except the last are short enough for exact products with small integers.
constexpr std::array kLn2Parts{0x1.62e42fefa2000p-1, 0x1.9ef35793c6000p-41, 0x1.673007e5ed5e8p-81};
constexpr std::array kHalfPiParts{0x1.921fb54400000p+0, 0x1.0b4611a600000p-34, 0x1.3198a2e000000p-69,
                                  0x1.b839a252049c1p-104};
constexpr double kTwoOverPi = 0x1.45f306dc9c883p-1;
constexpr double kLargestAngle = 1e6;

/// Exact sum; requires |a| >= |b| or a == 0 (Dekker).
Pair quickSum(double a, double b)
{
    const double sum = a + b;
    return {sum, b - (sum - a)};
}

/// Exact sum of any two numbers (Knuth).
Pair exactSum(double a, double b)
{
    const double sum = a + b, bPart = sum - a;
    return {sum, (a - (sum - bPart)) + (b - bPart)};
}

/// Splits x into its upper 26 bits and the remainder (Veltkamp).
Pair split(double x)
{
    const double scaled = 134217729.0 * x, hi = scaled - (scaled - x);
    return {hi, x - hi};
}

/// Exact product (Dekker). Not by fused multiply-add, which some processors lack.
Pair exactProduct(double a, double b)
{
    const double product = a * b;
    const Pair x = split(a), y = split(b);
    return {product, ((x.hi * y.hi - product) + x.hi * y.lo + x.lo * y.hi) + x.lo * y.lo};
}

Pair operator+(Pair a, Pair b)
{
    const Pair hi = exactSum(a.hi, b.hi), lo = exactSum(a.lo, b.lo);
    const Pair sum = quickSum(hi.hi, hi.lo + lo.hi);
    return quickSum(sum.hi, sum.lo + lo.lo);
}

Pair operator+(Pair a, double b)
{
    const Pair sum = exactSum(a.hi, b);
    return quickSum(sum.hi, sum.lo + a.lo);
}

Pair operator*(Pair a, Pair b)
{
    const Pair product = exactProduct(a.hi, b.hi);
    return quickSum(product.hi, product.lo + (a.hi * b.lo + a.lo * b.hi));
}

Pair operator*(Pair a, double b)
{
    const Pair product = exactProduct(a.hi, b);
    return quickSum(product.hi, product.lo + a.lo * b);
}

Pair operator/(Pair a, Pair b)
{
    const double quotient = a.hi / b.hi;
    const Pair back = exactProduct(quotient, b.hi);
    return quickSum(quotient, ((a.hi - back.hi) - back.lo + a.lo - quotient * b.lo) / b.hi);
}

Pair negative(Pair a) { return {-a.hi, -a.lo}; }

/// a x 2^exponent, exact unless the result leaves the normal range. Two factors, because 2^1024 overflows.
double scale(double a, int exponent)
{
    const auto powerOfTwo = [](int n) {
        return std::bit_cast<double>(static_cast<uint64_t>(n + 1023) << 52);
    };
    const int half = exponent / 2;
    return a * powerOfTwo(half) * powerOfTwo(exponent - half);
}

Pair timesLn2(double whole)
{
    Pair sum{whole * kLn2Parts[0], 0.0};
    sum = sum + whole * kLn2Parts[1];
    return sum + whole * kLn2Parts[2];
}

/// exp(x) - 1 for |x| below 0.4: Taylor series at x / 64, then six doublings by (1 + e)^2 - 1 = 2e + e^2.
Pair expMinusOne(Pair x)
{
    constexpr int kTerms = 12, kDoublings = 6;
    const Pair small{x.hi * 0x1p-6, x.lo * 0x1p-6};
    Pair sum{1.0, 0.0};
    for (int n = kTerms; n >= 2; --n) sum = small * sum / Pair{static_cast<double>(n), 0.0} + 1.0;
    Pair e = small * sum;
    for (int i = 0; i < kDoublings; ++i) e = Pair{2.0 * e.hi, 2.0 * e.lo} + e * e;
    return e;
}

double expOf(Pair x)
{
    if (x.hi > 709.8) return kInfinity;
    if (x.hi < -745.2) return 0.0;
    const double k = std::floor(x.hi * kInverseLn2.hi + 0.5);
    const Pair result = expMinusOne(x + negative(timesLn2(k))) + 1.0;
    return scale(result.hi, static_cast<int>(k));
}

/// x = mantissa x 2^exponent with sqrt(1/2) <= mantissa <= sqrt(2), for positive finite x.
struct Normalised {
    double mantissa, exponent;
};

Normalised normalise(double x)
{
    int exponent = 0;
    if (x < DBL_MIN) {
        x *= 0x1p54;
        exponent = -54;
    }
    const auto bits = std::bit_cast<uint64_t>(x);
    exponent += static_cast<int>(bits >> 52) - 1023;
    double mantissa = std::bit_cast<double>((bits & 0x000FFFFFFFFFFFFFu) | 0x3FF0000000000000u);
    if (mantissa > 1.4142135623730951) {
        mantissa *= 0.5;
        ++exponent;
    }
    return {mantissa, static_cast<double>(exponent)};
}

/// Natural logarithm of a mantissa: artanh series in double, then one Newton step in double-double.
Pair logOfMantissa(double mantissa)
{
    const double f = (mantissa - 1.0) / (mantissa + 1.0), f2 = f * f;
    double series = 0.0;
    for (int n = 23; n >= 1; n -= 2) series = series * f2 + 1.0 / n;
    const double guess = 2.0 * f * series;
    const Pair residual = expMinusOne({-guess, 0.0}) * mantissa + (mantissa - 1.0);
    return residual + guess;
}

Pair logOf(double x)
{
    const Normalised n = normalise(x);
    return logOfMantissa(n.mantissa) + timesLn2(n.exponent);
}

/// Any logarithm of an argument that is not positive and finite.
double logOfOutsider(double x)
{
    if (x == 0.0) return -kInfinity;
    return x > 0.0 ? x : kNaN;
}

bool positiveFinite(double x) { return x > 0.0 && x < kInfinity; }

/// Angle reduced by a multiple of pi/2: the remainder, at most pi/4 in magnitude, and the multiple modulo 4.
struct Reduced {
    Pair rest;
    int quadrant;
};

Reduced reduce(double angle)
{
    const double turns = std::floor(angle * kTwoOverPi + 0.5);
    Pair rest{angle, 0.0};
    for (const double part : kHalfPiParts) rest = rest + -turns * part;
    return {rest, static_cast<int>(turns) & 3};
}

/// Taylor coefficients of sin x + cos x up to x^18.
constexpr auto kTaylor = [] {
    std::array<double, 19> coefficients{};
    double factorial = 1.0;
    for (unsigned n = 0; n < coefficients.size(); ++n) {
        if (n > 1) factorial *= n;
        coefficients[n] = (n & 2 ? -1.0 : 1.0) / factorial;
    }
    return coefficients;
}();

/// Taylor series of sine and cosine for |x| up to pi/4. The leading terms are not part of the rounded sum, which
/// makes the result slightly more precise than a double.
Pair sinOf(Pair x)
{
    const double x2 = x.hi * x.hi;
    double series = kTaylor[17];
    for (unsigned n = 15; n >= 3; n -= 2) series = series * x2 + kTaylor[n];
    return quickSum(x.hi, x.hi * x2 * series + x.lo * (1.0 - 0.5 * x2));
}

Pair cosOf(Pair x)
{
    const Pair half = exactProduct(x.hi, 0.5 * x.hi);
    const double x2 = x.hi * x.hi;
    double series = kTaylor[18];
    for (unsigned n = 16; n >= 4; n -= 2) series = series * x2 + kTaylor[n];
    const Pair head = quickSum(1.0, -half.hi);
    return quickSum(head.hi, head.lo + (series * x2 * x2 - half.lo - x.hi * x.lo));
}

} // namespace

double exp(double x)
{
    if (x != x) return x;
    return expOf({x, 0.0});
}

double exp2(double x) { return pow(2.0, x); }

double log(double x) { return positiveFinite(x) ? logOf(x).hi : logOfOutsider(x); }

double log2(double x)
{
    if (!positiveFinite(x)) return logOfOutsider(x);
    const Normalised n = normalise(x);
    return (logOfMantissa(n.mantissa) * kInverseLn2 + n.exponent).hi;
}

double log10(double x) { return positiveFinite(x) ? (logOf(x) * kInverseLn10).hi : logOfOutsider(x); }

double pow(double base, double exponent)
{
    if (base != base || exponent != exponent || base < 0.0) return kNaN;
    if (exponent == 0.0 || base == 1.0) return 1.0;
    if (base == 0.0 || base == kInfinity) return (base == 0.0) == (exponent > 0.0) ? 0.0 : kInfinity;

    const Pair logarithm = logOf(base);
    const double estimate = logarithm.hi * exponent;
    if (estimate > 800.0) return kInfinity;
    if (estimate < -800.0) return 0.0;
    return expOf(logarithm * exponent);
}

double sin(double angle)
{
    if (!(std::fabs(angle) <= kLargestAngle)) return kNaN;
    const Reduced r = reduce(angle);
    const double result = r.quadrant & 1 ? cosOf(r.rest).hi : sinOf(r.rest).hi;
    return r.quadrant & 2 ? -result : result;
}

double cos(double angle)
{
    if (!(std::fabs(angle) <= kLargestAngle)) return kNaN;
    const Reduced r = reduce(angle);
    const double result = r.quadrant & 1 ? sinOf(r.rest).hi : cosOf(r.rest).hi;
    return r.quadrant == 1 || r.quadrant == 2 ? -result : result;
}

double tan(double angle)
{
    if (!(std::fabs(angle) <= kLargestAngle)) return kNaN;
    const Reduced r = reduce(angle);
    const Pair sine = sinOf(r.rest), cosine = cosOf(r.rest);
    return r.quadrant & 1 ? (negative(cosine) / sine).hi : (sine / cosine).hi;
}

double besselI0(double x)
{
    if (x != x) return x;
    // Sum of ((x/2)^k / k!)^2. All terms are positive, so there is no cancellation.
    const double quarter = 0.25 * x * x;
    double term = 1.0, sum = 1.0;
    for (double k = 1.0; term > sum * 0x1p-55; k += 1.0) {
        term *= quarter / (k * k);
        sum += term;
    }
    return sum;
}

double flooredLog2(double x) { return std::fabs(x) < 1e-36 ? -1e35 : log2(x); }

double flooredLog10(double x) { return std::fabs(x) < 1e-36 ? -1e35 : log10(x); }

double decibelsToLinear(double decibels) { return pow(10.0, decibels * static_cast<double>(0.05f)); }

double linearToDecibels(double linear) { return 20.0 * flooredLog10(linear); }

double timeCoeff(double ms, double sampleRate)
{
    return ms > 0.0 ? exp((-1000.0 / ms) / (sampleRate * 0.5)) : 0.0;
}

uint32_t roundHalfAwayFromZero(double x)
{
    if (!(x > 0.0)) return 0;
    constexpr double kLargest = std::numeric_limits<uint32_t>::max();
    if (x >= kLargest) return std::numeric_limits<uint32_t>::max();
    const double whole = std::floor(x);
    return static_cast<uint32_t>(whole) + (x - whole >= 0.5 ? 1 : 0);
}

} // namespace DSP::Math
