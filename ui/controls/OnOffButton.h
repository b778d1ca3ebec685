#pragma once
#include <vector>

#include "dsp/component/Component.h"
#include "ui/controls/PixmapButton.h"

namespace UI::Native {

/// A button that switches a bool parameter, with two images for each state. An Alt-click on a button in a group
/// turns it on and all others off. If it was the only one on, the Alt-click inverts the whole group.
class OnOffButton : public Reflected<OnOffButton, PixmapButton> {
public:
    static constexpr const char *kClassName = "UI::Native::OnOffButton";

    OnOffButton(FrameBase *ownerFrame, WindowBase *parentWindow, const String &windowName,
                const String &onImages, const String &offImages, PixmapRef overlay,
                DSP::Component *parameterOwner, uint32_t parameter);

    /// Shows the parameter's value without emitting a signal.
    void refresh();
    /// `members` includes this button.
    void setGroup(uint32_t /*index*/, const std::vector<OnOffButton *> &members) { group = members; }

    bool onMouseDown(Point at, uint32_t mods) override;
    bool onKeyDown(uint32_t key, uint32_t mods, bool wasDown) override;

    void sigUserToggled() { emitSignal<&OnOffButton::sigUserToggled>(); }
    void sigUserAltClicked() { emitSignal<&OnOffButton::sigUserAltClicked>(); }
    void sigToggled() { emitSignal<&OnOffButton::sigToggled>(); }
    void slotClicked();
    using Signals = MetaRows<Meta<&OnOffButton::sigUserToggled>, Meta<&OnOffButton::sigUserAltClicked>,
                             Meta<&OnOffButton::sigToggled>>;
    using Slots = MetaRows<Meta<&OnOffButton::slotClicked>>;

private:
    void setState(bool on);
    void tellPlugin();
    bool wantsExclusive() const;
    void toggleExclusively();
    const String &images() const { return state ? onPrefix : offPrefix; }

    DSP::Component *const component;
    const uint32_t boolIndex;
    const String onPrefix, offPrefix;
    bool state;
    std::vector<OnOffButton *> group; // not owned; empty if the button has no group
};

} // namespace UI::Native
