#pragma once
#include <vector>

#include "dsp/component/Component.h"
#include "ui/window/FrameBase.h"

namespace UI::Native {

class MultiBandSpectrum;
class PixmapSlider;
class TextEdit;

/// Applies the user's gestures on one kind of control that every band has. A gesture changes its own band, or all
/// bands if they are linked. Values are clamped to each parameter's range.
class ControlGroup : public Reflected<ControlGroup, Object> {
public:
    static constexpr const char *kClassName = "UI::Native::ControlGroup";
    using IsLinked = bool (*)(void *context);

    struct Members {
        std::vector<uint32_t> params;        // float parameters, by band
        std::vector<TextEdit *> edits;       // fields to refresh; may be fewer than params
        std::vector<PixmapSlider *> sliders; // sliders to refresh; may be fewer than params
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
    /// Sets the parameter of each affected band to `newValue(parameter)`.
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
