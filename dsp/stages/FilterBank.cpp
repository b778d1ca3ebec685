#include "dsp/stages/FilterBank.h"

#include <algorithm>

#include "dsp/kernels/VectorOperations.h"
#include "dsp/numerics/FilterDesign.h"

namespace DSP {

namespace {
static_assert(std::size(Kernels::FilterBankOutput{}.left) == kBands);

// Below this cutoff, rounding the coefficients to 32 bits can make a filter unstable.
constexpr float kLowestCutoffHz = 20.0f;

// Writes a design to filter 0 or 1 of a pair, for both channels.
void install(Kernels::FilterPair &pair, int filter, const FilterDesign &design, float gain)
{
    for (int lane = 2 * filter; lane < 2 * filter + 2; ++lane) {
        pair.a1[lane] = design.a1;
        pair.a2[lane] = design.a2;
        pair.gain[lane] = gain;
    }
}

// Gain that compensates the level lost where the two filters of a narrow band overlap; 7 for zero width.
float narrowBandLift(float lowHz, float highHz)
{
    const double ratio = static_cast<double>(highHz) / lowHz;
    return static_cast<float>(6.0 / (ratio * ratio * ratio) + 1.0);
}

// Copies each filter's left (`offset` 0) or right (`offset` 1) lane in `from` to its right lane in `to`.
void takeRightLanes(Kernels::FilterBankState &to, const Kernels::FilterBankState &from, int offset)
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

// Above any state of a stable filter, even for input 200 dB over full scale at the highest sample rate.
constexpr double kLargestState = 1e30;

} // namespace

void FilterBank::design(std::span<const float> cutoffsHz, uint32_t sampleRate)
{
    coeffs = {};
    state = {};

    const auto hz = [&](uint32_t i) { return std::max(cutoffsHz[i], kLowestCutoffHz); };
    uint32_t used = static_cast<uint32_t>(cutoffsHz.size());
    while (used > 0 && !(sampleRate * 0.5 > hz(used - 1))) --used;
    bandsInUse = used + 1;
    if (used == 0) return;

    const auto section = [&](FilterType type, uint32_t i) {
        return designSection(type, static_cast<double>(hz(i)) / sampleRate);
    };
    const FilterDesign top = section(FilterType::highPass, used - 1);
    const FilterDesign bottom = section(FilterType::lowPass, 0);
    install(coeffs.outer, 0, top, static_cast<float>(top.designGain));
    install(coeffs.outer, 1, bottom, static_cast<float>(bottom.designGain));

    for (uint32_t band = 1; band < used; ++band) {
        const int filter = band == 2 ? 0 : 1; // filter 0 is the upper inner band
        const FilterDesign low = section(FilterType::lowPass, band);
        const FilterDesign high = section(FilterType::highPass, band - 1);
        install(
            coeffs.inner, filter, low,
            static_cast<float>(narrowBandLift(hz(band - 1), hz(band)) * low.designGain * high.designGain));
        install(coeffs.second, filter, high, 1.0f);
    }
}

bool FilterBank::run(const Block &block, const GuardWave &guard)
{
    const Bands &bands = *block.bands;
    const auto finish = [&](uint32_t band) {
        addGuard(guard, block.frames, bands.left[band], bands.right[band]);
    };
    if (bandsInUse == 1) {
        copySamples(block.left, bands.left[0], block.frames);
        if (block.right) copySamples(block.right, bands.right[0], block.frames);
        finish(0);
    } else {
        filter(block, guard);
    }
    for (uint32_t band = bandsInUse; band < kBands; ++band) {
        clearSamples(bands.left[band], block.frames);
        if (block.right) clearSamples(bands.right[band], block.frames);
        finish(band);
    }
    return Kernels::active().crossOver.isWithin(state, kLargestState);
}

void FilterBank::filter(const Block &block, const GuardWave &guard)
{
    // Unused slots write to the buffers of unused bands, which run() silences afterwards.
    const uint32_t top = bandsInUse - 1;
    const uint32_t bandOfSlot[kBands] = {top, top == 3 ? 2u : 3u, top == 1 ? 2u : 1u, 0};

    Kernels::FilterBankState before;
    if (!block.right) {
        before = state;
        takeRightLanes(state, state, 0); // both channels write to the same buffers, so they must match
    }
    for (uint32_t done = 0; done < block.frames; done += GuardWave::kLength) {
        const Block piece = block.part(done, std::min(block.frames - done, GuardWave::kLength));
        Kernels::FilterBankOutput out = {{}, {}, guard.left, block.right ? guard.right : guard.left};
        for (int slot = 0; slot < kBands; ++slot) {
            out.left[slot] = piece.bands->left[bandOfSlot[slot]];
            out.right[slot] = block.right ? piece.bands->right[bandOfSlot[slot]] : out.left[slot];
        }
        Kernels::active().crossOver.split(coeffs, state, piece.left, block.right ? piece.right : piece.left,
                                          out, piece.frames);
    }
    if (!block.right) takeRightLanes(state, before, 1);
}

} // namespace DSP
