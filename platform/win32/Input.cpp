#include "platform/win32/Win32WindowSystem.h"

#include "platform/win32/ResourceIds.h"

namespace Platform {

namespace {

class Win32Cursor final : public Cursor {
public:
    explicit Win32Cursor(HCURSOR loaded) : handle(loaded) {}
    const HCURSOR handle; // shared, from the system or the module's resources: never destroyed
};

} // namespace

bool Win32WindowSystem::isKeyDown(uint32_t key) const { return GetKeyState(static_cast<int>(key)) < 0; }

bool Win32WindowSystem::isKeyDownNow(uint32_t key) const
{
    return GetAsyncKeyState(static_cast<int>(key)) < 0;
}

std::optional<Point> Win32WindowSystem::pointer() const
{
    POINT at;
    if (!GetCursorPos(&at)) return std::nullopt;
    return Point{at.x, at.y};
}

void Win32WindowSystem::setPointer(Point at) { SetCursorPos(at.x, at.y); }

std::optional<Point> Win32WindowSystem::windowOrigin(WindowHandle window) const
{
    RECT place;
    if (!window || !GetWindowRect(native(window), &place)) return std::nullopt;
    return Point{place.left, place.top};
}

Point Win32WindowSystem::toScreen(WindowHandle window, Point at) const
{
    POINT moved = {at.x, at.y};
    if (window) ClientToScreen(native(window), &moved);
    return {moved.x, moved.y};
}

CursorRef Win32WindowSystem::loadCursor(CursorKind kind)
{
    constexpr int kSystemIds[] = {32512, 32514, 32649, 32646, 32643, 32645, 32642, 32644};
    const auto index = static_cast<uint32_t>(kind);
    const bool ours = kind == CursorKind::drag;
    if (!ours && index >= std::size(kSystemIds)) return nullptr;
    const HCURSOR loaded =
        LoadCursorA(ours ? module() : nullptr, MAKEINTRESOURCEA(ours ? kDragCursorId : kSystemIds[index]));
    return loaded ? std::make_shared<Win32Cursor>(loaded) : nullptr;
}

void Win32WindowSystem::showCursor(const CursorRef &cursor)
{
    if (cursor) SetCursor(static_cast<const Win32Cursor &>(*cursor).handle);
}

} // namespace Platform
