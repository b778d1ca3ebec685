#pragma once
#include "PluginBase/Util/NamedLock.h"
#include "PluginBase/Util/Shared.h"
#include "host/AudioEffectX.h"
#include "host/BufferAdapter.h"
#include "host/HostParameters.h"
#include "host/Programs.h"
#include "plugin/Plugin.h"
#include "plugin/Product.h"

/// The effect as a VST 2 host sees it: adapts the host's parameters and buffers to the plug-in's components
/// and chain.
/// State   suspended when made; resume(), or a block that comes before it -> active; suspend(), or a resume()
///         that finds a layout to refuse -> suspended
/// Thread  process, processReplacing: audio. setParameter, getParameter: any. Everything else: the main thread
///         of the host. A block, resume and suspend exclude each other; setSampleRate relies on a host that
///         does not change the rate while it plays
class VSTPlugin final : public Plugin, public AudioEffectX {
public:
    explicit VSTPlugin(HostCallback host);
    ~VSTPlugin() override;

    /// The effect behind a record that VSTPluginMain returned.
    static VSTPlugin *of(AEffect *effect);

    using Plugin::sampleRate; // the chain's; the host's own, which may have a fraction, is getSampleRate()

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

    // Audio. A layout that the effect refuses, a missing channel or no frames leave the outputs as they are.
    void process(float **inputs, float **outputs, int32_t frames) override;
    void processReplacing(float **inputs, float **outputs, int32_t frames) override;
    void suspend() override;
    void resume() override;
    /// Ignores rates that round to 0 or that no uint32_t holds.
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
    uint32_t hostSampleRate = 44100;            // Hz, the chain's
};

/// The entry of the library: the host hands its callback over and receives the effect's record, or null if
/// the host has no version or memory is short. effClose destroys the effect.
extern "C" AEffect *VSTPluginMain(HostCallback host);
