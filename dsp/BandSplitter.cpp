#include "dsp/BandSplitter.h"

#include <algorithm>

#include "dsp/FilterDesign.h"
#include "dsp/kernels/Kernels.h"
#include "dsp/kernels/VectorOperations.h"

namespace DSP {

namespace {

// Below any legal cutoff a filter would lose its stability to the rounding of its taps.
constexpr float kLowestCutoffHz = 20.0f;

// Writes a design to one of the two filters of a pair, for both channels.
void install(Kernels::FilterPair &pair, int filter, const FilterDesign &design, float gain)
{
    for (int lane = 2 * filter; lane < 2 * filter + 2; ++lane) {
        pair.a1[lane] = design.a1;
        pair.a2[lane] = design.a2;
        pair.gain[lane] = gain;
    }
}

// A narrow band loses level where its two filters overlap: this lifts it, by 7 for no width at all.
float narrowBandLift(float lowHz, float highHz)
{
    const double ratio = static_cast<double>(highHz) / lowHz;
    return static_cast<float>(6.0 / (ratio * ratio * ratio) + 1.0);
}

// Sets the right channel's lanes to those of `from` that lie `offset` into each left-right pair.
void takeRightLanes(Kernels::SplitterState &to, const Kernels::SplitterState &from, int offset)
{
    const auto take = [offset](Kernels::FilterPairState &pair, const Kernels::FilterPairState &source) {
        for (int section = 0; section < 2; ++section)
            for (const int lane : {0, 2}) {
                pair.z1[section][lane + 1] = source.z1[section][lane + offset];
                pair.z2[section][lane + 1] = source.z2[section][lane + offset];
            }
    };
    take(to.outer, from.outer);
    take(to.inner, from.inner);
    take(to.second, from.second);
}

} // namespace

void BandSplitter::design(std::span<const float> cutoffsHz, uint32_t sampleRate)
{
    coeffs = {};
    state = {};
    std::fill(std::begin(plainGains), std::end(plainGains), 1.0f);

    uint32_t used = static_cast<uint32_t>(cutoffsHz.size());
    while (used > 0 && !(sampleRate * 0.5 > cutoffsHz[used - 1])) --used;
    bandsInUse = used + 1;
    if (used == 0) return;

    const auto hz = [&](uint32_t i) { return std::max(cutoffsHz[i], kLowestCutoffHz); };
    const auto section = [&](FilterType type, uint32_t i) {
        return designSection(type, static_cast<double>(hz(i)) / sampleRate);
    };
    const FilterDesign top = section(FilterType::highPass, used - 1);
    const FilterDesign bottom = section(FilterType::lowPass, 0);
    plainGains[used] = static_cast<float>(top.designGain);
    plainGains[0] = static_cast<float>(bottom.designGain);
    install(coeffs.outer, 0, top, plainGains[used]);
    install(coeffs.outer, 1, bottom, plainGains[0]);

    for (uint32_t band = 1; band < used; ++band) {
        const int filter = band == 2 ? 0 : 1; // the slots hold the upper inner band first
        const FilterDesign low = section(FilterType::lowPass, band);
        const FilterDesign high = section(FilterType::highPass, band - 1);
        const double plain = low.designGain * high.designGain;
        plainGains[band] = static_cast<float>(plain);
        install(coeffs.inner, filter, low,
                static_cast<float>(narrowBandLift(hz(band - 1), hz(band)) * low.designGain * high.designGain));
        install(coeffs.second, filter, high, 1.0f);
    }
}

void BandSplitter::run(uint32_t frames, const float *left, const float *right, float *const *outLeft,
                       float *const *outRight)
{
    const int length = static_cast<int>(frames);
    if (bandsInUse == 1) {
        ippsCopy_32f(left, outLeft[0], length);
        if (right) ippsCopy_32f(right, outRight[0], length);
    } else {
        // Slots without a band write to the buffers of the bands that are silenced below.
        const uint32_t top = bandsInUse - 1;
        const uint32_t bandOfSlot[4] = {top, top == 3 ? 2u : 3u, top == 1 ? 2u : 1u, 0};
        Kernels::SplitterOutput out;
        for (int slot = 0; slot < 4; ++slot) {
            out.left[slot] = outLeft[bandOfSlot[slot]];
            out.right[slot] = right ? outRight[bandOfSlot[slot]] : out.left[slot];
        }
        const Kernels::SplitterState before = state;
        if (!right) takeRightLanes(state, state, 0); // so that both lanes write the same samples
        Kernels::active().crossOver.split(coeffs, state, left, right ? right : left, out, length);
        if (!right) takeRightLanes(state, before, 1);
    }
    for (uint32_t band = bandsInUse; band < 4; ++band) {
        ippsZero_32f(outLeft[band], length);
        if (right) ippsZero_32f(outRight[band], length);
    }
}

} // namespace DSP
