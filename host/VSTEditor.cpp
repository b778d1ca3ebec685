#include "host/VSTEditor.h"

#include "host/HostKeys.h"
#include "host/VSTPlugin.h"
#include "plugin/Product.h"
#include "ui/MainWindow.h"

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
    systemWindow = parent;
    parentWindow = static_cast<Platform::WindowHandle>(parent);
    Platform::WindowRequest request;
    request.className = className("PluginWindow");
    request.title = Product::kName;
    request.place = Rect::at({}, kWidth, kHeight);
    request.parent = parentWindow;
    request.client = this;
    request.clipSiblings = false;
    const Platform::WindowHandle window = windowSystem().createWindow(request);
    if (!window) return 0;
    nativeWindow = window;
    mainWindow = std::make_unique<UI::MainWindow>(window, plugin);
    mainWindow->open();
    plugin->setEditorWindow(this);
    mainWindow->startTicking();
    return 1;
}

void VSTEditor::close()
{
    if (!mainWindow) return;
    mainWindow->getFrame().abandonDrag(); // a gesture gets its end
    mainWindow->stopTicking();
    plugin->setEditorWindow(nullptr);
    const std::shared_ptr<UI::Native::Dispatch> events = mainWindow->getFrame().dispatch();
    if (events->isActive()) {
        // A control is at work, and has called the host that calls here.
        windowSystem().destroyWindow(window());
        events->park(std::move(mainWindow));
    } else {
        mainWindow.reset();
        windowSystem().destroyWindow(window());
    }
    nativeWindow = nullptr;
    parentWindow = nullptr;
    systemWindow = nullptr;
    // Left alone, they would point into a library that is unloaded; another open editor keeps them.
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
    if (event.kind == Event::Kind::destroyed) nativeWindow = nullptr; // the host's doing, or close()'s
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
