#include "tests/driver/Studio.h"

#include <utility>

#include "host/VSTEditor.h"
#include "ui/window/FrameBase.h"
#include "ui/window/WindowBase.h"

Studio::Studio(uint32_t instances)
{
    Platform::useWindowSystem(&system);
    for (uint32_t i = 0; i < instances; ++i) {
        effects.push_back(std::make_unique<DrivenEffect>(i));
        windows.push_back(makeWindow(i));
    }
}

Studio::~Studio()
{
    const uint32_t all = size();
    for (uint32_t i = 0; i < all; i += 2) close(i); // the others close with their effects
    effects.clear();
    for (const Platform::WindowHandle window : windows) system.destroyWindow(window);
    system.pump();
    Journal::require(UI::Native::WindowBase::liveWindows() == 0, "no window of the editors is left", all);
    Journal::require(UI::Native::FrameBase::liveFrames() == 0, "no frame of the editors is left", all);
    Journal::require(system.windowCount() == 0, "no window of the system is left", all);
    Journal::require(system.timerCount() == 0, "no timer of the system is left", all);
    Platform::useWindowSystem(nullptr);
}

Point Studio::corner(uint32_t i) const
{
    return {static_cast<int32_t>(i % 5) * VSTEditor::kWidth,
            static_cast<int32_t>(i / 5) * VSTEditor::kHeight};
}

Platform::WindowHandle Studio::makeWindow(uint32_t i)
{
    return system.makeHostWindow(VSTEditor::kWidth, VSTEditor::kHeight, corner(i));
}

void Studio::open(uint32_t i)
{
    if (!effects[i]->record() || !windows[i]) return;
    effects[i]->require(effects[i]->dispatch(effEditOpen, 0, 0, windows[i]) == 1, "an editor opens");
}

void Studio::close(uint32_t i)
{
    if (effects[i]->record()) effects[i]->dispatch(effEditClose);
}

void Studio::destroyWindow(uint32_t i)
{
    // The effect may be told of it, and the host act then.
    system.destroyWindow(std::exchange(windows[i], nullptr));
    close(i);
    windows[i] = makeWindow(i);
}

uint32_t Studio::nextOpen(uint32_t i) const
{
    for (uint32_t tried = i; tried < i + size(); ++tried)
        if (effects[tried % size()]->hasOpenEditor()) return tried % size();
    return i;
}

void Studio::requireRest()
{
    for (const auto &each : effects)
        if (each->record()) each->requireRest();
}
