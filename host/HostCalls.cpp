#include "host/AudioEffectX.h"

// Requests from AudioEffectX to the host.

void AudioEffectX::wantEvents(int32_t filter) { callHost(audioMasterWantMidi, 0, filter); }

HostTime *AudioEffectX::getTimeInfo(int32_t filter)
{
    return reinterpret_cast<HostTime *>(callHost(audioMasterGetTime, 0, filter));
}

int32_t AudioEffectX::tempoAt(int32_t position)
{
    return static_cast<int32_t>(callHost(hostTempo, 0, position));
}

int32_t AudioEffectX::getNumAutomatableParameters()
{
    return static_cast<int32_t>(callHost(hostAutomatableCount));
}

int32_t AudioEffectX::getParameterQuantization()
{
    return static_cast<int32_t>(callHost(hostParameterSteps));
}

bool AudioEffectX::ioChanged() { return callHost(audioMasterIOChanged) != 0; }

bool AudioEffectX::needIdle() { return callHost(hostWantIdle) != 0; }

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

int32_t AudioEffectX::getInputLatency() { return static_cast<int32_t>(callHost(hostInputDelay)); }

int32_t AudioEffectX::getOutputLatency() { return static_cast<int32_t>(callHost(hostOutputDelay)); }

AEffect *AudioEffectX::getPreviousPlug(ChannelProperties *properties)
{
    return reinterpret_cast<AEffect *>(callHost(hostEffectBefore, 0, 0, properties));
}

AEffect *AudioEffectX::getNextPlug(ChannelProperties *properties)
{
    return reinterpret_cast<AEffect *>(callHost(hostEffectAfter, 0, 0, properties));
}

int32_t AudioEffectX::willProcessReplacing() { return static_cast<int32_t>(callHost(hostReplacesOrAdds)); }

int32_t AudioEffectX::getCurrentProcessLevel() { return static_cast<int32_t>(callHost(hostThreadKind)); }

int32_t AudioEffectX::getAutomationState() { return static_cast<int32_t>(callHost(hostAutomationMode)); }

bool AudioEffectX::offlineRead(OfflineTask *task, int32_t option, bool readSource)
{
    return callHost(hostOfflineRead, readSource, option, task) != 0;
}

bool AudioEffectX::offlineWrite(OfflineTask *task, int32_t option)
{
    return callHost(hostOfflineWrite, 0, option, task) != 0;
}

bool AudioEffectX::offlineStart(OfflineFile *files, int32_t numFiles, int32_t numNewFiles)
{
    return callHost(hostOfflineStart, numNewFiles, numFiles, files) != 0;
}

int32_t AudioEffectX::offlineGetCurrentPass() { return static_cast<int32_t>(callHost(hostOfflinePass)); }

int32_t AudioEffectX::offlineGetCurrentMetaPass()
{
    return static_cast<int32_t>(callHost(hostOfflineMetaPass));
}

void AudioEffectX::setOutputSampleRate(float rate) { callHost(hostSetOutputRate, 0, 0, nullptr, rate); }

SpeakerLayout *AudioEffectX::getInputSpeakerArrangement()
{
    return reinterpret_cast<SpeakerLayout *>(callHost(hostInputSpeakers));
}

SpeakerLayout *AudioEffectX::getOutputSpeakerArrangement()
{
    return reinterpret_cast<SpeakerLayout *>(callHost(hostOutputSpeakers));
}

bool AudioEffectX::getHostVendorString(char *text)
{
    return callHost(audioMasterGetVendorString, 0, 0, text) != 0;
}

bool AudioEffectX::getHostProductString(char *text)
{
    return callHost(audioMasterGetProductString, 0, 0, text) != 0;
}

int32_t AudioEffectX::getHostVendorVersion() { return static_cast<int32_t>(callHost(hostVendorVersion)); }

intptr_t AudioEffectX::hostVendorSpecific(int32_t index, intptr_t value, void *ptr, float opt)
{
    return callHost(hostVendorRequest, index, value, ptr, opt);
}

int32_t AudioEffectX::canHostDo(const char *text)
{
    // The callback takes non-const pointers only; hosts do not modify this string.
    return static_cast<int32_t>(callHost(audioMasterCanDo, 0, 0, const_cast<char *>(text)));
}

int32_t AudioEffectX::getHostLanguage() { return static_cast<int32_t>(callHost(hostLanguage)); }

void *AudioEffectX::openWindow(HostWindow *window)
{
    return reinterpret_cast<void *>(callHost(hostOpenWindow, 0, 0, window));
}

bool AudioEffectX::closeWindow(HostWindow *window) { return callHost(hostCloseWindow, 0, 0, window) != 0; }

void *AudioEffectX::getDirectory() { return reinterpret_cast<void *>(callHost(hostDirectory)); }

bool AudioEffectX::updateDisplay() { return callHost(hostRefreshDisplay) != 0; }

bool AudioEffectX::beginEdit(int32_t index) { return callHost(audioMasterBeginEdit, index) != 0; }

bool AudioEffectX::endEdit(int32_t index) { return callHost(audioMasterEndEdit, index) != 0; }

bool AudioEffectX::openFileSelector(FileDialog *selector)
{
    return callHost(hostOpenFileDialog, 0, 0, selector) != 0;
}
