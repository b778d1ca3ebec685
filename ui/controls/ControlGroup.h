#pragma once
#include <vector>

#include "dsp/component/Component.h"
#include "ui/window/FrameBase.h"

namespace UI::Native {

class MultiBandSpectrum;
class PixmapSlider;
class TextEdit;

/// Carries out the gestures on the controls of one kind, one for each band: on the band alone or, where the
/// bands are linked, on all of them. Each value keeps to its parameter's range.
class ControlGroup : public Reflected<ControlGroup, Object> {
public:
    static constexpr const char *kClassName = "UI::Native::ControlGroup";
    using IsLinked = bool (*)(void *context);

    struct Members {
        std::vector<uint32_t> params;        // float parameters, by band
        std::vector<TextEdit *> edits;       // shown values to refresh; may be fewer
        std::vector<PixmapSlider *> sliders; // the same
        MultiBandSpectrum *spectrum;         // may be null
    };

    ControlGroup(FrameBase *ownerFrame, const String &groupName, IsLinked linked, void *linkContext,
                 DSP::Component *parameterOwner, Members groupMembers);

    void slotDelta(uint32_t control, float delta);
    void slotReset(uint32_t control);
    void slotSet(uint32_t control, float wanted);
    using Slots = MetaRows<Meta<&ControlGroup::slotDelta, "iControl", "fDelta">,
                           Meta<&ControlGroup::slotReset, "iControl">,
                           Meta<&ControlGroup::slotSet, "iControl", "fValue">>;

private:
    /// Gives every band that the gesture reaches `newValue(parameter)`.
    template <class NewValue>
    void apply(uint32_t control, NewValue newValue);
    float clampToRange(uint32_t param, float v) const;

    FrameBase *const frame;
    const IsLinked isLinked;
    void *const context;
    DSP::Component *const component;
    const Members members;
};

} // namespace UI::Native
