#include "PluginBase/Util/String.h"
#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr OptionalIndex kAbsent;

double bitsToDouble(uint64_t bits)
{
    double value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

TEST(NumberText, IntegersInEveryRadix)
{
    EXPECT_EQ(String::number(0), "0");
    EXPECT_EQ(String::number(255, 40), "255");
    EXPECT_EQ(String::number(255, 1), "255");
    EXPECT_EQ(String::number(255u, 16), "FF");
    EXPECT_EQ(String::number(35u, 36), "Z");
    EXPECT_EQ(String::number(-255, 2), "-11111111");
    EXPECT_EQ(String::number(std::numeric_limits<int32_t>::min()), "-2147483648");
    for (uint32_t radix = 2; radix <= 36; ++radix)
        for (const int32_t value : {std::numeric_limits<int32_t>::min(), -1, 1, 99, 0x7FFFFFFF}) {
            const String text = String::number(value, radix);
            EXPECT_EQ(std::strtoll(text.c_str(), nullptr, static_cast<int>(radix)), value) << text.c_str();
        }
}

TEST(NumberText, RealsAreWrittenAsPrintfWritesThem)
{
    std::mt19937_64 random(20);
    std::vector<double> values{
        0.0, -0.0, 1.5, 0.05, 999999.5, 1e-7, 1e22, kInfinity, -kInfinity, 5e-324, 1.7976931348623157e308};
    for (int i = 0; i < 300; ++i) {
        const double value = bitsToDouble(random());
        if (!std::isnan(value)) values.push_back(value);
    }
    for (const double value : values)
        for (const char format : {'f', 'F', 'e', 'E', 'g', 'G'})
            for (const OptionalIndex precision :
                 {kAbsent, OptionalIndex(0), OptionalIndex(2), OptionalIndex(99)}) {
                const char pattern[] = {'%', '.', '*', format, '\0'};
                char expected[1024];
                std::snprintf(expected, sizeof expected, pattern, precision.valueOr(6), value);
                EXPECT_EQ(String::number(value, precision, format), expected);
            }
    EXPECT_EQ(String::number(1.5, kAbsent, 'z'), "1.500000");
    EXPECT_EQ(String::number(0.25, 250).length(), 2u + 99u);
    EXPECT_EQ(String::number(2.5f, -1), "2.500000");
    EXPECT_EQ(String::number(std::abs(std::nan(""))), "nan");
}

TEST(NumberText, ReadsWhatStrtodReadsAndRefusesTheRest)
{
    constexpr double kRefused = -12345;
    const struct {
        const char *text;
        double value;
    } kCases[] = {
        {"1,5", 1.5},
        {"1.5", 1.5},
        {"-.5", -0.5},
        {"+3", 3},
        {"1e3", 1000},
        {"5.", 5},
        {"0x1.8p1", 3},
        {"-0X10", -16},
        {"inf", kInfinity},
        {"-INFINITY", -kInfinity},
        {"1e999", kInfinity},
        {"-1e999", -kInfinity},
        {"1e-999", 0},
        {"0x1p-9999", 0},
        {"0x1p9999", kInfinity},
        {"4.9e-324", 5e-324},
        {"1.5 ", kRefused},
        {" 1.5", kRefused},
        {"\xA0"
         "2",
         kRefused},
        {"abc", kRefused},
        {"", kRefused},
        {"1.5dB", kRefused},
        {"1,5,", kRefused},
        {"+-1", kRefused},
        {"--1", kRefused},
        {"-", kRefused},
        {"1e", kRefused},
        {"0x", kRefused},
        {"0x-1", kRefused},
        {"1 2", kRefused},
    };
    for (const auto &row : kCases) {
        SCOPED_TRACE(row.text);
        bool ok = row.value == kRefused;
        EXPECT_EQ(String(row.text).toDouble(&ok), row.value == kRefused ? 0.0 : row.value);
        EXPECT_EQ(ok, row.value != kRefused);
    }
    EXPECT_TRUE(std::isnan(String("nan").toDouble()));
    EXPECT_EQ(String("7").toDouble(nullptr), 7);
}

TEST(NumberText, EveryDoubleReturnsThroughSeventeenDigits)
{
    std::mt19937_64 random(21);
    for (int i = 0; i < 2000; ++i) {
        const double value = bitsToDouble(random());
        if (!std::isfinite(value)) continue;
        EXPECT_EQ(String::number(value, 16, 'e').toDouble(), value);
    }
}

/// A host may have set any locale; the setting returns with the scope.
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

TEST(NumberText, HostsLocaleChangesNothing)
{
    const CommaLocale locale;
    if (!locale.found) GTEST_SKIP() << "no locale with a decimal comma is installed";
    EXPECT_EQ(String::number(1.5, 2), "1.50");
    EXPECT_EQ(String("%1").arg(-0.25f, 2, 'e'), "-2.50e-01");
    EXPECT_EQ(String("1.5").toDouble(), 1.5);
    EXPECT_EQ(String("0x1.8p0").toDouble(), 1.5);
}

} // namespace
