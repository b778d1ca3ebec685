#pragma once
#include <memory>
#include <utility>
#include <vector>

#include "PluginBase/Util/Object.h"
#include "dsp/numerics/FloatState.h"

namespace UI::Native {

/// How deep an editor is in the handling of events. A host may close the editor while one of its controls is
/// at work, for instance from the call that reports a parameter; the objects then live until the outermost
/// event has been handled.
/// Thread  the window's
class Dispatch {
public:
    /// One event, for as long as it is handled.
    class Scope {
    public:
        explicit Scope(std::shared_ptr<Dispatch> dispatch) : state(std::move(dispatch)) { ++state->depth; }
        ~Scope()
        {
            if (--state->depth > 0) return;
            // They may be the last to hold the state, and their own ends may bring events.
            const auto ending = std::exchange(state->parked, {});
        }
        Scope(const Scope &) = delete;
        Scope &operator=(const Scope &) = delete;

    private:
        const DSP::FloatState floatState; // gestures compute values that reach the sound
        const std::shared_ptr<Dispatch> state;
    };

    bool isActive() const { return depth > 0; }
    /// Keeps an object until no event is being handled any more.
    void park(std::unique_ptr<Object> object) { parked.push_back(std::move(object)); }

private:
    int depth = 0;
    std::vector<std::unique_ptr<Object>> parked;
};

} // namespace UI::Native
