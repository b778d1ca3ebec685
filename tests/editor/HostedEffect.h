#pragma once
#include "host/VSTEditor.h"
#include "tests/editor/Desk.h"
#include "tests/host/FakeHost.h"
#include "tests/signals/Signals.h"
#include "ui/editor/MainWindow.h"

/// A running effect in a FakeHost, with its editor open on a simulated desktop.
class HostedEffect {
public:
    static constexpr uint32_t kRate = 44100, kBlock = 512;

    HostedEffect();
    ~HostedEffect();
    HostedEffect(const HostedEffect &) = delete;

    bool open();
    void close() { effect.dispatch(effEditClose); }
    bool isOpen() { return editor().getMainWindow() != nullptr; }
    VSTEditor &editor();
    /// Needs an open editor.
    UI::MainWindow &mainWindow() { return *editor().getMainWindow(); }
    UI::Native::Frame &frame() { return mainWindow().getFrame(); }
    /// Controls in tab order.
    const std::vector<UI::Native::WindowBase *> &controls() { return mainWindow().controlsInFocusOrder(); }

    /// Processes `sound` in blocks of kBlock. The desktop's clock does not advance.
    void play(const Audio &sound);
    /// Runs one editor tick, regardless of the clock.
    void tick() { mainWindow().tick(); }
    /// Returns the edits reported to the host since the last call.
    std::vector<FakeHost::Call> takeEdits();

    const std::unique_ptr<Desk> desk = Desk::make(); // first: destroyed after the other members
    FakeHost host;
    const LoadedEffect effect;
};
