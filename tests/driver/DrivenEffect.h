#pragma once
#include <atomic>
#include <functional>
#include <mutex>
#include <vector>

#include "host/VSTPlugin.h"
#include "tests/driver/Journal.h"

/// One of a host's effects, and the host as this effect sees it. As hosts do, it plays and automates while the
/// window thread works on it, but not while that loads the effect or changes its rate or channels.
/// Thread  play and automate on their threads under `playing` and `automating`; everything else the window's,
///         where the host's answer may act
class DrivenEffect {
public:
    using Bytes = std::vector<uint8_t>;

    explicit DrivenEffect(uint32_t ownNumber) : number(ownNumber) { load(); }
    ~DrivenEffect() { unload(); }
    DrivenEffect(const DrivenEffect &) = delete;

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
    void switchTo(bool on) const { dispatch(effMainsChanged, 0, on); }
    Bytes chunk() const;
    bool setChunk(Bytes chunk, bool isPreset) const;
    /// Hands over a chunk that may be damaged. If the effect refuses it, nothing at all may change; if it does not,
    /// the effect must be sound. True if taken.
    bool offer(const Bytes &chunk, bool isPreset) const;
    bool hasOpenEditor() const;

    void require(bool holds, const char *what) const { Journal::require(holds, what, number); }
    /// While nobody touches it.
    void requireRest() const;
    void requireFiniteParameters() const;
    void requireTextsThatFit() const;

    const uint32_t number;
    std::atomic<int32_t> inputs = 2, outputs = 2; // channels that the host connects
    std::function<void()> insideEdits; // what the host does inside the effect's calls about gestures
    bool echoes = false;               // sets each value at once that it is told

private:
    static intptr_t callback(AEffect *effect, int32_t opcode, int32_t index, intptr_t value, void *ptr,
                             float opt);
    void hearEdit(int32_t opcode, int32_t index, float value);
    std::vector<float> parameters() const;
    bool allGesturesEnded() const;

    AEffect *effect = nullptr;
    std::vector<int> gestures; // begun and not ended, by parameter
    int callsDeep = 0;         // such calls that a host is in, one inside the other
};
