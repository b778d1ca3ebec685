#pragma once
#include <cstdint>
#include <string>

#include "host/VSTPlugin.h"
#include "platform/WindowSystem.h"

namespace App {

/// A small host: loads the effect that is linked in and drives it through its record, as any host does. What
/// the record does not tell (true delay, meters, ranges) comes from the plug-in behind it.
/// States  made: parameters may be set; start() -> playing: process(); the effect goes with the object
/// Errors  Failure if the effect does not load
class EffectHost {
public:
    struct Layout {
        uint32_t rate;        // Hz
        uint32_t channels;    // 1 or 2, in and out
        uint32_t blockFrames; // largest block that process will be called with
    };

    explicit EffectHost(const Layout &layout);
    ~EffectHost();
    EffectHost(const EffectHost &) = delete;
    EffectHost &operator=(const EffectHost &) = delete;

    int32_t parameterCount() const { return effect->numParams; }
    std::string parameterName(int32_t index) const { return text(effGetParamName, index); }
    std::string parameterUnit(int32_t index) const { return text(effGetParamLabel, index); }
    std::string parameterDisplay(int32_t index) const { return text(effGetParamDisplay, index); }
    /// 0 to 1.
    void setParameter(int32_t index, float value) { effect->setParameter(effect, index, value); }

    /// The present settings as hosts keep them in a project; empty if the effect gives none.
    std::string chunk() const;
    /// False if the effect refuses the chunk; nothing has changed then.
    bool setChunk(std::string chunk);

    void start();
    /// One block; every channel of the layout has a pointer. Output may be the input.
    void process(float *const *in, float *const *out, uint32_t frames);

    /// Inside a window of the window system in use; false if it does not open. It closes with the effect.
    bool openEditor(Platform::WindowHandle window);
    /// Hands the key to the editor, as hosts do that take keys themselves.
    void pressTab();

    /// Samples that a host is told.
    int32_t reportedDelay() const { return effect->initialDelay; }
    /// Samples by which the output really lags; valid after start.
    uint32_t trueDelay() const;
    Plugin &plugin() const { return *VSTPlugin::of(effect); }

private:
    static intptr_t answer(AEffect *effect, int32_t opcode, int32_t index, intptr_t value, void *ptr,
                           float opt);
    intptr_t dispatch(int32_t opcode, intptr_t value = 0, float opt = 0.0f) const;
    std::string text(int32_t opcode, int32_t index) const;

    const Layout layout;
    AEffect *const effect;
};

} // namespace App
