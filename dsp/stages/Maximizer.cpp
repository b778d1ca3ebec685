#include "dsp/stages/Maximizer.h"

#include <algorithm>

#include "dsp/kernels/Kernels.h"
#include "dsp/kernels/VectorOperations.h"
#include "dsp/numerics/Math.h"

namespace DSP {

namespace {
// gain = (level / threshold)^(1/20 - 1): always 20:1, as the curve ignores the ratio parameter
constexpr float kSoftExponent = static_cast<float>(static_cast<double>(0.05f) - 1.0);
} // namespace

Maximizer::Maximizer(PluginLink &pluginLink) : ComponentImpl(pluginLink, "Maximizer::Maximizer")
{
    for (uint32_t i = 0; i < gainWindow.size(); ++i) { // Hann window; all 64 weights sum to 1
        const double phase = (i + 0.5) * (2.0 * Math::kPi) / kMaximizerWindow;
        gainWindow[i] = static_cast<float>((1.0 - Math::cos(phase)) / kMaximizerWindow);
    }
    declareParameters();
    owner = this;
    for (uint32_t i = 0; i < numFloatParams(); ++i) setFloatParamValue(i, floatParamDefault(i));
    reset();
    setSampleRate(sampleRate);
    finishConstruction();
}

void Maximizer::declareParameters()
{
    const auto real = [this](const char *paramName, const char *unit, FloatRange range, float initial,
                             float (Maximizer::*get)() const, bool (Maximizer::*set)(float)) {
        addFloat(ParamGroup::maximizer, paramName, unit, range, initial, {.plain = get}, {.plain = set})
            .automatable = true;
    };
    real("Limiter Threshold", "dB", {-20, 0}, 0, &Maximizer::threshold, &Maximizer::setThreshold);
    real("Limiter Margin", "dB", {-5, 0}, 0, &Maximizer::margin, &Maximizer::setMargin);
    real("Limiter Ratio", "x:1", {1, 25}, 20, &Maximizer::ratio, &Maximizer::setRatio);
    floatParams.back().automatable = false;
    real("Limiter Attack", "ms", {1, 20}, 4, &Maximizer::attack, &Maximizer::setAttack);
    real("Limiter Release", "ms", {10, 500}, 500, &Maximizer::release, &Maximizer::setRelease);

    addBool(ParamGroup::maximizer, "Limiter Bypass", false, {.plain = &Maximizer::bypass},
            {.plain = &Maximizer::setBypass})
        .automatable = true;
    addBool(ParamGroup::maximizer, "Limiter Brickwall Mode", false, {.plain = &Maximizer::brickwall},
            {.plain = &Maximizer::setBrickwall})
        .automatable = true;
}

template <class V>
bool Maximizer::change(V MaximizerSettings::*field, V value)
{
    const Util::Hold setting(settingLock);
    MaximizerSettings next = settings.load();
    if (next.*field == value) return false;
    next.*field = value;
    settings.store(next);
    coefficients.store(design(next, sampleRate));
    return true;
}
template bool Maximizer::change(float MaximizerSettings::*, float);
template bool Maximizer::change(bool MaximizerSettings::*, bool);

void Maximizer::setSampleRate(uint32_t hz)
{
    const Util::Hold setting(settingLock);
    const Util::Hold hold(lock);
    sampleRate = hz;
    coefficients.store(design(settings.load(), hz));
    state.envelope = 0.0f;
    state.followedGain = 1.0f;
    state.gainRing.resize(kMaximizerWindow - 1, kChunk, 1.0f);
}

void Maximizer::reset()
{
    const Util::Hold hold(lock);
    state.envelope = 0.0f;
    state.followedGain = state.smoothedGain = 1.0f;
    state.lineLeft.resize(latency(), kChunk);
    state.lineRight.resize(latency(), kChunk);
    state.gainLine.clear();
    state.gainRing.resize(kMaximizerWindow - 1, kChunk, 1.0f);
    reduction.clear();
}

void Maximizer::process(const Block &block)
{
    const MaximizerCoefficients now = coefficients.load();
    for (uint32_t done = 0; done < block.frames; done += kChunk)
        processChunk(now, std::min(block.frames - done, kChunk), block.left + done,
                     block.right ? block.right + done : nullptr);
}

void Maximizer::processChunk(const MaximizerCoefficients &now, uint32_t frames, float *left, float *right)
{
    const auto append = [frames](DelayLine &line, const float *samples) {
        float *const here = line.write(frames);
        copySamples(samples, here, frames);
        return here;
    };
    const Lines lines = {append(state.lineLeft, left), right ? append(state.lineRight, right) : nullptr};

    constexpr uint32_t kDetectorDelay = kMaximizerInputDelay - 1;
    alignas(32) float gains[kChunk];
    Kernels::active().maximizer.detect(lines.left - kDetectorDelay,
                                       right ? lines.right - kDetectorDelay : nullptr, now.envelopeDecay,
                                       state.envelope, gains, frames);
    if (now.brickwall)
        processBrickwall(now, frames, lines, gains, left, right);
    else
        processSoft(now, frames, lines, gains, left, right);
}

void Maximizer::processSoft(const MaximizerCoefficients &now, uint32_t frames, const Lines &lines,
                            float *gains, float *left, float *right)
{
    const Kernels::MaximizerKernels &kernels = Kernels::active().maximizer;
    kernels.softGains(now.threshold, kSoftExponent, now.follower, now.smoothCoeff, state.followedGain,
                      state.smoothedGain, gains, frames);
    state.gainLine.skip(frames);
    if (!now.bypass) report(gains, frames);

    const auto output = [&](const float *line, float *out) {
        if (now.bypass)
            copySamples(line - latency(), out, frames);
        else
            kernels.apply(line - latency(), gains, now.outputGain, out, frames);
    };
    output(lines.left, left);
    if (right) output(lines.right, right);
}

void Maximizer::processBrickwall(const MaximizerCoefficients &now, uint32_t frames, const Lines &lines,
                                 float *gains, float *left, float *right)
{
    const Kernels::MaximizerKernels &kernels = Kernels::active().maximizer;
    kernels.holdingGains(now.threshold, gains, frames);
    state.gainLine.run(gains, frames);
    kernels.followMinimum(now.follower, state.followedGain, gains, frames);
    float *const ring = state.gainRing.write(frames);
    copySamples(gains, ring, frames);
    kernels.weightedSum(gainWindow.data(), ring, gains, frames);
    state.smoothedGain = gains[frames - 1];
    if (!now.bypass) report(gains, frames);

    // Scales each sample in the delay line when the smoothing window is centred on it; it is output later.
    const uint32_t scaled = kMaximizerInputDelay - 1 + now.lookAhead;
    const auto output = [&](float *line, float *out) {
        if (!now.bypass) kernels.apply(line - scaled, gains, now.outputGain, line - scaled, frames);
        copySamples(line - latency(), out, frames);
    };
    output(lines.left, left);
    if (right) output(lines.right, right);
}

void Maximizer::report(const float *gains, uint32_t frames)
{
    reduction.report(Kernels::active().block.least(gains, reduction.present(), frames));
}

} // namespace DSP
