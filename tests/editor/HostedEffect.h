#pragma once
#include "host/VSTEditor.h"
#include "tests/editor/Desk.h"
#include "tests/host/FakeHost.h"
#include "tests/signals/Signals.h"
#include "ui/editor/MainWindow.h"

/// An effect in a host that records its calls, with the editor open in a window on a desk.
class HostedEffect {
public:
    static constexpr uint32_t kRate = 44100, kBlock = 512;

    /// Switched on, with its editor open.
    HostedEffect();
    ~HostedEffect();
    HostedEffect(const HostedEffect &) = delete;

    bool open();
    void close() { effect.dispatch(effEditClose); }
    bool isOpen() { return editor().getMainWindow() != nullptr; }
    VSTEditor &editor();
    /// Only while it is open.
    UI::MainWindow &mainWindow() { return *editor().getMainWindow(); }
    UI::Native::Frame &frame() { return mainWindow().getFrame(); }
    /// The controls in the order of the Tab key.
    const std::vector<UI::Native::WindowBase *> &controls() { return mainWindow().controlsInFocusOrder(); }

    /// Processed in blocks of kBlock; no time passes on the desk.
    void play(const Audio &sound);
    /// Lets a tick come, at once and whatever the clock says.
    void tick() { mainWindow().tick(); }
    /// What the host has been told since the last time: automation and its gestures only.
    std::vector<FakeHost::Call> takeEdits();

    const std::unique_ptr<Desk> desk = Desk::make(); // first: everything else stands on it
    FakeHost host;
    const LoadedEffect effect;
};
