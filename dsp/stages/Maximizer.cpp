#include "dsp/stages/Maximizer.h"

#include <algorithm>
#include <cmath>

#include "dsp/kernels/Kernels.h"
#include "dsp/kernels/VectorOperations.h"
#include "dsp/numerics/Conversions.h"

namespace DSP {

namespace {
// gain = (level / threshold)^(1/20 - 1): the soft curve is 20:1 whatever the ratio says
constexpr float kSoftExponent = static_cast<float>(static_cast<double>(0.05f) - 1.0);
constexpr double kTwoPi = 2.0 * Math::kPi;
} // namespace

Maximizer::Maximizer(PluginLink &pluginLink) : ComponentImpl(pluginLink, "Maximizer::Maximizer")
{
    // an attack of 100 samples at the rate of construction; the coefficient then serves every rate
    brickwallAttackCoeff = static_cast<float>(Math::timeCoeff(200000.0 / sampleRate, sampleRate));
    envelopeDecay = peakDecay(sampleRate);
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
                             float (Maximizer::*get)() const, void (Maximizer::*set)(float)) {
        addFloat(ParamGroup::maximizer, paramName, unit, range, initial, {.plain = get}, {.plain = set})
            .automatable = true;
    };
    real("Limiter Threshold", "dB", {-20, 0}, 0, &Maximizer::threshold, &Maximizer::setThreshold);
    real("Limiter Margin", "dB", {-5, 0}, 0, &Maximizer::margin, &Maximizer::setMargin);
    real("Limiter Ratio", "x:1", {1, 25}, 20, &Maximizer::getRatio, &Maximizer::setRatio);
    floatParams.back().automatable = false;
    real("Limiter Attack", "ms", {1, 20}, 4, &Maximizer::attack, &Maximizer::setAttack);
    real("Limiter Release", "ms", {10, 500}, 500, &Maximizer::release, &Maximizer::setRelease);

    addBool(ParamGroup::maximizer, "Limiter Bypass", false, {.plain = &Maximizer::getBypass},
            {.plain = &Maximizer::setBypass})
        .automatable = true;
    addBool(ParamGroup::maximizer, "Limiter Brickwall Mode", false, {.plain = &Maximizer::getBrickwall},
            {.plain = &Maximizer::setBrickwall})
        .automatable = true;
}

void Maximizer::setThreshold(float db)
{
    const Util::Hold setting(settingLock);
    if (!thresholdDb.change(db)) return;
    thresholdLinear = thresholdFactor(db);
    deriveOutputGain();
}

void Maximizer::setMargin(float db)
{
    const Util::Hold setting(settingLock);
    if (marginDb.change(db)) deriveOutputGain();
}

void Maximizer::deriveOutputGain() { outputGain = gainFactor(marginDb - thresholdDb); }

void Maximizer::setRatio(float value)
{
    if (ratio.change(value)) inverseRatio = 1.0f / value;
}

void Maximizer::setAttack(float ms)
{
    const Util::Hold setting(settingLock);
    if (attackMs.change(ms)) deriveAttack();
}

void Maximizer::deriveAttack()
{
    attackCoeff = static_cast<float>(Math::timeCoeff(attackMs, sampleRate));
    const double samples = kWindow / 2 + std::floor(sampleRate * static_cast<double>(attackMs) * 0.001 + 0.5);
    lookAhead = static_cast<uint32_t>(std::clamp<double>(samples, kWindow, kOutputDelay - 1));
}

void Maximizer::setRelease(float ms)
{
    const Util::Hold setting(settingLock);
    if (releaseMs.change(ms)) deriveRelease();
}

void Maximizer::deriveRelease() { releaseCoeff = static_cast<float>(Math::timeCoeff(releaseMs, sampleRate)); }

void Maximizer::setSampleRate(uint32_t hz)
{
    const Util::Hold setting(settingLock);
    const Util::Hold hold(lock);
    if (hz != sampleRate) {
        sampleRate = hz;
        deriveAttack();
        deriveRelease();
        envelopeDecay = peakDecay(hz);
    }
    envelope = 0.0f;
    followedGain = 1.0f;
    smoothCoeff = static_cast<float>(1.0 - Math::exp(-1.0 / (0.001f * static_cast<float>(hz))));
    gainRing.resize(kWindow - 1, kChunk, 1.0f);
    for (uint32_t i = 0; i < gainWindow.size(); ++i) // Hann, with a sum of 1
        gainWindow[i] = static_cast<float>((1.0 - Math::cos((i + 0.5) * kTwoPi / kWindow)) / kWindow);
}

void Maximizer::reset()
{
    const Util::Hold hold(lock);
    envelope = 0.0f;
    followedGain = smoothedGain = 1.0f;
    lineLeft.resize(latency(), kChunk);
    lineRight.resize(latency(), kChunk);
    gainLine.clear();
    gainRing.resize(kWindow - 1, kChunk, 1.0f);
    reportedGain = 1.0f;
}

void Maximizer::process(const Block &block)
{
    const Setting now = present();
    for (uint32_t done = 0; done < block.frames; done += kChunk)
        processChunk(now, std::min(block.frames - done, kChunk), block.left + done,
                     block.right ? block.right + done : nullptr);
}

Maximizer::Setting Maximizer::present() const
{
    const bool wall = brickwall;
    const float attack = wall ? brickwallAttackCoeff : attackCoeff.load(), release = releaseCoeff;
    return {.bypass = bypass,
            .brickwall = wall,
            .threshold = thresholdLinear,
            .outputGain = outputGain,
            .follower = {attack, 1.0f - attack, release, 1.0f - release},
            .lookAhead = lookAhead};
}

void Maximizer::processChunk(const Setting &now, uint32_t frames, float *left, float *right)
{
    const auto append = [frames](DelayLine &line, const float *samples) {
        float *const here = line.write(frames);
        copySamples(samples, here, frames);
        return here;
    };
    const Lines lines = {append(lineLeft, left), right ? append(lineRight, right) : nullptr};

    constexpr uint32_t kDetectorDelay = kInputDelay - 1;
    alignas(32) float gains[kChunk];
    Kernels::active().maximizer.detect(lines.left - kDetectorDelay,
                                       right ? lines.right - kDetectorDelay : nullptr, envelopeDecay,
                                       envelope, gains, frames);
    if (now.brickwall)
        processBrickwall(now, frames, lines, gains, left, right);
    else
        processSoft(now, frames, lines, gains, left, right);
}

void Maximizer::processSoft(const Setting &now, uint32_t frames, const Lines &lines, float *gains,
                            float *left, float *right)
{
    const Kernels::MaximizerKernels &kernels = Kernels::active().maximizer;
    kernels.softGains(now.threshold, kSoftExponent, now.follower, smoothCoeff, followedGain, smoothedGain,
                      gains, frames);
    gainLine.skip(frames);
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

void Maximizer::processBrickwall(const Setting &now, uint32_t frames, const Lines &lines, float *gains,
                                 float *left, float *right)
{
    const Kernels::MaximizerKernels &kernels = Kernels::active().maximizer;
    kernels.holdingGains(now.threshold, gains, frames);
    gainLine.run(gains, frames);
    kernels.followMinimum(now.follower, followedGain, gains, frames);
    float *const ring = gainRing.write(frames);
    copySamples(gains, ring, frames);
    kernels.weightedSum(gainWindow.data(), ring, gains, frames);
    smoothedGain = gains[frames - 1];
    if (!now.bypass) report(gains, frames);

    // A sample is scaled once, in the line, when the window of gains lies around it; later it only leaves.
    const uint32_t scaled = kInputDelay - 1 + now.lookAhead;
    const auto output = [&](float *line, float *out) {
        if (!now.bypass) kernels.apply(line - scaled, gains, now.outputGain, line - scaled, frames);
        copySamples(line - latency(), out, frames);
    };
    output(lines.left, left);
    if (right) output(lines.right, right);
}

void Maximizer::report(const float *gains, uint32_t frames)
{
    const float before = reportedGain;
    const float least = Kernels::active().block.least(gains, before, frames);
    if (least < before) reportedGain = least;
}

} // namespace DSP
