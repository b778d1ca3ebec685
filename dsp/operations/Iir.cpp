#include "dsp/operations/Iir.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <vector>

namespace DSP {

/// Second-order section: H(z) = (b0 + b1 z^-1 + b2 z^-2) / (1 + a1 z^-1 + a2 z^-2).
struct SectionCoeffs {
    double b0, b1, b2, a1, a2;
};

/// A cascade uses `sections`; a direct form uses `b` and `a`. `delay` has the layout that callers read and write.
struct IppsIIRState_64f {
    std::vector<SectionCoeffs> sections;
    std::vector<double> b, a; // b0 to b[order] and a1 to a[order], a0 divided out
    std::vector<double> delay;
};

namespace {

/// Transposed direct form II of any order.
void runDirect(IppsIIRState_64f &filter, const double *src, double *dst, int len)
{
    const size_t order = filter.a.size();
    const double *b = filter.b.data(), *a = filter.a.data();
    double *z = filter.delay.data();
    for (int i = 0; i < len; ++i) {
        const double x = src[i], y = b[0] * x + z[0];
        for (size_t k = 0; k + 1 < order; ++k) z[k] = b[k + 1] * x - a[k] * y + z[k + 1];
        z[order - 1] = b[order] * x - a[order - 1] * y;
        dst[i] = y;
    }
}

void runSection(const SectionCoeffs &c, double *z, const double *src, double *dst, int len)
{
    double z1 = z[0], z2 = z[1];
    for (int i = 0; i < len; ++i) {
        const double x = src[i], y = c.b0 * x + z1;
        z1 = c.b1 * x - c.a1 * y + z2;
        z2 = c.b2 * x - c.a2 * y;
        dst[i] = y;
    }
    z[0] = z1;
    z[1] = z2;
}

void runCascade(IppsIIRState_64f &filter, const double *src, double *dst, int len)
{
    double *z = filter.delay.data();
    for (const SectionCoeffs &section : filter.sections) {
        runSection(section, z, src, dst, len);
        z += 2;
        src = dst;
    }
}

} // namespace

VectorStatus ippsIIRInitAlloc_64f(IppsIIRState_64f **state, const double *taps, int order,
                                  const double *delay)
{
    const VectorStatus status = checkVectors(order, state, taps);
    if (status != kVectorOk) return status;

    auto filter = std::make_unique<IppsIIRState_64f>();
    const size_t count = static_cast<size_t>(order) + 1;
    const double a0 = taps[count];
    for (size_t k = 0; k < count; ++k) filter->b.push_back(taps[k] / a0);
    for (size_t k = 1; k < count; ++k) filter->a.push_back(taps[count + k] / a0);
    filter->delay.resize(count - 1);
    ippsIIRSetDlyLine_64f(filter.get(), delay);
    *state = filter.release();
    return kVectorOk;
}

VectorStatus ippsIIRInitAlloc_BiQuad_64f(IppsIIRState_64f **state, const double *taps, int sections,
                                         const double *delay)
{
    const VectorStatus status = checkVectors(sections, state, taps);
    if (status != kVectorOk) return status;

    auto filter = std::make_unique<IppsIIRState_64f>();
    for (const double *tap = taps; tap < taps + 6 * sections; tap += 6) {
        const double a0 = tap[3];
        filter->sections.push_back({tap[0] / a0, tap[1] / a0, tap[2] / a0, tap[4] / a0, tap[5] / a0});
    }
    filter->delay.resize(2 * static_cast<size_t>(sections));
    ippsIIRSetDlyLine_64f(filter.get(), delay);
    *state = filter.release();
    return kVectorOk;
}

VectorStatus ippsIIRGetDlyLine_64f(const IppsIIRState_64f *state, double *delay)
{
    if (!state || !delay) return kVectorNullPointer;
    std::copy(state->delay.begin(), state->delay.end(), delay);
    return kVectorOk;
}

VectorStatus ippsIIRSetDlyLine_64f(IppsIIRState_64f *state, const double *delay)
{
    if (!state) return kVectorNullPointer;
    if (!delay)
        std::fill(state->delay.begin(), state->delay.end(), 0.0);
    else
        std::copy_n(delay, state->delay.size(), state->delay.begin());
    return kVectorOk;
}

VectorStatus ippsIIR_64f(const double *src, double *dst, int len, IppsIIRState_64f *state)
{
    const VectorStatus status = checkVectors(len, src, dst, state);
    if (status != kVectorOk) return status;
    if (state->sections.empty())
        runDirect(*state, src, dst, len);
    else
        runCascade(*state, src, dst, len);
    return kVectorOk;
}

VectorStatus ippsIIRFree_64f(IppsIIRState_64f *state)
{
    if (!state) return kVectorNullPointer;
    delete state;
    return kVectorOk;
}

} // namespace DSP
