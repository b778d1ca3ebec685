#include "ui/controls/OnOffButton.h"

#include <algorithm>

#include "ui/window/FrameBase.h"

namespace UI::Native {

OnOffButton::OnOffButton(FrameBase *ownerFrame, WindowBase *parentWindow, const String &windowName,
                         const String &onImages, const String &offImages, PixmapRef overlay,
                         DSP::Component *parameterOwner, uint32_t parameter)
    : Reflected(ownerFrame, parentWindow, windowName,
                parameterOwner->boolParamValue(parameter) ? onImages : offImages, std::move(overlay)),
      component(parameterOwner),
      boolIndex(parameter),
      onPrefix(onImages),
      offPrefix(offImages),
      state(parameterOwner->boolParamValue(parameter))
{
    wire<&PixmapButton::sigClicked, &OnOffButton::slotClicked>(this, this);
}

void OnOffButton::refresh()
{
    const bool value = component->boolParamValue(boolIndex);
    if (value == state) return;
    state = value;
    setImages(images());
}

void OnOffButton::setState(bool on)
{
    state = on;
    component->setBoolParamValue(boolIndex, state);
    setImages(images());
    sigToggled();
}

void OnOffButton::tellPlugin()
{
    frame->getPlugin()->editParameter({component, DSP::ParamKind::boolean, boolIndex},
                                      Plugin::EditPhase::value, state);
}

void OnOffButton::slotClicked()
{
    setState(!state);
    repaintNow();
    sigUserToggled();
    tellPlugin();
}

bool OnOffButton::wantsExclusive() const { return !group.empty() && frame->altDown() && !frame->shiftDown(); }

void OnOffButton::toggleExclusively()
{
    const bool lonely = state && std::none_of(group.begin(), group.end(), [this](const OnOffButton *member) {
                            return member != this && member->state;
                        });
    for (OnOffButton *member : group) {
        const bool on = (member == this) != lonely;
        if (member->state != on) member->setState(on);
        member->tellPlugin();
    }
    sigUserAltClicked();
}

bool OnOffButton::onMouseDown(Point at, uint32_t mods)
{
    if (!wantsExclusive()) return PixmapButton::onMouseDown(at, mods);
    toggleExclusively();
    return true;
}

bool OnOffButton::onKeyDown(uint32_t key, uint32_t, bool)
{
    if (key != Platform::kKeyUp && key != Platform::kKeyDown) return false;
    if (wantsExclusive())
        toggleExclusively();
    else
        slotClicked();
    sigResetFocusTimer();
    return true;
}

} // namespace UI::Native
