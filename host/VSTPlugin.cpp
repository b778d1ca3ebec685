#include "host/VSTPlugin.h"

#include <cstring>
#include <string_view>

#include "host/HostText.h"
#include "host/VSTEditor.h"
#include "plugin/Product.h"

namespace {

constexpr int32_t kNumPrograms = 1;

} // namespace

VSTPlugin::VSTPlugin(audioMasterCallback host)
    : Plugin(kVst), AudioEffectX(host, kNumPrograms, 0), audioLock("VSTPlugin")
{
    buildHostParams();
    longNames = !hostWantsShortNames();

    setNumInputs(2);
    setNumOutputs(2);
    setUniqueID(kUniqueId);
    cEffect.version = kVersion;
    canMono();
    canProcessReplacing();
    programsAreChunks();
    noTail();
    makePrograms();
    if (Platform::hasWindowSystem()) {
        editor = std::make_unique<VSTEditor>(this);
        setFlag(effFlagsHasEditor, true);
    }

    if (transformHandle().global()->getDelayCompensation()) {
        reportedLatency = latency();
        setInitialDelay(static_cast<int32_t>(reportedLatency));
    }
}

VSTPlugin::~VSTPlugin()
{
    {
        const Util::Hold lastBlock(
            audioLock); // waits for one that still runs: it uses the buffers and the editor
    }
    editor.reset(); // its windows show what is about to go
}

VSTPlugin *VSTPlugin::of(AEffect *effect)
{
    return static_cast<VSTPlugin *>(static_cast<AudioEffect *>(effect->object));
}

bool VSTPlugin::hostWantsShortNames()
{
    char product[4 * kVstMaxProductStrLen] = {}; // for hosts that write more than the interface allows
    getHostProductString(product);
    product[sizeof product - 1] = '\0';
    return std::strcmp(product, "Live") == 0;
}

bool VSTPlugin::getEffectName(char *name)
{
    writeText(Product::kName, kVstMaxEffectNameLen - 1, name);
    return true;
}

bool VSTPlugin::getVendorString(char *text)
{
    writeText(Product::kVendor, kVstMaxVendorStrLen - 1, text);
    return true;
}

bool VSTPlugin::getProductString(char *text)
{
    writeText(Product::kName, kVstMaxProductStrLen - 1, text);
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
