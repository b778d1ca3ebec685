#pragma once
#include <functional>
#include <string>
#include <vector>

#include "tests/editor/Desk.h"
#include "ui/MainWindowBase.h"
#include "ui/native/Window.h"

/// An effect that tells nobody anything.
class TinyEffect final : public Plugin, public EditorWindow {
public:
    TinyEffect() : Plugin(kVst) {}
    ~TinyEffect() override { setEditorWindow(nullptr); }
    void notifyParameter(DSP::ParamKind, EditPhase, DSP::Component *, uint32_t, const float *, const bool *,
                         const uint32_t *) override
    {
    }
    void applyLatency() override { ++latenciesApplied; }
    void post(uint32_t code) override { Platform::windowSystem().post(target, code); }

    int latenciesApplied = 0;
    Platform::WindowHandle target = nullptr; // of messages
};

/// An editor's root without controls of its own, that writes down what it is asked to do.
class TinyRoot final : public UI::MainWindowBase {
public:
    TinyRoot(Platform::WindowHandle window, Plugin *effect) : MainWindowBase(window, Point{}, effect) {}

    std::function<void()> onCreate, onTick; // what a test puts in their place
    std::function<bool(uint32_t kind, Point at)> takesMouse;
    std::vector<std::string> calls;
    std::vector<uint32_t> tickTimes; // ms

    void addImage(const UI::Native::SurfaceRef &image, Point at) { addBackground(image, at); }
    void moveFocus(bool forward) override { calls.push_back(forward ? "focus next" : "focus previous"); }
    bool onFrameMouse(uint32_t kind, Point at, int32_t, uint32_t) override
    {
        return takesMouse && takesMouse(kind, at);
    }
    void onFrameMouseCaptured(uint32_t kind, Point at, int32_t, uint32_t) override
    {
        calls.push_back("captured " + std::to_string(kind) + " at " + std::to_string(at.x) + "," +
                        std::to_string(at.y));
    }

protected:
    void addBackgrounds() override { calls.emplace_back("backgrounds"); }
    void createControls() override
    {
        calls.emplace_back("controls");
        if (onCreate) onCreate();
    }
    void updateAll() override { calls.emplace_back("update"); }
    void updateMore() override { calls.emplace_back("update more"); }
    void onTimer() override
    {
        tickTimes.push_back(Platform::windowSystem().milliseconds());
        if (onTick) onTick();
    }
    void onPluginEvent2() override { calls.emplace_back("event 2"); }
    void onPluginEvent3() override { calls.emplace_back("event 3"); }
    bool onCustomMessage(uint32_t code) override
    {
        calls.push_back("custom " + std::to_string(code));
        return true;
    }
};

/// An effect with a small editor in a window of a desk.
class TinyEditor final : private Platform::WindowClient {
public:
    explicit TinyEditor(Desk &where);
    ~TinyEditor();
    TinyEditor(const TinyEditor &) = delete;

    UI::Native::Frame &frame() { return root->getFrame(); }
    DSP::Global &settings() { return *effect.transformHandle().global(); }
    std::vector<std::string> takeCalls() { return std::exchange(root->calls, {}); }
    /// Whether the root's window settled the event.
    bool send(Platform::Event::Kind kind, uint32_t id = 0);

    TinyEffect effect;
    Platform::WindowHandle window = nullptr; // the host-side one, of the desk's size
    std::unique_ptr<TinyRoot> root;

private:
    std::optional<intptr_t> onEvent(Platform::WindowHandle, const Platform::Event &event) override;
};

/// A control that writes down what happens to it: "NAME EVENT X,Y MODS".
class ProbeWindow : public UI::Native::Window {
public:
    ProbeWindow(TinyEditor &editor, UI::Native::WindowBase *owner, const char *probeName,
                std::vector<std::string> &where);

    std::vector<uint32_t> takes;         // kinds of mouse event that it handles
    bool takesKeys = false;              // handles them
    std::function<void()> duringHandler; // happens inside every mouse handler
    int timesMoved = 0;                  // geometry

    void wantAllMoves() { wantsAllMoves = true; }
    void signalFocus() { focusSignals = true; }
    void refuseFocus() { focusable = false; }

    void onGeometryChanged() override { ++timesMoved; }
    void onShow() override { note("show"); }
    void onHide() override { note("hide"); }
    void paint(Platform::DeviceContext &, const Rect &clip) override;
    void onFocusIn() override;
    void onFocusOut() override;
    bool onMouseDown(Point at, uint32_t mods) override { return mouse(0, "down", at, mods); }
    bool onMouseUp(Point at, uint32_t mods) override { return mouse(1, "up", at, mods); }
    bool onDoubleClick(Point at, uint32_t mods) override { return mouse(2, "double", at, mods); }
    bool onRightDown(Point at, uint32_t mods) override { return mouse(3, "right down", at, mods); }
    bool onRightUp(Point at, uint32_t mods) override { return mouse(4, "right up", at, mods); }
    bool onRightDoubleClick(Point at, uint32_t mods) override { return mouse(5, "right double", at, mods); }
    bool onMouseMove(Point at, uint32_t mods) override { return mouse(6, "move", at, mods); }
    bool onWheel(Point at, int32_t delta, uint32_t mods) override;
    bool onKeyDown(uint32_t key, uint32_t mods, bool wasDown) override;
    bool onKeyUp(uint32_t key, uint32_t mods) override;
    bool onChar(uint32_t code, uint32_t mods, bool repeated) override;
    void onTimer(uint32_t id) override;

private:
    void note(const std::string &what) { log.push_back(label + " " + what); }
    bool mouse(uint32_t kind, const char *what, Point at, uint32_t mods);

    const std::string label;
    std::vector<std::string> &log;
};
