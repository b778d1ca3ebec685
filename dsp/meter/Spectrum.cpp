#include "dsp/meter/Spectrum.h"

#include <algorithm>
#include <utility>

#include "dsp/kernels/DenormalGuard.h"
#include "dsp/kernels/VectorOperations.h"
#include "dsp/numerics/Math.h"
#include "dsp/numerics/WindowFunctions.h"

namespace DSP::Meter {

namespace {
constexpr float kOverlapFactors[] = {0.0f, 0.1f, 0.2f, 0.3f, 0.4f, 0.5f};
constexpr int kLeastOrder = 9; // log2 of the smallest size
constexpr float kBlackmanAlpha = -0.16f, kKaiserAlpha = 0.006f;

static_assert(Spectrum::kSizes[0] == 1u << kLeastOrder && kLeastOrder >= FftPlan::kLeastOrder);
static_assert(Spectrum::kMostSamples == *std::rbegin(Spectrum::kSizes));
static_assert(Spectrum::kMostSamples == 1u << FftPlan::kMostOrder);

uint32_t sizeForRate(uint32_t hz)
{
    constexpr uint32_t kLimitsHz[] = {11000, 22000, 38000};
    return static_cast<uint32_t>(std::upper_bound(std::begin(kLimitsHz), std::end(kLimitsHz), hz) -
                                 std::begin(kLimitsHz));
}
} // namespace

Spectrum::Spectrum(PluginLink &pluginLink, const String &meterName) : ComponentImpl(pluginLink, meterName)
{
    declareParameters();
    owner = this;
    finishConstruction();
    frame.grow(kMostSamples);
    waitingFrame.grow(kMostSamples);
    magnitudes.grow(kMostMagnitudes);
    rebuild();
}

void Spectrum::declareParameters()
{
    addBool(ParamGroup::spectrum, "Spectrum On Input", false, {.plain = &Spectrum::getOnInput},
            {.plain = &Spectrum::setOnInput});
    addChoice(ParamGroup::spectrum, "Spectrum Window Size", windowSize,
              {"512", "1024", "2048", "4096", "8192"}, {.plain = &Spectrum::getWindowSize},
              {.plain = &Spectrum::setWindowSize});
    addChoice(ParamGroup::spectrum, "Spectrum Overlap", overlap, {"0%", "10%", "20%", "30%", "40%", "50%"},
              {.plain = &Spectrum::getOverlap}, {.plain = &Spectrum::setOverlap});
    addChoice(ParamGroup::spectrum, "Spectrum Window Type", windowType,
              {"Hamming", "Blackman", "Bartlett", "Kaiser", "Hann"}, {.plain = &Spectrum::getWindowType},
              {.plain = &Spectrum::setWindowType});
}

void Spectrum::setSampleRate(uint32_t hz)
{
    if (hz == sampleRate) return;
    setWindowSize(sizeForRate(hz));
    const Util::Hold hold(lock);
    sampleRate = hz;
    decay = hopDecay();
}

bool Spectrum::setWindowSize(uint32_t index)
{
    return choose(windowSize, std::min(index, intParamRange(Param::windowSize).maximum));
}
bool Spectrum::setOverlap(uint32_t index)
{
    return choose(overlap, std::min(index, intParamRange(Param::overlap).maximum));
}
bool Spectrum::setWindowType(uint32_t type)
{
    return choose(windowType, std::min(type, intParamRange(Param::windowType).maximum));
}

bool Spectrum::choose(Util::Shared<uint32_t> &setting, uint32_t value)
{
    if (value == setting) return false;
    const Util::Hold choosing(settingLock);
    const uint32_t before = setting.exchange(value);
    try {
        rebuild();
    } catch (...) { // out of memory: the previous analysis continues, so restore its setting
        setting = before;
        throw;
    }
    return true;
}

void Spectrum::setStagger(uint32_t samples)
{
    const Util::Hold hold(lock);
    stagger = samples;
    waitingSamples = 0;
}

void Spectrum::reset()
{
    const Util::Hold hold(lock);
    clearSamples(frame.data(), analysis->length);
}

void Spectrum::rebuild()
{
    auto next = std::make_unique<Analysis>(windowSize, overlap, windowType);
    const Util::Hold hold(lock);
    analysis.swap(next);
    decay = hopDecay();
    framePosition = 0;
    waitingSamples = 0;
    clearSamples(magnitudes.data(), kMostMagnitudes);
    published.publish(magnitudes.data(), analysis->length / 2 + 1);
}

Spectrum::Analysis::Analysis(uint32_t sizeIndex, uint32_t overlapIndex, uint32_t window)
    : length(kSizes[sizeIndex]),
      overlapLength(static_cast<uint32_t>(static_cast<float>(length) * kOverlapFactors[overlapIndex])),
      fftPlan(kLeastOrder + static_cast<int>(sizeIndex)),
      windowTable(length),
      work(fftPlan.workLength())
{
    const int count = static_cast<int>(length);
    float *const table = windowTable.data();
    // Magnitudes are scaled by 2 / length. FftPlan applies the 2; 1 / length is a power of two, so it is exact.
    std::fill_n(table, length, 1.0f / static_cast<float>(length));
    switch (window) {
    case hamming: ippsWinHamming_32f_I(table, count); break;
    case blackman: ippsWinBlackman_32f_I(table, count, kBlackmanAlpha); break;
    case bartlett: ippsWinBartlett_32f_I(table, count); break;
    case kaiser: ippsWinKaiser_32f_I(table, count, kKaiserAlpha); break;
    default: ippsWinHann_32f_I(table, count); break;
    }
}

void Spectrum::feed(uint32_t frames, const float *left, const float *right)
{
    if (frames == 0 || !isMeterEnabled()) return;
    const Util::Hold hold(lock);
    while (frames > 0) {
        uint32_t count = std::min(frames, analysis->length - framePosition);
        if (waitingSamples > 0) count = std::min(count, waitingSamples);
        append(left, right, count);
        left += count;
        if (right) right += count;
        frames -= count;
        if (waitingSamples > 0 && (waitingSamples -= count) == 0) analyse(waitingFrame.data());
        if (framePosition == analysis->length) completeFrame();
    }
}

float Spectrum::hopDecay() const
{
    const double hop = analysis->length - analysis->overlapLength;
    return static_cast<float>(Math::decibelsToLinear(-hop * kDecayDbPerSecond / sampleRate));
}

void Spectrum::append(const float *left, const float *right, uint32_t count)
{
    const auto mix = Kernels::active().block.monoMix;
    // Subtracted, so that its sign is opposite to that of the guard already in the signal.
    const float *const wave = guardWave(guardPhase).left;
    for (uint32_t done = 0; done < count; done += GuardWave::kLength) {
        const uint32_t piece = std::min(count - done, GuardWave::kLength);
        mix(left + done, right ? right + done : nullptr, wave, frame.data() + framePosition + done, piece);
    }
    guardPhase = static_cast<uint8_t>(guardPhase + count);
    framePosition += count;
}

void Spectrum::completeFrame()
{
    if (stagger == 0) analyse(frame.data());
    waitingSamples = stagger;
    std::swap(frame, waitingFrame);
    const uint32_t kept = analysis->overlapLength;
    copySamples(waitingFrame.data() + analysis->length - kept, frame.data(), kept);
    framePosition = kept;
}

void Spectrum::analyse(const float *samples)
{
    const uint32_t count = analysis->length / 2 + 1;
    if (wasRead.exchange(false)) scaleSamples(decay, magnitudes.data(), count);
    analysis->fftPlan.raiseMagnitudes(samples, analysis->windowTable.data(), magnitudes.data(),
                                      analysis->work.data());
    published.publish(magnitudes.data(), count);
}

bool Spectrum::readSpectrum(float *destination, uint32_t &count)
{
    count = 0;
    if (!published.fetch(destination, count)) return false;
    wasRead = true;
    return true;
}

} // namespace DSP::Meter
