#include "tests/editor/TinyEditor.h"

#include <algorithm>

using Platform::Event;
using Platform::windowSystem;

TinyEditor::TinyEditor(Desk &where)
{
    Platform::WindowRequest request;
    request.className = UI::Native::FrameBase::nativeClassName(effect, "PluginWindow");
    request.place = Rect::at({}, 547, 488);
    request.parent = where.window();
    request.client = this;
    window = windowSystem().createWindow(request);
    root = std::make_unique<TinyRoot>(window, &effect);
    effect.target = window;
    effect.setEditorWindow(&effect);
}

TinyEditor::~TinyEditor()
{
    effect.setEditorWindow(nullptr);
    root.reset();
    windowSystem().destroyWindow(window);
}

std::optional<intptr_t> TinyEditor::onEvent(Platform::WindowHandle, const Event &event)
{
    if (event.kind == Event::Kind::destroyed) window = nullptr;
    if (!root) return std::nullopt;
    const UI::Native::Dispatch::Scope scope(frame().dispatch());
    return root->handleMessage(event) ? std::optional<intptr_t>(1) : std::nullopt;
}

bool TinyEditor::send(Event::Kind kind, uint32_t id)
{
    Event event{};
    event.kind = kind;
    event.id = id;
    return onEvent(window, event).has_value();
}

namespace {

std::string number(int64_t value) { return std::to_string(value); }

} // namespace

ProbeWindow::ProbeWindow(TinyEditor &editor, UI::Native::WindowBase *owner, const char *probeName,
                         std::vector<std::string> &where)
    : Window(&editor.frame(), owner, probeName), label(probeName), log(where)
{
}

void ProbeWindow::paint(Platform::DeviceContext &, const Rect &clip)
{
    note("paint " + number(clip.left) + "-" + number(clip.right) + " " + number(clip.top) + "-" +
         number(clip.bottom));
}

void ProbeWindow::onFocusIn()
{
    note("focus in");
    Window::onFocusIn();
}

void ProbeWindow::onFocusOut()
{
    note("focus out");
    Window::onFocusOut();
}

bool ProbeWindow::mouse(uint32_t kind, const char *what, Point at, uint32_t mods)
{
    note(what + std::string(" ") + number(at.x) + "," + number(at.y) + " " + number(mods));
    const bool taken = std::find(takes.begin(), takes.end(), kind) != takes.end();
    if (duringHandler) duringHandler();
    return taken;
}

bool ProbeWindow::onWheel(Point at, int32_t delta, uint32_t mods)
{
    return mouse(7, ("wheel " + number(delta)).c_str(), at, mods);
}

bool ProbeWindow::onKeyDown(uint32_t key, uint32_t mods, bool wasDown)
{
    note("key " + number(key) + " " + number(mods) + (wasDown ? " again" : ""));
    return takesKeys;
}

bool ProbeWindow::onKeyUp(uint32_t key, uint32_t mods)
{
    note("key up " + number(key) + " " + number(mods));
    return takesKeys;
}

bool ProbeWindow::onChar(uint32_t code, uint32_t mods, bool repeated)
{
    note("char " + number(code) + " " + number(mods) + (repeated ? " again" : ""));
    return takesKeys;
}

void ProbeWindow::onTimer(uint32_t id) { note("timer " + number(id)); }
