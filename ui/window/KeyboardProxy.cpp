#include "ui/window/KeyboardProxy.h"

#include "ui/window/FrameBase.h"

namespace UI::Native {

using Platform::Event;

KeyboardProxy::KeyboardProxy(FrameBase *ownerFrame)
    : Reflected(ownerFrame, nullptr, "Native Keyboard Proxy", false)
{
    visible = false;
    handle = Platform::windowSystem().createWindow(
        {.className = ownerFrame->nativeClassName("KeyboardProxyWindow"),
         .title = "Native Keyboard Proxy",
         .place = Rect::at({}, 100, 100),
         .parent = ownerFrame->hostWindow(),
         .client = this,
         .visible = false,
         .clipSiblings = false,
         .clipChildren = false,
         .takesTab = true,
         .arrowCursor = true});
}

std::optional<intptr_t> KeyboardProxy::onEvent(Platform::WindowHandle window, const Event &event)
{
    constexpr intptr_t kSwallowed = 0;
    if (frame->isDestroying()) return std::nullopt;
    const Dispatch::Scope scope(frame->dispatch());
    switch (event.kind) {
    case Event::Kind::destroyed:
    case Event::Kind::dialogCode: return WindowBase::onEvent(window, event);
    case Event::Kind::focusOut: frame->endDrag(); return kSwallowed;
    case Event::Kind::focusIn:
    case Event::Kind::keyDown:
    case Event::Kind::systemKeyDown:
    case Event::Kind::keyUp:
    case Event::Kind::systemKeyUp:
    case Event::Kind::character: return kSwallowed;
    default: return std::nullopt;
    }
}

} // namespace UI::Native
