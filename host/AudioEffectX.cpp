#include "host/AudioEffectX.h"

#include <cmath>

namespace {

/// Reads `value` as a pointer. Returns null for small or misaligned values: some hosts probe opcodes with small
/// numbers, and no system maps its lowest page.
template <class T>
T *pointerIn(intptr_t value)
{
    constexpr uintptr_t kLowestPage = 4096;
    const auto address = static_cast<uintptr_t>(value);
    return address < kLowestPage || address % alignof(T) != 0 ? nullptr : reinterpret_cast<T *>(address);
}

/// Hosts pass a key's modifier bits as a float.
uint8_t modifierIn(float opt)
{
    return opt >= 0.0f && opt < 256.0f ? static_cast<uint8_t>(opt) : 0; // NaN fails both comparisons
}

} // namespace

intptr_t AudioEffectX::dispatcher(int32_t opcode, int32_t index, intptr_t value, void *ptr, float opt)
{
    switch (opcode) {
    case effProcessEvents: return ptr ? processEvents(static_cast<HostEvents *>(ptr)) : 0;
    case effCanBeAutomated: return canParameterBeAutomated(index);
    case effString2Parameter: return ptr ? string2parameter(index, static_cast<char *>(ptr)) : 0;

    case effGetNumProgramCategories:
    case effGetProgramNameIndexed:
    case effCopyProgram:
    case effBeginSetProgram:
    case effEndSetProgram:
    case effBeginLoadBank:
    case effBeginLoadProgram: return dispatchPrograms(opcode, index, value, ptr);

    case effConnectInput:
    case effConnectOutput:
    case effGetInputProperties:
    case effGetOutputProperties:
    case effSetSpeakerArrangement:
    case effGetSpeakerArrangement:
    case effSetBypass:
    case effSetPanLaw: return dispatchConnections(opcode, index, value, ptr, opt);

    case effGetCurrentPosition: return reportCurrentPosition();
    case effGetDestinationBuffer: return reinterpret_cast<intptr_t>(reportDestinationBuffer());

    case effOfflineNotify:
    case effOfflinePrepare:
    case effOfflineRun:
    case effProcessVarIo: return dispatchOffline(opcode, index, value, ptr);

    case effSetBlockSizeAndSampleRate: setBlockSizeAndSampleRate(static_cast<int32_t>(value), opt); return 1;

    case effGetPlugCategory:
    case effGetEffectName:
    case effGetErrorText:
    case effGetVendorString:
    case effGetProductString:
    case effGetVendorVersion:
    case effCanDo:
    case effGetTailSize:
    case effGetIcon:
    case effGetParameterProperties:
    case effKeysRequired:
    case effGetVstVersion:
    case effShellGetNextPlugin: return dispatchSelfDescription(opcode, index, ptr);

    case effVendorSpecific: return vendorSpecific(index, value, ptr, opt);
    case effIdle: return fxIdle();
    case effSetViewPosition: return setViewPosition(index, static_cast<int32_t>(value));

    case effEditKeyDown:
    case effEditKeyUp:
    case effSetEditKnobMode: return editor ? dispatchKeys(opcode, index, value, opt) : 0;

    case effMidiProgram:
    case effPresentMidiProgram:
    case effMidiCategory:
    case effMidiProgramsMoved:
    case effMidiKey: return dispatchMidiPrograms(opcode, index, ptr);

    case effStartProcess: return startProcess();
    case effStopProcess: return stopProcess();
    case effSetTotalSampleToProcess: return setTotalSampleToProcess(static_cast<int32_t>(value));
    default: return AudioEffect::dispatcher(opcode, index, value, ptr, opt);
    }
}

intptr_t AudioEffectX::dispatchPrograms(int32_t opcode, int32_t index, intptr_t value, void *ptr)
{
    switch (opcode) {
    case effGetNumProgramCategories: return getNumCategories();
    case effGetProgramNameIndexed:
        return ptr ? getProgramNameIndexed(static_cast<int32_t>(value), index, static_cast<char *>(ptr)) : 0;
    case effCopyProgram: return copyProgram(index);
    case effBeginSetProgram: return beginSetProgram();
    case effEndSetProgram: return endSetProgram();
    case effBeginLoadBank: return ptr ? beginLoadBank(ptr) : 0;
    case effBeginLoadProgram: return ptr ? beginLoadProgram(ptr) : 0;
    default: return 0;
    }
}

intptr_t AudioEffectX::dispatchConnections(int32_t opcode, int32_t index, intptr_t value, void *ptr,
                                           float opt)
{
    switch (opcode) {
    case effConnectInput: inputConnected(index, value != 0); return 1;
    case effConnectOutput: outputConnected(index, value != 0); return 1;
    case effGetInputProperties:
        return ptr ? getInputProperties(index, static_cast<ChannelProperties *>(ptr)) : 0;
    case effGetOutputProperties:
        return ptr ? getOutputProperties(index, static_cast<ChannelProperties *>(ptr)) : 0;
    case effSetSpeakerArrangement:
        return setSpeakerArrangement(pointerIn<SpeakerLayout>(value), static_cast<SpeakerLayout *>(ptr));
    case effGetSpeakerArrangement:
        return getSpeakerArrangement(pointerIn<SpeakerLayout *>(value), static_cast<SpeakerLayout **>(ptr));
    case effSetBypass: return setBypass(value != 0);
    case effSetPanLaw: return setPanLaw(static_cast<int32_t>(value), opt);
    default: return 0;
    }
}

intptr_t AudioEffectX::dispatchOffline(int32_t opcode, int32_t index, intptr_t value, void *ptr)
{
    if (!ptr) return 0;
    const auto count = static_cast<int32_t>(value);
    switch (opcode) {
    case effOfflineNotify: return offlineNotify(static_cast<OfflineFile *>(ptr), count, index != 0);
    case effOfflinePrepare: return offlinePrepare(static_cast<OfflineTask *>(ptr), count);
    case effOfflineRun: return offlineRun(static_cast<OfflineTask *>(ptr), count);
    case effProcessVarIo: return processVariableIo(static_cast<VariableBlock *>(ptr));
    default: return 0;
    }
}

intptr_t AudioEffectX::dispatchSelfDescription(int32_t opcode, int32_t index, void *ptr)
{
    auto *const text = static_cast<char *>(ptr);
    switch (opcode) {
    case effGetPlugCategory: return getPlugCategory();
    case effGetEffectName: return text ? getEffectName(text) : 0;
    case effGetErrorText: return text ? getErrorText(text) : 0;
    case effGetVendorString: return text ? getVendorString(text) : 0;
    case effGetProductString: return text ? getProductString(text) : 0;
    case effGetVendorVersion: return getVendorVersion();
    case effCanDo: return text ? canDo(text) : 0;
    case effGetTailSize: return getGetTailSize();
    case effGetIcon: return reinterpret_cast<intptr_t>(getIcon());
    case effGetParameterProperties:
        return ptr ? getParameterProperties(index, static_cast<VstParameterProperties *>(ptr)) : 0;
    case effKeysRequired: return !keysRequired();
    case effGetVstVersion: return getVstVersion();
    case effShellGetNextPlugin: return text ? getNextShellPlugin(text) : 0;
    default: return 0;
    }
}

intptr_t AudioEffectX::dispatchKeys(int32_t opcode, int32_t index, intptr_t value, float opt)
{
    const VstKeyCode key = {index, static_cast<uint8_t>(value), modifierIn(opt)};
    switch (opcode) {
    case effEditKeyDown: return editor->onKeyDown(key);
    case effEditKeyUp: return editor->onKeyUp(key);
    case effSetEditKnobMode: return editor->setKnobMode(static_cast<int32_t>(value));
    default: return 0;
    }
}

intptr_t AudioEffectX::dispatchMidiPrograms(int32_t opcode, int32_t channel, void *ptr)
{
    switch (opcode) {
    case effMidiProgram: return getMidiProgramName(channel, static_cast<MidiProgram *>(ptr));
    case effPresentMidiProgram: return getCurrentMidiProgram(channel, static_cast<MidiProgram *>(ptr));
    case effMidiCategory: return getMidiProgramCategory(channel, static_cast<MidiCategory *>(ptr));
    case effMidiProgramsMoved: return hasMidiProgramsChanged(channel);
    case effMidiKey: return getMidiKeyName(channel, static_cast<MidiKey *>(ptr));
    default: return 0;
    }
}

EffectCategory AudioEffectX::getPlugCategory()
{
    return cEffect.capabilities & kIsInstrument ? kInstrumentCategory : kUnknownCategory;
}

bool AudioEffectX::getSpeakerArrangement(SpeakerLayout **inputs, SpeakerLayout **outputs)
{
    if (inputs) *inputs = nullptr;
    if (outputs) *outputs = nullptr;
    return false;
}

void AudioEffectX::setBlockSizeAndSampleRate(int32_t size, float rate)
{
    setBlockSize(size);
    setSampleRate(rate);
}
