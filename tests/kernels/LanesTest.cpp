#include <bit>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include "dsp/kernels/Kernels.h"
#include "tests/kernels/LanesProbe.h"

namespace DSP::Kernels {
namespace portable {
extern const LanesProbe lanesProbe;
}
#ifdef TESSARINE_X86_KERNELS
namespace sse2 {
extern const LanesProbe lanesProbe;
}
namespace avx2 {
extern const LanesProbe lanesProbe;
}
#endif
} // namespace DSP::Kernels

namespace {

using Lanes = const float *;
/// What lane i of an operation must be, as plain C++ on the eight lanes of both arguments; bits for integers.
using FloatLane = std::function<float(Lanes a, Lanes b, int i)>;
using BitsLane = std::function<uint32_t(uint32_t a, uint32_t b)>;

constexpr float kInfinity = std::numeric_limits<float>::infinity();
const float kNaN = std::numeric_limits<float>::quiet_NaN();

uint32_t bitsOf(float x) { return std::bit_cast<uint32_t>(x); }
int32_t signedBits(uint32_t x) { return std::bit_cast<int32_t>(x); }

/// Lanes 0-3 with 4-7, then 0-1 with 2-3, then 0 with 1.
float folded(Lanes a, float (*join)(float, float))
{
    const float even = join(join(a[0], a[4]), join(a[2], a[6]));
    return join(even, join(join(a[1], a[5]), join(a[3], a[7])));
}
/// One bit for each lane with a < b.
int lessMask(Lanes a, Lanes b)
{
    int mask = 0;
    for (int bit = 1; bit < 256; bit *= 2, ++a, ++b) mask += *a < *b ? bit : 0;
    return mask;
}
float lesser(float a, float b) { return a < b ? a : b; }
float greater(float a, float b) { return a > b ? a : b; }

const std::map<std::string, FloatLane> kFloats = {
    {"a + b", [](Lanes a, Lanes b, int i) { return a[i] + b[i]; }},
    {"a - b", [](Lanes a, Lanes b, int i) { return a[i] - b[i]; }},
    {"a * b", [](Lanes a, Lanes b, int i) { return a[i] * b[i]; }},
    {"a / b", [](Lanes a, Lanes b, int i) { return a[i] / b[i]; }},
    {"-a", [](Lanes a, Lanes, int i) { return -a[i]; }},
    {"abs a", [](Lanes a, Lanes, int i) { return std::fabs(a[i]); }},
    {"sqrt a", [](Lanes a, Lanes, int i) { return std::sqrt(a[i]); }},
    {"min", [](Lanes a, Lanes b, int i) { return lesser(a[i], b[i]); }},
    {"max", [](Lanes a, Lanes b, int i) { return greater(a[i], b[i]); }},
    {"a < b ? a : b", [](Lanes a, Lanes b, int i) { return lesser(a[i], b[i]); }},
    {"a > b ? a : b", [](Lanes a, Lanes b, int i) { return greater(a[i], b[i]); }},
    {"a <= b ? a : 0", [](Lanes a, Lanes b, int i) { return a[i] <= b[i] ? a[i] : 0.f; }},
    {"a == b ? a : -b", [](Lanes a, Lanes b, int i) { return a[i] == b[i] ? a[i] : -b[i]; }},
    {"float of bits a", [](Lanes a, Lanes, int i) { return float(signedBits(bitsOf(a[i]))); }},
    {"a * b in doubles",
     [](Lanes a, Lanes b, int i) { return float(double(a[i]) * b[i] * (double(a[i]) - b[i])); }},
    {"a / b in doubles", [](Lanes a, Lanes b, int i) { return float(double(a[i]) / b[i] / b[i]); }},
    {"reversed", [](Lanes a, Lanes, int i) { return a[7 - i]; }},
    {"lane 2", [](Lanes a, Lanes, int) { return a[2]; }},
    {"lane 5", [](Lanes a, Lanes, int) { return a[5]; }},
    {"halves exchanged", [](Lanes a, Lanes, int i) { return a[(i + 4) % 8]; }},
    {"shuffled",
     [](Lanes a, Lanes b, int i) {
         constexpr int kFrom[4] = {3, 0, 1, 1};
         const int from = i / 4 * 4 + kFrom[i % 4];
         return i % 4 < 2 ? a[from] : b[from];
     }},
    {"largest", [](Lanes a, Lanes, int) { return folded(a, greater); }},
    {"smallest", [](Lanes a, Lanes, int) { return folded(a, lesser); }},
    {"sum", [](Lanes a, Lanes, int) { return folded(a, [](float x, float y) { return x + y; }); }},
    {"bits of a < b", [](Lanes a, Lanes b, int) { return float(lessMask(a, b)); }},
    {"any and all",
     [](Lanes a, Lanes b, int) { return float(2 * (lessMask(a, b) != 0) + (lessMask(a, b) == 255)); }},
    {"column 5", [](Lanes a, Lanes, int i) { return a[5] + float(i); }},
    {"columns 1 and 3", [](Lanes a, Lanes, int i) { return a[i < 4 ? 1 : 3] + float(i); }},
    {"interleaved", [](Lanes a, Lanes b, int i) { return i % 2 ? b[i / 2] : a[i / 2]; }},
    {"interleaved above", [](Lanes a, Lanes b, int i) { return i % 2 ? b[4 + i / 2] : a[4 + i / 2]; }},
};

const std::map<std::string, BitsLane> kBits = {
    {"int a",
     [](uint32_t a, uint32_t) {
         const float x = std::bit_cast<float>(a);
         const bool inside = x >= -0x1p31f && x < 0x1p31f;
         return inside ? uint32_t(int32_t(std::nearbyint(x))) : 0x80000000u;
     }},
    {"bits a + b", [](uint32_t a, uint32_t b) { return a + b; }},
    {"bits a - b", [](uint32_t a, uint32_t b) { return a - b; }},
    {"bits a ^ b", [](uint32_t a, uint32_t b) { return a ^ b; }},
    {"bits shifted", [](uint32_t a, uint32_t b) { return a << 5 ^ uint32_t(signedBits(b) >> 3) ^ b >> 9; }},
    {"bits a > b ? a : b", [](uint32_t a, uint32_t b) { return signedBits(a) > signedBits(b) ? a : b; }},
};

/// Every pair of values in which an implementation may go its own way, in all lanes.
std::vector<float> pairs(bool first)
{
    const float values[] = {0.f,      -0.f,       1.f,         -1.f,         0.5f,       1.5f,
                            2.5f,     -2.5f,      1e-40f,      -1e-42f,      1e-38f,     3e38f,
                            -3e38f,   8388607.5f, -4194304.5f, 2147483520.f, 0x1p31f,    -0x1p31f,
                            -0x1p33f, 3.1415f,    -7e-5f,      kInfinity,    -kInfinity, kNaN};
    std::vector<float> list;
    for (float a : values)
        for (float b : values) list.push_back(first ? a : b);
    return list;
}

const LanesProbe *probeOf(const std::string &set)
{
#ifdef TESSARINE_X86_KERNELS
    if (set == "sse2") return &DSP::Kernels::sse2::lanesProbe;
    if (set == "avx2") return &DSP::Kernels::avx2::lanesProbe;
#endif
    return set == "portable" ? &DSP::Kernels::portable::lanesProbe : nullptr;
}

TEST(Lanes, AreThePlainOperationLaneByLaneInEverySet)
{
    const std::vector<float> first = pairs(true), second = pairs(false);
    for (const DSP::Kernels::Table *table : DSP::Kernels::available()) {
        const LanesProbe *probe = probeOf(table->name);
        ASSERT_NE(probe, nullptr) << table->name;
        for (int n = 0; n < probe->count; ++n) {
            const auto &[name, run] = probe->operations[n];
            SCOPED_TRACE(testing::Message() << table->name << ": " << name << ", operation " << n);
            for (size_t at = 0; at + 8 <= first.size(); at += 8) {
                const float *a = &first[at], *b = &second[at];
                float out[8];
                run(a, b, out);
                for (int i = 0; i < 8; ++i) {
                    if (const auto bits = kBits.find(name); bits != kBits.end()) {
                        ASSERT_EQ(bitsOf(out[i]), bits->second(bitsOf(a[i]), bitsOf(b[i])))
                            << a[i] << " and " << b[i];
                        continue;
                    }
                    const float expected = kFloats.at(name)(a, b, i);
                    if (std::isnan(expected))
                        ASSERT_TRUE(std::isnan(out[i])) << a[i] << " and " << b[i];
                    else
                        ASSERT_EQ(bitsOf(out[i]), bitsOf(expected)) << a[i] << " and " << b[i];
                }
            }
        }
    }
}

TEST(Kernels, FallBackToTheBestSetForAnUnknownWish)
{
    using namespace DSP::Kernels;
    const Table &best = *available().back();
    EXPECT_EQ(&choose(nullptr), &best);
    EXPECT_EQ(&choose(""), &best);
    EXPECT_EQ(&choose("avx9000"), &best);
    for (const Table *table : available()) EXPECT_EQ(&choose(table->name), table);
    EXPECT_STREQ(available().front()->name, "portable");
}

} // namespace
