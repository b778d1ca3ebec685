#pragma once
#include <memory>

#include "host/AEffEditor.h"
#include "host/vst2.h"

/// Maps the host's calls through an AEffect record to virtual functions: the VST 1 part of the interface. All
/// functions except `process` have a harmless default.
/// Thread  any; nothing here locks
/// Errors  failures return 0, false or an empty string; no exception reaches the host. The host owns the string
///         buffers: overrides document the longest string that they write
class AudioEffect {
public:
    AudioEffect(HostCallback host, int32_t programs, int32_t parameters);
    AudioEffect(const AudioEffect &) = delete;
    AudioEffect &operator=(const AudioEffect &) = delete;
    virtual ~AudioEffect();

    // Parameter values are normalised: 0 to 1.
    virtual void setParameter(int32_t index, float value);
    virtual float getParameter(int32_t index);
    /// Sends the host a value that the user has set.
    virtual void setParameterAutomated(int32_t index, float value);

    /// process adds to the outputs, processReplacing overwrites them. One pointer per channel, `frames` samples
    /// each.
    virtual void process(float **inputs, float **outputs, int32_t frames) = 0;
    virtual void processReplacing(float **inputs, float **outputs, int32_t frames);

    /// Handles one request from the host. This class supports the opcodes up to effSetChunk.
    virtual intptr_t dispatcher(int32_t opcode, int32_t index, intptr_t value, void *ptr, float opt);

    virtual void open() {}
    virtual void close() {}
    virtual int32_t getProgram() { return curProgram; }
    virtual void setProgram(int32_t program) { curProgram = program; }
    virtual void setProgramName(char *name);
    virtual void getProgramName(char *name);
    virtual void getParameterLabel(int32_t index, char *label);
    virtual void getParameterDisplay(int32_t index, char *text);
    virtual void getParameterName(int32_t index, char *text);
    virtual float getVu() { return 0.0f; }
    /// Points `data` to the effect's state and returns its size in bytes.
    virtual int32_t getChunk(void **data, bool isPreset);
    virtual int32_t setChunk(void *data, int32_t size, bool isPreset);
    virtual void setSampleRate(float rate) { sampleRate = rate; } // Hz
    virtual void setBlockSize(int32_t size) { blockSize = size; } // frames
    virtual void suspend() {}
    virtual void resume() {}

    virtual void setUniqueID(int32_t id) { cEffect.uniqueID = id; }
    virtual void setNumInputs(int32_t n) { cEffect.numInputs = n; }
    virtual void setNumOutputs(int32_t n) { cEffect.numOutputs = n; }
    virtual void hasVu(bool on = true) { setFlag(kHasVu, on); }
    virtual void hasClip(bool on = true) { setFlag(kHasClip, on); }
    virtual void canMono(bool on = true) { setFlag(kCanMono, on); }
    virtual void canProcessReplacing(bool on = true) { setFlag(kCanReplace, on); }
    virtual void programsAreChunks(bool on = true) { setFlag(kProgramsAreChunks, on); }
    virtual void setRealtimeQualities(int32_t n) { cEffect.realtimeQuality = n; }
    virtual void setOfflineQualities(int32_t n) { cEffect.offlineQuality = n; }
    /// Sets the delay that the host compensates, in samples. Any thread may read it through initialDelay().
    virtual void setInitialDelay(int32_t samples);

    virtual float getSampleRate() { return sampleRate; }
    virtual int32_t getBlockSize() { return blockSize; }

    /// VST version of the host; 1 if the host does not report one.
    virtual int32_t getMasterVersion();
    virtual int32_t getCurrentUniqueId();
    virtual void masterIdle();
    /// True if the channel is connected or the host does not report it.
    virtual bool isInputConnected(int32_t index);
    virtual bool isOutputConnected(int32_t index);

    // Write numbers as right-aligned strings, usually 7 characters wide.
    virtual void dB2string(float value, char *text);
    virtual void Hz2string(float samples, char *text);
    virtual void ms2string(float samples, char *text);
    virtual void float2string(float value, char *text);
    virtual void long2string(int32_t value, char *text);

    /// The record for the host. It lives as long as this object.
    AEffect *getAeffect() { return &cEffect; }

protected:
    void setFlag(EffectCapability flag, bool on);
    int32_t initialDelay();
    /// Returns the host's result, or 0 if there is no host.
    intptr_t callHost(HostOpcode opcode, int32_t index = 0, intptr_t value = 0, void *ptr = nullptr,
                      float opt = 0.0f);

    float sampleRate = 44100.0f; // Hz
    std::unique_ptr<AEffEditor> editor;
    HostCallback audioMaster;
    int32_t numPrograms;
    int32_t numParams;
    int32_t curProgram = 0;
    int32_t blockSize = 1024; // frames
    AEffect cEffect = {};

private:
    intptr_t dispatchProgram(int32_t opcode, intptr_t value, char *text);
    intptr_t dispatchParameterText(int32_t opcode, int32_t index, char *text);
    intptr_t dispatchEditor(int32_t opcode, void *ptr);
};
