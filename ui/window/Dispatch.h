#pragma once
#include <memory>
#include <utility>
#include <vector>

#include "PluginBase/Util/Object.h"
#include "dsp/numerics/FloatState.h"

namespace UI::Native {

/// Nesting depth of an editor's event handling. A host may close the editor while a control handles an event, for
/// instance from the callback that reports a parameter. The editor's objects then live until the outermost event
/// has been handled.
/// Thread  window thread
class Dispatch {
public:
    /// Marks one event as being handled until the scope is destroyed.
    class Scope {
    public:
        explicit Scope(std::shared_ptr<Dispatch> dispatch) : state(std::move(dispatch)) { ++state->depth; }
        ~Scope()
        {
            if (--state->depth > 0) return;
            // Empty the list first: destroying the objects may raise further events.
            const auto ending = std::exchange(state->parked, {});
        }
        Scope(const Scope &) = delete;
        Scope &operator=(const Scope &) = delete;

    private:
        const DSP::FloatState floatState; // gestures compute values that affect the sound
        const std::shared_ptr<Dispatch> state;
    };

    bool isActive() const { return depth > 0; }
    /// Destroys `object` after the outermost event has been handled.
    void park(std::unique_ptr<Object> object) { parked.push_back(std::move(object)); }

private:
    int depth = 0;
    std::vector<std::unique_ptr<Object>> parked;
};

} // namespace UI::Native
