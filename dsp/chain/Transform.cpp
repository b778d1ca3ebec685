#include "dsp/chain/Transform.h"

#include "dsp/component/PluginLink.h"
#include "dsp/kernels/DenormalGuard.h"
#include "dsp/kernels/VectorOperations.h"

namespace DSP {

namespace {
// Samples between the FFTs of two bands, so that a short block computes one FFT instead of four.
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
    components = pluginLink.componentList();
    for (uint32_t band = 0; band < kBands; ++band) stages.spectrum[band].setStagger(band * kSpectrumStagger);
}

void Transform::transform(const Now &now, const Block &in, const Block &out)
{
    const Bands bands = split(now, in);
    const bool spectraOnInput = stages.spectrum[0].getOnInput(); // one switch for all bands
    if (spectraOnInput) feedSpectra(in.frames, bands);
    compress(now, in, bands);
    if (!spectraOnInput) feedSpectra(in.frames, bands);
    sum(bands, out);

    run(stages.maximizer, now, out);
    run(stages.gain, now, out);
    stages.level.measure(out.frames, out.left, out.right);
}

Bands Transform::split(const Now &now, const Block &in)
{
    addDenormalGuard(in.frames, in.left, in.right, &splitGuardPhase, true);
    Bands bands = {};
    for (int b = 0; b < kBands; ++b) {
        bandLeft[b].grow(in.frames);
        bandRight[b].grow(in.frames);
        bands.left[b] = bandLeft[b].data();
        bands.right[b] = in.right ? bandRight[b].data() : nullptr;
    }
    run(stages.crossOver, now, {in.frames, in.left, in.right, bands});
    return bands;
}

void Transform::compress(const Now &now, const Block &in, const Bands &bands)
{
    Bands compressed = bands;
    for (uint32_t b = 0; b < kBands; ++b)
        if (stages.crossOver.bandBypass(b)) compressed.left[b] = compressed.right[b] = nullptr;
    run(stages.dynamics, now, {in.frames, in.left, in.right, compressed});
}

void Transform::feedSpectra(uint32_t frames, const Bands &bands)
{
    for (uint32_t b = 0; b < kBands; ++b) stages.spectrum[b].feed(frames, bands.left[b], bands.right[b]);
}

void Transform::sum(const Bands &bands, const Block &out)
{
    Bands unmuted = {};
    uint32_t count = 0;
    for (uint32_t b = 0; b < kBands; ++b) {
        if (stages.crossOver.bandMute(b)) continue;
        unmuted.left[count] = bands.left[b];
        unmuted.right[count++] = bands.right[b];
    }
    if (count > 0) {
        const auto sum = Kernels::active().block.sum;
        sum(unmuted.left, count, out.left, out.frames);
        if (out.right) sum(unmuted.right, count, out.right, out.frames);
    } else { // silence with the denormal guard
        clearSamples(out.left, out.frames);
        if (out.right) clearSamples(out.right, out.frames);
        addDenormalGuard(out.frames, out.left, out.right, &sumGuardPhase, true);
    }
}

} // namespace DSP
