#pragma once
#include <atomic>
#include <vector>

#include "host/VSTPlugin.h"
#include "platform/offscreen/OffscreenWindowSystem.h"
#include "tests/signals/Signals.h"

/// An effect in a host, with its editor open in a window in memory all the time.
/// Thread  play: audio. automate: any. Everything else: the window's; restart() while nobody plays
class PlayedEffect final : private EditorWindow {
public:
    struct Format {
        uint32_t rate;    // Hz
        int32_t channels; // 1 or 2
    };
    static constexpr int32_t kMostFrames = 4096;

    PlayedEffect();
    ~PlayedEffect();
    PlayedEffect(const PlayedEffect &) = delete;

    /// Switched off, told the format, and on again.
    void restart(Format format);
    /// One thing that the person or the host does, and a tick with all that it paints.
    void useWindow(Signals::Random &random);
    /// Moves one parameter, or at times draws all of them anew.
    void automate(Signals::Random &random);
    AEffect *record() const { return effect; }
    DSP::Global &options() const;

    std::atomic<uint64_t> settings = 0; // parameters drawn anew, options, programs and states
    std::atomic<uint64_t> messages = 0; // that the effect has posted to its window

private:
    static intptr_t callback(AEffect *effect, int32_t opcode, int32_t index, intptr_t value, void *ptr,
                             float opt);
    intptr_t dispatch(int32_t opcode, int32_t index = 0, intptr_t value = 0, void *ptr = nullptr,
                      float opt = 0.0f) const
    {
        return effect->dispatcher(effect, opcode, index, value, ptr, opt);
    }
    /// Stands before the editor's window: what posting costs is the system's affair, and windows in memory take
    /// memory for it. The window thread takes the messages from here.
    void post(uint32_t code) override
    {
        waiting |= 1u << code;
        ++messages;
    }
    void usePerson(Signals::Random &random);
    void changeOption(Signals::Random &random);
    void setEnvelopes(Signals::Random &random);
    void useState(Signals::Random &random);
    void tick();

    Platform::OffscreenWindowSystem system; // first: everything else stands on it
    Platform::WindowHandle window;
    AEffect *effect = nullptr;
    std::atomic<uint32_t> waiting = 0; // a bit for each code of a message
    std::vector<uint8_t> kept;         // a state
};
