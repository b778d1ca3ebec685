#pragma once
#include "host/vst2.h"

class AudioEffect;

/// An effect's editor. The host makes all calls on its window thread.
class AEffEditor {
public:
    explicit AEffEditor(AudioEffect *owner) : effect(owner) {}
    AEffEditor(const AEffEditor &) = delete;
    AEffEditor &operator=(const AEffEditor &) = delete;
    virtual ~AEffEditor() = default;

    /// Points `rect` to the editor's rectangle. Returns 0 if there is none.
    virtual intptr_t getRect(ERect **rect)
    {
        *rect = nullptr;
        return 0;
    }
    /// Opens the editor in the host's window. Returns 0 on failure.
    virtual intptr_t open(void *parent)
    {
        systemWindow = parent;
        return 0;
    }
    virtual void close() {}
    /// The host calls this regularly while the editor is open.
    virtual void idle()
    {
        if (!updateFlag) return;
        updateFlag = 0;
        update();
    }
    virtual void update() {}
    /// Requests an update() at the next idle().
    virtual void postUpdate() { updateFlag = 1; }
    /// Returns 1 if the editor handled the key, -1 if the host should handle it.
    virtual intptr_t onKeyDown(const VstKeyCode &) { return -1; }
    virtual intptr_t onKeyUp(const VstKeyCode &) { return -1; }
    /// Mouse motion that turns knobs: 0 circular, 1 relative circular, 2 linear.
    virtual intptr_t setKnobMode(int32_t) { return 0; }
    virtual bool onWheel(float) { return false; }

protected:
    AudioEffect *effect;
    void *systemWindow = nullptr;
    int32_t updateFlag = 0;
};
