#include "ui/controls/ControlGroup.h"

#include <algorithm>

#include "ui/controls/MultiBandSpectrum.h"
#include "ui/controls/PixmapSlider.h"
#include "ui/controls/TextEdit.h"

namespace UI::Native {

ControlGroup::ControlGroup(FrameBase *ownerFrame, const String &groupName, IsLinked linked, void *linkContext,
                           DSP::Component *parameterOwner, Members groupMembers)
    : Reflected(groupName),
      frame(ownerFrame),
      isLinked(linked),
      context(linkContext),
      component(parameterOwner),
      members(std::move(groupMembers))
{
}

template <class NewValue>
void ControlGroup::apply(uint32_t control, NewValue newValue)
{
    const bool linked = isLinked(context);
    const auto refresh = [](const auto &controls, size_t i) {
        if (i < controls.size() && controls[i]) controls[i]->refresh();
    };
    for (uint32_t i = 0; i < members.params.size(); ++i) {
        if (i != control && !linked) continue;
        const uint32_t param = members.params[i];
        const float wanted = newValue(param);
        component->setFloatParamValue(param, wanted);
        refresh(members.edits, i);
        refresh(members.sliders, i);
        frame->getPlugin()->editParameter({component, DSP::ParamKind::real, param}, Plugin::EditPhase::value,
                                          wanted);
    }
    // Only the gain group has a spectrum: the curves may show the signal after the gain.
    if (members.spectrum) members.spectrum->updateCutoffs();
}

float ControlGroup::clampToRange(uint32_t param, float v) const
{
    const DSP::FloatRange range = component->floatParamRange(param);
    return std::clamp(v, range.minimum, range.maximum);
}

void ControlGroup::slotDelta(uint32_t control, float delta)
{
    apply(control,
          [&](uint32_t param) { return clampToRange(param, component->floatParamValue(param) + delta); });
}

void ControlGroup::slotReset(uint32_t control)
{
    apply(control, [&](uint32_t param) { return component->floatParamDefault(param); });
}

void ControlGroup::slotSet(uint32_t control, float wanted)
{
    apply(control, [&](uint32_t param) { return clampToRange(param, wanted); });
}

} // namespace UI::Native
