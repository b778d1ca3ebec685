#include "dsp/kernels/Fft.h"

#include <algorithm>

#include "dsp/numerics/Math.h"

namespace DSP {

namespace {

constexpr int kLanes = 8;

/// Writes e^(-2 pi i turn) to one lane of a block of 8 re and 8 im.
void putTwiddle(float *block, int lane, double turn)
{
    block[lane] = static_cast<float>(Math::cos(2 * Math::kPi * turn));
    block[kLanes + lane] = static_cast<float>(-Math::sin(2 * Math::kPi * turn));
}

} // namespace

FftPlan::FftPlan(int order, const Kernels::Table &table) : kernels(table.spectrum)
{
    tables.points = 1 << (std::clamp(order, kLeastOrder, kMostOrder) - 1);
    makeFirstTwiddles();
    makePasses();
    makeSplitTwiddles();
}

void FftPlan::makeFirstTwiddles()
{
    const int groups = tables.points / 8;
    firstTwiddles.grow(size_t(groups) * 7 * 2);
    float *block = firstTwiddles.data();
    for (int first = 0; first < groups; first += kLanes)
        for (int k = 1; k < 8; ++k, block += 2 * kLanes)
            for (int lane = 0; lane < kLanes; ++lane)
                putTwiddle(block, lane,
                           static_cast<double>(k) * (first + Kernels::fftLaneOrder(lane)) / tables.points);
    tables.firstTwiddles = firstTwiddles.data();
}

/// Uses radix 4 if 4 or 16 points remain, otherwise radix 8. Every power of two from 8 points on can thus be
/// factored without a radix-2 pass.
void FftPlan::makePasses()
{
    size_t offsets[std::size(Kernels::FftTables{}.passes)], floats = 0;
    int stride = 8;
    for (int remaining = tables.points / 8; remaining > 1; ++tables.passCount) {
        const int radix = remaining == 4 || remaining == 16 ? 4 : 8;
        remaining /= radix;
        tables.passes[tables.passCount] = {radix, stride, remaining, nullptr};
        offsets[tables.passCount] = floats;
        floats += size_t(remaining - 1) * size_t(radix - 1) * 2 * kLanes;
        stride *= radix;
    }
    passTwiddles.grow(floats);
    for (int i = 0; i < tables.passCount; ++i) {
        auto &[radix, passStride, groups, twiddles] = tables.passes[i];
        float *block = passTwiddles.data() + offsets[i];
        twiddles = block;
        for (int group = 1; group < groups; ++group)
            for (int k = 1; k < radix; ++k, block += 2 * kLanes)
                for (int lane = 0; lane < kLanes; ++lane)
                    putTwiddle(block, lane, static_cast<double>(k) * group / (radix * groups));
    }
}

void FftPlan::makeSplitTwiddles()
{
    splitTwiddles.grow(size_t(tables.points));
    float *block = splitTwiddles.data();
    for (int first = 0; first < tables.points / 2; first += kLanes, block += 2 * kLanes)
        for (int lane = 0; lane < kLanes; ++lane)
            putTwiddle(block, lane, -static_cast<double>(first + lane) / (2 * tables.points));
    tables.splitTwiddles = splitTwiddles.data();
}

} // namespace DSP
