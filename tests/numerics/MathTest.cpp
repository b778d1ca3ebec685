#include "dsp/numerics/Math.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>

namespace {

namespace Math = DSP::Math;

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

/// Error in ULPs of a double.
double ulps(double value, long double truth)
{
    const int exponent = std::max(std::ilogb(truth), -1022);
    return static_cast<double>(std::fabs((value - truth) / std::ldexp(1.0L, exponent - 52)));
}

struct Case {
    const char *name;
    double (*ours)(double);
    long double (*truth)(long double);
    double low, high, bound;
    bool logarithmic = false; ///< samples spread evenly over the exponents
};
constexpr double kTight = 0.51, kLoose = 0.8; // ULPs
const Case kCases[] = {{"exp", Math::exp, std::exp, -708, 709.7, kTight},
                       {"exp near zero", Math::exp, std::exp, -1e-3, 1e-3, kTight},
                       {"exp2", Math::exp2, std::exp2, -1021, 1023.9, kTight},
                       {"log", Math::log, std::log, 5e-324, 1e308, kTight, true},
                       {"log near one", Math::log, std::log, 0.999, 1.001, kTight},
                       {"log2", Math::log2, std::log2, 5e-324, 1e308, kTight, true},
                       {"log10", Math::log10, std::log10, 1e-300, 1e308, kTight, true},
                       {"log10 near one", Math::log10, std::log10, 0.9, 1.1, kTight},
                       {"sin", Math::sin, std::sin, -50, 50, kLoose},
                       {"sin far out", Math::sin, std::sin, -1e6, 1e6, kLoose},
                       {"cos", Math::cos, std::cos, -50, 50, kLoose},
                       {"cos far out", Math::cos, std::cos, -1e6, 1e6, kLoose},
                       {"tan", Math::tan, std::tan, -Math::kPi / 2, Math::kPi / 2, kLoose},
                       {"tan near zero", Math::tan, std::tan, 1e-8, 1, kLoose, true},
                       {"tan far out", Math::tan, std::tan, -1e4, 1e4, kLoose}};

void compareWithLongDouble(const Case &c)
{
    std::mt19937_64 random(1);
    std::uniform_real_distribution spread(c.logarithmic ? std::log(c.low) : c.low,
                                          c.logarithmic ? std::log(c.high) : c.high);
    for (int i = 0; i < 50000; ++i) {
        const double any = c.logarithmic ? std::exp(spread(random)) : spread(random);
        ASSERT_LE(ulps(c.ours(any), c.truth(any)), c.bound) << c.name << " at " << any;
        if (c.bound == kTight) continue;
        const double x =
            std::nearbyint(any / (Math::kPi / 2)) * (Math::kPi / 2); // worst case of the range reduction
        ASSERT_LE(ulps(c.ours(x), c.truth(x)), c.bound) << c.name << " at " << x;
    }
}

/// Returns false on Windows, whose long double functions reduce angles with an inexact pi and lose bits of large powers.
bool longDoubleIsExact()
{
    // volatile prevents constant folding, which would be exact
    volatile long double angle = 22.0L, base = 5.1600072504696976e-137, exponent = -0.96834037503312742;
    const long double sine = std::sin(angle), power = std::pow(base, exponent);
    return std::fabs(sine + 0.00885130929040387592169025681577L) < 1e-20L &&
           std::fabs(power / 9.3873564581856972619347e+131L - 1) < 2e-19L;
}

TEST(Math, AgreesWithLongDoubleWithinItsErrorBound)
{
    if (!longDoubleIsExact()) GTEST_SKIP() << "this C library's long double functions are too inexact";
    for (const Case &c : kCases) compareWithLongDouble(c);
    std::mt19937_64 random(2);
    std::uniform_real_distribution anyLog(-700.0, 700.0);
    for (int i = 0; i < 50000; ++i) {
        const double base = std::exp(anyLog(random)), exponent = anyLog(random) / std::log(base);
        EXPECT_LE(ulps(Math::pow(base, exponent), std::pow((long double)base, (long double)exponent)), 0.51)
            << base << " to the " << exponent;
    }
    for (int dB = -144; dB <= 144; ++dB)
        EXPECT_LE(ulps(Math::decibelsToLinear(dB), std::pow(10.0L, (long double)(dB * double(0.05f)))), 0.51);
}

TEST(Math, BesselFunctionAgreesWithItsIntegral)
{
    // I0(x) = 1/pi times the integral of exp(x cos t) from 0 to pi, by the midpoint rule.
    for (const double x : {0.0, 0.006, -0.5, 3.0, 12.28, -24.6, 100.0}) {
        long double sum = 0;
        for (int i = 0; i < 400; ++i) sum += std::exp(x * std::cos((i + 0.5L) * std::acos(-1.0L) / 400));
        EXPECT_LE(ulps(Math::besselI0(x), sum / 400), 4) << x;
    }
}

TEST(Math, SpecialValuesAreDefined)
{
    for (const auto f : {Math::exp, Math::exp2, Math::log, Math::log2, Math::log10, Math::sin, Math::cos,
                         Math::tan, Math::besselI0, Math::flooredLog2, Math::flooredLog10})
        EXPECT_TRUE(std::isnan(f(kNan)));
    for (const auto f : {Math::sin, Math::cos, Math::tan}) EXPECT_TRUE(std::isnan(f(kInf)));
    for (const auto f : {Math::log, Math::log2, Math::log10}) {
        EXPECT_EQ(f(0), -kInf);
        EXPECT_EQ(f(kInf), kInf);
        EXPECT_TRUE(std::isnan(f(-1)));
    }
    for (const double big : {710.0, 1e300, kInf}) {
        EXPECT_EQ(Math::exp(big), kInf);
        EXPECT_EQ(Math::exp(-big - 40), 0);
    }
    EXPECT_EQ(Math::exp(-744.4), 5e-324);
    const double powers[][3] = {{10, 710, kInf},    {10, -710, 0}, {10, kInf, kInf},
                                {2, -1074, 5e-324}, {0, 2, 0},     {0, 0, 1},
                                {kInf, -2, 0},      {3, 0, 1},     {2.25, -0.5, 1 / 1.5}};
    for (const auto &[base, exponent, power] : powers)
        EXPECT_EQ(Math::pow(base, exponent), power) << base << " to the " << exponent;
    for (const double base : {-2.0, kNan}) EXPECT_TRUE(std::isnan(Math::pow(base, base < 0 ? 2 : 0)));
}

TEST(Math, ConversionsHandleZeroNegativeAndNaN)
{
    for (const auto f : {Math::flooredLog2, Math::flooredLog10}) {
        EXPECT_EQ(f(-9.9e-37), -1e35);
        EXPECT_GT(f(1.01e-36), -200);
    }
    EXPECT_EQ(Math::linearToDecibels(10), 20);
    for (const double none : {0.0, -1.0, 1e-300}) EXPECT_EQ(Math::timeCoeff(none, 44100), 0);
    EXPECT_DOUBLE_EQ(Math::timeCoeff(10, 44100), std::exp(-100.0 / 22050.0));

    for (const auto &[x, whole] :
         {std::pair(0.49999999999999994, 0u), {2.5, 3}, {-3, 0}, {kNan, 0}, {1e300, ~0u}})
        EXPECT_EQ(Math::roundHalfAwayFromZero(x), whole) << x;
}

// Fails if a compiler or its flags change a result.
TEST(Math, IsBitExactInEveryBuild)
{
    uint64_t hash = 0xcbf29ce484222325u;
    for (int i = 1; i < 2000; ++i) {
        const double x = i * 0.0078125;
        for (double value :
             {Math::exp(-x), Math::log(x), Math::log2(x), Math::log10(x), Math::pow(x, 0.7 - x), Math::sin(x),
              Math::cos(x), Math::tan(x / 10), Math::besselI0(x)})
            hash = (hash ^ std::bit_cast<uint64_t>(value)) * 0x100000001b3u;
    }
    EXPECT_EQ(hash, 11361909670025328497u);
}

} // namespace
