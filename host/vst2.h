#pragma once
#include <cstddef>
#include <cstdint>

/// The VST 2 binary interface between host and effect: what both sides agree on byte by byte. Numbers and
/// record layouts are those of the published interface, so nothing here may be reordered. Functions use the
/// plain C calling convention, which every compiler takes where nothing else is said.

struct AEffect;

/// The effect calls its host through this.
using audioMasterCallback = intptr_t (*)(AEffect *effect, int32_t opcode, int32_t index, intptr_t value,
                                         void *ptr, float opt);

using AEffectDispatcherProc = intptr_t (*)(AEffect *effect, int32_t opcode, int32_t index, intptr_t value,
                                           void *ptr, float opt);
using AEffectProcessProc = void (*)(AEffect *effect, float **inputs, float **outputs, int32_t frames);
using AEffectSetParameterProc = void (*)(AEffect *effect, int32_t index, float value);
using AEffectGetParameterProc = float (*)(AEffect *effect, int32_t index);

/// Four characters as the number that the host compares: the first in the highest byte.
constexpr int32_t vstFourCharacters(const char (&text)[5])
{
    uint32_t packed = 0;
    for (int i = 0; i < 4; ++i) packed = packed << 8 | static_cast<unsigned char>(text[i]);
    return static_cast<int32_t>(packed);
}

/// What the host knows of an effect. The host reads the fields at any time and calls through the five
/// entries.
struct AEffect {
    int32_t magic; // kEffectMagic
    AEffectDispatcherProc dispatcher;
    AEffectProcessProc process; // adds to the outputs
    AEffectSetParameterProc setParameter;
    AEffectGetParameterProc getParameter;
    int32_t numPrograms;
    int32_t numParams;
    int32_t numInputs;
    int32_t numOutputs;
    int32_t flags; // VstAEffectFlags
    intptr_t resvd1;
    intptr_t resvd2;
    int32_t initialDelay; // samples
    int32_t realQualities;
    int32_t offQualities;
    float ioRatio;
    void *object; // for the effect
    void *user;   // for the host
    int32_t uniqueID;
    int32_t version;
    AEffectProcessProc processReplacing; // overwrites the outputs
    void *processDoubleReplacing;
    char future[56];
};

constexpr int32_t kEffectMagic = vstFourCharacters("VstP");

constexpr size_t vstOffset(size_t in64Bits, size_t in32Bits)
{
    return sizeof(void *) == 8 ? in64Bits : in32Bits;
}
static_assert(offsetof(AEffect, dispatcher) == vstOffset(8, 4));
static_assert(offsetof(AEffect, getParameter) == vstOffset(32, 16));
static_assert(offsetof(AEffect, numPrograms) == vstOffset(40, 20));
static_assert(offsetof(AEffect, flags) == vstOffset(56, 36));
static_assert(offsetof(AEffect, initialDelay) == vstOffset(80, 48));
static_assert(offsetof(AEffect, ioRatio) == vstOffset(92, 60));
static_assert(offsetof(AEffect, object) == vstOffset(96, 64));
static_assert(offsetof(AEffect, uniqueID) == vstOffset(112, 72));
static_assert(offsetof(AEffect, processReplacing) == vstOffset(120, 80));
static_assert(sizeof(AEffect) == vstOffset(192, 144));

enum VstAEffectFlags : int32_t {
    effFlagsHasEditor = 1 << 0,
    effFlagsHasClip = 1 << 1,
    effFlagsHasVu = 1 << 2,
    effFlagsCanMono = 1 << 3,
    effFlagsCanReplacing = 1 << 4,
    effFlagsProgramChunks = 1 << 5,
    effFlagsIsSynth = 1 << 8,
    effFlagsNoSoundInStop = 1 << 9, // no tail: silence in gives silence out
    effFlagsExtIsAsync = 1 << 10,
    effFlagsExtHasBuffer = 1 << 11,
};

/// Requests of the host, through AEffect::dispatcher.
enum VstEffectOpcode : int32_t {
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
    effEditDraw,
    effEditMouse,
    effEditKey,
    effEditIdle,
    effEditTop,
    effEditSleep,
    effIdentify,
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
    effGetMidiProgramName,
    effGetCurrentMidiProgram,
    effGetMidiProgramCategory,
    effHasMidiProgramsChanged,
    effGetMidiKeyName,
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
    effSetProcessPrecision,
    effGetNumMidiInputChannels,
    effGetNumMidiOutputChannels,
};
static_assert(effProcessEvents == 25 && effKeysRequired == 57 && effGetNumMidiOutputChannels == 79);

/// Requests of the effect, through the audioMasterCallback.
enum VstHostOpcode : int32_t {
    audioMasterAutomate,
    audioMasterVersion,
    audioMasterCurrentId,
    audioMasterIdle,
    audioMasterPinConnected, // value 0 asks for an input, 1 for an output; the answer 0 means connected
    audioMasterWantMidi = 6,
    audioMasterGetTime,
    audioMasterProcessEvents,
    audioMasterSetTime,
    audioMasterTempoAt,
    audioMasterGetNumAutomatableParameters,
    audioMasterGetParameterQuantization,
    audioMasterIOChanged,
    audioMasterNeedIdle,
    audioMasterSizeWindow,
    audioMasterGetSampleRate,
    audioMasterGetBlockSize,
    audioMasterGetInputLatency,
    audioMasterGetOutputLatency,
    audioMasterGetPreviousPlug,
    audioMasterGetNextPlug,
    audioMasterWillReplaceOrAccumulate,
    audioMasterGetCurrentProcessLevel,
    audioMasterGetAutomationState,
    audioMasterOfflineStart,
    audioMasterOfflineRead,
    audioMasterOfflineWrite,
    audioMasterOfflineGetCurrentPass,
    audioMasterOfflineGetCurrentMetaPass,
    audioMasterSetOutputSampleRate,
    audioMasterGetOutputSpeakerArrangement,
    audioMasterGetVendorString,
    audioMasterGetProductString,
    audioMasterGetVendorVersion,
    audioMasterVendorSpecific,
    audioMasterSetIcon,
    audioMasterCanDo,
    audioMasterGetLanguage,
    audioMasterOpenWindow,
    audioMasterCloseWindow,
    audioMasterGetDirectory,
    audioMasterUpdateDisplay,
    audioMasterBeginEdit,
    audioMasterEndEdit,
    audioMasterOpenFileSelector,
    audioMasterCloseFileSelector,
    audioMasterEditFile,
    audioMasterGetChunkFile,
    audioMasterGetInputSpeakerArrangement,
};
static_assert(audioMasterIOChanged == 13 && audioMasterEndEdit == 44 &&
              audioMasterGetInputSpeakerArrangement == 49);

enum VstPlugCategory : int32_t { kPlugCategUnknown, kPlugCategEffect, kPlugCategSynth };

/// Editor rectangle in pixels; right and bottom lie outside.
struct ERect {
    int16_t top, left, bottom, right;
};

/// A key press as the host forwards it.
struct VstKeyCode {
    int32_t character; // ASCII, may be 0
    uint8_t virt;      // the interface's own numbering of keys without a character
    uint8_t modifier;  // bit 0 shift, 1 alternate, 2 command, 3 control
};

struct VstSpeakerProperties {
    float azimuth, elevation, radius, reserved;
    char name[64];
    int32_t type;
    char future[28];
};
static_assert(sizeof(VstSpeakerProperties) == 112);

/// A layout of up to 8 speakers; more follow behind the record.
struct VstSpeakerArrangement {
    int32_t type;
    int32_t numChannels;
    VstSpeakerProperties speakers[8];
};
static_assert(sizeof(VstSpeakerArrangement) == 904);

// Records that pass through this effect unread.
struct MidiKeyName;
struct MidiProgramCategory;
struct MidiProgramName;
struct VstAudioFile;
struct VstEvents;
struct VstFileSelect;
struct VstOfflineTask;
struct VstParameterProperties;
struct VstPinProperties;
struct VstTimeInfo;
struct VstVariableIo;
struct VstWindow;

// Longest texts with their terminators that the interface promises room for.
constexpr uint32_t kVstMaxLabelLen = 8, kVstMaxEffectNameLen = 32, kVstMaxVendorStrLen = 64,
                   kVstMaxProductStrLen = 64;
