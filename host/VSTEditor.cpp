#include "host/VSTEditor.h"

#include "host/HostKeys.h"
#include "host/VSTPlugin.h"
#include "plugin/Product.h"
#include "ui/editor/MainWindow.h"

using Platform::Event;
using Platform::windowSystem;

VSTEditor::VSTEditor(VSTPlugin *owner) : AEffEditor(owner), plugin(owner) {}

VSTEditor::~VSTEditor() { close(); }

intptr_t VSTEditor::getRect(ERect **out)
{
    *out = &rect;
    return 1;
}

std::string VSTEditor::className(const char *stem) const
{
    return UI::Native::FrameBase::nativeClassName(*plugin, stem);
}

intptr_t VSTEditor::open(void *parent)
{
    close();
    close(); // the host may have reopened the editor when the first call ended a gesture
    if (mainWindow) return 0;
    systemWindow = parent;
    parentWindow = static_cast<Platform::WindowHandle>(parent);
    Platform::WindowRequest request;
    request.className = className("PluginWindow");
    request.title = Product::kName;
    request.place = Rect::at({}, kWidth, kHeight);
    request.parent = parentWindow;
    request.client = this;
    request.clipSiblings = false;
    nativeWindow = windowSystem().createWindow(request);
    if (!window()) {
        unregisterClasses();
        return 0;
    }
    try {
        mainWindow = std::make_unique<UI::MainWindow>(window(), plugin);
        mainWindow->open();
        plugin->setEditorWindow(this);
        plugin->requestRefresh(); // parameters may have changed during opening
        mainWindow->startTicking();
    } catch (...) { // out of memory
        close();
        throw;
    }
    return 1;
}

void VSTEditor::close()
{
    if (!mainWindow && !window()) return;
    // Mark the editor as closed first: ending a gesture calls the host, which may close or open the editor from
    // that callback.
    std::unique_ptr<UI::MainWindow> closing = std::move(mainWindow);
    const Platform::WindowHandle old = nativeWindow.exchange(nullptr);
    parentWindow = nullptr;
    systemWindow = nullptr;
    plugin->setEditorWindow(nullptr);
    if (closing) {
        const std::shared_ptr<UI::Native::Dispatch> events = closing->getFrame().dispatch();
        const UI::Native::Dispatch::Scope scope(events); // a control may still be handling an event
        closing->getFrame().abandonDrag();
        closing->stopTicking();
        events->park(std::move(closing));
    }
    windowSystem().setClient(old, nullptr);
    windowSystem().destroyWindow(old);
    unregisterClasses();
}

/// A class that stays registered would point into the unloaded library. The system keeps a class while another
/// editor uses it.
void VSTEditor::unregisterClasses() const
{
    for (const char *stem : {"PluginWindow", "Window", "KeyboardProxyWindow"})
        windowSystem().unregisterClass(className(stem));
}

void VSTEditor::update() { plugin->requestRefresh(); }

void VSTEditor::post(uint32_t code)
{
    if (const auto target = window()) windowSystem().post(target, code);
}

std::optional<intptr_t> VSTEditor::onEvent(Platform::WindowHandle, const Event &event)
{
    if (event.kind == Event::Kind::destroyed) nativeWindow = nullptr; // by the host or by close()
    if (!mainWindow) return std::nullopt;
    const UI::Native::Dispatch::Scope scope(mainWindow->getFrame().dispatch());
    return mainWindow->handleMessage(event) ? std::optional<intptr_t>(1) : std::nullopt;
}

intptr_t VSTEditor::onKeyDown(const VstKeyCode &key)
{
    constexpr intptr_t kTaken = 1, kLeft = -1;
    if (!mainWindow) return kLeft;
    const UI::Native::Dispatch::Scope scope(mainWindow->getFrame().dispatch());
    const int32_t code = key.virt != 0 ? key.virt : key.character;
    if (isHostTab(code)) {
        constexpr uint8_t kShiftBit = 1;
        mainWindow->moveFocus((key.modifier & kShiftBit) == 0);
        return kTaken;
    }
    Event event{};
    event.key = virtualKeyOf(code);
    if (event.key == 0) return kLeft;
    event.modifiers = (windowSystem().isKeyDown(Platform::kKeyControl) ? Platform::kControl : 0) |
                      (windowSystem().isKeyDown(Platform::kKeyShift) ? Platform::kShift : 0);
    event.kind = Event::Kind::keyDown;
    const bool taken = mainWindow->handleHostKey(event);
    event.kind = Event::Kind::keyUp;
    if (mainWindow) mainWindow->handleHostKey(event);
    return taken ? kTaken : kLeft;
}
