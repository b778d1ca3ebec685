#include "dsp/kernels/Math.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>

namespace {

namespace Math = DSP::Math;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// Distance from the true value in units of the last place of the nearest double.
double ulps(double value, long double truth)
{
    const int exponent = std::max(std::ilogb(truth), -1022);
    return static_cast<double>(std::fabs((value - truth) / std::ldexp(1.0L, exponent - 52)));
}

struct Case {
    const char *name;
    double (*ours)(double);
    long double (*truth)(long double);
    double low, high;
    bool logarithmic; ///< samples spread evenly over the exponents
    double bound;     ///< units in the last place
};

const Case kCases[] = {
    {"exp", Math::exp, std::exp, -708, 709.7, false, 0.51},
    {"expNearZero", Math::exp, std::exp, -1e-3, 1e-3, false, 0.51},
    {"exp2", Math::exp2, std::exp2, -1021, 1023.9, false, 0.51},
    {"log", Math::log, std::log, 5e-324, 1e308, true, 0.51},
    {"logNearOne", Math::log, std::log, 0.999, 1.001, false, 0.51},
    {"log2", Math::log2, std::log2, 5e-324, 1e308, true, 0.51},
    {"log10", Math::log10, std::log10, 1e-300, 1e308, true, 0.51},
    {"log10NearOne", Math::log10, std::log10, 0.9, 1.1, false, 0.51},
    {"sin", Math::sin, std::sin, -50, 50, false, 0.8},
    {"sinFar", Math::sin, std::sin, -1e6, 1e6, false, 0.8},
    {"cos", Math::cos, std::cos, -50, 50, false, 0.8},
    {"cosFar", Math::cos, std::cos, -1e6, 1e6, false, 0.8},
    {"tan", Math::tan, std::tan, -Math::kPi / 2, Math::kPi / 2, false, 0.8},
    {"tanSmall", Math::tan, std::tan, 1e-8, 1, true, 0.8},
    {"tanFar", Math::tan, std::tan, -1e4, 1e4, false, 0.8},
};

class ScalarFunction : public testing::TestWithParam<Case> {};

TEST_P(ScalarFunction, StaysWithinItsBoundOfLongDouble)
{
    const Case &c = GetParam();
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> spread(c.logarithmic ? std::log(c.low) : c.low,
                                                  c.logarithmic ? std::log(c.high) : c.high);
    double worst = 0, worstAt = 0;
    for (int i = 0; i < 50000; ++i) {
        const double x = c.logarithmic ? std::exp(spread(random)) : spread(random);
        const double error = ulps(c.ours(x), c.truth(x));
        if (error > worst || error != error) worst = error, worstAt = x;
        if (error != error) break;
    }
    EXPECT_LE(worst, c.bound) << "at " << worstAt;
}

INSTANTIATE_TEST_SUITE_P(Math, ScalarFunction, testing::ValuesIn(kCases),
                         [](const auto &row) { return std::string(row.param.name); });

TEST(Math, PowerStaysWithinHalfAnUlpOverTheWholeRange)
{
    std::mt19937_64 random(2);
    std::uniform_real_distribution<double> anyLog(-700, 700);
    for (int i = 0; i < 50000; ++i) {
        const double base = std::exp(anyLog(random)), exponent = anyLog(random) / std::log(base);
        // The library's long double power has half a unit of its own type, 2^-11 of ours, and is exact enough
        // here.
        EXPECT_LE(ulps(Math::pow(base, exponent), std::pow((long double)base, (long double)exponent)), 0.51)
            << base << " to the " << exponent;
    }
    for (int dB = -144; dB <= 144; ++dB) {
        const double widened = dB * static_cast<double>(0.05f);
        EXPECT_LE(ulps(Math::decibelsToLinear(dB), std::pow(10.0L, (long double)widened)), 0.51) << dB;
    }
}

TEST(Math, BesselFunctionAgreesWithItsIntegral)
{
    // I0(x) = 1/pi times the integral of exp(x cos t) over half a turn; the midpoint rule converges at once.
    for (const double x : {0.0, 0.006, 0.5, 3.0, 12.28, 24.6, 100.0}) {
        constexpr int kSteps = 400;
        long double sum = 0;
        for (int i = 0; i < kSteps; ++i)
            sum += std::exp(x * (std::cos((i + 0.5L) * std::acos(-1.0L) / kSteps) - 1));
        const long double truth = sum / kSteps * std::exp((long double)x);
        EXPECT_LE(ulps(Math::besselI0(x), truth), 4) << x;
        EXPECT_EQ(Math::besselI0(x), Math::besselI0(-x));
    }
    EXPECT_EQ(Math::besselI0(1e200), kInfinity);
}

TEST(Math, RoundValuesAreExact)
{
    EXPECT_EQ(Math::exp(0), 1);
    EXPECT_EQ(Math::log(1), 0);
    EXPECT_EQ(Math::pow(10, 0), 1);
    EXPECT_EQ(Math::tan(0), 0);
    EXPECT_EQ(Math::sin(0), 0);
    EXPECT_EQ(Math::cos(0), 1);
    for (int n = -300; n <= 300; ++n) {
        EXPECT_EQ(Math::log2(std::ldexp(1.0, n)), n);
        EXPECT_EQ(Math::exp2(n), std::ldexp(1.0, n));
    }
    for (int n = 0; n <= 22; ++n) EXPECT_EQ(Math::log10(Math::pow(10, n)), n);
    EXPECT_EQ(Math::pow(3, 30), 205891132094649.0);
    EXPECT_EQ(Math::pow(2.25, -0.5), 1 / 1.5);
}

TEST(Math, EndsOfTheRangeAreDefined)
{
    for (const auto f : {Math::exp, Math::exp2, Math::log, Math::log2, Math::log10, Math::sin, Math::cos,
                         Math::tan, Math::besselI0, Math::flooredLog2, Math::flooredLog10})
        EXPECT_TRUE(std::isnan(f(kNaN)));
    for (const auto f : {Math::log, Math::log2, Math::log10}) {
        EXPECT_EQ(f(0), -kInfinity);
        EXPECT_EQ(f(kInfinity), kInfinity);
        EXPECT_TRUE(std::isnan(f(-1)));
    }
    for (const auto f : {Math::sin, Math::cos, Math::tan}) EXPECT_TRUE(std::isnan(f(kInfinity)));
    for (const double big : {710.0, 1e300, kInfinity}) {
        EXPECT_EQ(Math::exp(big), kInfinity);
        EXPECT_EQ(Math::exp(-big - 40), 0);
        EXPECT_EQ(Math::pow(10, big), kInfinity);
        EXPECT_EQ(Math::pow(10, -big), 0);
        EXPECT_EQ(Math::pow(0.1, big), 0);
    }
    EXPECT_EQ(Math::exp(-744.4), 5e-324);
    EXPECT_EQ(Math::pow(2, -1074), 5e-324);
    EXPECT_EQ(Math::pow(0, 2), 0);
    EXPECT_EQ(Math::pow(0, 0), 1);
    EXPECT_EQ(Math::pow(0, -2), kInfinity);
    EXPECT_EQ(Math::pow(kInfinity, -2), 0);
    EXPECT_EQ(Math::pow(kInfinity, 2), kInfinity);
    EXPECT_TRUE(std::isnan(Math::pow(-2, 2)));
    EXPECT_TRUE(std::isnan(Math::pow(kNaN, 0)));
}

TEST(Math, ConventionsOfTheSystem)
{
    for (const auto f : {Math::flooredLog2, Math::flooredLog10}) {
        EXPECT_EQ(f(0), -1e35);
        EXPECT_EQ(f(-9.9e-37), -1e35);
        EXPECT_GT(f(1.01e-36), -200);
    }
    EXPECT_EQ(Math::linearToDecibels(10), 20);
    EXPECT_EQ(Math::linearToDecibels(1), 0);
    EXPECT_EQ(Math::decibelsToLinear(0), 1);
    EXPECT_EQ(Math::timeCoeff(0, 44100), 0);
    EXPECT_EQ(Math::timeCoeff(-1, 44100), 0);
    EXPECT_EQ(Math::timeCoeff(1e-300, 44100), 0);
    EXPECT_DOUBLE_EQ(Math::timeCoeff(10, 44100), std::exp(-100.0 / 22050.0));

    const struct {
        double x;
        uint32_t rounded;
    } rows[] = {
        {0.49999999999999994, 0}, {0.5, 1},     {2.5, 3},         {262.4, 262}, {-3, 0},
        {4294967294.5, ~0u},      {1e300, ~0u}, {kInfinity, ~0u}, {kNaN, 0},    {4294967294.4, ~0u - 1}};
    for (const auto &row : rows) EXPECT_EQ(Math::roundHalfAwayFromZero(row.x), row.rounded) << row.x;
}

/// The sum over a few thousand results, so that a build whose compiler or flags differ is found out.
TEST(Math, EveryBuildGivesTheSameBits)
{
    uint64_t hash = 0xcbf29ce484222325u;
    const auto add = [&](double value) { hash = (hash ^ std::bit_cast<uint64_t>(value)) * 0x100000001b3u; };
    for (int i = 1; i < 2000; ++i) {
        const double x = i * 0.0078125;
        add(Math::exp(-x)), add(Math::log(x)), add(Math::log2(x)), add(Math::log10(x)),
            add(Math::pow(x, 0.7 - x));
        add(Math::sin(x)), add(Math::cos(x)), add(Math::tan(x / 10)), add(Math::besselI0(x));
    }
    EXPECT_EQ(hash, 11361909670025328497u);
}

} // namespace
