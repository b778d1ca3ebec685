#include "dsp/Global.h"

#include <algorithm>

#include "dsp/PluginLink.h"
#include "dsp/kernels/Math.h"

namespace DSP {

namespace {
constexpr FloatRange kZipperRange = {10.0f, 600.0f}; // samples
constexpr uint32_t kAutoBufferSize = 6;
} // namespace

Global::Global(PluginLink &pluginLink) : ComponentImpl(pluginLink, "Global")
{
    declareFloats();
    declareBools();
    declareInts();
    owner = this;
    finishConstruction();
}

void Global::declareFloats()
{
    const auto real = [this](const char *paramName, const char *unit, FloatRange range, float initial,
                             ParamGroup group, float (Global::*get)() const, void (Global::*set)(float)) {
        floatParams.push_back({.name = paramName,
                               .label = unit,
                               .range = range,
                               .defaultValue = initial,
                               .getters = {.plain = get},
                               .setters = {.plain = set},
                               .group = group,
                               .persistence = neverSavedSetting,
                               .scope = 1});
    };
    real("Global: FPS", "fps", {5, 60}, 30, ParamGroup::global, &Global::getFps, &Global::setFps);
    real("Global: Opacity", "%", {20, 100}, 100, ParamGroup::global, &Global::getOpacity,
         &Global::setOpacity);
    real("Global: Automation Zipper Samples", "", kZipperRange, 50, ParamGroup::gain,
         &Global::getAutomationZipperSamples, &Global::setAutomationZipperSamples);
}

void Global::declareBools()
{
    const auto flag = [this](const char *paramName, bool initial, bool (Global::*get)() const,
                             void (Global::*set)(bool)) {
        boolParams.push_back({.name = paramName,
                              .label = "",
                              .range = {true, false},
                              .defaultValue = initial,
                              .getters = {.plain = get},
                              .setters = {.plain = set},
                              .group = ParamGroup::global,
                              .persistence = neverSavedSetting,
                              .scope = 1});
    };
    flag("Global Bypass", false, &Global::getBypass, &Global::setBypass);
    boolParams.back().persistence = neverSavedBypass;
    boolParams.back().scope = 0;
    boolParams.back().valueNames = {"Unbypassed\nUNBPS\nUB\nU", "Bypassed\nBYPS\nGBP\nB"};
    flag("Global: Rendering Thread", false, &Global::getRenderingThread, &Global::setRenderingThread);
    flag("Global: Delay Compensation", false, &Global::getDelayCompensation, &Global::setDelayCompensation);
    flag("Global: Meter Enable", true, &Global::getMeterEnable, &Global::setMeterEnable);
    flag("Global: Animation Enable", true, &Global::getAnimationEnable, &Global::setAnimationEnable);
    flag("Global: Animated Focus Enable", true, &Global::getAnimatedFocusEnable,
         &Global::setAnimatedFocusEnable);
    flag("Global: Process As Mono", false, &Global::getProcessAsMono, &Global::setProcessAsMono);
    flag("Global: Show Background Grid", true, &Global::getShowBackgroundGrid,
         &Global::setShowBackgroundGrid);
}

void Global::declareInts()
{
    const auto list = [this](const char *paramName, uint32_t initial, std::vector<String> names,
                             uint32_t (Global::*get)() const, void (Global::*set)(uint32_t)) {
        const auto last = static_cast<uint32_t>(names.size() - 1);
        intParams.push_back({.name = paramName,
                             .label = "",
                             .range = {0, last},
                             .defaultValue = initial,
                             .getters = {.plain = get},
                             .setters = {.plain = set},
                             .group = ParamGroup::global,
                             .valueNames = std::move(names),
                             .persistence = neverSavedSetting,
                             .scope = 1});
    };
    list("Global: DX Automation Highlight", kNoHighlight, {"Red", "Blue", "Green", "Yellow", "None"},
         &Global::getHighlightColour, &Global::setDxHighlight);
    list("Global: Preset Change Mode", bypassed, {"Realtime", "Bypass", "Mute"}, &Global::getPresetChangeMode,
         &Global::setPresetChangeMode);
    list("Global: Global Buffer Size", kAutoBufferSize, {"32", "64", "128", "256", "512", "1024", "Auto"},
         &Global::getGlobalBufferSize, &Global::setGlobalBufferSize);
}

void Global::setFps(float value)
{
    if (value == fps) return;
    fps = value;
    framePeriodMs = Math::roundHalfAwayFromZero(1000.0 / value);
    if (!renderingThread) plugin.postMessage(PluginLink::renderTimingChanged);
}

void Global::setAutomationZipperSamples(float samples)
{
    automationZipperSamples = std::clamp(samples, kZipperRange.minimum, kZipperRange.maximum);
}

void Global::setBypass(bool on)
{
    if (on == bypass) return;
    bypass = on;
    if (on) plugin.resetChain();
}

void Global::setRenderingThread(bool on)
{
    if (on == renderingThread) return;
    renderingThread = on;
    plugin.postMessage(PluginLink::renderTimingChanged);
}

void Global::setDelayCompensation(bool on)
{
    if (on == delayCompensation) return;
    delayCompensation = on;
    plugin.delayCompensationChanged();
}

void Global::setMeterEnable(bool on)
{
    if (on == meterEnable) return;
    meterEnable = on;
    plugin.propagateMeterEnable();
    requestActiveUpdate();
}

void Global::setShowBackgroundGrid(bool on)
{
    if (on == showBackgroundGrid) return;
    showBackgroundGrid = on;
    plugin.postMessage(PluginLink::backgroundGridChanged);
}

void Global::setDxHighlight(uint32_t colour)
{
    if (colour == highlightColour) return;
    highlightColour = colour;
    for (Component *component : plugin.componentList()) component->setHighlightColour(colour);
}

void Global::setGlobalBufferSize(uint32_t index)
{
    globalBufferSize = std::min(index, kAutoBufferSize);
    requestLatencyUpdate();
}

GlobalDerived::GlobalDerived(PluginLink &pluginLink) : ComponentImpl(pluginLink, "GlobalDerived")
{
    owner = this;
    finishConstruction();
}

} // namespace DSP
