#include "dsp/component/Component.h"

#include "dsp/component/Automation.h"
#include "dsp/component/PluginLink.h"

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
}

bool Component::run(const Now &now, const Block &block)
{
    if (!active) return false;
    if (!envelopes->isEnabled()) {
        const Util::Hold hold(lock);
        process(block);
        return false;
    }
    const Util::Hold setting(settingLock); // automation calls setters, which take it; it must precede `lock`
    const Util::Hold hold(lock);
    return runBlock(now, block);
}

bool Component::runBlock(const Now &now, const Block &block)
{
    if (envelopes->isEnabled() && !ownsTiming())
        return runAutomated(*this, {now.rate, now.time, frameSize ? block.frames : now.step}, block);
    process(block);
    return false;
}

uint32_t Component::totalLatency()
{
    const Util::Hold hold(lock);
    return (frameSize ? frameSize - 1 : 0) + latency();
}

void Component::setFraming(uint32_t size, uint32_t /*inputs*/, uint32_t /*outputs*/)
{
    const Util::Hold hold(lock);
    frameSize = size;
    plugin.requestLatencyUpdate();
}

void Component::setHighlightColour(uint32_t colour)
{
    const Util::Hold hold(lock);
    for (const ParamKind kind : kParamKinds)
        for (uint32_t i = 0; i < numParams(kind); ++i)
            setHighlight(param(kind, i), envelopes->hasEnvelope(kind, i) ? colour : kNoHighlight);
}

void Component::requestActiveUpdate() { plugin.requestActiveUpdate(); }
void Component::requestLatencyUpdate() { plugin.requestLatencyUpdate(); }

} // namespace DSP
