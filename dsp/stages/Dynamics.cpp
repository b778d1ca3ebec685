#include "dsp/stages/Dynamics.h"

#include <algorithm>

#include "dsp/kernels/DenormalGuard.h"
#include "dsp/kernels/Kernels.h"
#include "dsp/kernels/VectorOperations.h"
#include "dsp/numerics/Conversions.h"

namespace DSP {

namespace {
constexpr uint32_t kChunk = Kernels::DynamicsKernels::kMostFrames;
} // namespace

Dynamics::Dynamics(PluginLink &pluginLink) : ComponentImpl(pluginLink, "Squash")
{
    declareParameters();
    owner = this;
    for (uint32_t i = 0; i < numFloatParams(); ++i) setFloatParamValue(i, floatParamDefault(i));
    envelopeDecay = peakDecay(sampleRate);
    for (Band &band : bands) designBand(band); // the setters skip values that equal the initial ones
    reset();
    finishConstruction();
}

void Dynamics::declareParameters()
{
    const auto real = [this](const char *pattern, const char *unit, FloatRange range, float initial,
                             float (Dynamics::*get)(uint32_t) const, bool (Dynamics::*set)(uint32_t, float)) {
        for (uint32_t band = 0; band < kBands; ++band)
            addFloat(ParamGroup::dynamics, String(pattern).arg(band + 1), unit, range, initial, {.one = get},
                     {.one = set})
                .indices = {OptionalIndex(band)};
    };
    real("Band %1 Comp Threshold", "dB", {-60, 0}, 0, &Dynamics::threshold, &Dynamics::setThreshold);
    real("Band %1 Gain", "dB", {-18, 18}, 0, &Dynamics::gain, &Dynamics::setGain);
    real("Band %1 Ratio", "x:1", {1, 30}, 1, &Dynamics::ratio, &Dynamics::setRatio);
    real("Band %1 Attack", "ms", {0, 500}, 10, &Dynamics::attack, &Dynamics::setAttack);
    real("Band %1 Release", "ms", {0, 5000}, 100, &Dynamics::release, &Dynamics::setRelease);

    addBool(ParamGroup::dynamics, "Dynamics Band Link", false, {.plain = &Dynamics::bandLink},
            {.plain = &Dynamics::setBandLink});
    const auto bandSwitch = [this](const char *pattern, bool (Dynamics::*get)(uint32_t) const,
                                   bool (Dynamics::*set)(uint32_t, bool)) {
        for (uint32_t band = 0; band < kBands; ++band)
            addBool(ParamGroup::dynamics, String(pattern).arg(band + 1), false, {.one = get}, {.one = set})
                .indices = {OptionalIndex(band)};
    };
    bandSwitch("Band %1 Bypass", &Dynamics::bypass, &Dynamics::setBypass);
    bandSwitch("Band %1 Solo", &Dynamics::solo, &Dynamics::setSolo);

    for (FloatParam &param : floatParams) param.automatable = true;
    for (BoolParam &param : boolParams) param.automatable = true;
}

template <class V>
bool Dynamics::change(uint32_t band, V BandSettings::*field, V value)
{
    const Util::Hold setting(settingLock);
    BandSettings next = bands[band].settings.load();
    if (next.*field == value) return false;
    next.*field = value;
    bands[band].settings.store(next);
    designBand(bands[band]);
    return true;
}
template bool Dynamics::change(uint32_t, float BandSettings::*, float);
template bool Dynamics::change(uint32_t, bool BandSettings::*, bool);

bool Dynamics::setBandLink(bool on) { return linked.change(on); }

uint32_t Dynamics::latency() const { return lookAheadSamples(sampleRate) - 1; }

void Dynamics::setSampleRate(uint32_t hz)
{
    if (hz != sampleRate) {
        const Util::Hold setting(settingLock);
        sampleRate = hz;
        envelopeDecay = peakDecay(hz);
        for (Band &band : bands) designBand(band);
        reserveDelays();
    }
    clearMeters();
}

/// Allocates now for the next reset, which resizes the lines and may run on the audio thread.
void Dynamics::reserveDelays()
{
    const Util::Hold hold(lock);
    for (auto *lines : {&state.delayLeft, &state.delayRight})
        for (DelayLine &line : *lines) line.reserve(latency(), kChunk);
}

void Dynamics::suspend()
{
    for (Band &band : bands) {
        band.peakLeft.read();
        band.peakRight.read();
    }
}

void Dynamics::clearMeters()
{
    suspend();
    for (Band &band : bands) band.reduction.read();
}

void Dynamics::reset()
{
    const Util::Hold hold(lock);
    clearMeters();
    const uint32_t history = latency();
    for (uint32_t b = 0; b < kBands; ++b) {
        // The right line first: process uses the left line's length for both, and resize may throw.
        state.delayRight[b].resize(history, kChunk);
        state.delayLeft[b].resize(history, kChunk);
    }
    state.guardPhases = {};
    std::fill_n(state.followers.envelope, kBands, 0.0f);
    std::fill_n(state.followers.followed, kBands, 1.0f);
    std::fill_n(state.followers.smoothed, kBands, 1.0f);
}

void Dynamics::readPeaks(uint32_t band, float &left, float &right)
{
    left = bands[band].peakLeft.read();
    right = bands[band].peakRight.read();
}

void Dynamics::process(const DSP::Block &whole)
{
    const uint32_t frames = whole.frames;
    Block block;
    if (whole.bands) {
        std::copy_n(whole.bands->left, kBands, block.left);
        std::copy_n(whole.bands->right, kBands, block.right);
    } else {
        block.left[bandIndex] = whole.left;
        block.right[bandIndex] = whole.right;
    }
    loadCoefficients(block);
    silenceUnsoloed(block, frames);
    if (std::all_of(block.left, block.left + kBands, [](float *band) { return !band; })) return;

    const Kernels::DynamicsState before = state.followers;
    for (uint32_t done = 0; done < frames; done += kChunk) {
        const uint32_t count = std::min(frames - done, kChunk);
        compressChunk(block, count);
        for (uint32_t b = 0; b < kBands; ++b) {
            if (block.left[b]) block.left[b] += count;
            if (block.right[b]) block.right[b] += count;
        }
    }
    for (uint32_t b = 0; b < kBands; ++b) {
        if (block.left[b]) continue;
        state.followers.envelope[b] = before.envelope[b];
        state.followers.followed[b] = before.followed[b];
        state.followers.smoothed[b] = before.smoothed[b];
    }
}

void Dynamics::loadCoefficients(Block &block) const
{
    for (uint32_t b = 0; b < kBands; ++b) {
        const BandCoefficients band = block.coefficients[b] = bands[b].coefficients.load();
        block.lanes.threshold[b] = band.threshold;
        block.lanes.exponent[b] = band.exponent;
        block.lanes.attackComplement[b] = band.attackComplement;
        block.lanes.releaseCoeff[b] = band.releaseCoeff;
        block.lanes.releaseComplement[b] = band.releaseComplement;
        block.lanes.smoothCoeff[b] = band.smoothCoeff;
    }
    block.lanes.envelopeDecay = envelopeDecay;
}

void Dynamics::silenceUnsoloed(Block &block, uint32_t frames)
{
    const auto &coefficients = block.coefficients;
    if (std::none_of(coefficients.begin(), coefficients.end(), [](const auto &band) { return band.solo; }))
        return;
    for (uint32_t b = 0; b < kBands; ++b) {
        if (coefficients[b].solo || !block.left[b]) continue;
        clearSamples(block.left[b], frames);
        if (block.right[b]) clearSamples(block.right[b], frames);
        addDenormalGuard(frames, block.left[b], block.right[b], &state.guardPhases[b], true);
        block.left[b] = block.right[b] = nullptr;
    }
}

void Dynamics::compressChunk(const Block &block, uint32_t frames)
{
    const Kernels::DynamicsKernels &kernels = Kernels::active().dynamics;
    alignas(32) float gains[kBands][kChunk];
    float *const gainRows[kBands] = {gains[0], gains[1], gains[2], gains[3]};
    Kernels::DynamicsPeaks peaks;
    kernels.computeGains(block.lanes, state.followers, block.left, block.right, gainRows, peaks, frames);

    for (uint32_t b = 0; b < kBands; ++b) {
        if (!block.left[b]) continue;
        const BandCoefficients &band = block.coefficients[b];
        const bool stereo = block.right[b];
        report(bands[b], band.bypass, stereo, peaks, b);

        const GuardWave guard = guardWave(state.guardPhases[b]);
        float *const samples[2] = {block.left[b], block.right[b]};
        float *const lines[2] = {state.delayLeft[b].write(frames),
                                 stereo ? state.delayRight[b].write(frames) : nullptr};
        const float *const guards[2] = {guard.left, guard.right};
        kernels.applyGains(samples, lines, guards, stereo ? 2 : 1, state.delayLeft[b].history(),
                           band.bypass ? nullptr : gains[b], band.makeUp, frames);
        state.guardPhases[b] = static_cast<uint8_t>(state.guardPhases[b] + frames);
    }
}

void Dynamics::report(Band &band, bool bypass, bool stereo, const Kernels::DynamicsPeaks &peaks, uint32_t b)
{
    band.peakLeft.report(peaks.left[b]);
    if (stereo)
        band.peakRight.report(peaks.right[b]);
    else
        band.peakRight.set(band.peakLeft.present());
    if (bypass)
        band.reduction.clear();
    else
        band.reduction.report(peaks.smallestGain[b]);
}

} // namespace DSP
