#pragma once
#include <cstddef>
#include <cstdint>

/// The binary interface between a VST 2 host and an effect, written from the published binary layout: opcode
/// numbers, record layouts and the C calling convention. None of these may change. VST is a trademark of its
/// respective owner.

struct AEffect;

/// The effect calls its host through this function.
using HostCallback = intptr_t (*)(AEffect *effect, int32_t opcode, int32_t index, intptr_t value, void *ptr,
                                  float opt);

using DispatcherEntry = intptr_t (*)(AEffect *effect, int32_t opcode, int32_t index, intptr_t value,
                                     void *ptr, float opt);
using ProcessEntry = void (*)(AEffect *effect, float **inputs, float **outputs, int32_t frames);
using SetParameterEntry = void (*)(AEffect *effect, int32_t index, float value);
using GetParameterEntry = float (*)(AEffect *effect, int32_t index);

/// Packs four characters into an identifier, the first in the highest byte.
constexpr int32_t fourCharacters(const char (&text)[5])
{
    uint32_t packed = 0;
    for (int i = 0; i < 4; ++i) packed = packed << 8 | static_cast<unsigned char>(text[i]);
    return static_cast<int32_t>(packed);
}

/// The record that an effect gives to the host. The host may read the fields at any time and calls the five
/// functions.
struct AEffect {
    int32_t signature; // kEffectSignature
    DispatcherEntry dispatcher;
    ProcessEntry process; // adds to the outputs
    SetParameterEntry setParameter;
    GetParameterEntry getParameter;
    int32_t numPrograms;
    int32_t numParams;
    int32_t numInputs;
    int32_t numOutputs;
    int32_t capabilities; // bits of EffectCapability
    intptr_t unusedPointer;
    intptr_t unusedNumber;
    int32_t initialDelay; // samples
    int32_t realtimeQuality;
    int32_t offlineQuality;
    float ioRatio;
    void *object; // for the effect
    void *hostData;
    int32_t uniqueID;
    int32_t version;
    ProcessEntry processReplacing; // overwrites the outputs
    void *unusedEntry;
    char unusedBytes[56];
};

constexpr int32_t kEffectSignature = fourCharacters("VstP");

constexpr size_t offsetIn(size_t in64Bits, size_t in32Bits)
{
    return sizeof(void *) == 8 ? in64Bits : in32Bits;
}
static_assert(offsetof(AEffect, dispatcher) == offsetIn(8, 4));
static_assert(offsetof(AEffect, getParameter) == offsetIn(32, 16));
static_assert(offsetof(AEffect, numPrograms) == offsetIn(40, 20));
static_assert(offsetof(AEffect, capabilities) == offsetIn(56, 36));
static_assert(offsetof(AEffect, initialDelay) == offsetIn(80, 48));
static_assert(offsetof(AEffect, ioRatio) == offsetIn(92, 60));
static_assert(offsetof(AEffect, object) == offsetIn(96, 64));
static_assert(offsetof(AEffect, uniqueID) == offsetIn(112, 72));
static_assert(offsetof(AEffect, processReplacing) == offsetIn(120, 80));
static_assert(sizeof(AEffect) == offsetIn(192, 144));

enum EffectCapability : int32_t {
    kHasEditor = 1 << 0,
    kHasClip = 1 << 1,
    kHasVu = 1 << 2,
    kCanMono = 1 << 3,
    kCanReplace = 1 << 4,
    kProgramsAreChunks = 1 << 5,
    kIsInstrument = 1 << 8,
    kHasNoTail = 1 << 9, // output is silent as soon as the input is
    kWorksAsynchronously = 1 << 10,
    kHasOwnBuffer = 1 << 11,
};

/// Requests from the host, through AEffect::dispatcher.
enum EffectOpcode : int32_t {
    effOpen,
    effClose,
    effSetProgram,
    effGetProgram,
    effSetProgramName,
    effGetProgramName,
    effGetParamLabel,
    effGetParamDisplay,
    effGetParamName,
    effGetVu,
    effSetSampleRate,
    effSetBlockSize,
    effMainsChanged,
    effEditGetRect,
    effEditOpen,
    effEditClose,
    effEditIdle = 19,
    effIdentify = 22,
    effGetChunk,
    effSetChunk,
    effProcessEvents,
    effCanBeAutomated,
    effString2Parameter,
    effGetNumProgramCategories,
    effGetProgramNameIndexed,
    effCopyProgram,
    effConnectInput,
    effConnectOutput,
    effGetInputProperties,
    effGetOutputProperties,
    effGetPlugCategory,
    effGetCurrentPosition,
    effGetDestinationBuffer,
    effOfflineNotify,
    effOfflinePrepare,
    effOfflineRun,
    effProcessVarIo,
    effSetSpeakerArrangement,
    effSetBlockSizeAndSampleRate,
    effSetBypass,
    effGetEffectName,
    effGetErrorText,
    effGetVendorString,
    effGetProductString,
    effGetVendorVersion,
    effVendorSpecific,
    effCanDo,
    effGetTailSize,
    effIdle,
    effGetIcon,
    effSetViewPosition,
    effGetParameterProperties,
    effKeysRequired,
    effGetVstVersion,
    effEditKeyDown,
    effEditKeyUp,
    effSetEditKnobMode,
    effMidiProgram,
    effPresentMidiProgram,
    effMidiCategory,
    effMidiProgramsMoved,
    effMidiKey,
    effBeginSetProgram,
    effEndSetProgram,
    effGetSpeakerArrangement,
    effShellGetNextPlugin,
    effStartProcess,
    effStopProcess,
    effSetTotalSampleToProcess,
    effSetPanLaw,
    effBeginLoadBank,
    effBeginLoadProgram,
};
static_assert(effProcessEvents == 25 && effKeysRequired == 57 && effBeginLoadProgram == 76);

/// Requests from the effect, through the HostCallback.
enum HostOpcode : int32_t {
    audioMasterAutomate,
    audioMasterVersion,
    hostCurrentId,
    hostIdle,
    hostChannelConnected, // value: 0 input, 1 output; result: 0 connected
    audioMasterWantMidi = 6,
    audioMasterGetTime,
    hostTempo = 10,
    hostAutomatableCount,
    hostParameterSteps,
    audioMasterIOChanged,
    hostWantIdle,
    audioMasterSizeWindow,
    audioMasterGetSampleRate,
    audioMasterGetBlockSize,
    hostInputDelay,
    hostOutputDelay,
    hostEffectBefore,
    hostEffectAfter,
    hostReplacesOrAdds,
    hostThreadKind,
    hostAutomationMode,
    hostOfflineStart,
    hostOfflineRead,
    hostOfflineWrite,
    hostOfflinePass,
    hostOfflineMetaPass,
    hostSetOutputRate,
    hostOutputSpeakers,
    audioMasterGetVendorString,
    audioMasterGetProductString,
    hostVendorVersion,
    hostVendorRequest,
    audioMasterCanDo = 37,
    hostLanguage,
    hostOpenWindow,
    hostCloseWindow,
    hostDirectory,
    hostRefreshDisplay,
    audioMasterBeginEdit,
    audioMasterEndEdit,
    hostOpenFileDialog,
    hostInputSpeakers = 49,
};
static_assert(audioMasterIOChanged == 13 && audioMasterGetProductString == 33 && audioMasterEndEdit == 44);

enum EffectCategory : int32_t { kUnknownCategory, kEffectCategory, kInstrumentCategory };

/// Editor rectangle in pixels; right and bottom are exclusive.
struct ERect {
    int16_t top, left, bottom, right;
};

/// A key press forwarded by the host.
struct VstKeyCode {
    int32_t character; // ASCII, may be 0
    uint8_t virt;      // VST key code for keys without a character
    uint8_t modifier;  // bit 0 shift, 1 alternate, 2 command, 3 control
};

struct Speaker {
    float bearing, height, distance, unusedNumber;
    char name[64];
    int32_t type;
    char unusedBytes[28];
};
static_assert(sizeof(Speaker) == 112);

/// A layout of up to 8 speakers; further speakers follow the record in memory.
struct SpeakerLayout {
    int32_t type;
    int32_t channelCount;
    Speaker speakers[8];
};
static_assert(sizeof(SpeakerLayout) == 904);

// Records that this effect never reads.
struct MidiKey;
struct MidiCategory;
struct MidiProgram;
struct OfflineFile;
struct HostEvents;
struct FileDialog;
struct OfflineTask;
struct VstParameterProperties;
struct ChannelProperties;
struct HostTime;
struct VariableBlock;
struct HostWindow;

// Sizes of the host's string buffers in bytes, terminator included.
constexpr uint32_t kLabelRoom = 8, kEffectNameRoom = 32, kVendorRoom = 64, kProductRoom = 64;
