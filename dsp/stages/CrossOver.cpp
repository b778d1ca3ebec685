#include "dsp/stages/CrossOver.h"

#include <algorithm>
#include <cmath>

#include "dsp/kernels/VectorOperations.h"
#include "dsp/numerics/Math.h"

namespace DSP {

namespace {
constexpr double kFadeSeconds = 0.0014512471; // 64 samples at 44100 Hz
constexpr float kPi32 = 3.1415927f;           // 32-bit pi: part of the sound; see SameBitsTest

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
    designFilters(banks[activeBank], sampleRate);
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
                                     bool (CrossOver::*set)(uint32_t, bool)) {
        for (uint32_t band = 0; band < kBands; ++band)
            addBool(ParamGroup::crossover, String(pattern).arg(band + 1), false, {.one = get}, {.one = set})
                .indices = {OptionalIndex(band)};
    };
    bandSwitches("Crossover Band %1 Bypass", &CrossOver::bandBypass, &CrossOver::setBandBypass);
    bandSwitches("Crossover Band %1 Mute", &CrossOver::bandMute, &CrossOver::setBandMute);
}

bool CrossOver::setBandBypass(uint32_t band, bool on) { return setBit(bypassBits, band, on); }
bool CrossOver::setBandMute(uint32_t band, bool on) { return setBit(muteBits, band, on); }

bool CrossOver::setBit(Util::Shared<uint32_t> &bits, uint32_t band, bool on)
{
    return bits.change(on ? bits | 1u << band : bits & ~(1u << band));
}

void CrossOver::setSampleRate(uint32_t hz)
{
    if (hz == sampleRate) return;
    const Util::Hold setting(settingLock);
    FilterBank next;
    const bool inOrder = designFilters(next, hz);
    const Util::Hold hold(lock);
    makeRoomForFade(hz); // first, because it may throw
    sampleRate = hz;
    updateFade();
    fadeRemaining = 0;
    if (inOrder) banks[activeBank] = next;
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

bool CrossOver::designFilters(FilterBank &bank, uint32_t hz) const
{
    std::array<float, kCutoffs> edges;
    std::copy(cutoffs.begin(), cutoffs.end(), edges.begin());
    if (!std::is_sorted(edges.begin(), edges.end())) return false;
    bank.design(edges, hz);
    return true;
}

void CrossOver::reset()
{
    const Util::Hold hold(lock);
    fadeRemaining = 0;
    guardPhase = 0;
    banks[activeBank].clear();
}

bool CrossOver::setCutoff(uint32_t index, float hz)
{
    if (hz == cutoffs[index]) return false;
    const Util::Hold setting(settingLock);
    cutoffs[index] = hz;
    FilterBank next;
    const bool inOrder = designFilters(next, sampleRate);
    const Util::Hold hold(lock); // taken after the design, so the audio thread waits for a copy only
    if (fadeRemaining == 0) activeBank ^= 1;
    fadeRemaining = fadeLength;
    if (inOrder) banks[activeBank] = next;
    return true;
}

void CrossOver::process(const Block &block)
{
    const GuardWave guard = guardWave(guardPhase);
    bool stable;
    if (fadeRemaining == 0) {
        stable = banks[activeBank].run(block, guard);
    } else {
        stable = banks[activeBank].run(block, GuardWave::none());
        stable &= crossFade(block);
        for (int band = 0; band < kBands; ++band)
            addGuard(guard, block.frames, block.bands->left[band], block.bands->right[band]);
    }
    if (!stable) dropBlock(block);
    guardPhase = static_cast<uint8_t>(guardPhase + block.frames);
}

void CrossOver::dropBlock(const Block &block)
{
    for (FilterBank &bank : banks) bank.clear();
    for (int band = 0; band < kBands; ++band) {
        clearSamples(block.bands->left[band], block.frames);
        if (block.right) clearSamples(block.bands->right[band], block.frames);
    }
}

bool CrossOver::crossFade(const Block &block)
{
    const uint32_t count = std::min(block.frames, fadeRemaining);
    // Aligned to the end of the tables even if the block is shorter than the fade: part of the sound; see
    // SameBitsTest.
    const uint32_t offset = fadeLength - count;

    Block old = {count, block.left, block.right, Bands{}};
    for (int band = 0; band < kBands; ++band) {
        old.bands->left[band] = fadeScratchLeft.data() + band * count;
        old.bands->right[band] = fadeScratchRight.data() + band * count;
    }
    const bool stable = banks[activeBank ^ 1].run(old, GuardWave::none());

    const auto blend = [&](float *coming, float *going) {
        multiplySamples(fadeIn.data() + offset, coming, count);
        multiplySamples(fadeOut.data() + offset, going, count);
        addSamples(going, coming, count);
    };
    for (int band = 0; band < kBands; ++band) {
        blend(block.bands->left[band], old.bands->left[band]);
        if (block.right) blend(block.bands->right[band], old.bands->right[band]);
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
