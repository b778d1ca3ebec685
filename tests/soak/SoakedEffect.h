#pragma once
#include <atomic>
#include <functional>
#include <mutex>
#include <vector>

#include "host/VSTPlugin.h"

/// One of a host's effects, and the host as this effect sees it. As hosts do, it plays and automates while the
/// window thread works on it, but not while that loads the effect or changes its rate or channels.
/// Thread  play and automate on their threads under `playing` and `automating`; everything else the window's,
///         where the host's answer may act
class SoakedEffect {
public:
    using Bytes = std::vector<uint8_t>;

    explicit SoakedEffect(uint32_t number);
    ~SoakedEffect();
    SoakedEffect(const SoakedEffect &) = delete;

    /// Neither sound nor automation, until it goes.
    using Still = std::scoped_lock<std::mutex, std::mutex>;
    std::mutex playing, automating;

    // The effect is null between unload and load, both of which need stillness.
    void load();
    void unload();
    AEffect *record() const { return effect; }
    VSTPlugin &plugin() const { return *VSTPlugin::of(effect); }
    intptr_t dispatch(int32_t opcode, int32_t index = 0, intptr_t value = 0, void *ptr = nullptr,
                      float opt = 0.0f) const
    {
        return effect->dispatcher(effect, opcode, index, value, ptr, opt);
    }
    Bytes chunk() const;
    bool setChunk(Bytes chunk, bool isPreset) const;
    bool hasOpenEditor() const;
    bool isEditing() const;
    void requireRest() const;
    void requireFiniteParameters() const;

    const uint32_t number;
    std::atomic<int32_t> inputs = 2, outputs = 2; // channels that the host connects
    std::function<void()> insideNextEdit; // what the host does inside the effect's next call about a gesture
    bool echoes = false;                  // sets each value at once that it is told

private:
    static intptr_t callback(AEffect *effect, int32_t opcode, int32_t index, intptr_t value, void *ptr,
                             float opt);
    void hearEdit(int32_t opcode, int32_t index, float value);

    AEffect *effect = nullptr;
    std::vector<int> gestures; // begun and not ended, by parameter
};
