#include "dsp/stages/CrossOver.h"

#include <algorithm>
#include <cmath>

#include "dsp/component/PluginLink.h"
#include "dsp/kernels/DenormalGuard.h"
#include "dsp/kernels/VectorOperations.h"
#include "dsp/numerics/Math.h"

namespace DSP {

namespace {
constexpr double kFadeSeconds = 0.0014512471; // 64 samples at 44100 Hz
constexpr float kPi32 = 3.1415927f;           // no double: the samples of a fade depend on it

uint32_t fadeSamples(uint32_t hz) { return static_cast<uint32_t>(std::floor(hz * kFadeSeconds + 0.5)); }
} // namespace

CrossOver::CrossOver(PluginLink &pluginLink) : ComponentImpl(pluginLink, "CrossOver")
{
    std::copy(kDefaultCutoffsHz.begin(), kDefaultCutoffsHz.end(), cutoffs.begin());
    declareParameters();
    owner = this;
    finishConstruction();
    makeRoomForFade(sampleRate);
    updateFade();
    designFilters(filterSets[activeSet], sampleRate);
    setFraming(0, 2, 2 * kBands);
}

void CrossOver::declareParameters()
{
    const char *const cutoffNames[] = {"Crossover Low Cutoff", "Crossover Mid Cutoff",
                                       "Crossover High Cutoff"};
    for (uint32_t i = 0; i < kCutoffs; ++i) {
        FloatParam &param =
            addFloat(ParamGroup::crossover, cutoffNames[i], "Hz", kCutoffRangeHz, kDefaultCutoffsHz[i],
                     {.one = &CrossOver::cutoff}, {.one = &CrossOver::setCutoff});
        param.indices = {OptionalIndex(i)};
        param.automatable = true;
    }
    const auto bandSwitches = [this](const char *pattern, bool (CrossOver::*get)(uint32_t) const,
                                     void (CrossOver::*set)(uint32_t, bool)) {
        for (uint32_t band = 0; band < kBands; ++band)
            addBool(ParamGroup::crossover, String(pattern).arg(band + 1), false, {.one = get}, {.one = set})
                .indices = {OptionalIndex(band)};
    };
    bandSwitches("Crossover Band %1 Bypass", &CrossOver::bandBypass, &CrossOver::setBandBypass);
    bandSwitches("Crossover Band %1 Mute", &CrossOver::bandMute, &CrossOver::setBandMute);
}

void CrossOver::setBandBypass(uint32_t band, bool on) { setBit(bypassBits, band, on); }
void CrossOver::setBandMute(uint32_t band, bool on) { setBit(muteBits, band, on); }

void CrossOver::setBit(Util::Shared<uint32_t> &bits, uint32_t band, bool on)
{
    if (bits.change(on ? bits | 1u << band : bits & ~(1u << band))) notifyParameterChanged();
}

void CrossOver::setSampleRate(uint32_t hz)
{
    if (hz == sampleRate) return;
    const Util::Hold setting(settingLock);
    FilterBank next;
    const bool inOrder = designFilters(next, hz);
    const Util::Hold hold(lock);
    makeRoomForFade(hz); // may fail, and then nothing has changed
    sampleRate = hz;
    updateFade();
    fadeRemaining = 0;
    if (inOrder) filterSets[activeSet] = next;
}

void CrossOver::makeRoomForFade(uint32_t hz)
{
    const uint32_t length = fadeSamples(hz);
    for (auto *table : {&fadeIn, &fadeOut}) table->grow(length);
    for (auto *scratch : {&fadeScratchLeft, &fadeScratchRight}) scratch->grow(kBands * length);
}

void CrossOver::updateFade()
{
    fadeLength = fadeSamples(sampleRate);
    for (uint32_t i = 0; i < fadeLength; ++i) {
        fadeIn[i] = static_cast<float>((1.0 - Math::cos((i + 0.5) * kPi32 / fadeLength)) * 0.5);
        fadeOut[i] = 1.0f - fadeIn[i];
    }
}

bool CrossOver::designFilters(FilterBank &set, uint32_t hz) const
{
    std::array<float, kCutoffs> edges;
    std::copy(cutoffs.begin(), cutoffs.end(), edges.begin());
    if (!std::is_sorted(edges.begin(), edges.end())) return false;
    set.design(edges, hz);
    return true;
}

void CrossOver::reset()
{
    const Util::Hold hold(lock);
    fadeRemaining = 0;
    filterSets[activeSet].clear();
}

void CrossOver::setCutoff(uint32_t index, float hz)
{
    if (hz == cutoffs[index]) return;
    notifyParameterChanged();
    const Util::Hold setting(settingLock);
    cutoffs[index] = hz;
    FilterBank next;
    const bool inOrder = designFilters(next, sampleRate);
    const Util::Hold hold(lock); // audio waits for a copy, not for the design
    if (fadeRemaining == 0) activeSet ^= 1;
    fadeRemaining = fadeLength;
    if (inOrder) filterSets[activeSet] = next;
}

uint32_t CrossOver::process(uint32_t frames, float *left, float *right)
{
    const Util::Hold hold(lock);
    bool stable;
    if (fadeRemaining == 0) {
        stable = filterSets[activeSet].run(frames, left, right, bandOutLeft, bandOutRight, guardPhase);
    } else {
        stable = filterSets[activeSet].run(frames, left, right, bandOutLeft, bandOutRight, nullptr);
        stable &= crossFade(frames, left, right);
        if (guardPhase)
            for (int band = 0; band < kBands; ++band)
                addDenormalGuard(frames, bandOutLeft[band], bandOutRight[band], guardPhase, false);
    }
    if (!stable) dropBlock(frames, right != nullptr);
    if (guardPhase) *guardPhase = static_cast<uint8_t>(*guardPhase + frames);
    return frames;
}

void CrossOver::dropBlock(uint32_t frames, bool stereo)
{
    for (FilterBank &set : filterSets) set.clear();
    for (int band = 0; band < kBands; ++band) {
        ippsZero_32f(bandOutLeft[band], static_cast<int>(frames));
        if (stereo) ippsZero_32f(bandOutRight[band], static_cast<int>(frames));
    }
}

bool CrossOver::crossFade(uint32_t frames, const float *left, const float *right)
{
    const uint32_t count = std::min(frames, fadeRemaining);
    // A block shorter than the fade reads the end of the tables each time, not the next piece of them.
    const uint32_t offset = fadeLength - count;
    const int length = static_cast<int>(count);

    float *oldLeft[kBands], *oldRight[kBands];
    for (int band = 0; band < kBands; ++band) {
        oldLeft[band] = fadeScratchLeft.data() + band * count;
        oldRight[band] = fadeScratchRight.data() + band * count;
    }
    const bool stable = filterSets[activeSet ^ 1].run(count, left, right, oldLeft, oldRight, nullptr);

    const auto blend = [&](float *coming, float *going) {
        ippsMul_32f_I(fadeIn.data() + offset, coming, length);
        ippsMul_32f_I(fadeOut.data() + offset, going, length);
        ippsAdd_32f_I(going, coming, length);
    };
    for (int band = 0; band < kBands; ++band) {
        blend(bandOutLeft[band], oldLeft[band]);
        if (right) blend(bandOutRight[band], oldRight[band]);
    }
    fadeRemaining -= count;
    return stable;
}

float CrossOver::limitCutoff(uint32_t index, float hz, float minOctaves) const
{
    const auto clamped = [](double x) {
        return std::clamp<double>(x, kCutoffRangeHz.minimum, kCutoffRangeHz.maximum);
    };
    double limited = clamped(hz);
    if (index > 0) {
        const double below = Math::flooredLog2(cutoffs[index - 1]);
        if (Math::flooredLog2(limited) - below < minOctaves) limited = Math::exp2(below + minOctaves);
    }
    if (index + 1 < kCutoffs) {
        const double above = Math::flooredLog2(cutoffs[index + 1]);
        if (above - Math::flooredLog2(limited) < minOctaves) limited = Math::exp2(above - minOctaves);
    }
    return static_cast<float>(clamped(limited));
}

void CrossOver::defaultCutoffsFrom(uint32_t index, std::vector<uint32_t> &changed, float minOctaves) const
{
    std::array<float, kCutoffs> hz;
    std::copy(cutoffs.begin(), cutoffs.end(), hz.begin());
    std::array<bool, kCutoffs> flagged = {};
    const auto flag = [&](uint32_t i) {
        const bool news = !flagged[i] || hz[i] != kDefaultCutoffsHz[i];
        flagged[i] = true;
        hz[i] = kDefaultCutoffsHz[i];
        return news;
    };
    const auto tooClose = [&](uint32_t low) {
        return Math::flooredLog2(hz[low + 1]) - Math::flooredLog2(hz[low]) < minOctaves;
    };
    flag(index);
    bool moved = true;
    for (int pass = 0; pass < kCutoffs && moved; ++pass) {
        moved = false;
        for (uint32_t low = 0; low + 1 < kCutoffs; ++low) {
            if (!tooClose(low)) continue;
            const bool lower = flag(low), upper = flag(low + 1);
            moved = moved || lower || upper;
        }
    }
    changed.clear();
    for (uint32_t i = 0; i < kCutoffs; ++i)
        if (flagged[i]) changed.push_back(i);
}

} // namespace DSP
