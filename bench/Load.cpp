#include "bench/Load.h"

#include <algorithm>
#include <cmath>

namespace Bench {

namespace {
constexpr float kCutoffsHz[] = {120, 1000, 6000};
constexpr float kMovedCutoffHz = 1100;
constexpr uint64_t kSeed = 4;
// Peak levels. Hum and hiss keep the lowest and the highest band active at all times.
constexpr double kMusicDb = -1, kHumDb = -16, kHissDb = -18;
constexpr double kHumHz = 55;

void addTo(Audio &sum, const Audio &sound)
{
    for (uint32_t i = 0; i < sum.frames(); ++i) {
        sum.left[i] += sound.left[i];
        sum.right[i] += sound.right[i];
    }
}
} // namespace

void setStandard(const TransformHandle &chain, bool brickwall)
{
    for (uint32_t i = 0; i < DSP::kCutoffs; ++i) chain.crossOver()->setCutoff(i, kCutoffsHz[i]);
    DSP::Dynamics &dynamics = *chain.dynamics();
    for (uint32_t band = 0; band < DSP::kBands; ++band) {
        dynamics.setThreshold(band, -30);
        dynamics.setRatio(band, 4);
        dynamics.setAttack(band, 10);
        dynamics.setRelease(band, 100);
        dynamics.setGain(band, 12);
    }
    chain.maximizer()->setThreshold(-6);
    chain.maximizer()->setBrickwall(brickwall);
}

Audio music(uint32_t frames)
{
    Audio mix;
    for (uint64_t seed = kSeed; mix.frames() < frames; ++seed) {
        Audio piece = Signals::music(seed, kRate, kMeasuredFrames, kMusicDb);
        addTo(piece, Signals::sine(kRate, kHumHz, kMeasuredFrames, kHumDb));
        addTo(piece, Signals::noise(seed, kMeasuredFrames, kHissDb));
        mix = Signals::append(std::move(mix), piece);
    }
    return mix;
}

Load::Load(uint32_t blockFrames, bool brickwall, uint32_t musicFrames)
    : block(blockFrames),
      host({.rate = kRate, .channels = 2, .blockFrames = blockFrames}),
      sound(music(musicFrames)),
      output(Signals::silence(blockFrames)),
      silence(Signals::silence(blockFrames)),
      spectrum(DSP::Meter::Spectrum::kMostMagnitudes)
{
    setStandard(host.plugin().transformHandle(), brickwall);
    host.start();
}

void Load::playBlock()
{
    Audio &source = silent ? silence : sound;
    const uint32_t at = silent ? 0 : position;
    float *const in[] = {source.left.data() + at, source.right.data() + at};
    float *const out[] = {output.left.data(), output.right.data()};
    host.process(in, out, block);
    position += block;
    if (position + block > sound.frames()) position = 0;
    sinceLook += block;
}

void Load::play(uint32_t frames)
{
    for (uint32_t done = 0; done < frames; done += block) {
        playBlock();
        lookAtMeters();
    }
}

void Load::lookAtMeters()
{
    if (sinceLook < kLookInterval) return;
    sinceLook = 0;
    const TransformHandle &chain = host.plugin().transformHandle();
    float ignored, count[4];
    uint32_t magnitudes;
    for (uint32_t band = 0; band < DSP::kBands; ++band)
        chain.spectrum(band)->readSpectrum(spectrum.data(), magnitudes);
    chain.level()->read(count[0], count[1], count[2], count[3]);
    for (uint32_t i = 0; i <= DSP::kBands; ++i) {
        const bool isBand = i < DSP::kBands;
        if (isBand) chain.dynamics()->readPeaks(i, ignored, ignored);
        const float gain =
            isBand ? chain.dynamics()->readGainReduction(i) : chain.maximizer()->readGainReduction();
        const double db = -20 * std::log10(gain);
        sums[i].meanDb += db;
        sums[i].share += db > 0.5;
    }
    ++looks;
}

void Load::moveCutoff()
{
    constexpr uint32_t kMiddle = 1;
    DSP::CrossOver &crossOver = *host.plugin().transformHandle().crossOver();
    const DSP::FloatRange range = crossOver.floatParamRange(kMiddle);
    cutoffIsHigh = !cutoffIsHigh;
    const float hz = cutoffIsHigh ? kMovedCutoffHz : kCutoffsHz[kMiddle];
    host.setParameter(static_cast<int32_t>(crossOver.floatParamHostIndex(kMiddle).value),
                      (hz - range.minimum) / (range.maximum - range.minimum));
}

std::vector<Reductions> Load::reductions() const
{
    std::vector<Reductions> means = sums;
    for (Reductions &mean : means) {
        mean.meanDb /= std::max(looks, 1u);
        mean.share /= std::max(looks, 1u);
    }
    return means;
}

} // namespace Bench
