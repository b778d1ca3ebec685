#include <algorithm>
#include <cstring>

#include "platform/offscreen/OffscreenWindow.h"

namespace Platform {

OffscreenWindowSystem::Window *OffscreenWindowSystem::find(WindowHandle window) const
{
    const auto found = windows.find(window);
    return found == windows.end() ? nullptr : found->second.get();
}

WindowHandle OffscreenWindowSystem::makeHostWindow(int32_t width, int32_t height, Point origin)
{
    return createWindow({.className = "", .title = "Host", .place = Rect::at(origin, width, height)});
}

WindowHandle OffscreenWindowSystem::createWindow(const WindowRequest &request)
{
    Window *const parent = find(request.parent);
    if (request.parent && !parent) return nullptr;
    const auto handle = reinterpret_cast<WindowHandle>(++lastNumber);
    auto made = std::make_unique<Window>();
    made->handle = handle;
    made->parent = request.parent;
    made->className = request.className;
    made->title = request.title;
    made->place = request.place;
    made->client = request.client;
    made->visible = request.visible;
    made->resize();
    if (parent) parent->children.push_back(handle);
    if (!request.className.empty()) classes.insert(request.className);
    windows[handle] = std::move(made);
    return handle;
}

void OffscreenWindowSystem::destroyWindow(WindowHandle window)
{
    Window *const dying = find(window);
    if (!dying) return;
    deliver(window, {.kind = Event::Kind::destroyed});
    for (const WindowHandle child : std::vector(dying->children)) destroyWindow(child);
    if (Window *const parent = find(dying->parent)) std::erase(parent->children, window);
    if (focused == window) focused = nullptr;
    if (captured == window) captured = nullptr;
    std::erase_if(timers, [&](const Timer &timer) { return timer.window == window; });
    windows.erase(window);
    dropMessages(window);
}

bool OffscreenWindowSystem::unregisterClass(const std::string &className)
{
    for (const auto &[handle, window] : windows)
        if (window->className == className) return false;
    return classes.erase(className) > 0;
}

void OffscreenWindowSystem::setClient(WindowHandle window, WindowClient *client)
{
    if (Window *const found = find(window)) found->client = client;
}

WindowClient *OffscreenWindowSystem::client(WindowHandle window) const
{
    const Window *const found = find(window);
    return found ? found->client : nullptr;
}

void OffscreenWindowSystem::moveWindow(WindowHandle window, const Rect &place, bool)
{
    Window *const found = find(window);
    if (!found) return;
    const bool resized = place.width() != found->place.width() || place.height() != found->place.height();
    found->place = place;
    if (resized) found->resize();
}

void OffscreenWindowSystem::showWindow(WindowHandle window, bool)
{
    Window *const found = find(window);
    if (!found || found->visible) return;
    found->visible = true;
    invalidate(window, {}, false);
}

void OffscreenWindowSystem::hideWindow(WindowHandle window)
{
    if (Window *const found = find(window)) found->visible = false;
}

void OffscreenWindowSystem::raiseWindow(WindowHandle window)
{
    Window *const found = find(window);
    Window *const parent = found ? find(found->parent) : nullptr;
    if (!parent) return;
    std::erase(parent->children, window);
    parent->children.push_back(window);
}

void OffscreenWindowSystem::setFocus(WindowHandle window)
{
    if (focused == window || !find(window)) return;
    const WindowHandle before = std::exchange(focused, window);
    deliver(before, {.kind = Event::Kind::focusOut});
    deliver(window, {.kind = Event::Kind::focusIn});
}

void OffscreenWindowSystem::captureMouse(WindowHandle window)
{
    const WindowHandle before = std::exchange(captured, find(window) ? window : nullptr);
    if (before && before != captured) deliver(before, {.kind = Event::Kind::captureLost});
}

void OffscreenWindowSystem::releaseMouse() { captureMouse(nullptr); }

void OffscreenWindowSystem::stealMouse()
{
    captureMouse(nullptr);
    pump();
}

void OffscreenWindowSystem::setOpacity(WindowHandle window, uint8_t opacity)
{
    if (find(window)) shownOpacity = opacity;
}

const std::string &OffscreenWindowSystem::title(WindowHandle window) const
{
    static const std::string none;
    const Window *const found = find(window);
    return found ? found->title : none;
}

std::vector<WindowHandle> OffscreenWindowSystem::children(WindowHandle window) const
{
    const Window *const found = find(window);
    return found ? found->children : std::vector<WindowHandle>();
}

bool OffscreenWindowSystem::isVisible(WindowHandle window) const
{
    const Window *found = find(window);
    while (found && found->visible && found->parent) found = find(found->parent);
    return found && found->visible;
}

Rect OffscreenWindowSystem::screenRect(WindowHandle window) const
{
    const Window *const found = find(window);
    if (!found || !isVisible(window)) return {};
    return Rect::at(toScreen(window, {}), found->place.width(), found->place.height());
}

std::optional<Point> OffscreenWindowSystem::windowOrigin(WindowHandle window) const
{
    if (!find(window)) return std::nullopt;
    return toScreen(window, {});
}

Point OffscreenWindowSystem::toScreen(WindowHandle window, Point at) const
{
    for (const Window *found = find(window); found; found = find(found->parent))
        at = at + found->place.corner();
    return at;
}

// Painting.

void OffscreenWindowSystem::invalidate(WindowHandle window, const OptionalRect &area, bool erase)
{
    Window *const found = find(window);
    if (!found) return;
    const Rect whole = found->bounds();
    const Rect part = area.present ? area.rect.intersected(whole) : whole;
    if (part.isEmpty()) return;
    if (found->dirty.isEmpty())
        found->dirty = part;
    else
        found->dirty = {std::min(found->dirty.left, part.left), std::max(found->dirty.right, part.right),
                        std::min(found->dirty.top, part.top), std::max(found->dirty.bottom, part.bottom)};
    found->erase |= erase;
}

void OffscreenWindowSystem::validate(WindowHandle window, const OptionalRect &area)
{
    Window *const found = find(window);
    if (!found) return;
    const Rect part = area.present ? area.rect : found->bounds();
    if (found->dirty.intersected(part) == found->dirty) found->dirty = {};
}

void OffscreenWindowSystem::redrawAll(WindowHandle window)
{
    invalidateTree(window);
    while (paintNext()) {}
}

void OffscreenWindowSystem::invalidateTree(WindowHandle window)
{
    const Window *const found = find(window);
    if (!found) return;
    invalidate(window, {}, false);
    for (const WindowHandle child : found->children) invalidateTree(child);
}

namespace {

/// Writes into a window's pixels.
class MemoryContext final : public DeviceContext {
public:
    MemoryContext(Bitmap &target, const Rect &allowed) : to(target), clip(allowed) {}
    void copy(const Bitmap &from, const Rect &source, Point at) override
    {
        const Rect available = Rect::at({}, from.width(), from.height());
        for (int32_t y = 0; y < source.height(); ++y)
            for (int32_t x = 0; x < source.width(); ++x) {
                const Point there = source.corner() + Point{x, y}, here = at + Point{x, y};
                if (!available.contains(there) || !clip.contains(here)) continue;
                pixelAt(to, here) = pixelAt(from, there) & 0xFFFFFF;
            }
    }

private:
    Bitmap &to;
    const Rect clip;
};

} // namespace

std::unique_ptr<DeviceContext> OffscreenWindowSystem::beginPaint(WindowHandle window, Rect &clip)
{
    Window *const found = find(window);
    if (!found) return nullptr;
    clip = std::exchange(found->dirty, {});
    paints.push_back({window, clip});
    return std::make_unique<MemoryContext>(found->pixels, clip);
}

void OffscreenWindowSystem::endPaint(WindowHandle, std::unique_ptr<DeviceContext>) {}

std::unique_ptr<DeviceContext> OffscreenWindowSystem::windowContext(WindowHandle window)
{
    Window *const found = find(window);
    if (!found || !isVisible(window)) return nullptr;
    paints.push_back({window, found->bounds()});
    return std::make_unique<MemoryContext>(found->pixels, found->bounds());
}

/// Lets windows paint until one changes its dirty area; returns false if none does.
bool OffscreenWindowSystem::paintNext()
{
    for (const auto &[handle, window] : windows) {
        if (window->dirty.isEmpty() || !window->client || !isVisible(handle)) continue;
        const Rect before = window->dirty;
        if (std::exchange(window->erase, false)) deliver(handle, {.kind = Event::Kind::eraseBackground});
        deliver(handle, {.kind = Event::Kind::paint});
        const Window *const still = find(handle);
        if (!still || still->dirty != before) return true;
    }
    return false;
}

Bitmap OffscreenWindowSystem::screenshot(WindowHandle window) const
{
    const Window *const found = find(window);
    if (!found) return {};
    Bitmap picture(found->place.width(), found->place.height(), Bitmap::Format::colour);
    draw(*found, {}, found->bounds(), picture);
    return picture;
}

void OffscreenWindowSystem::draw(const Window &window, Point at, const Rect &clip, Bitmap &to) const
{
    const Rect shown = window.bounds().moved(at).intersected(clip);
    for (int32_t y = shown.top; y <= shown.bottom; ++y)
        for (int32_t x = shown.left; x <= shown.right; ++x)
            pixelAt(to, {x, y}) = pixelAt(window.pixels, Point{x, y} - at);
    for (const WindowHandle handle : window.children) {
        const Window &child = *find(handle);
        if (child.visible) draw(child, at + child.place.corner(), shown, to);
    }
}

} // namespace Platform
