#include "dsp/kernels/Lanes.h"
#include "tests/kernels/LanesProbe.h"

namespace DSP::Kernels::SET {

template <class V, auto operation>
static void onFloats(const float *a, const float *b, float *out)
{
    for (int i = 0; i < 8; i += V::kLanes) store(out + i, operation(V::load(a + i), V::load(b + i)));
}
template <auto operation>
static void onD4(const float *a, const float *b, float *out)
{
    for (int i = 0; i < 8; i += 4)
        store(out + i, toFloat(operation(toDouble(F4::load(a + i)), toDouble(F4::load(b + i)))));
}
template <auto operation>
static void onD2(const float *a, const float *b, float *out)
{
    for (int i = 0; i < 8; i += 4) {
        const F4 x = F4::load(a + i), y = F4::load(b + i);
        store(out + i, toFloat(operation(lowToDouble(x), lowToDouble(y)),
                               operation(highToDouble(x), highToDouble(y))));
    }
}
static void transposeRows(const float *a, const float *, float *out)
{
    // Row i is a + i: lane j of it holds a[j] + i.
    F8 rows[8];
    for (int i = 0; i < 8; ++i) rows[i] = F8::load(a) + F8::splat(float(i));
    transpose(rows);
    store(out, rows[5]);
}
static void transposeQuarters(const float *a, const float *, float *out)
{
    F4 rows[8];
    for (int i = 0; i < 8; ++i) rows[i] = F4::load(a) + F4::splat(float(i));
    transpose(rows[0], rows[1], rows[2], rows[3]);
    transpose(rows[4], rows[5], rows[6], rows[7]);
    store(out, combine(rows[1], rows[7]));
}
static void interleaveFours(const float *a, const float *b, float *out)
{
    storeInterleaved(out, F4::load(a), F4::load(b));
}
static void interleaveEights(const float *a, const float *b, float *out)
{
    float all[16];
    storeInterleaved(all, F8::load(a), F8::load(b));
    store(out, F8::load(all + 8));
}

#define LAMBDA(...) [](auto a, [[maybe_unused]] auto b) { return __VA_ARGS__; }
#define BOTH_FLOATS(name, ...)                                                                               \
    {name, onFloats<F4, LAMBDA(__VA_ARGS__)>}, { name, onFloats<F8, LAMBDA(__VA_ARGS__)> }
#define BOTH_DOUBLES(name, ...)                                                                              \
    {name, onD2<LAMBDA(__VA_ARGS__)>}, { name, onD4<LAMBDA(__VA_ARGS__)> }
#define F8_ONLY(name, ...)                                                                                   \
    {                                                                                                        \
        name, onFloats<F8, LAMBDA(__VA_ARGS__)>                                                              \
    }

// Names are those of the expected results in LanesTest.cpp.
static constexpr LanesOperation kOperations[] = {
    BOTH_FLOATS("a + b", a + b),
    BOTH_FLOATS("a - b", a - b),
    BOTH_FLOATS("a * b", a *b),
    BOTH_FLOATS("a / b", a / b),
    BOTH_FLOATS("-a", -a),
    BOTH_FLOATS("abs a", abs(a)),
    BOTH_FLOATS("sqrt a", sqrt(a)),
    BOTH_FLOATS("min", min(a, b)),
    BOTH_FLOATS("max", max(a, b)),
    BOTH_FLOATS("a < b ? a : b", select(a < b, a, b)),
    BOTH_FLOATS("a > b ? a : b", select(a > b, a, b)),
    BOTH_FLOATS("a <= b ? a : 0", keep(a <= b, a)),
    BOTH_FLOATS("a <= b ? a : 0", keep(b >= a, a)),
    BOTH_FLOATS("a == b ? a : -b", select(a == b, a, -b)),
    BOTH_FLOATS("a <= b ? a : 0", keep(andNot(a == a, b < a) & ((a < b) | (a == b)), a)),
    BOTH_FLOATS("int a", asFloat(toInt(a))),
    BOTH_FLOATS("float of bits a", toFloat(asInt(a))),
    BOTH_FLOATS("bits a + b", asFloat(asInt(a) + asInt(b))),
    BOTH_FLOATS("bits a - b", asFloat(asInt(a) - asInt(b))),
    BOTH_FLOATS("bits a ^ b", asFloat((asInt(a) | asInt(b)) - (asInt(a) & asInt(b)))),
    BOTH_FLOATS("bits a ^ b", asFloat(asInt(a) ^ asInt(b))),
    BOTH_FLOATS("bits shifted",
                asFloat(shiftLeft<5>(asInt(a)) ^ shiftRight<3>(asInt(b)) ^ shiftRightLogical<9>(asInt(b)))),
    BOTH_FLOATS("bits a > b ? a : b", asFloat(select(asInt(a) > asInt(b), asInt(a), asInt(b)))),
    BOTH_FLOATS("bits a > b ? a : b",
                asFloat(select((asInt(b) < asInt(a)) | (asInt(a) == asInt(b)), asInt(a), asInt(b)))),
    BOTH_DOUBLES("a + b", a + b),
    BOTH_DOUBLES("a - b", a - b),
    BOTH_DOUBLES("a * b in doubles", a *b *(a - b)),
    BOTH_DOUBLES("a / b in doubles", a / b / b),
    BOTH_DOUBLES("-a", -a),
    BOTH_DOUBLES("abs a", abs(a)),
    BOTH_DOUBLES("sqrt a", sqrt(a)),
    BOTH_DOUBLES("min", min(a, b)),
    BOTH_DOUBLES("max", max(a, b)),
    BOTH_DOUBLES("a > b ? a : b", select(a > b, a, b)),
    BOTH_DOUBLES("a <= b ? a : 0", keep(a <= b, a)),
    BOTH_DOUBLES("a == b ? a : -b", select(a == b, a, -b)),
    F8_ONLY("reversed", reverse(a)),
    F8_ONLY("lane 2", broadcastLane<2>(a)),
    F8_ONLY("lane 5", broadcastLane<5>(a)),
    F8_ONLY("halves exchanged", combine(high(a), low(a))),
    F8_ONLY("halves exchanged", lowHalves(combine(high(a), high(a)), a)),
    F8_ONLY("shuffled", shuffle<3, 0, 1, 1>(a, b)),
    F8_ONLY("largest", decltype(a)::splat(horizontalMax(a))),
    F8_ONLY("smallest", decltype(a)::splat(horizontalMin(a))),
    F8_ONLY("sum", decltype(a)::splat(horizontalSum(a))),
    F8_ONLY("bits of a < b", decltype(a)::splat(float(bits(a < b)))),
    F8_ONLY("any and all", decltype(a)::splat(float(2 * any(a < b) + all(a < b)))),
    {"column 5", transposeRows},
    {"columns 1 and 3", transposeQuarters},
    {"interleaved", interleaveFours},
    {"interleaved above", interleaveEights},
};

extern const LanesProbe lanesProbe;
const LanesProbe lanesProbe{kOperations, sizeof kOperations / sizeof *kOperations};

} // namespace DSP::Kernels::SET
