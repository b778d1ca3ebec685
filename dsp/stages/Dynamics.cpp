#include "dsp/stages/Dynamics.h"

#include <algorithm>
#include <cmath>

#include "dsp/kernels/DenormalGuard.h"
#include "dsp/kernels/Kernels.h"
#include "dsp/kernels/VectorOperations.h"
#include "dsp/numerics/Conversions.h"
#include "dsp/numerics/Math.h"

namespace DSP {

namespace {
constexpr float kLookAheadSeconds = 0.001f;
constexpr uint32_t kChunk = Kernels::DynamicsKernels::kMostFrames;
} // namespace

Dynamics::Dynamics(PluginLink &pluginLink) : ComponentImpl(pluginLink, "Squash")
{
    declareParameters();
    owner = this;
    for (uint32_t i = 0; i < numFloatParams(); ++i) setFloatParamValue(i, floatParamDefault(i));
    envelopeDecay = peakDecay(sampleRate);
    reset();
    finishConstruction();
}

void Dynamics::declareParameters()
{
    const auto real = [this](const char *pattern, const char *unit, FloatRange range, float initial,
                             float (Dynamics::*get)(uint32_t) const, void (Dynamics::*set)(uint32_t, float)) {
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

    addBool(ParamGroup::dynamics, "Dynamics Band Link", false, {.plain = &Dynamics::getBandLink},
            {.plain = &Dynamics::setBandLink});
    const auto bandSwitch = [this](const char *pattern, bool (Dynamics::*get)(uint32_t) const,
                                   void (Dynamics::*set)(uint32_t, bool)) {
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
bool Dynamics::change(Util::Shared<V> &value, V next)
{
    if (!value.change(next)) return false;
    notifyParameterChanged();
    return true;
}

void Dynamics::setBandLink(bool on) { change(bandLink, on); }
void Dynamics::setBypass(uint32_t band, bool on) { change(bands[band].bypass, on); }
void Dynamics::setSolo(uint32_t band, bool on) { change(bands[band].solo, on); }

void Dynamics::setThreshold(uint32_t band, float db)
{
    const Util::Hold setting(settingLock);
    if (change(bands[band].thresholdDb, db)) bands[band].thresholdLinear = thresholdFactor(db);
}

void Dynamics::setGain(uint32_t band, float db)
{
    const Util::Hold setting(settingLock);
    if (change(bands[band].gainDb, db)) bands[band].gainLinear = gainFactor(db);
}

void Dynamics::setRatio(uint32_t band, float ratio)
{
    const Util::Hold setting(settingLock);
    if (change(bands[band].ratio, ratio)) bands[band].inverseRatio = 1.0f / ratio;
}

void Dynamics::setAttack(uint32_t band, float ms)
{
    const Util::Hold setting(settingLock);
    if (!change(bands[band].attackMs, ms)) return;
    deriveAttack(bands[band]);
    deriveSmoothing(bands[band]);
}

void Dynamics::setRelease(uint32_t band, float ms)
{
    const Util::Hold setting(settingLock);
    if (!change(bands[band].releaseMs, ms)) return;
    deriveRelease(bands[band]);
    deriveSmoothing(bands[band]);
}

void Dynamics::deriveAttack(BandState &band)
{
    band.attackCoeff = static_cast<float>(Math::timeCoeff(band.attackMs, sampleRate));
}

void Dynamics::deriveRelease(BandState &band)
{
    band.releaseCoeff = static_cast<float>(Math::timeCoeff(band.releaseMs, sampleRate));
}

void Dynamics::deriveSmoothing(BandState &band)
{
    const double ms = std::min<float>(band.attackMs, band.releaseMs) * 0.5;
    band.smoothCoeff = static_cast<float>(1.0 - Math::timeCoeff(ms, sampleRate));
}

uint32_t Dynamics::lookAheadSamples() const
{
    const double samples = std::floor(static_cast<double>(sampleRate) * kLookAheadSeconds + 0.5);
    return std::max(1u, static_cast<uint32_t>(samples));
}

uint32_t Dynamics::latency() const { return lookAheadSamples() - 1; }

void Dynamics::setSampleRate(uint32_t hz)
{
    if (hz != sampleRate) {
        const Util::Hold setting(settingLock);
        sampleRate = hz;
        envelopeDecay = peakDecay(hz);
        for (BandState &band : bands) {
            deriveAttack(band);
            deriveRelease(band);
            deriveSmoothing(band);
        }
    }
    for (BandState &band : bands) {
        band.peakLeft = band.peakRight = 0.0f;
        band.reportedGain = 1.0f;
    }
}

void Dynamics::suspend()
{
    for (BandState &band : bands) band.peakLeft = band.peakRight = 0.0f;
}

void Dynamics::reset()
{
    const Util::Hold hold(lock);
    for (BandState &band : bands) {
        band.peakLeft = band.peakRight = 0.0f;
        band.reportedGain = 1.0f;
        band.guardPhase = 0;
        // The left line tells the length of both, so if memory is short the right one must not be the shorter.
        band.delayRight.resize(lookAheadSamples() - 1, kChunk);
        band.delayLeft.resize(lookAheadSamples() - 1, kChunk);
    }
    std::fill_n(state.envelope, kBands, 0.0f);
    std::fill_n(state.followed, kBands, 1.0f);
    std::fill_n(state.smoothed, kBands, 1.0f);
}

float Dynamics::readGainReduction(uint32_t band) { return bands[band].reportedGain.exchange(1.0f); }

void Dynamics::readPeaks(uint32_t band, float &left, float &right)
{
    left = bands[band].peakLeft.exchange(0.0f);
    right = bands[band].peakRight.exchange(0.0f);
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
    for (uint32_t b = 0; b < kBands; ++b) {
        block.bypass[b] = bands[b].bypass;
        block.makeUp[b] = bands[b].gainLinear;
    }
    silenceUnsoloed(block, frames);
    if (std::all_of(block.left, block.left + kBands, [](float *band) { return !band; })) return;

    const Kernels::DynamicsCoeffs coeffs = coefficients();
    const Kernels::DynamicsState before = state;
    for (uint32_t done = 0; done < frames; done += kChunk) {
        const uint32_t count = std::min(frames - done, kChunk);
        compressChunk(coeffs, block, count);
        for (uint32_t b = 0; b < kBands; ++b) {
            if (block.left[b]) block.left[b] += count;
            if (block.right[b]) block.right[b] += count;
        }
    }
    for (uint32_t b = 0; b < kBands; ++b) {
        if (block.left[b]) continue;
        state.envelope[b] = before.envelope[b];
        state.followed[b] = before.followed[b];
        state.smoothed[b] = before.smoothed[b];
    }
}

void Dynamics::silenceUnsoloed(Block &block, uint32_t frames)
{
    if (std::none_of(bands.begin(), bands.end(), [](const BandState &band) { return band.solo.load(); }))
        return;
    for (uint32_t b = 0; b < kBands; ++b) {
        if (bands[b].solo || !block.left[b]) continue;
        clearSamples(block.left[b], frames);
        if (block.right[b]) clearSamples(block.right[b], frames);
        addDenormalGuard(frames, block.left[b], block.right[b], &bands[b].guardPhase, true);
        block.left[b] = block.right[b] = nullptr;
    }
}

Kernels::DynamicsCoeffs Dynamics::coefficients() const
{
    Kernels::DynamicsCoeffs coeffs;
    for (uint32_t b = 0; b < kBands; ++b) {
        const BandState &band = bands[b];
        coeffs.threshold[b] = band.thresholdLinear;
        coeffs.exponent[b] = std::min(0.0f, band.inverseRatio - 1.0f); // a gain above 1 is the release's work
        coeffs.attackComplement[b] = 1.0f - band.attackCoeff;
        coeffs.releaseCoeff[b] = band.releaseCoeff;
        coeffs.releaseComplement[b] = 1.0f - coeffs.releaseCoeff[b];
        coeffs.smoothCoeff[b] = band.smoothCoeff;
    }
    coeffs.envelopeDecay = envelopeDecay;
    return coeffs;
}

void Dynamics::compressChunk(const Kernels::DynamicsCoeffs &coeffs, const Block &block, uint32_t frames)
{
    const Kernels::DynamicsKernels &kernels = Kernels::active().dynamics;
    alignas(32) float gains[kBands][kChunk];
    float *const gainRows[kBands] = {gains[0], gains[1], gains[2], gains[3]};
    Kernels::DynamicsPeaks peaks;
    kernels.computeGains(coeffs, state, block.left, block.right, gainRows, peaks, frames);

    for (uint32_t b = 0; b < kBands; ++b) {
        if (!block.left[b]) continue;
        BandState &band = bands[b];
        const bool stereo = block.right[b] != nullptr;
        report(band, stereo, peaks.left[b], peaks.right[b]);
        if (block.bypass[b])
            band.reportedGain = 1.0f;
        else if (peaks.smallestGain[b] < band.reportedGain)
            band.reportedGain = peaks.smallestGain[b];

        const GuardWave guard = guardWave(band.guardPhase);
        float *const samples[2] = {block.left[b], block.right[b]};
        float *const lines[2] = {band.delayLeft.write(frames),
                                 stereo ? band.delayRight.write(frames) : nullptr};
        const float *const guards[2] = {guard.left, guard.right};
        kernels.applyGains(samples, lines, guards, stereo ? 2 : 1, band.delayLeft.history(),
                           block.bypass[b] ? nullptr : gains[b], block.makeUp[b], frames);
        band.guardPhase = static_cast<uint8_t>(band.guardPhase + frames);
    }
}

void Dynamics::report(BandState &band, bool stereo, float peakLeft, float peakRight)
{
    if (peakLeft > band.peakLeft) band.peakLeft = peakLeft;
    if (!stereo)
        band.peakRight = band.peakLeft;
    else if (peakRight > band.peakRight)
        band.peakRight = peakRight;
}

} // namespace DSP
