#include "ui/window/WindowBase.h"

#include <algorithm>

#include "ui/window/FrameBase.h"

namespace UI::Native {

using Platform::Event;
using Platform::windowSystem;

namespace {

constexpr intptr_t kHandled = 0;

} // namespace

WindowBase::WindowBase(FrameBase *ownerFrame, WindowBase *parentWindow, const String &windowName)
    : Reflected(windowName),
      frame(ownerFrame),
      parent(parentWindow),
      frameX(parentWindow ? parentWindow->frameX : 0),
      frameY(parentWindow ? parentWindow->frameY : 0)
{
    ++liveCount;
}

WindowBase::~WindowBase()
{
    windowDestroying = true;
    if (parent && !parent->windowDestroying) std::erase(parent->childWindows, this);
    frame->forgetWindow(this);
    // windowDestroying keeps the children from erasing themselves from this list.
    for (WindowBase *child : childWindows) delete child;
    if (handle && ownsHandle) {
        windowSystem().setClient(handle, nullptr);
        windowSystem().destroyWindow(handle);
    }
    --liveCount;
}

void WindowBase::createNative(const String &windowName, bool makeHandle)
{
    if (makeHandle)
        handle = windowSystem().createWindow({.className = frame->nativeClassName("Window"),
                                              .title = windowName.c_str(),
                                              .place = Rect::at({}, 100, 100),
                                              .parent = parent ? parent->handle : frame->hostWindow(),
                                              .client = this,
                                              .visible = visible});
    if (parent)
        parent->childWindows.push_back(this);
    else
        frame->addWindow(this);
}

void WindowBase::onFocusIn()
{
    if (focusSignals) sigReceivedFocus();
}

void WindowBase::onFocusOut()
{
    if (focusSignals) sigLostFocus();
}

void WindowBase::setGeometry(int32_t x, int32_t y, int32_t width, int32_t height)
{
    if (width <= 0 || height <= 0) return;
    const Rect place = Rect::at({x, y}, width, height);
    if (place == geometry) return;
    const bool moved = place.corner() != geometry.corner();
    geometry = place;
    windowSystem().moveWindow(handle, place, visible);
    if (moved) updateFramePosition();
    onGeometryChanged();
}

void WindowBase::updateFramePosition()
{
    const Point origin = parent ? Point{parent->frameX, parent->frameY} : Point{};
    frameX = origin.x + geometry.left;
    frameY = origin.y + geometry.top;
    for (WindowBase *child : childWindows) child->updateFramePosition();
}

void WindowBase::show(bool activate)
{
    windowSystem().showWindow(handle, activate);
    visible = true;
    onShow();
}

void WindowBase::hide()
{
    windowSystem().hideWindow(handle);
    visible = false;
    onHide();
}

void WindowBase::raise() { windowSystem().raiseWindow(handle); }

bool WindowBase::hasFocus() const { return handle && windowSystem().focus() == handle; }

void WindowBase::setFocus()
{
    if (focusable) windowSystem().setFocus(handle);
}

void WindowBase::invalidate(const OptionalRect &area)
{
    if (area.present && area.rect.isEmpty()) return;
    windowSystem().invalidate(handle, area, false);
}

void WindowBase::repaintNow(const OptionalRect &area)
{
    if (area.present && area.rect.isEmpty()) return;
    const auto context = windowSystem().windowContext(handle);
    if (!context) return;
    paint(*context, area.present ? area.rect : Rect::at({}, width(), height()));
    windowSystem().validate(handle, area);
}

void WindowBase::setCursor(const Platform::CursorRef &shape)
{
    cursor = shape;
    const auto pointer = windowSystem().pointer();
    if (!visible || !handle || !pointer) return;
    const Point corner = windowSystem().toScreen(handle, {});
    if (isHit(*pointer - corner)) windowSystem().showCursor(cursor ? cursor : frame->arrow());
}

WindowBase *WindowBase::fromHandle(Platform::WindowHandle window)
{
    return window ? dynamic_cast<WindowBase *>(windowSystem().client(window)) : nullptr;
}

const TransformHandle &WindowBase::transform() const { return frame->transform(); }

std::optional<intptr_t> WindowBase::onEvent(Platform::WindowHandle, const Event &event)
{
    if (event.kind == Event::Kind::dialogCode) return Platform::kWantsAllKeys;
    if (frame->isDestroying()) return std::nullopt;
    const Dispatch::Scope scope(frame->dispatch());
    if (event.isMouse()) return handleMouse(event);
    switch (event.kind) {
    case Event::Kind::destroyed:
        ownsHandle = false;
        handle = nullptr; // the system may reuse the handle for another window
        return std::nullopt;
    case Event::Kind::focusIn: onFocusIn(); return std::nullopt;
    case Event::Kind::focusOut: onFocusOut(); return std::nullopt;
    case Event::Kind::captureLost: frame->mouseCaptureLost(this); return std::nullopt;
    case Event::Kind::eraseBackground: return 1;
    case Event::Kind::paint: return handlePaint();
    case Event::Kind::keyDown:
    case Event::Kind::keyUp:
    case Event::Kind::systemKeyDown:
    case Event::Kind::systemKeyUp:
    case Event::Kind::character: return handleKey(event);
    default: return std::nullopt;
    }
}

std::optional<intptr_t> WindowBase::handlePaint()
{
    if (frame->client() && frame->client()->isPaintingSuspended()) return kHandled; // stays pending
    Rect clip;
    auto context = windowSystem().beginPaint(handle, clip);
    if (context) paint(*context, clip);
    windowSystem().endPaint(handle, std::move(context));
    return kHandled;
}

std::optional<intptr_t> WindowBase::handleKey(const Event &event)
{
    const uint32_t mods = event.modifiers & (Platform::kControl | Platform::kShift);
    bool handled = false;
    switch (event.kind) {
    case Event::Kind::keyDown:
        if (frame->client()) {
            const bool tab = event.key == Platform::kKeyTab;
            if (tab || event.key == Platform::kKeyLeft || event.key == Platform::kKeyRight) {
                frame->client()->moveFocus(tab ? !(mods & Platform::kShift)
                                               : event.key == Platform::kKeyRight);
                return kHandled;
            }
        }
        [[fallthrough]];
    case Event::Kind::systemKeyDown: handled = onKeyDown(event.key, mods, event.repeated); break;
    case Event::Kind::character: handled = onChar(event.key, mods, event.repeated); break;
    default: handled = onKeyUp(event.key, mods); break;
    }
    return handled ? std::optional(kHandled) : std::nullopt; // unhandled keys reach the host's shortcuts
}

std::optional<intptr_t> WindowBase::handleMouse(const Event &event)
{
    const auto kind = static_cast<uint32_t>(event.kind);
    FrameClient *client = frame->client();
    if (client && frame->mouseCaptureWindow())
        client->onFrameMouseCaptured(kind, toFrame(event.at), event.wheel, event.modifiers);
    else if (client && client->onFrameMouse(kind, toFrame(event.at), event.wheel, event.modifiers))
        return kHandled;

    Point at = event.at;
    for (WindowBase *window = this; window; window = window->parent) {
        const Point corner = window->geometry.corner();
        WindowBase *const next = window->parent; // a handler may destroy `window`
        if (window->dispatchMouse(event.kind, at, event.modifiers, event.wheel)) return kHandled;
        if (!next) break;
        at = at + corner;
    }
    if (event.kind != Event::Kind::leftDown || !client) return std::nullopt;
    windowSystem().setFocus(client->hostWindow());
    return kHandled;
}

bool WindowBase::dispatchMouse(Event::Kind kind, Point at, uint32_t mods, int32_t delta)
{
    switch (kind) {
    case Event::Kind::leftDown: return onMouseDown(at, mods);
    case Event::Kind::leftUp: return onMouseUp(at, mods);
    case Event::Kind::leftDouble: return onDoubleClick(at, mods);
    case Event::Kind::rightDown: return onRightDown(at, mods);
    case Event::Kind::rightUp: return onRightUp(at, mods);
    case Event::Kind::rightDouble: return onRightDoubleClick(at, mods);
    case Event::Kind::wheel: return onWheel(at, delta, mods);
    case Event::Kind::mouseMove: return dispatchMove(at, mods);
    default: return false;
    }
}

bool WindowBase::dispatchMove(Point at, uint32_t mods)
{
    windowSystem().showCursor(cursor ? cursor : frame->arrow());
    const bool dragging = (mods & (Platform::kLeftButton | Platform::kRightButton)) != 0;
    if ((dragging || wantsAllMoves) && onMouseMove(at, mods)) return true;
    return static_cast<bool>(cursor); // its parents must not replace the cursor
}

} // namespace UI::Native
