#pragma once
#include <cstdint>
#include <string>

#include "host/VSTPlugin.h"
#include "platform/WindowSystem.h"

namespace App {

/// A small host that drives the linked-in effect through its AEffect record, like any other host. The Plugin
/// object provides the true delay, the meters and the ranges, which the record lacks.
/// States  set parameters after construction, process after start(); the destructor closes the effect
/// Errors  Failure if the effect does not load
class EffectHost {
public:
    struct Layout {
        uint32_t rate;        // Hz
        uint32_t channels;    // 1 or 2, for input and output
        uint32_t blockFrames; // largest block passed to process
    };

    explicit EffectHost(const Layout &layout);
    ~EffectHost();
    EffectHost(const EffectHost &) = delete;
    EffectHost &operator=(const EffectHost &) = delete;

    int32_t parameterCount() const { return effect->numParams; }
    std::string parameterName(int32_t index) const { return text(effGetParamName, index); }
    std::string parameterUnit(int32_t index) const { return text(effGetParamLabel, index); }
    std::string parameterDisplay(int32_t index) const { return text(effGetParamDisplay, index); }
    /// Range  `value` 0 to 1
    void setParameter(int32_t index, float value) { effect->setParameter(effect, index, value); }

    /// The current settings in the form in which hosts save them; empty if the effect returns no chunk.
    std::string chunk() const;
    /// Returns false if the effect refuses the chunk; the settings are then unchanged.
    bool setChunk(std::string chunk);

    /// Stops the spectrum meters, which take a fifth of the effect's time.
    void disableSpectra();
    void start();
    /// Processes one block. `in` and `out` hold one pointer per channel of the layout and may be equal.
    void process(float *const *in, float *const *out, uint32_t frames);

    /// Opens the editor inside `window`; returns false if that fails. The editor closes with the effect.
    bool openEditor(Platform::WindowHandle window);
    /// Sends the Tab key to the editor through the plug-in interface.
    void pressTab();

    /// Delay in samples as reported to hosts.
    int32_t reportedDelay() const { return effect->initialDelay; }
    /// Delay of the output in samples; valid after start.
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
