#pragma once
#include <vector>

#include "PluginBase/Util/AlignedBuffer.h"
#include "PluginBase/Util/NamedLock.h"
#include "PluginBase/Util/Shared.h"
#include "host/AudioEffectX.h"
#include "plugin/Plugin.h"
#include "plugin/Product.h"

/// One row of the flat list by which the host knows the parameters.
struct HostParam {
    DSP::ParamKind kind;
    DSP::Component *component; // not owned
    uint32_t index;            // in the component's list of that kind
};

/// The effect as a VST 2 host sees it: adapts the host's parameters and buffers to the plug-in's components
/// and chain.
/// State   suspended when made; resume(), or a block that comes before it -> active; suspend(), or a resume()
///         that finds a layout to refuse -> suspended
/// Thread  process, processReplacing: audio. setParameter, getParameter: any. Everything else: the main thread
///         of the host. A block, resume and suspend exclude each other; setSampleRate relies on a host that
///         does not change the rate while it plays
class VSTPlugin final : public Plugin, public AudioEffectX {
public:
    explicit VSTPlugin(audioMasterCallback host);
    ~VSTPlugin() override;

    /// The effect behind a record that VSTPluginMain returned.
    static VSTPlugin *of(AEffect *effect);

    using Plugin::sampleRate; // the chain's; the host's own, which may have a fraction, is getSampleRate()

    /// Rows in host order.
    const std::vector<HostParam> &hostParameters() const { return hostParams; }

    // Parameters. An index beyond the table is ignored, as is a value that is not finite; one outside 0 to 1
    // is stored as it converts. Texts: at most 23 characters, labels 7.
    void setParameter(int32_t index, float value) override;
    float getParameter(int32_t index) override;
    void getParameterLabel(int32_t index, char *label) override;
    void getParameterDisplay(int32_t index, char *text) override;
    void getParameterName(int32_t index, char *text) override;
    void notifyParameter(DSP::ParamKind kind, EditPhase phase, DSP::Component *component, uint32_t index,
                         const float *floatValue, const bool *boolValue, const uint32_t *intValue) override;

    // Programs and chunks. A chunk that is refused, as is all that getChunk did not write, changes nothing.
    int32_t getChunk(void **data, bool isPreset) override; // *data stays valid until the next call
    int32_t setChunk(void *data, int32_t size, bool isPreset) override; // bytes taken, 0 for none
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
    VstPlugCategory getPlugCategory() override { return kPlugCategEffect; }
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
    static constexpr int32_t kUniqueId = vstFourCharacters("Qlrt");

private:
    enum class Output { add, replace };
    /// Channel pointers of one block; right ones are null where the host connects none.
    struct Channels {
        const float *inLeft = nullptr, *inRight = nullptr;
        float *outLeft = nullptr, *outRight = nullptr;
    };

    void buildHostParams();
    template <class V>
    void listParameters(DSP::Component &component);
    const HostParam *hostParam(int32_t index) const;
    bool hostWantsShortNames();

    struct ProgramEntry {
        StateImage state;
        String name;
    };
    void makePrograms();
    bool readProgram(Util::DataStream &stream, ProgramEntry &program) const;

    void processBlock(float **inputs, float **outputs, int32_t frames, Output output);
    bool readConnections();
    bool readChannels(float **inputs, float **outputs, Channels &channels) const;
    bool runChain(uint32_t frames, const Channels &channels);
    void writeChannel(uint32_t frames, const float *from, Util::AlignedBuffer<float> &accumulate, float *to,
                      Output output);
    uint32_t delayForHost() const;

    std::vector<HostParam> hostParams;
    std::vector<ProgramEntry> programs;
    std::vector<uint8_t> chunkBuffer; // what the host was given last
    bool longNames = true;
    Util::Shared<uint32_t> reportedLatency = 0; // samples
    Util::NamedLock audioLock;
    Util::AlignedBuffer<float> inputLeft, inputRight, outputLeft, outputRight, accumulateLeft,
        accumulateRight;
    bool monoActive = false;                            // "Global: Process As Mono" at the last resume
    uint32_t connectedInputs = 0, connectedOutputs = 0; // 1 or 2 after the first resume
    uint32_t hostSampleRate = 44100;                    // Hz, what the chain was told
};

/// The entry of the library: the host hands its callback over and receives the effect's record, or null if
/// the host has no version or memory is short. effClose destroys the effect.
extern "C" AEffect *VSTPluginMain(audioMasterCallback host);
