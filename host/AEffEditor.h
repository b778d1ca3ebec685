#pragma once
#include "host/vst2.h"

class AudioEffect;

/// An effect's editor as the host drives it: all calls on the host's window thread.
class AEffEditor {
public:
    explicit AEffEditor(AudioEffect *owner) : effect(owner) {}
    AEffEditor(const AEffEditor &) = delete;
    AEffEditor &operator=(const AEffEditor &) = delete;
    virtual ~AEffEditor() = default;

    /// Points `rect` to the editor's rectangle; 0 if it has none.
    virtual intptr_t getRect(ERect **rect)
    {
        *rect = nullptr;
        return 0;
    }
    /// Shows the editor inside the host's window; 0 on failure.
    virtual intptr_t open(void *parent)
    {
        systemWindow = parent;
        return 0;
    }
    virtual void close() {}
    /// Called by the host regularly while the editor is open.
    virtual void idle()
    {
        if (!updateFlag) return;
        updateFlag = 0;
        update();
    }
    virtual void update() {}
    /// Asks for an update() at the next idle().
    virtual void postUpdate() { updateFlag = 1; }
    /// 1 if the editor took the key, -1 if the host may have it.
    virtual intptr_t onKeyDown(const VstKeyCode &) { return -1; }
    virtual intptr_t onKeyUp(const VstKeyCode &) { return -1; }
    /// How knobs turn: 0 circular, 1 relative circular, 2 linear.
    virtual intptr_t setKnobMode(int32_t) { return 0; }
    virtual bool onWheel(float) { return false; }

protected:
    AudioEffect *effect;
    void *systemWindow = nullptr;
    int32_t updateFlag = 0;
};
