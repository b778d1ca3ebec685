#include <algorithm>
#include <utility>

#include "platform/offscreen/OffscreenWindow.h"

namespace Platform {

namespace {

class OffscreenCursor final : public Cursor {
public:
    explicit OffscreenCursor(CursorKind shape) : kind(shape) {}
    const CursorKind kind;
};

} // namespace

std::optional<intptr_t> OffscreenWindowSystem::deliver(WindowHandle window, Event event)
{
    const Window *const found = find(window);
    if (!found || !found->client) return std::nullopt;
    return found->client->onEvent(window, event);
}

// Messages and time.

void OffscreenWindowSystem::post(WindowHandle window, uint32_t code)
{
    const std::lock_guard hold(messageMutex);
    messages.push_back({window, code, nullptr});
}

void OffscreenWindowSystem::sendRenderTick(WindowHandle window)
{
    std::unique_lock hold(messageMutex);
    bool answered = false;
    messages.push_back({window, 0, &answered});
    messageServed.wait(hold, [&] { return answered; });
}

/// Discards a destroyed window's messages and releases the threads that wait for its ticks.
void OffscreenWindowSystem::dropMessages(WindowHandle window)
{
    const std::lock_guard hold(messageMutex);
    for (const Message &message : messages)
        if (message.window == window && message.answered) *message.answered = true;
    std::erase_if(messages, [&](const Message &message) { return message.window == window; });
    messageServed.notify_all();
}

void OffscreenWindowSystem::serveRenderTicks(WindowHandle window)
{
    {
        const std::lock_guard hold(messageMutex);
        for (bool *const answered : answering) *answered = true;
        answering.clear();
        messageServed.notify_all();
    }
    while (
        serveMessage([&](const Message &message) { return message.answered && message.window == window; })) {}
}

bool OffscreenWindowSystem::serveMessage(const std::function<bool(const Message &)> &wanted)
{
    Message message;
    {
        const std::lock_guard hold(messageMutex);
        const auto found = std::find_if(messages.begin(), messages.end(),
                                        [&](const Message &each) { return !wanted || wanted(each); });
        if (found == messages.end()) return false;
        message = *found;
        messages.erase(found);
        if (message.answered) answering.push_back(message.answered);
    }
    deliver(message.window,
            {.kind = message.answered ? Event::Kind::renderTick : Event::Kind::custom, .id = message.code});
    if (message.answered) {
        const std::lock_guard hold(messageMutex);
        if (std::erase(answering, message.answered) == 0) return true; // its thread has been released
        *message.answered = true;
        messageServed.notify_all();
    }
    return true;
}

void OffscreenWindowSystem::pump()
{
    constexpr size_t kMostAnswers = 4; // posted by handlers; limited, as other threads may post endlessly
    size_t left;
    {
        const std::lock_guard hold(messageMutex);
        left = messages.size() + kMostAnswers;
    }
    for (;;) {
        if (left > 0 && serveMessage()) {
            --left;
            continue;
        }
        if (std::exchange(pointerMoved, false)) {
            deliverMouse(Event::Kind::mouseMove);
            continue;
        }
        if (!paintNext()) return;
    }
}

bool OffscreenWindowSystem::setTimer(WindowHandle window, uint32_t id, uint32_t periodMs)
{
    if (!find(window)) return false;
    killTimer(window, id);
    const uint32_t period = std::max(periodMs, 1u);
    timers.push_back({window, id, period, now + period});
    return true;
}

void OffscreenWindowSystem::killTimer(WindowHandle window, uint32_t id)
{
    std::erase_if(timers, [&](const Timer &timer) { return timer.window == window && timer.id == id; });
}

void OffscreenWindowSystem::advance(uint32_t ms)
{
    const uint32_t end = now + ms;
    pump();
    for (;;) {
        const auto next = std::min_element(timers.begin(), timers.end(), [](const Timer &a, const Timer &b) {
            return static_cast<int32_t>(a.due - b.due) < 0;
        });
        if (next == timers.end() || static_cast<int32_t>(next->due - end) > 0) break;
        now = next->due;
        next->due += next->period;
        deliver(next->window, {.kind = Event::Kind::timer, .id = next->id});
        pump();
    }
    now = end;
}

// The mouse.

uint32_t OffscreenWindowSystem::modifiers() const
{
    return buttonsDown | (isKeyDown(kKeyControl) ? kControl : 0) | (isKeyDown(kKeyShift) ? kShift : 0);
}

WindowHandle OffscreenWindowSystem::windowAt(const Window &window, Point at) const
{
    for (auto child = window.children.rbegin(); child != window.children.rend(); ++child) {
        const Window &inner = *find(*child);
        if (!inner.visible || !inner.place.contains(at) || (inner.client && !inner.client->takesMouse()))
            continue;
        return windowAt(inner, at - inner.place.corner());
    }
    return window.handle;
}

WindowHandle OffscreenWindowSystem::windowAt(Point screen) const
{
    for (const auto &[handle, window] : windows)
        if (!window->parent && window->visible && window->place.contains(screen))
            return windowAt(*window, screen - window->place.corner());
    return nullptr;
}

void OffscreenWindowSystem::deliverMouse(Event::Kind kind, int32_t wheel)
{
    // Wheel events go to the focused window, other mouse events to the window under the pointer.
    const WindowHandle aimed = kind == Event::Kind::wheel && focused ? focused : windowAt(pointerAt);
    const WindowHandle target = captured ? captured : aimed;
    const Point at = pointerAt - toScreen(target, {});
    deliver(target, {.kind = kind, .at = at, .modifiers = modifiers(), .wheel = wheel});
}

void OffscreenWindowSystem::movePointer(Point at)
{
    pointerAt = at;
    pointerMoved = false;
    deliverMouse(Event::Kind::mouseMove);
    pump();
}

void OffscreenWindowSystem::setPointer(Point at)
{
    pointerMoved |= !(at == pointerAt);
    pointerAt = at;
}

void OffscreenWindowSystem::pressButton(uint32_t button)
{
    buttonsDown |= button;
    deliverMouse(button == kLeftButton ? Event::Kind::leftDown : Event::Kind::rightDown);
    pump();
}

void OffscreenWindowSystem::releaseButton(uint32_t button)
{
    buttonsDown &= ~button;
    deliverMouse(button == kLeftButton ? Event::Kind::leftUp : Event::Kind::rightUp);
    pump();
}

void OffscreenWindowSystem::doubleClick()
{
    pressButton();
    releaseButton();
    buttonsDown |= kLeftButton;
    deliverMouse(Event::Kind::leftDouble);
    pump();
    releaseButton();
}

void OffscreenWindowSystem::turnWheel(int32_t delta)
{
    deliverMouse(Event::Kind::wheel, delta);
    pump();
}

// Keys.

void OffscreenWindowSystem::pressKey(uint32_t key)
{
    const bool repeated = !keysDown.insert(key).second;
    const auto kind = isKeyDown(kKeyAlt) ? Event::Kind::systemKeyDown : Event::Kind::keyDown;
    deliver(focused, {.kind = kind, .modifiers = modifiers(), .key = key, .repeated = repeated});
    pump();
}

void OffscreenWindowSystem::releaseKey(uint32_t key)
{
    const auto kind = isKeyDown(kKeyAlt) ? Event::Kind::systemKeyUp : Event::Kind::keyUp;
    keysDown.erase(key);
    deliver(focused, {.kind = kind, .modifiers = modifiers(), .key = key});
    pump();
}

// Cursors and the prompt.

CursorRef OffscreenWindowSystem::loadCursor(CursorKind kind)
{
    return kind <= CursorKind::drag ? std::make_shared<OffscreenCursor>(kind) : nullptr;
}

void OffscreenWindowSystem::showCursor(const CursorRef &cursor)
{
    if (cursor) cursorKind = static_cast<const OffscreenCursor &>(*cursor).kind;
}

std::optional<std::string> OffscreenWindowSystem::promptText(const PromptRequest &request)
{
    auto typed = onPrompt ? onPrompt(request) : std::nullopt;
    if (!typed) return std::nullopt;
    std::erase_if(*typed, [&](char c) {
        return std::find(request.allowed.begin(), request.allowed.end(), c) == request.allowed.end();
    });
    return typed;
}

} // namespace Platform
