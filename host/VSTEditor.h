#pragma once
#include <atomic>
#include <memory>

#include "host/AEffEditor.h"
#include "platform/WindowSystem.h"
#include "plugin/Plugin.h"
#include "ui/editor/Layout.h"

namespace UI {
class MainWindow;
}
class VSTPlugin;

/// The effect's editor as the host drives it: a child window in the host's, with the main window in it.
/// State   closed <-> open, any number of times; what the editor shows lives in the parameters
/// Thread  the host's window thread; post() any
/// Errors  open() gives 0 where the system makes no window. A host that destroys its window first, or that
///         closes the editor from inside a call of ours, finds everything in order
class VSTEditor final : public AEffEditor, public EditorWindow, private Platform::WindowClient {
public:
    static constexpr int16_t kWidth = UI::Layout::kWidth, kHeight = UI::Layout::kHeight; // pixels

    explicit VSTEditor(VSTPlugin *owner);
    ~VSTEditor() override;

    intptr_t getRect(ERect **out) override;
    intptr_t open(void *parent) override;
    void close() override;
    void update() override;
    intptr_t onKeyDown(const VstKeyCode &key) override;

    void post(uint32_t code) override;

    UI::MainWindow *getMainWindow() const { return mainWindow.get(); }
    Platform::WindowHandle window() const { return nativeWindow.load(std::memory_order_relaxed); }

private:
    std::optional<intptr_t> onEvent(Platform::WindowHandle window, const Platform::Event &event) override;
    std::string className(const char *stem) const;
    void unregisterClasses() const;

    ERect rect{0, 0, kHeight, kWidth};
    VSTPlugin *const plugin;
    Platform::WindowHandle parentWindow = nullptr;
    std::atomic<Platform::WindowHandle> nativeWindow = nullptr; // null when closed
    std::unique_ptr<UI::MainWindow> mainWindow;                 // null when closed
};
