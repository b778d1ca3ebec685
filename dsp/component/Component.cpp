#include "dsp/component/Component.h"

#include <algorithm>

#include "dsp/component/ParameterAccess.h"
#include "dsp/component/PluginLink.h"
#include "dsp/kernels/VectorOperations.h"

namespace DSP {

namespace {
/// Where a step begins in the buffers of a block, those of the bands included. Null pointers stay.
struct StepPointers {
    float *left, *right;
    float *bandsLeft[kBands] = {}, *bandsRight[kBands] = {};

    void advance(uint32_t frames)
    {
        const auto move = [frames](float *&samples) {
            if (samples) samples += frames;
        };
        move(left);
        move(right);
        std::for_each_n(bandsLeft, kBands, move);
        std::for_each_n(bandsRight, kBands, move);
    }
};

void copy(const float *from, float *to, uint32_t frames)
{
    if (from) ippsCopy_32f(from, to, static_cast<int>(frames));
}

/// Empties the steps of a parameter without an envelope, and returns whether it has one.
template <class V>
bool startSteps(const EnvelopeHandler &envelopes, uint32_t index, std::vector<V> &steps)
{
    if (envelopes.hasEnvelope(ParameterAccess<V>::kind, index)) return true;
    steps.clear();
    return false;
}

/// Automation may begin at any block, and may become as fine as it gets: it finds its room there.
template <class V>
void makeRoom(std::vector<std::vector<V>> &steps, uint32_t frames)
{
    constexpr uint32_t kFinestStep = 10; // samples, of "Automation Zipper Samples"
    const size_t most = frames / kFinestStep + 1;
    for (std::vector<V> &each : steps)
        if (each.capacity() < most) each.reserve(most);
}

template <class V>
bool applySteps(Component &component, const std::vector<uint32_t> &automated,
                const std::vector<std::vector<V>> &steps, uint32_t step)
{
    using Access = ParameterAccess<V>;
    bool moved = false;
    for (size_t a = 0; a < automated.size(); ++a) {
        const uint32_t i = automated[a];
        if (steps[a].empty() || Access::isEdited(component, i)) continue;
        const V value = steps[a][step];
        if (value == Access::value(component, i)) continue;
        Access::set(component, i, value);
        moved = true;
    }
    return moved;
}
} // namespace

Component::Component(PluginLink &pluginLink, const String &componentName, uint32_t scratch)
    : lock(String("DSP::Component %1").arg(componentName)),
      settingLock(String("DSP::Component %1::Setting").arg(componentName)),
      plugin(pluginLink),
      name(componentName),
      usesScratch(scratch)
{
}

Component::~Component() = default;

void Component::finishConstruction()
{
    envelopes = std::make_unique<EnvelopeHandler>(name, numFloatParams(), numBoolParams(), numIntParams());
    plugin.registerComponent(this);
    for (uint32_t i = 0; i < numFloatParams(); ++i)
        if (floatParamAutomatable(i)) automatedFloats.push_back(i);
    for (uint32_t i = 0; i < numBoolParams(); ++i)
        if (boolParamAutomatable(i)) automatedBools.push_back(i);
    for (uint32_t i = 0; i < numIntParams(); ++i)
        if (intParamAutomatable(i)) automatedInts.push_back(i);
    for (uint32_t i = 0; i < numExtraParams(); ++i)
        if (extraParamAutomatable(i)) automatedExtras.push_back(i);
    floatSteps.resize(automatedFloats.size());
    boolSteps.resize(automatedBools.size());
    intSteps.resize(automatedInts.size());
}

bool Component::hasAutomation() const
{
    const auto any = [this](ParamKind kind, const std::vector<uint32_t> &watched) {
        return std::any_of(watched.begin(), watched.end(),
                           [&](uint32_t i) { return envelopes->hasEnvelope(kind, i); });
    };
    return any(ParamKind::real, floatWatch) || any(ParamKind::boolean, boolWatch) ||
           any(ParamKind::integer, intWatch);
}

uint32_t Component::process(uint32_t frames, float *, float *) { return frames; }

uint32_t Component::run(uint32_t sampleRate, const int64_t *streamTime, uint32_t zipperSamples,
                        bool *refreshFlag, uint32_t frames, float *left, float *right, bool force,
                        float *const *bandsLeft, float *const *bandsRight)
{
    if (frames > stepFrames) {
        makeRoom(floatSteps, frames);
        makeRoom(boolSteps, frames);
        makeRoom(intSteps, frames);
        stepFrames = frames;
    }
    if (!active && !deactivating && !force) return frames;
    if (!envelopes->isEnabled()) {
        const Util::Hold hold(lock);
        bandOutLeft = bandsLeft;
        bandOutRight = bandsRight;
        const uint32_t done = process(frames, left, right);
        bandOutLeft = bandOutRight = nullptr;
        return done;
    }
    const Util::Hold setting(settingLock); // for the setters of the steps, which take it before `lock`
    const Util::Hold hold(lock);
    bandOutLeft = bandsLeft;
    bandOutRight = bandsRight;
    bool abort = false;
    const uint32_t done =
        runBlock(sampleRate, streamTime, zipperSamples, refreshFlag, frames, left, right, &abort);
    bandOutLeft = bandOutRight = nullptr;
    return done;
}

uint32_t Component::runBlock(uint32_t sampleRate, const int64_t *streamTime, uint32_t zipperSamples,
                             bool *refreshFlag, uint32_t frames, float *left, float *right, bool *abort)
{
    *abort = false;
    const bool timesItself = ownsTiming(), leaving = deactivating;
    const uint32_t step = std::max(1u, timesItself || framer.frameSize ? frames : zipperSamples);
    if (timesItself)
        blockTime = *streamTime;
    else if (automatedFloats.empty() && automatedBools.empty() && automatedInts.empty())
        return frames;
    else
        evaluateSteps({*streamTime, sampleRate, frames, step});

    StepPointers at = {left, right};
    if (usesScratch) {
        scratchLeft.grow(2 * size_t{frames});
        scratchRight.grow(2 * size_t{frames});
        copy(left, at.left = scratchLeft.data(), frames);
        copy(right, at.right = right ? scratchRight.data() : nullptr, frames);
    }
    if (bandOutLeft) {
        std::copy_n(bandOutLeft, kBands, at.bandsLeft);
        std::copy_n(bandOutRight, kBands, at.bandsRight);
        bandOutLeft = at.bandsLeft;
        bandOutRight = at.bandsRight;
    }
    const BlockFramer framing = framer;
    for (uint32_t done = 0, k = 0; done < frames; ++k) {
        const uint32_t count = std::min(step, frames - done);
        if (!timesItself && applyStep(k)) *refreshFlag = true;
        if (framer != framing) {
            *abort = true;
            return frames;
        }
        if (!leaving || isActive()) process(count, at.left, at.right);
        at.advance(count);
        done += count;
    }
    if (usesScratch) {
        copy(scratchLeft.data(), left, frames);
        if (right) copy(scratchRight.data(), right, frames);
    }
    if (leaving) active = isActive();
    return frames;
}

void Component::evaluateSteps(const EnvelopeGrid &grid)
{
    for (size_t a = 0; a < automatedFloats.size(); ++a)
        if (const uint32_t i = automatedFloats[a]; startSteps(*envelopes, i, floatSteps[a]))
            envelopes->evaluateFloats(i, grid, floatParamValue(i), floatSteps[a]);
    for (size_t a = 0; a < automatedBools.size(); ++a)
        if (const uint32_t i = automatedBools[a]; startSteps(*envelopes, i, boolSteps[a]))
            envelopes->evaluateBools(i, grid, boolParamValue(i), boolSteps[a]);
    for (size_t a = 0; a < automatedInts.size(); ++a)
        if (const uint32_t i = automatedInts[a]; startSteps(*envelopes, i, intSteps[a]))
            envelopes->evaluateInts(i, grid, intParamValue(i), intSteps[a]);
}

bool Component::applyStep(uint32_t step)
{
    const bool floats = applySteps(*this, automatedFloats, floatSteps, step);
    const bool bools = applySteps(*this, automatedBools, boolSteps, step);
    const bool ints = applySteps(*this, automatedInts, intSteps, step);
    return floats || bools || ints;
}

void Component::resetComponent() { reset(); }

uint32_t Component::totalLatency()
{
    const Util::Hold hold(lock);
    return framer.latency() + latency();
}

void Component::setFraming(uint32_t frameSize, uint32_t inputs, uint32_t outputs)
{
    const Util::Hold hold(lock);
    framer = {frameSize, inputs, outputs};
    plugin.requestLatencyUpdate();
}

void Component::setHighlightColour(uint32_t colour)
{
    const Util::Hold hold(lock);
    const auto chosen = [&](ParamKind kind, uint32_t i) {
        return envelopes->hasEnvelope(kind, i) ? colour : kNoHighlight;
    };
    for (uint32_t i = 0; i < numFloatParams(); ++i) setFloatParamHighlight(i, chosen(ParamKind::real, i));
    for (uint32_t i = 0; i < numBoolParams(); ++i) setBoolParamHighlight(i, chosen(ParamKind::boolean, i));
    for (uint32_t i = 0; i < numIntParams(); ++i) setIntParamHighlight(i, chosen(ParamKind::integer, i));
}

void Component::notifyParameterChanged() { plugin.markParametersTouched(); }

void Component::requestActiveUpdate()
{
    if (!plugin.isPresetChanging()) plugin.requestActiveUpdate();
}

void Component::requestLatencyUpdate()
{
    if (!plugin.isPresetChanging()) plugin.requestLatencyUpdate();
}

} // namespace DSP
