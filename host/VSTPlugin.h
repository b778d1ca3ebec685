#pragma once
#include "PluginBase/Util/NamedLock.h"
#include "PluginBase/Util/Shared.h"
#include "host/AudioEffectX.h"
#include "host/BufferAdapter.h"
#include "host/HostParameters.h"
#include "host/Programs.h"
#include "plugin/Plugin.h"
#include "plugin/Product.h"

/// The VST 2 effect: connects the host's parameters and buffers to the plug-in's components and chain.
/// State   initially suspended; resume(), or a block while suspended -> active; suspend(), or resume() with an
///         unsupported channel layout -> suspended
/// Thread  process, processReplacing: audio. setParameter, getParameter: any. All other functions: the host's
///         main thread. Blocks, resume and suspend exclude each other. The host must not call setSampleRate
///         during playback
class VSTPlugin final : public Plugin, public AudioEffectX {
public:
    explicit VSTPlugin(HostCallback host);
    ~VSTPlugin() override;

    /// The effect that owns a record returned by VSTPluginMain.
    static VSTPlugin *of(AEffect *effect);

    using Plugin::sampleRate; // the chain's rate; getSampleRate() returns the host's, which may be fractional

    // Parameters; see HostParameters.
    void setParameter(int32_t index, float value) override;
    float getParameter(int32_t index) override { return hostParams.get(index); }
    void getParameterLabel(int32_t index, char *label) override { hostParams.writeLabel(index, label); }
    void getParameterDisplay(int32_t index, char *text) override { hostParams.writeDisplay(index, text); }
    void getParameterName(int32_t index, char *text) override { hostParams.writeName(index, text); }
    using Plugin::notifyParameter;
    void notifyParameter(const DSP::ParameterAddress &parameter, EditPhase phase,
                         const DSP::ParameterValue &value) override;

    // Programs and chunks; see Programs.
    int32_t getChunk(void **data, bool isPreset) override;
    int32_t setChunk(void *data, int32_t size, bool isPreset) override;
    bool lastChunkLoaded() const { return programs.lastChunkLoaded(); }
    void setProgram(int32_t program) override;
    void setProgramName(char *name) override;
    void getProgramName(char *name) override;
    bool getProgramNameIndexed(int32_t category, int32_t index, char *name) override;
    bool copyProgram(int32_t destination) override;

    // Self-description.
    bool getEffectName(char *name) override;
    bool getVendorString(char *text) override;
    bool getProductString(char *text) override;
    int32_t getVendorVersion() override { return kVersion; }
    int32_t canDo(const char *text) override;
    EffectCategory getPlugCategory() override { return kEffectCategory; }
    int32_t getGetTailSize() override { return 1; } // no tail
    bool keysRequired() override { return true; }

    // Audio. An unsupported layout, a null channel pointer or zero frames leave the outputs unchanged.
    void process(float **inputs, float **outputs, int32_t frames) override;
    void processReplacing(float **inputs, float **outputs, int32_t frames) override;
    void suspend() override;
    void resume() override;
    /// Ignores rates that round to 0 or do not fit a uint32_t.
    void setSampleRate(float rate) override;

    void latencyChanged() override;
    void delayCompensationChanged() override;
    void applyLatency() override;

    static constexpr int32_t kVersion = Product::kVersion;
    static constexpr int32_t kUniqueId = fourCharacters("Qlrt");

private:
    void processBlock(float **inputs, float **outputs, int32_t frames, BufferAdapter::Output output);
    uint32_t connectedChannels();
    bool hostWantsShortNames();
    uint32_t delayForHost() const;
    bool hasProgram(int32_t program) const { return program >= 0 && program < numPrograms; }
    size_t current() const { return static_cast<size_t>(curProgram); }

    HostParameters hostParams;
    Programs programs;
    Util::NamedLock audioLock;
    BufferAdapter buffers;
    Util::Shared<uint32_t> reportedLatency = 0; // samples
    uint32_t hostSampleRate = 44100;            // Hz, rounded
};

/// The library's entry point. Takes the host's callback and returns the effect's record, or null if the host
/// reports no version or memory runs out. effClose destroys the effect.
extern "C" AEffect *VSTPluginMain(HostCallback host);
