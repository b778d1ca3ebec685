#pragma once
#include "host/AudioEffect.h"

/// The VST 2 part of the interface: further requests from the host, and the effect's requests to the host. Adds
/// no data members.
class AudioEffectX : public AudioEffect {
public:
    using AudioEffect::AudioEffect;

    /// Handles the opcodes effProcessEvents to effBeginLoadProgram and passes all others to AudioEffect.
    intptr_t dispatcher(int32_t opcode, int32_t index, intptr_t value, void *ptr, float opt) override;

    // Requests from the host. Of two speaker arrangements, the first describes the inputs.
    virtual int32_t processEvents(HostEvents *) { return 0; }
    virtual bool canParameterBeAutomated(int32_t) { return true; }
    virtual bool string2parameter(int32_t, char *) { return false; }
    virtual int32_t getNumCategories() { return 1; }
    virtual bool getProgramNameIndexed(int32_t, int32_t, char *) { return false; }
    virtual bool copyProgram(int32_t) { return false; }
    virtual void inputConnected(int32_t, bool) {}
    virtual void outputConnected(int32_t, bool) {}
    virtual bool getInputProperties(int32_t, ChannelProperties *) { return false; }
    virtual bool getOutputProperties(int32_t, ChannelProperties *) { return false; }
    virtual EffectCategory getPlugCategory();
    virtual int32_t reportCurrentPosition() { return 0; }
    virtual float *reportDestinationBuffer() { return nullptr; }
    virtual bool offlineNotify(OfflineFile *, int32_t, bool) { return false; }
    virtual bool offlinePrepare(OfflineTask *, int32_t) { return false; }
    virtual bool offlineRun(OfflineTask *, int32_t) { return false; }
    virtual bool processVariableIo(VariableBlock *) { return false; }
    virtual bool setSpeakerArrangement(SpeakerLayout *, SpeakerLayout *) { return false; }
    virtual bool getSpeakerArrangement(SpeakerLayout **inputs, SpeakerLayout **outputs);
    virtual void setBlockSizeAndSampleRate(int32_t size, float rate);
    virtual bool setBypass(bool) { return false; }
    virtual bool getEffectName(char *) { return false; }
    virtual bool getErrorText(char *) { return false; }
    virtual bool getVendorString(char *) { return false; }
    virtual bool getProductString(char *) { return false; }
    virtual int32_t getVendorVersion() { return 0; }
    virtual intptr_t vendorSpecific(int32_t, intptr_t, void *, float) { return 0; }
    /// Returns 1 for yes, -1 for no, 0 for an unknown capability.
    virtual int32_t canDo(const char *) { return 0; }
    virtual int32_t getGetTailSize() { return 0; }
    virtual int32_t fxIdle() { return 0; }
    virtual void *getIcon() { return nullptr; }
    virtual bool setViewPosition(int32_t, int32_t) { return false; }
    virtual bool getParameterProperties(int32_t, VstParameterProperties *) { return false; }
    /// The dispatcher returns the opposite to the host: 1 if the editor needs no keys.
    virtual bool keysRequired() { return false; }
    virtual int32_t getVstVersion() { return 2300; }
    virtual int32_t getMidiProgramName(int32_t, MidiProgram *) { return 0; }
    virtual int32_t getCurrentMidiProgram(int32_t, MidiProgram *) { return -1; }
    virtual int32_t getMidiProgramCategory(int32_t, MidiCategory *) { return 0; }
    virtual bool hasMidiProgramsChanged(int32_t) { return false; }
    virtual bool getMidiKeyName(int32_t, MidiKey *) { return false; }
    virtual bool beginSetProgram() { return false; }
    virtual bool endSetProgram() { return false; }
    virtual int32_t getNextShellPlugin(char *) { return 0; }
    virtual int32_t startProcess() { return 0; }
    virtual int32_t stopProcess() { return 0; }
    virtual int32_t setTotalSampleToProcess(int32_t frames) { return frames; }
    virtual bool setPanLaw(int32_t, float) { return false; }
    virtual int32_t beginLoadBank(void *) { return 0; }
    virtual int32_t beginLoadProgram(void *) { return 0; }

    // Requests to the host. They return 0, false or null if there is no host or it does not support the request.
    virtual void wantEvents(int32_t filter = 1);
    virtual HostTime *getTimeInfo(int32_t filter);
    virtual int32_t tempoAt(int32_t position);
    virtual int32_t getNumAutomatableParameters();
    virtual int32_t getParameterQuantization();
    /// Makes the host read the record again, after a change of delay or channels.
    virtual bool ioChanged();
    virtual bool needIdle();
    virtual bool sizeWindow(int32_t width, int32_t height);
    // Store the host's value if it reports one, and return the stored value.
    virtual float updateSampleRate();
    virtual int32_t updateBlockSize();
    virtual int32_t getInputLatency();
    virtual int32_t getOutputLatency();
    virtual AEffect *getPreviousPlug(ChannelProperties *properties);
    virtual AEffect *getNextPlug(ChannelProperties *properties);
    virtual int32_t willProcessReplacing();
    virtual int32_t getCurrentProcessLevel();
    virtual int32_t getAutomationState();
    virtual bool offlineRead(OfflineTask *task, int32_t option, bool readSource = true);
    virtual bool offlineWrite(OfflineTask *task, int32_t option);
    virtual bool offlineStart(OfflineFile *files, int32_t numFiles, int32_t numNewFiles);
    virtual int32_t offlineGetCurrentPass();
    virtual int32_t offlineGetCurrentMetaPass();
    virtual void setOutputSampleRate(float rate);
    virtual SpeakerLayout *getInputSpeakerArrangement();
    virtual SpeakerLayout *getOutputSpeakerArrangement();
    // `text`: up to 64 bytes, terminator included.
    virtual bool getHostVendorString(char *text);
    virtual bool getHostProductString(char *text);
    virtual int32_t getHostVendorVersion();
    virtual intptr_t hostVendorSpecific(int32_t index, intptr_t value, void *ptr, float opt);
    virtual int32_t canHostDo(const char *text);
    virtual int32_t getHostLanguage();
    virtual void *openWindow(HostWindow *window);
    virtual bool closeWindow(HostWindow *window);
    virtual void *getDirectory();
    virtual bool updateDisplay();
    // Mark the start and end of a user's edit of one parameter.
    virtual bool beginEdit(int32_t index);
    virtual bool endEdit(int32_t index);
    virtual bool openFileSelector(FileDialog *selector);

    virtual AEffEditor *getEditor() { return editor.get(); }
    virtual void wantAsyncOperation(bool on = true) { setFlag(kWorksAsynchronously, on); }
    virtual void hasExternalBuffer(bool on = true) { setFlag(kHasOwnBuffer, on); }
    virtual void isSynth(bool on = true) { setFlag(kIsInstrument, on); }
    virtual void noTail(bool on = true) { setFlag(kHasNoTail, on); }

    // Speaker arrangements on the heap. A previous `*arrangement` is freed first. False for a null pointer or
    // an invalid channel count, or if memory runs out.
    virtual bool allocateArrangement(SpeakerLayout **arrangement, int32_t channels);
    virtual bool deallocateArrangement(SpeakerLayout **arrangement);
    virtual bool copySpeaker(Speaker *to, const Speaker *from);
    /// Makes `*to` a copy of `from`.
    virtual bool matchArrangement(SpeakerLayout **to, const SpeakerLayout *from);

private:
    intptr_t dispatchPrograms(int32_t opcode, int32_t index, intptr_t value, void *ptr);
    intptr_t dispatchSelfDescription(int32_t opcode, int32_t index, void *ptr);
    intptr_t dispatchConnections(int32_t opcode, int32_t index, intptr_t value, void *ptr, float opt);
    intptr_t dispatchOffline(int32_t opcode, int32_t index, intptr_t value, void *ptr);
    intptr_t dispatchKeys(int32_t opcode, int32_t index, intptr_t value, float opt);
    intptr_t dispatchMidiPrograms(int32_t opcode, int32_t index, void *ptr);
};
