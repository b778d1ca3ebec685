#include "host/AudioEffectX.h"

// What AudioEffectX asks of the host. Where an operation says nothing else, its arguments travel in the slots
// of the same name.

void AudioEffectX::wantEvents(int32_t filter) { callHost(audioMasterWantMidi, 0, filter); }

VstTimeInfo *AudioEffectX::getTimeInfo(int32_t filter)
{
    return reinterpret_cast<VstTimeInfo *>(callHost(audioMasterGetTime, 0, filter));
}

int32_t AudioEffectX::tempoAt(int32_t position)
{
    return static_cast<int32_t>(callHost(audioMasterTempoAt, 0, position));
}

int32_t AudioEffectX::getNumAutomatableParameters()
{
    return static_cast<int32_t>(callHost(audioMasterGetNumAutomatableParameters));
}

int32_t AudioEffectX::getParameterQuantization()
{
    return static_cast<int32_t>(callHost(audioMasterGetParameterQuantization));
}

bool AudioEffectX::ioChanged() { return callHost(audioMasterIOChanged) != 0; }

bool AudioEffectX::needIdle() { return callHost(audioMasterNeedIdle) != 0; }

bool AudioEffectX::sizeWindow(int32_t width, int32_t height)
{
    return callHost(audioMasterSizeWindow, width, height) != 0;
}

float AudioEffectX::updateSampleRate()
{
    const intptr_t rate = callHost(audioMasterGetSampleRate);
    if (rate > 0) sampleRate = static_cast<float>(rate);
    return sampleRate;
}

int32_t AudioEffectX::updateBlockSize()
{
    const intptr_t size = callHost(audioMasterGetBlockSize);
    if (size > 0) blockSize = static_cast<int32_t>(size);
    return blockSize;
}

int32_t AudioEffectX::getInputLatency() { return static_cast<int32_t>(callHost(audioMasterGetInputLatency)); }

int32_t AudioEffectX::getOutputLatency()
{
    return static_cast<int32_t>(callHost(audioMasterGetOutputLatency));
}

AEffect *AudioEffectX::getPreviousPlug(VstPinProperties *properties)
{
    return reinterpret_cast<AEffect *>(callHost(audioMasterGetPreviousPlug, 0, 0, properties));
}

AEffect *AudioEffectX::getNextPlug(VstPinProperties *properties)
{
    return reinterpret_cast<AEffect *>(callHost(audioMasterGetNextPlug, 0, 0, properties));
}

int32_t AudioEffectX::willProcessReplacing()
{
    return static_cast<int32_t>(callHost(audioMasterWillReplaceOrAccumulate));
}

int32_t AudioEffectX::getCurrentProcessLevel()
{
    return static_cast<int32_t>(callHost(audioMasterGetCurrentProcessLevel));
}

int32_t AudioEffectX::getAutomationState()
{
    return static_cast<int32_t>(callHost(audioMasterGetAutomationState));
}

bool AudioEffectX::offlineRead(VstOfflineTask *task, int32_t option, bool readSource)
{
    return callHost(audioMasterOfflineRead, readSource, option, task) != 0;
}

bool AudioEffectX::offlineWrite(VstOfflineTask *task, int32_t option)
{
    return callHost(audioMasterOfflineWrite, 0, option, task) != 0;
}

bool AudioEffectX::offlineStart(VstAudioFile *files, int32_t numFiles, int32_t numNewFiles)
{
    return callHost(audioMasterOfflineStart, numNewFiles, numFiles, files) != 0;
}

int32_t AudioEffectX::offlineGetCurrentPass()
{
    return static_cast<int32_t>(callHost(audioMasterOfflineGetCurrentPass));
}

int32_t AudioEffectX::offlineGetCurrentMetaPass()
{
    return static_cast<int32_t>(callHost(audioMasterOfflineGetCurrentMetaPass));
}

void AudioEffectX::setOutputSampleRate(float rate)
{
    callHost(audioMasterSetOutputSampleRate, 0, 0, nullptr, rate);
}

VstSpeakerArrangement *AudioEffectX::getInputSpeakerArrangement()
{
    return reinterpret_cast<VstSpeakerArrangement *>(callHost(audioMasterGetInputSpeakerArrangement));
}

VstSpeakerArrangement *AudioEffectX::getOutputSpeakerArrangement()
{
    return reinterpret_cast<VstSpeakerArrangement *>(callHost(audioMasterGetOutputSpeakerArrangement));
}

bool AudioEffectX::getHostVendorString(char *text)
{
    return callHost(audioMasterGetVendorString, 0, 0, text) != 0;
}

bool AudioEffectX::getHostProductString(char *text)
{
    return callHost(audioMasterGetProductString, 0, 0, text) != 0;
}

int32_t AudioEffectX::getHostVendorVersion()
{
    return static_cast<int32_t>(callHost(audioMasterGetVendorVersion));
}

intptr_t AudioEffectX::hostVendorSpecific(int32_t index, intptr_t value, void *ptr, float opt)
{
    return callHost(audioMasterVendorSpecific, index, value, ptr, opt);
}

int32_t AudioEffectX::canHostDo(const char *text)
{
    // The interface has one kind of pointer; hosts only read this text.
    return static_cast<int32_t>(callHost(audioMasterCanDo, 0, 0, const_cast<char *>(text)));
}

int32_t AudioEffectX::getHostLanguage() { return static_cast<int32_t>(callHost(audioMasterGetLanguage)); }

void *AudioEffectX::openWindow(VstWindow *window)
{
    return reinterpret_cast<void *>(callHost(audioMasterOpenWindow, 0, 0, window));
}

bool AudioEffectX::closeWindow(VstWindow *window)
{
    return callHost(audioMasterCloseWindow, 0, 0, window) != 0;
}

void *AudioEffectX::getDirectory() { return reinterpret_cast<void *>(callHost(audioMasterGetDirectory)); }

bool AudioEffectX::updateDisplay() { return callHost(audioMasterUpdateDisplay) != 0; }

bool AudioEffectX::beginEdit(int32_t index) { return callHost(audioMasterBeginEdit, index) != 0; }

bool AudioEffectX::endEdit(int32_t index) { return callHost(audioMasterEndEdit, index) != 0; }

bool AudioEffectX::openFileSelector(VstFileSelect *selector)
{
    return callHost(audioMasterOpenFileSelector, 0, 0, selector) != 0;
}
