#include "dsp/chain/Transform.h"

#include "dsp/component/PluginLink.h"
#include "dsp/kernels/DenormalGuard.h"
#include "dsp/kernels/Kernels.h"
#include "dsp/kernels/VectorOperations.h"

namespace DSP {

namespace {
// Samples between the transforms of two bands: a host's short block then carries one of them, not four.
constexpr uint32_t kSpectrumStagger = 64;

String spectrumName(int band) { return String("Band %1 Spectrum").arg(band + 1); }
} // namespace

Transform::Stages::Stages(PluginLink &plugin)
    : level(plugin),
      gain(plugin),
      crossOver(plugin),
      maximizer(plugin),
      dynamics(plugin),
      spectrum{{{plugin, spectrumName(0)},
                {plugin, spectrumName(1)},
                {plugin, spectrumName(2)},
                {plugin, spectrumName(3)}}}
{
}

Transform::Transform(PluginLink &pluginLink) : TransformBase(pluginLink), stages(pluginLink)
{
    global()->setDelayCompensation(true);
    stages.crossOver.guardBands(&bandGuardPhase);
    for (uint32_t band = 0; band < kBands; ++band) stages.spectrum[band].setStagger(band * kSpectrumStagger);
}

void Transform::resetState() { splitGuardPhase = bandGuardPhase = sumGuardPhase = 0; }

uint32_t Transform::transform(uint32_t frames, float *inLeft, float *inRight, float *outLeft, float *outRight,
                              uint32_t zipperSamples)
{
    const BandPointers bands = split(frames, inLeft, inRight, zipperSamples);
    const bool spectraOnInput = stages.spectrum[0].getOnInput(); // the first band's switch rules all
    if (spectraOnInput) feedSpectra(frames, bands);
    compress(frames, bands, zipperSamples);
    if (!spectraOnInput) feedSpectra(frames, bands);
    sum(frames, bands, inLeft, inRight);

    runComponent(stages.maximizer, frames, zipperSamples, inLeft, inRight);
    ippsCopy_32f(inLeft, outLeft, static_cast<int>(frames));
    if (inRight) ippsCopy_32f(inRight, outRight, static_cast<int>(frames));
    runComponent(stages.gain, frames, zipperSamples, outLeft, outRight);
    stages.level.measure(frames, outLeft, outRight);
    return frames;
}

Transform::BandPointers Transform::split(uint32_t frames, float *left, float *right, uint32_t zipperSamples)
{
    addDenormalGuard(frames, left, right, &splitGuardPhase, true);
    BandPointers bands = {};
    for (int b = 0; b < kBands; ++b) {
        bandLeft[b].grow(frames);
        bandRight[b].grow(frames);
        bands.left[b] = bandLeft[b].data();
        bands.right[b] = right ? bandRight[b].data() : nullptr;
    }
    runComponent(stages.crossOver, frames, zipperSamples, left, right, bands.left, bands.right);
    return bands;
}

void Transform::compress(uint32_t frames, const BandPointers &bands, uint32_t zipperSamples)
{
    BandPointers compressed = bands;
    for (uint32_t b = 0; b < kBands; ++b)
        if (stages.crossOver.bandBypass(b)) compressed.left[b] = compressed.right[b] = nullptr;
    runComponent(stages.dynamics, frames, zipperSamples, bands.left[0], bands.right[0], compressed.left,
                 compressed.right);
}

void Transform::feedSpectra(uint32_t frames, const BandPointers &bands)
{
    for (uint32_t b = 0; b < kBands; ++b) stages.spectrum[b].feed(frames, bands.left[b], bands.right[b]);
}

void Transform::sum(uint32_t frames, const BandPointers &bands, float *left, float *right)
{
    const int length = static_cast<int>(frames);
    BandPointers heard = {};
    int count = 0;
    for (uint32_t b = 0; b < kBands; ++b) {
        if (stages.crossOver.bandMute(b)) continue;
        heard.left[count] = bands.left[b];
        heard.right[count++] = bands.right[b];
    }
    if (count > 0) {
        const auto sum = Kernels::active().block.sum;
        sum(heard.left, count, left, length);
        if (right) sum(heard.right, count, right, length);
    } else { // the stages behind see no true zeros
        ippsZero_32f(left, length);
        if (right) ippsZero_32f(right, length);
        addDenormalGuard(frames, left, right, &sumGuardPhase, true);
    }
}

} // namespace DSP
