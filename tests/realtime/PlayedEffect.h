#pragma once
#include <atomic>
#include <vector>

#include "tests/driver/Person.h"

/// An effect in a host, with its editor open in a window in memory all the time.
/// Thread  record, options: any. automate: any. Everything else: the window's; restart() while nobody plays
class PlayedEffect final : private EditorWindow {
public:
    struct Format {
        uint32_t rate;    // Hz
        int32_t channels; // 1 or 2
    };
    static constexpr int32_t kMostFrames = 4096;

    PlayedEffect();

    /// Switches the effect off and on again and sets the format.
    void restart(Format format);
    /// One thing that the person or the host does, and a tick with all that it paints.
    void useWindow(Random &random);
    /// Moves one parameter, or at times draws all of them anew.
    void automate(Random &random);
    AEffect *record() const { return effect.record(); }
    DSP::Global &options() const { return *effect.plugin().transformHandle().global(); }

private:
    /// Stands before the editor's window: what posting costs is the system's affair, and windows in memory take
    /// memory for it. The window thread takes the messages from here.
    void post(uint32_t code) override { waiting |= 1u << code; }
    void setEnvelopes(Random &random);
    void useState(Random &random);
    void tick();

    Studio studio{1};
    DrivenEffect &effect = studio.effect(0);
    Person person{studio};
    std::atomic<uint32_t> waiting = 0; // a bit for each code of a message
    DrivenEffect::Bytes kept;          // a state
};
