#include "platform/win32/Win32WindowSystem.h"

#include <windowsx.h>

namespace Platform {

namespace {

RECT toNative(const Rect &rect) { return {rect.left, rect.top, rect.right + 1, rect.bottom + 1}; }

uint32_t mouseModifiers(WPARAM keys)
{
    return (keys & MK_LBUTTON ? kLeftButton : 0) | (keys & MK_MBUTTON ? kMiddleButton : 0) |
           (keys & MK_RBUTTON ? kRightButton : 0) | (keys & MK_CONTROL ? kControl : 0) |
           (keys & MK_SHIFT ? kShift : 0);
}

std::optional<Event::Kind> mouseKind(UINT message)
{
    switch (message) {
    case WM_LBUTTONDOWN: return Event::Kind::leftDown;
    case WM_LBUTTONUP: return Event::Kind::leftUp;
    case WM_LBUTTONDBLCLK: return Event::Kind::leftDouble;
    case WM_RBUTTONDOWN: return Event::Kind::rightDown;
    case WM_RBUTTONUP: return Event::Kind::rightUp;
    case WM_RBUTTONDBLCLK: return Event::Kind::rightDouble;
    case WM_MOUSEMOVE: return Event::Kind::mouseMove;
    case WM_MOUSEWHEEL: return Event::Kind::wheel;
    default: return std::nullopt;
    }
}

std::optional<Event::Kind> keyKind(UINT message)
{
    switch (message) {
    case WM_KEYDOWN: return Event::Kind::keyDown;
    case WM_KEYUP: return Event::Kind::keyUp;
    case WM_SYSKEYDOWN: return Event::Kind::systemKeyDown;
    case WM_SYSKEYUP: return Event::Kind::systemKeyUp;
    case WM_CHAR: return Event::Kind::character;
    default: return std::nullopt;
    }
}

std::optional<Event::Kind> plainKind(UINT message)
{
    switch (message) {
    case WM_GETDLGCODE: return Event::Kind::dialogCode;
    case WM_DESTROY: return Event::Kind::destroyed;
    case WM_SETFOCUS: return Event::Kind::focusIn;
    case WM_KILLFOCUS: return Event::Kind::focusOut;
    case WM_ERASEBKGND: return Event::Kind::eraseBackground;
    case WM_PAINT: return Event::Kind::paint;
    case WM_SETCURSOR: return Event::Kind::setCursor;
    case WM_HELP: return Event::Kind::help;
    default: return std::nullopt;
    }
}

} // namespace

HINSTANCE Win32WindowSystem::module()
{
    HMODULE found = nullptr;
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<const char *>(&Win32WindowSystem::module), &found);
    return found;
}

Win32WindowSystem::Win32WindowSystem()
    : renderTickMessage(RegisterWindowMessageA("vXAudio_WM_VX_AUDIO_RENDER_TICK")),
      customMessage(RegisterWindowMessageA("vXAudio_WM_VX_AUDIO_CUSTOM"))
{
}

LRESULT CALLBACK Win32WindowSystem::windowProcedure(HWND window, UINT message, WPARAM word, LPARAM number)
{
    const auto &system = static_cast<Win32WindowSystem &>(windowSystem());
    const auto handle = reinterpret_cast<WindowHandle>(window);
    WindowClient *const client = system.client(handle);
    if (client && message == WM_NCHITTEST && !client->takesMouse()) return HTTRANSPARENT;
    const auto event = client ? system.translate(window, message, word, number) : std::nullopt;
    try { // exceptions must not pass through Windows, which called this procedure
        if (event)
            if (const auto result = client->onEvent(handle, *event)) return *result;
    } catch (const std::exception &) {
    }
    return DefWindowProcA(window, message, word, number);
}

std::optional<Event> Win32WindowSystem::translate(HWND window, UINT message, WPARAM word, LPARAM number) const
{
    Event event{};
    if (const auto mouse = mouseKind(message)) {
        event.kind = *mouse;
        POINT at = {GET_X_LPARAM(number), GET_Y_LPARAM(number)};
        if (message == WM_MOUSEWHEEL) {
            ScreenToClient(window, &at);
            event.wheel = GET_WHEEL_DELTA_WPARAM(word);
        }
        event.at = {at.x, at.y};
        event.modifiers = mouseModifiers(LOWORD(word));
    } else if (const auto key = keyKind(message)) {
        event.kind = *key;
        event.key = static_cast<uint32_t>(word);
        event.repeated = message == WM_CHAR ? (number & 0xFF) != 0 : (number & (LPARAM{1} << 30)) != 0;
        event.modifiers = (isKeyDown(VK_CONTROL) ? kControl : 0) | (isKeyDown(VK_SHIFT) ? kShift : 0);
    } else if (const auto plain = plainKind(message)) {
        event.kind = *plain;
    } else if (message == WM_CAPTURECHANGED) {
        if (reinterpret_cast<HWND>(number) == window) return std::nullopt;
        event.kind = Event::Kind::captureLost;
    } else if (message == WM_TIMER) {
        event.kind = Event::Kind::timer;
        event.id = static_cast<uint32_t>(word);
    } else if (message == renderTickMessage) {
        event.kind = Event::Kind::renderTick;
    } else if (message == customMessage) {
        event.kind = Event::Kind::custom;
        event.id = static_cast<uint32_t>(word);
    } else {
        return std::nullopt;
    }
    return event;
}

WindowHandle Win32WindowSystem::createWindow(const WindowRequest &request)
{
    WNDCLASSEXA known = {};
    known.cbSize = sizeof known;
    if (!GetClassInfoExA(module(), request.className.c_str(), &known)) {
        WNDCLASSEXA made = {};
        made.cbSize = sizeof made;
        made.style = CS_DBLCLKS;
        made.lpfnWndProc = &windowProcedure;
        made.hInstance = module();
        if (request.arrowCursor) made.hCursor = LoadCursorA(nullptr, IDC_ARROW);
        made.lpszClassName = request.className.c_str();
        RegisterClassExA(&made);
    }
    const DWORD style = WS_CHILD | (request.visible ? WS_VISIBLE : 0) |
                        (request.clipSiblings ? WS_CLIPSIBLINGS : 0) |
                        (request.clipChildren ? WS_CLIPCHILDREN : 0) | (request.takesTab ? WS_TABSTOP : 0);
    const HWND window = CreateWindowExA(
        0, request.className.c_str(), request.title.c_str(), style, request.place.left, request.place.top,
        request.place.width(), request.place.height(), native(request.parent), nullptr, module(), nullptr);
    const auto handle = reinterpret_cast<WindowHandle>(window);
    setClient(handle, request.client);
    return handle;
}

void Win32WindowSystem::destroyWindow(WindowHandle window)
{
    if (window) DestroyWindow(native(window));
}

bool Win32WindowSystem::unregisterClass(const std::string &className)
{
    return UnregisterClassA(className.c_str(), module()) != 0;
}

void Win32WindowSystem::setClient(WindowHandle window, WindowClient *client)
{
    if (window) SetWindowLongPtrA(native(window), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(client));
}

WindowClient *Win32WindowSystem::client(WindowHandle window) const
{
    // Only this effect's window classes store a client; a host's window may store anything. Compares the
    // class's procedure, because a host may have subclassed the window.
    const HWND known = native(window);
    const auto procedure = reinterpret_cast<WNDPROC>(GetClassLongPtrA(known, GCLP_WNDPROC));
    if (!window || procedure != &windowProcedure) return nullptr;
    return reinterpret_cast<WindowClient *>(GetWindowLongPtrA(known, GWLP_USERDATA));
}

void Win32WindowSystem::moveWindow(WindowHandle window, const Rect &place, bool repaint)
{
    if (window) MoveWindow(native(window), place.left, place.top, place.width(), place.height(), repaint);
}

void Win32WindowSystem::showWindow(WindowHandle window, bool activate)
{
    if (window) ShowWindow(native(window), activate ? SW_SHOW : SW_SHOWNA);
}

void Win32WindowSystem::hideWindow(WindowHandle window)
{
    if (window) ShowWindow(native(window), SW_HIDE);
}

void Win32WindowSystem::raiseWindow(WindowHandle window)
{
    if (window) SetWindowPos(native(window), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

WindowHandle Win32WindowSystem::focus() const { return reinterpret_cast<WindowHandle>(GetFocus()); }

void Win32WindowSystem::setFocus(WindowHandle window)
{
    if (window) SetFocus(native(window));
}

void Win32WindowSystem::captureMouse(WindowHandle window)
{
    if (window) SetCapture(native(window));
}

void Win32WindowSystem::releaseMouse() { ReleaseCapture(); }

void Win32WindowSystem::setOpacity(WindowHandle window, uint8_t opacity)
{
    const HWND root = GetAncestor(native(window), GA_ROOT);
    const HWND rootOwner = GetAncestor(native(window), GA_ROOTOWNER);
    if (!rootOwner || rootOwner == root) return;
    const LONG_PTR style = GetWindowLongPtrA(root, GWL_EXSTYLE);
    if (opacity == 255) {
        SetWindowLongPtrA(root, GWL_EXSTYLE, style & ~static_cast<LONG_PTR>(WS_EX_LAYERED));
        return;
    }
    SetWindowLongPtrA(root, GWL_EXSTYLE, style | WS_EX_LAYERED);
    SetLayeredWindowAttributes(root, 0, opacity, LWA_ALPHA);
}

void Win32WindowSystem::invalidate(WindowHandle window, const OptionalRect &area, bool erase)
{
    if (!window) return; // null means the whole screen to Windows
    const RECT part = toNative(area.rect);
    InvalidateRect(native(window), area.present ? &part : nullptr, erase);
}

void Win32WindowSystem::validate(WindowHandle window, const OptionalRect &area)
{
    if (!window) return;
    const RECT part = toNative(area.rect);
    ValidateRect(native(window), area.present ? &part : nullptr);
}

void Win32WindowSystem::redrawAll(WindowHandle window)
{
    if (window)
        RedrawWindow(native(window), nullptr, nullptr,
                     RDW_INVALIDATE | RDW_NOERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
}

bool Win32WindowSystem::setTimer(WindowHandle window, uint32_t id, uint32_t periodMs)
{
    return window && SetTimer(native(window), id, periodMs, nullptr) != 0;
}

void Win32WindowSystem::killTimer(WindowHandle window, uint32_t id)
{
    if (window) KillTimer(native(window), id);
}

void Win32WindowSystem::post(WindowHandle window, uint32_t code)
{
    if (window) PostMessageA(native(window), customMessage, code, 0);
}

void Win32WindowSystem::sendRenderTick(WindowHandle window)
{
    // The time limit prevents a deadlock: a handler may wait for this thread to end.
    constexpr UINT kLongestMs = 200;
    DWORD_PTR answer;
    if (window)
        SendMessageTimeoutA(native(window), renderTickMessage, 0, 0, SMTO_NORMAL, kLongestMs, &answer);
}

void Win32WindowSystem::serveRenderTicks(WindowHandle window)
{
    MSG message; // PeekMessage also handles messages that other threads have sent
    PeekMessageA(&message, native(window), renderTickMessage, renderTickMessage, PM_REMOVE);
}

uint32_t Win32WindowSystem::milliseconds() const { return GetTickCount(); }

} // namespace Platform
