#include "host/AudioEffect.h"

#include <atomic>
#include <cstdio>
#include <cstring>

#include "PluginBase/Util/String.h"
#include "dsp/numerics/FloatState.h"
#include "dsp/numerics/Math.h"

namespace {

constexpr intptr_t kIdentity = fourCharacters("NvEf");
constexpr uint32_t kNumberWidth = 7;              // characters of a formatted number
constexpr int32_t kFirstHugeNumber = 100'000'000; // too long for a host's value field

AudioEffect *owner(AEffect *effect) { return static_cast<AudioEffect *>(effect->object); }

/// Runs a call from the host in the floating-point state that the DSP code requires. Catches all exceptions,
/// because the host cannot handle them.
template <class Call>
auto answer(Call call) noexcept -> decltype(call())
{
    const DSP::FloatState floatState;
    try {
        return call();
    } catch (...) {
        return decltype(call())();
    }
}

intptr_t enterDispatcher(AEffect *effect, int32_t opcode, int32_t index, intptr_t value, void *ptr, float opt)
{
    const intptr_t result = answer([=] { return owner(effect)->dispatcher(opcode, index, value, ptr, opt); });
    if (opcode != effClose) return result;
    delete owner(effect);
    return 1;
}

void enterProcess(AEffect *effect, float **inputs, float **outputs, int32_t frames)
{
    answer([=] { owner(effect)->process(inputs, outputs, frames); });
}

void enterProcessReplacing(AEffect *effect, float **inputs, float **outputs, int32_t frames)
{
    answer([=] { owner(effect)->processReplacing(inputs, outputs, frames); });
}

void enterSetParameter(AEffect *effect, int32_t index, float value)
{
    answer([=] { owner(effect)->setParameter(index, value); });
}

float enterGetParameter(AEffect *effect, int32_t index)
{
    return answer([=] { return owner(effect)->getParameter(index); });
}

void writeEmpty(char *text) { *text = '\0'; }

} // namespace

AudioEffect::AudioEffect(HostCallback host, int32_t programs, int32_t parameters)
    : audioMaster(host), numPrograms(programs), numParams(parameters)
{
    cEffect.signature = kEffectSignature;
    cEffect.dispatcher = enterDispatcher;
    cEffect.process = enterProcess;
    cEffect.setParameter = enterSetParameter;
    cEffect.getParameter = enterGetParameter;
    cEffect.numPrograms = programs;
    cEffect.numParams = parameters;
    cEffect.numInputs = 1;
    cEffect.numOutputs = 2;
    cEffect.ioRatio = 1.0f;
    cEffect.object = this;
    cEffect.uniqueID = fourCharacters("NoEf");
    cEffect.version = 1;
    cEffect.processReplacing = enterProcessReplacing;
}

AudioEffect::~AudioEffect() = default;

void AudioEffect::setParameter(int32_t, float) {}

float AudioEffect::getParameter(int32_t) { return 0.0f; }

void AudioEffect::setParameterAutomated(int32_t index, float value)
{
    callHost(audioMasterAutomate, index, 0, nullptr, value);
}

void AudioEffect::processReplacing(float **, float **, int32_t) {}

intptr_t AudioEffect::dispatcher(int32_t opcode, int32_t index, intptr_t value, void *ptr, float opt)
{
    switch (opcode) {
    case effOpen: open(); return 0;
    case effClose: close(); return 0;

    case effSetProgram:
    case effGetProgram:
    case effSetProgramName:
    case effGetProgramName: return dispatchProgram(opcode, value, static_cast<char *>(ptr));

    case effGetParamLabel:
    case effGetParamDisplay:
    case effGetParamName: return dispatchParameterText(opcode, index, static_cast<char *>(ptr));

    case effGetVu: return static_cast<intptr_t>(getVu());
    case effSetSampleRate: setSampleRate(opt); return 0;
    case effSetBlockSize: setBlockSize(static_cast<int32_t>(value)); return 0;
    case effMainsChanged: value == 0 ? suspend() : resume(); return 0;

    case effEditGetRect:
    case effEditOpen:
    case effEditClose:
    case effEditIdle: return editor ? dispatchEditor(opcode, ptr) : 0;

    case effIdentify: return kIdentity;
    case effGetChunk: return ptr ? getChunk(static_cast<void **>(ptr), index != 0) : 0;
    case effSetChunk: return ptr ? setChunk(ptr, static_cast<int32_t>(value), index != 0) : 0;
    default: return 0;
    }
}

intptr_t AudioEffect::dispatchProgram(int32_t opcode, intptr_t value, char *text)
{
    switch (opcode) {
    case effSetProgram:
        if (value >= 0 && value < numPrograms) setProgram(static_cast<int32_t>(value));
        return 0;
    case effGetProgram: return getProgram();
    case effSetProgramName:
        if (text) setProgramName(text);
        return 0;
    default:
        if (text) getProgramName(text);
        return 0;
    }
}

intptr_t AudioEffect::dispatchParameterText(int32_t opcode, int32_t index, char *text)
{
    if (!text) return 0;
    switch (opcode) {
    case effGetParamLabel: getParameterLabel(index, text); break;
    case effGetParamDisplay: getParameterDisplay(index, text); break;
    default: getParameterName(index, text); break;
    }
    return 0;
}

intptr_t AudioEffect::dispatchEditor(int32_t opcode, void *ptr)
{
    switch (opcode) {
    case effEditGetRect: return ptr ? editor->getRect(static_cast<ERect **>(ptr)) : 0;
    case effEditOpen: return editor->open(ptr);
    case effEditClose: editor->close(); return 0;
    default: editor->idle(); return 0;
    }
}

void AudioEffect::setProgramName(char *name) { writeEmpty(name); }
void AudioEffect::getProgramName(char *name) { writeEmpty(name); }
void AudioEffect::getParameterLabel(int32_t, char *label) { writeEmpty(label); }
void AudioEffect::getParameterDisplay(int32_t, char *text) { writeEmpty(text); }
void AudioEffect::getParameterName(int32_t, char *text) { writeEmpty(text); }

int32_t AudioEffect::getChunk(void **, bool) { return 0; }

int32_t AudioEffect::setChunk(void *, int32_t, bool) { return 0; }

void AudioEffect::setFlag(EffectCapability flag, bool on)
{
    if (on)
        cEffect.capabilities |= flag;
    else
        cEffect.capabilities &= ~flag;
}

// Atomic: the audio thread may read the delay while the window thread sets it.
void AudioEffect::setInitialDelay(int32_t samples)
{
    std::atomic_ref(cEffect.initialDelay).store(samples, std::memory_order_relaxed);
}

int32_t AudioEffect::initialDelay()
{
    return std::atomic_ref(cEffect.initialDelay).load(std::memory_order_relaxed);
}

intptr_t AudioEffect::callHost(HostOpcode opcode, int32_t index, intptr_t value, void *ptr, float opt)
{
    return audioMaster ? audioMaster(&cEffect, opcode, index, value, ptr, opt) : 0;
}

int32_t AudioEffect::getMasterVersion()
{
    const auto version = static_cast<int32_t>(callHost(audioMasterVersion));
    return version != 0 ? version : 1;
}

int32_t AudioEffect::getCurrentUniqueId() { return static_cast<int32_t>(callHost(hostCurrentId)); }

void AudioEffect::masterIdle() { callHost(hostIdle); }

bool AudioEffect::isInputConnected(int32_t index) { return callHost(hostChannelConnected, index, 0) == 0; }

bool AudioEffect::isOutputConnected(int32_t index) { return callHost(hostChannelConnected, index, 1) == 0; }

void AudioEffect::dB2string(float value, char *text)
{
    if (value <= 0.0f)
        std::strcpy(text, "-oo");
    else
        float2string(static_cast<float>(DSP::Math::linearToDecibels(value)), text);
}

void AudioEffect::Hz2string(float samples, char *text)
{
    float2string(samples == 0.0f ? 0.0f : sampleRate / samples, text);
}

void AudioEffect::ms2string(float samples, char *text) { float2string(samples * 1000.0f / sampleRate, text); }

void AudioEffect::float2string(float value, char *text)
{
    // Show as many decimals as fit.
    constexpr int32_t kMostDecimals = 5;
    String digits = String::number(value, kMostDecimals);
    const OptionalIndex point = digits.find('.');
    if (point) digits.truncate(point.value + 1 < kNumberWidth ? kNumberWidth : point.value);
    if (digits.length() > kNumberWidth) digits = "Huge!";
    std::snprintf(text, kNumberWidth + 1, "%*s", int{kNumberWidth}, digits.c_str());
}

void AudioEffect::long2string(int32_t value, char *text)
{
    if (value >= kFirstHugeNumber)
        std::strcpy(text, "Huge!");
    else
        std::sprintf(text, "%*d", int{kNumberWidth}, value);
}
