#include "dsp/Component.h"

#include <algorithm>

#include "dsp/PluginLink.h"

namespace DSP {

Component::Component(PluginLink &pluginLink, const String &componentName)
    : lock(String("DSP::Component %1").arg(componentName)),
      settingLock(String("DSP::Component %1::Setting").arg(componentName)),
      plugin(pluginLink),
      name(componentName)
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
    if (!active && !deactivating && !force) return frames;
    const Util::Hold hold(lock);
    bandOutLeft = bandsLeft;
    bandOutRight = bandsRight;
    bool abort = false;
    const uint32_t done =
        runBlock(sampleRate, streamTime, zipperSamples, refreshFlag, frames, left, right, &abort);
    bandOutLeft = bandOutRight = nullptr;
    return abort ? frames : done;
}

uint32_t Component::runBlock(uint32_t, const int64_t *, uint32_t, bool *, uint32_t frames, float *left,
                             float *right, bool *)
{
    return process(frames, left, right);
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
