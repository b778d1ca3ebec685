#include "tests/soak/Studio.h"

#include "host/VSTEditor.h"
#include "tests/soak/Journal.h"
#include "ui/native/FrameBase.h"
#include "ui/native/WindowBase.h"

using Journal::counts;
using Journal::require;

Studio::Studio(uint64_t seed, uint32_t instances)
    : sounds{Signals::silence(kSoundFrames), Signals::music(seed, 44100, kSoundFrames, 0),
             Signals::noise(seed, kSoundFrames, 6), Signals::hostile(seed, 44100, kSoundFrames)}
{
    Platform::useWindowSystem(&system);
    for (uint32_t i = 0; i < instances; ++i) {
        effects.push_back(std::make_unique<SoakedEffect>(i));
        windows.push_back(system.makeHostWindow(VSTEditor::kWidth, VSTEditor::kHeight, corner(i)));
    }
}

Studio::~Studio()
{
    for (uint32_t i = 0; i < size(); ++i)
        if (i % 2 == 0) close(i); // the others close with their effects
    effects.clear();
    for (const Platform::WindowHandle window : windows) system.destroyWindow(window);
    system.pump();
    require(UI::Native::WindowBase::liveWindows() == 0, "no window of the editors is left", size());
    require(UI::Native::FrameBase::liveFrames() == 0, "no frame of the editors is left", size());
    require(system.windowCount() == 0, "no window of the system is left", size());
    require(system.timerCount() == 0, "no timer of the system is left", size());
    Platform::useWindowSystem(nullptr);
}

Point Studio::corner(uint32_t i) const
{
    return {static_cast<int32_t>(i % 5) * VSTEditor::kWidth,
            static_cast<int32_t>(i / 5) * VSTEditor::kHeight};
}

void Studio::open(uint32_t i)
{
    if (!effects[i]->record()) return;
    require(effects[i]->dispatch(effEditOpen, 0, 0, windows[i]) == 1, "an editor opens", i);
    ++counts.editorsOpened;
}

void Studio::close(uint32_t i)
{
    if (!effects[i]->record()) return;
    counts.editorsClosed += effects[i]->hasOpenEditor();
    effects[i]->dispatch(effEditClose);
}

void Studio::destroyWindow(uint32_t i)
{
    system.destroyWindow(windows[i]);
    close(i);
    windows[i] = system.makeHostWindow(VSTEditor::kWidth, VSTEditor::kHeight, corner(i));
}

SoakedEffect *Studio::nextOpen(uint32_t i)
{
    for (uint32_t tried = 0; tried < size(); ++tried)
        if (effects[(i + tried) % size()]->hasOpenEditor()) return effects[(i + tried) % size()].get();
    return nullptr;
}

void Studio::requireRest()
{
    for (const auto &each : effects)
        if (each->record()) each->requireRest();
}
