#pragma once
#include "dsp/component/ComponentImpl.h"

namespace DSP {

/// The effect's global options. They are not saved with a program.
class Global final : public ComponentImpl<Global> {
public:
    explicit Global(PluginLink &plugin);

    bool isActive() const override { return false; }
    void reset() override {}

    enum PresetChangeMode : uint32_t { realtime = 0, bypassed = 1, muted = 2 };

    float getFps() const { return fps; }
    float getOpacity() const { return opacity; }
    float getAutomationZipperSamples() const { return automationZipperSamples; }
    bool getBypass() const { return bypass; }
    bool getRenderingThread() const { return renderingThread; }
    bool getDelayCompensation() const { return delayCompensation; }
    bool getMeterEnable() const { return meterEnable; }
    bool getAnimationEnable() const { return animationEnable; }
    bool getAnimatedFocusEnable() const { return animatedFocusEnable; }
    bool getProcessAsMono() const { return processAsMono; }
    bool getShowBackgroundGrid() const { return showBackgroundGrid; }
    uint32_t getHighlightColour() const { return highlightColour; }
    uint32_t getPresetChangeMode() const { return presetChangeMode; }
    uint32_t getGlobalBufferSize() const { return globalBufferSize; }
    /// Interval between the editor's render ticks in ms.
    uint32_t getFramePeriodMs() const { return framePeriodMs; }

    bool setFps(float value);
    bool setOpacity(float percent) { return opacity.change(percent); }
    bool setAutomationZipperSamples(float samples);
    /// Turning bypass on clears the chain's audio state.
    bool setBypass(bool on);
    bool setRenderingThread(bool on);
    bool setDelayCompensation(bool on);
    bool setMeterEnable(bool on);
    bool setAnimationEnable(bool on) { return animationEnable.change(on); }
    bool setAnimatedFocusEnable(bool on) { return animatedFocusEnable.change(on); }
    bool setProcessAsMono(bool on) { return processAsMono.change(on); }
    bool setShowBackgroundGrid(bool on);
    /// Sets the colour that marks automated controls; kNoHighlight turns the marks off.
    bool setDxHighlight(uint32_t colour);
    bool setPresetChangeMode(uint32_t mode) { return presetChangeMode.change(mode); }
    bool setGlobalBufferSize(uint32_t index);

    /// Index of "Global Bypass" in the bool list.
    static constexpr uint32_t kBypassParam = 0;

private:
    void declareParameters();

    Util::Shared<float> fps = 30.0f;
    Util::Shared<float> opacity = 100.0f;
    Util::Shared<uint32_t> framePeriodMs = 33;
    Util::Shared<bool> bypass = false, renderingThread = false, delayCompensation = false;
    Util::Shared<bool> meterEnable = true, animationEnable = true, animatedFocusEnable = true;
    Util::Shared<bool> processAsMono = false, showBackgroundGrid = true;
    Util::Shared<uint32_t> presetChangeMode = bypassed, globalBufferSize = 6, highlightColour = kNoHighlight;
    Util::Shared<float> automationZipperSamples = 50.0f;
};

/// Empty component whose position in the component order is part of the saved format.
class GlobalDerived final : public ComponentImpl<GlobalDerived> {
public:
    explicit GlobalDerived(PluginLink &plugin);

    bool isActive() const override { return false; }
    void reset() override {}
};

} // namespace DSP
