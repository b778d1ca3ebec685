#include "PluginBase/Util/String.h"

#include <bit>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr OptionalIndex kAbsent;

TEST(NumberText, IntegersRoundTripInEveryRadix)
{
    EXPECT_EQ(String::number(255, 37u), "255") << "an unsupported radix falls back to 10";
    for (uint32_t radix = 2; radix <= 36; ++radix)
        for (const int32_t value : {std::numeric_limits<int32_t>::min(), -1, 0, 35, 0x7FFFFFFF}) {
            const String text = String::number(value, radix);
            EXPECT_EQ(std::strtoll(text.c_str(), nullptr, static_cast<int>(radix)), value) << text.c_str();
        }
}

TEST(NumberText, RealsMatchPrintf)
{
    std::mt19937_64 random(20);
    std::vector<double> values{
        0.0, -0.0, 1.5, 0.05, 999999.5, 1e-7, 1e22, kInfinity, -kInfinity, 5e-324, 1.7976931348623157e308};
    for (int i = 0; i < 300; ++i) {
        const double value = std::bit_cast<double>(random());
        if (!std::isnan(value)) values.push_back(value);
    }
    for (const double value : values) {
        EXPECT_EQ(String::number(value, 16, 'e').toDouble(), value) << "round trip";
        for (const char format : {'f', 'F', 'e', 'E', 'g', 'G'})
            for (const OptionalIndex precision :
                 {kAbsent, OptionalIndex(0), OptionalIndex(2), OptionalIndex(99)}) {
                const char pattern[] = {'%', '.', '*', format, '\0'};
                char expected[1024];
                std::snprintf(expected, sizeof expected, pattern, precision.valueOr(6), value);
                EXPECT_EQ(String::number(value, precision, format), expected);
            }
    }
    EXPECT_EQ(String::number(1.5, kAbsent, 'z'), "1.500000");
    EXPECT_EQ(String::number(0.25, 250).length(), 2u + 99u);
    EXPECT_EQ(String::number(std::abs(std::nan(""))), "nan");
}

TEST(NumberText, ReadsRealsLikeStrtodAndRefusesOtherText)
{
    bool ok = false;
    for (const char *text : {"1.5", "-.5", "+3", "1e3", "5.", "0x1.8p1", "-0X10", "inf", "-INFINITY", "1e999",
                             "-1e999", "1e-999", "0x1p-9999", "0x1p9999", "4.9e-324"})
        EXPECT_TRUE(String(text).toDouble(&ok) == std::strtod(text, nullptr) && ok) << text;
    EXPECT_TRUE(String("1,5").toDouble(&ok) == 1.5 && ok);
    for (const char *text : {"1.5 ", " 1.5", "\xA0.2", "abc", "", "1.5dB", "1,5,", "+-1", "--1", "-", "1e",
                             "0x", "0x-1", "0xinf", "0x4p+-6", "1 2"})
        EXPECT_TRUE(String(text).toDouble(&ok) == 0 && !ok) << text;
    EXPECT_TRUE(std::isnan(String("nan").toDouble()));
}

/// Sets a locale with a decimal comma, as a host may do. The destructor restores the previous one.
struct CommaLocale {
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    bool found = false;
    CommaLocale()
    {
        for (const char *name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "de_DE", "German_Germany.1252"})
            if (!found)
                found = std::setlocale(LC_NUMERIC, name) && std::localeconv()->decimal_point[0] == ',';
    }
    ~CommaLocale() { std::setlocale(LC_NUMERIC, before.c_str()); }
};

TEST(NumberText, IgnoresTheHostsLocale)
{
    const CommaLocale locale;
    if (!locale.found) GTEST_SKIP() << "no locale with a decimal comma is installed";
    EXPECT_EQ(String::number(1.5, 2), "1.50");
    EXPECT_EQ(String("%1").arg(-0.25f, 2, 'e'), "-2.50e-01");
    EXPECT_EQ(String("1.5").toDouble(), 1.5);
    EXPECT_EQ(String("0x1.8p0").toDouble(), 1.5);
}

} // namespace
