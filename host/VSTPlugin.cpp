#include "host/VSTPlugin.h"

#include <cstring>
#include <limits>
#include <string_view>

#include "dsp/numerics/Math.h"
#include "host/HostText.h"
#include "host/VSTEditor.h"
#include "plugin/Product.h"

namespace {

constexpr int32_t kNumPrograms = 1;
constexpr uint32_t kMostProgramName = 23; // characters shown to the host

/// The rate rounded to whole Hz; 0 if it is NaN or does not fit a uint32_t.
uint32_t wholeRate(float rate)
{
    constexpr double kHighest = std::numeric_limits<uint32_t>::max();
    return rate <= kHighest ? DSP::Math::roundHalfAwayFromZero(rate) : 0;
}

} // namespace

VSTPlugin::VSTPlugin(HostCallback host)
    : Plugin(kVst),
      AudioEffectX(host, kNumPrograms, static_cast<int32_t>(parameters().hostRows().size())),
      hostParams(parameters().hostRows()),
      programs(*this, kNumPrograms),
      audioLock("VSTPlugin"),
      buffers(*this, blockScale)
{
    hostParams.setLongNames(!hostWantsShortNames());
    setNumInputs(2);
    setNumOutputs(2);
    setUniqueID(kUniqueId);
    cEffect.version = kVersion;
    canMono();
    canProcessReplacing();
    programsAreChunks();
    noTail();
    if (Platform::hasWindowSystem()) {
        editor = std::make_unique<VSTEditor>(this);
        setFlag(kHasEditor, true);
    }

    if (transformHandle().global()->getDelayCompensation()) {
        reportedLatency = latency();
        setInitialDelay(static_cast<int32_t>(reportedLatency));
    }
}

VSTPlugin::~VSTPlugin()
{
    {
        // Wait for a running block: it uses the buffers and the editor.
        const Util::Hold lastBlock(audioLock);
    }
    editor.reset(); // its windows use the components, which are destroyed later
}

VSTPlugin *VSTPlugin::of(AEffect *effect)
{
    return static_cast<VSTPlugin *>(static_cast<AudioEffect *>(effect->object));
}

bool VSTPlugin::hostWantsShortNames()
{
    char product[4 * kProductRoom] = {}; // some hosts write more than the interface allows
    getHostProductString(product);
    product[sizeof product - 1] = '\0';
    return std::strcmp(product, "Live") == 0;
}

// Parameters.

void VSTPlugin::setParameter(int32_t index, float value)
{
    if (hostParams.set(index, value)) requestRefresh();
}

void VSTPlugin::notifyParameter(const DSP::ParameterAddress &parameter, EditPhase phase,
                                const DSP::ParameterValue &value)
{
    DSP::ParamRecord &record = parameter.record();
    if (!record.hostIndex) return;
    const auto hostIndex = static_cast<int32_t>(record.hostIndex.value);
    if (phase == EditPhase::begin) beginEdit(hostIndex);
    if (phase == EditPhase::value) {
        // A single change is reported as a whole gesture. Changes that the host makes during these callbacks
        // belong to the same gesture.
        const bool alone = !record.editing;
        if (alone) {
            record.editing = true;
            beginEdit(hostIndex);
        }
        setParameterAutomated(hostIndex, static_cast<float>(record.toShare(value)));
        if (!alone) return;
        record.editing = false;
        endEdit(hostIndex);
    }
    if (phase == EditPhase::end) endEdit(hostIndex);
}

// Programs and chunks.

int32_t VSTPlugin::getChunk(void **data, bool isPreset)
{
    return data ? programs.saveChunk(current(), isPreset, data) : 0;
}

int32_t VSTPlugin::setChunk(void *data, int32_t size, bool isPreset)
{
    return data ? programs.loadChunk(current(), isPreset, data, size) : 0;
}

void VSTPlugin::setProgram(int32_t program)
{
    if (!hasProgram(program)) return;
    curProgram = program;
    programs.load(current());
}

void VSTPlugin::setProgramName(char *name)
{
    if (name) programs.name(current()) = String(name);
}

void VSTPlugin::getProgramName(char *name)
{
    if (name) writeText(programs.name(current()), kMostProgramName, name);
}

bool VSTPlugin::getProgramNameIndexed(int32_t, int32_t index, char *name)
{
    if (!hasProgram(index) || !name) return false;
    const String &whole = programs.name(static_cast<size_t>(index));
    writeText(whole, whole.length(), name);
    return true;
}

bool VSTPlugin::copyProgram(int32_t destination)
{
    if (!hasProgram(destination)) return false;
    if (destination != curProgram) programs.copy(current(), static_cast<size_t>(destination));
    return true;
}

// Audio.

void VSTPlugin::process(float **inputs, float **outputs, int32_t frames)
{
    processBlock(inputs, outputs, frames, BufferAdapter::Output::add);
}

void VSTPlugin::processReplacing(float **inputs, float **outputs, int32_t frames)
{
    processBlock(inputs, outputs, frames, BufferAdapter::Output::replace);
}

void VSTPlugin::processBlock(float **inputs, float **outputs, int32_t frames, BufferAdapter::Output output)
{
    const Util::Hold block(audioLock);
    if (!active) resume();
    if (active && frames > 0) buffers.process(inputs, outputs, static_cast<uint32_t>(frames), output);
}

void VSTPlugin::resume()
{
    const Util::Hold hold(audioLock);
    const uint32_t rate = wholeRate(getSampleRate()), channels = connectedChannels();
    if (channels == 0 || rate == 0) {
        suspend(); // stop processing with a layout that no longer matches
        return;
    }
    setChannelCount(channels, channels);
    hostSampleRate = rate;
    buffers.setLayout(channels, transformHandle().global()->getProcessAsMono());
    Plugin::resume(rate);
}

/// Number of connected input channels; 0 for an unsupported layout: nothing connected, or a different number of
/// outputs.
uint32_t VSTPlugin::connectedChannels()
{
    if (!isInputConnected(0)) return 0;
    const bool stereoIn = isInputConnected(1);
    if (!isOutputConnected(0) || isOutputConnected(1) != stereoIn) return 0;
    return stereoIn ? 2 : 1;
}

void VSTPlugin::suspend()
{
    const Util::Hold hold(audioLock);
    if (active) Plugin::suspend();
}

void VSTPlugin::setSampleRate(float rate)
{
    const uint32_t whole = wholeRate(rate);
    if (whole == 0) return;
    AudioEffectX::setSampleRate(rate); // first: if memory runs out below, the next block retries
    if (whole != hostSampleRate) {
        const bool wasActive = active;
        if (wasActive) Plugin::suspend();
        hostSampleRate = whole;
        Plugin::resume(whole);
        if (!wasActive) Plugin::suspend(); // the chain has the new rate; restore its state
    }
}

uint32_t VSTPlugin::delayForHost() const
{
    return transformHandle().global()->getDelayCompensation() ? reportedLatency.load() : 0;
}

void VSTPlugin::latencyChanged()
{
    reportedLatency = latency();
    delayCompensationChanged();
}

void VSTPlugin::delayCompensationChanged()
{
    // Only post a message: this may be the audio thread, which must not call the host.
    if (static_cast<int32_t>(delayForHost()) != initialDelay()) postMessage(latencyMoved);
}

void VSTPlugin::applyLatency()
{
    setInitialDelay(static_cast<int32_t>(delayForHost()));
    ioChanged();
}

// Self-description.

bool VSTPlugin::getEffectName(char *name)
{
    writeText(Product::kName, kEffectNameRoom - 1, name);
    return true;
}

bool VSTPlugin::getVendorString(char *text)
{
    writeText(Product::kVendor, kVendorRoom - 1, text);
    return true;
}

bool VSTPlugin::getProductString(char *text)
{
    writeText(Product::kName, kProductRoom - 1, text);
    return true;
}

int32_t VSTPlugin::canDo(const char *text)
{
    static constexpr std::string_view kYes[] = {
        "plugAsChannelInsert", "plugAsSend", "mixDryWet", "1in1out", "2in2out",
    };
    static constexpr std::string_view kNo[] = {
        "sendVstEvents",
        "sendVstMidiEvent",
        "sendVstTimeInfo",
        "receiveVstEvents",
        "receiveVstMidiEvent",
        "receiveVstTimeInfo",
        "offline",
        "noRealTime",
        "multipass",
        "metapass",
        "1in2out",
        "2in1out",
        "2in4out",
        "4in2out",
        "4in4out",
        "4in8out",
        "8in4out",
        "8in8out",
    };
    for (const std::string_view known : kYes)
        if (known == text) return 1;
    for (const std::string_view known : kNo)
        if (known == text) return -1;
    return 0;
}
