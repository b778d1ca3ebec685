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

/// The effect's editor: a child of the host's window that contains the main window.
/// State   closed <-> open, any number of times; the parameters hold all values that the editor shows
/// Thread  the host's window thread; post(): any
/// Errors  open() returns 0 if the system cannot create the window. The host may destroy its window before
///         close(), and may close the editor inside a callback from the effect
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
