#include "dsp/stages/Global.h"

#include <algorithm>

#include "dsp/component/PluginLink.h"
#include "dsp/numerics/Math.h"

namespace DSP {

namespace {
constexpr FloatRange kZipperRange = {10.0f, 600.0f}; // samples
constexpr uint32_t kAutoBufferSize = 6;
} // namespace

Global::Global(PluginLink &pluginLink) : ComponentImpl(pluginLink, "Global")
{
    declareParameters();
    owner = this;
    finishConstruction();
}

void Global::declareParameters()
{
    const auto real = [this](const char *paramName, const char *unit, FloatRange range, float initial,
                             float (Global::*get)() const, bool (Global::*set)(float)) {
        addFloat(ParamGroup::global, paramName, unit, range, initial, {.plain = get}, {.plain = set});
    };
    real("Global: FPS", "fps", {5, 60}, 30, &Global::getFps, &Global::setFps);
    real("Global: Opacity", "%", {20, 100}, 100, &Global::getOpacity, &Global::setOpacity);
    real("Global: Automation Zipper Samples", "", kZipperRange, 50, &Global::getAutomationZipperSamples,
         &Global::setAutomationZipperSamples);
    floatParams.back().group = ParamGroup::gain;

    const auto flag = [this](const char *paramName, bool initial, bool (Global::*get)() const,
                             bool (Global::*set)(bool)) {
        addBool(ParamGroup::global, paramName, initial, {.plain = get}, {.plain = set});
    };
    flag("Global Bypass", false, &Global::getBypass, &Global::setBypass);
    flag("Global: Rendering Thread", false, &Global::getRenderingThread, &Global::setRenderingThread);
    flag("Global: Delay Compensation", false, &Global::getDelayCompensation, &Global::setDelayCompensation);
    flag("Global: Meter Enable", true, &Global::getMeterEnable, &Global::setMeterEnable);
    flag("Global: Animation Enable", true, &Global::getAnimationEnable, &Global::setAnimationEnable);
    flag("Global: Animated Focus Enable", true, &Global::getAnimatedFocusEnable,
         &Global::setAnimatedFocusEnable);
    flag("Global: Process As Mono", false, &Global::getProcessAsMono, &Global::setProcessAsMono);
    flag("Global: Show Background Grid", true, &Global::getShowBackgroundGrid,
         &Global::setShowBackgroundGrid);

    const auto choice = [this](const char *paramName, uint32_t initial, const std::vector<String> &names,
                               uint32_t (Global::*get)() const, bool (Global::*set)(uint32_t)) {
        addChoice(ParamGroup::global, paramName, initial, names, {.plain = get}, {.plain = set});
    };
    choice("Global: DX Automation Highlight", kNoHighlight, {"Red", "Blue", "Green", "Yellow", "None"},
           &Global::getHighlightColour, &Global::setDxHighlight);
    choice("Global: Preset Change Mode", bypassed, {"Realtime", "Bypass", "Mute"},
           &Global::getPresetChangeMode, &Global::setPresetChangeMode);
    choice("Global: Global Buffer Size", kAutoBufferSize, {"32", "64", "128", "256", "512", "1024", "Auto"},
           &Global::getGlobalBufferSize, &Global::setGlobalBufferSize);

    const auto keepOutOfPrograms = [](auto &params) {
        for (auto &param : params) {
            param.persistence = neverSavedSetting;
            param.scope = 1;
        }
    };
    keepOutOfPrograms(floatParams);
    keepOutOfPrograms(boolParams);
    keepOutOfPrograms(intParams);
    BoolParam &bypassParam = boolParams[kBypassParam];
    bypassParam.persistence = neverSavedBypass;
    bypassParam.scope = 0;
    bypassParam.valueNames = {"Unbypassed\nUNBPS\nUB\nU", "Bypassed\nBYPS\nGBP\nB"};
}

bool Global::setFps(float value)
{
    if (!fps.change(value)) return false;
    framePeriodMs = Math::roundHalfAwayFromZero(1000.0 / value);
    if (!renderingThread) plugin.postMessage(PluginLink::renderTimingChanged);
    return true;
}

bool Global::setAutomationZipperSamples(float samples)
{
    // with the calls in this order, NaN gives the minimum
    return automationZipperSamples.change(
        std::max(kZipperRange.minimum, std::min(samples, kZipperRange.maximum)));
}

bool Global::setBypass(bool on)
{
    if (!bypass.change(on)) return false;
    if (on) plugin.resetChain();
    return true;
}

bool Global::setRenderingThread(bool on)
{
    if (!renderingThread.change(on)) return false;
    plugin.postMessage(PluginLink::renderTimingChanged);
    return true;
}

bool Global::setDelayCompensation(bool on)
{
    if (!delayCompensation.change(on)) return false;
    plugin.delayCompensationChanged();
    return true;
}

bool Global::setMeterEnable(bool on)
{
    if (!meterEnable.change(on)) return false;
    plugin.propagateMeterEnable();
    requestActiveUpdate();
    return true;
}

bool Global::setShowBackgroundGrid(bool on)
{
    if (!showBackgroundGrid.change(on)) return false;
    plugin.postMessage(PluginLink::backgroundGridChanged);
    return true;
}

bool Global::setDxHighlight(uint32_t colour)
{
    if (!highlightColour.change(colour)) return false;
    for (Component *component : plugin.componentList()) component->setHighlightColour(colour);
    return true;
}

bool Global::setGlobalBufferSize(uint32_t index)
{
    const bool changed = globalBufferSize.change(std::min(index, kAutoBufferSize));
    requestLatencyUpdate();
    return changed;
}

GlobalDerived::GlobalDerived(PluginLink &pluginLink) : ComponentImpl(pluginLink, "GlobalDerived")
{
    owner = this;
    finishConstruction();
}

} // namespace DSP
