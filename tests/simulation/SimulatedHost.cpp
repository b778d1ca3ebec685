#include "tests/simulation/SimulatedHost.h"

#include <utility>

#include "host/VSTEditor.h"
#include "ui/window/FrameBase.h"
#include "ui/window/WindowBase.h"

SimulatedHost::SimulatedHost(uint32_t instances)
{
    Platform::useWindowSystem(&system);
    for (uint32_t i = 0; i < instances; ++i) {
        effects.push_back(std::make_unique<EffectInstance>(i));
        windows.push_back(makeWindow(i));
    }
}

SimulatedHost::~SimulatedHost()
{
    const uint32_t all = size();
    for (uint32_t i = 0; i < all; i += 2) close(i); // unloading closes every second editor
    effects.clear();
    for (const Platform::WindowHandle window : windows) system.destroyWindow(window);
    system.pump();
    Journal::require(UI::Native::WindowBase::liveWindows() == 0, "all editor windows are destroyed", all);
    Journal::require(UI::Native::FrameBase::liveFrames() == 0, "all editor frames are destroyed", all);
    Journal::require(system.windowCount() == 0, "all system windows are destroyed", all);
    Journal::require(system.timerCount() == 0, "all system timers are stopped", all);
    Platform::useWindowSystem(nullptr);
}

Point SimulatedHost::corner(uint32_t i) const
{
    return {static_cast<int32_t>(i % 5) * VSTEditor::kWidth,
            static_cast<int32_t>(i / 5) * VSTEditor::kHeight};
}

Platform::WindowHandle SimulatedHost::makeWindow(uint32_t i)
{
    return system.makeHostWindow(VSTEditor::kWidth, VSTEditor::kHeight, corner(i));
}

void SimulatedHost::open(uint32_t i)
{
    if (!effects[i]->record() || !windows[i]) return;
    effects[i]->require(effects[i]->dispatch(effEditOpen, 0, 0, windows[i]) == 1, "the editor opens");
}

void SimulatedHost::close(uint32_t i)
{
    if (effects[i]->record()) effects[i]->dispatch(effEditClose);
}

void SimulatedHost::destroyWindow(uint32_t i)
{
    // Clear the handle first: the editor may end a gesture, and the host may then make nested calls.
    system.destroyWindow(std::exchange(windows[i], nullptr));
    close(i);
    windows[i] = makeWindow(i);
}

uint32_t SimulatedHost::nextOpen(uint32_t i) const
{
    for (uint32_t tried = i; tried < i + size(); ++tried)
        if (effects[tried % size()]->hasOpenEditor()) return tried % size();
    return i;
}

void SimulatedHost::requireIdle()
{
    for (const auto &each : effects)
        if (each->record()) each->requireIdle();
}
