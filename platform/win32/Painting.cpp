#include "platform/win32/Win32WindowSystem.h"

namespace Platform {

namespace {

/// A memory context with a bitmap selected into it, for the object's lifetime.
class SelectedBitmap {
public:
    SelectedBitmap(HDC like, const Bitmap &bitmap)
        : context(CreateCompatibleDC(like)), previous(SelectObject(context, bitmap.handle()))
    {
    }
    ~SelectedBitmap()
    {
        SelectObject(context, previous);
        DeleteDC(context);
    }
    SelectedBitmap(const SelectedBitmap &) = delete;
    SelectedBitmap &operator=(const SelectedBitmap &) = delete;
    const HDC context;

private:
    const HGDIOBJ previous;
};

class GdiContext : public DeviceContext {
public:
    explicit GdiContext(HDC target) : dc(target) {}
    void copy(const Bitmap &from, const Rect &source, Point to) override
    {
        const SelectedBitmap selected(dc, from);
        BitBlt(dc, to.x, to.y, source.width(), source.height(), selected.context, source.left, source.top,
               SRCCOPY);
    }

protected:
    const HDC dc;
};

class PaintContext final : public GdiContext {
public:
    PaintContext(HWND window, const PAINTSTRUCT &begun) : GdiContext(begun.hdc), owner(window), paint(begun)
    {
    }
    ~PaintContext() override { EndPaint(owner, &paint); }

private:
    const HWND owner;
    const PAINTSTRUCT paint;
};

class WindowContext final : public GdiContext {
public:
    WindowContext(HWND window, HDC got) : GdiContext(got), owner(window) {}
    ~WindowContext() override { ReleaseDC(owner, dc); }

private:
    const HWND owner;
};

} // namespace

std::unique_ptr<DeviceContext> Win32WindowSystem::beginPaint(WindowHandle window, Rect &clip)
{
    PAINTSTRUCT paint;
    if (!window || !BeginPaint(native(window), &paint)) return nullptr;
    clip = {paint.rcPaint.left, paint.rcPaint.right - 1, paint.rcPaint.top, paint.rcPaint.bottom - 1};
    return std::make_unique<PaintContext>(native(window), paint);
}

void Win32WindowSystem::endPaint(WindowHandle, std::unique_ptr<DeviceContext> context) { context.reset(); }

std::unique_ptr<DeviceContext> Win32WindowSystem::windowContext(WindowHandle window)
{
    const HDC dc = window ? GetDC(native(window)) : nullptr;
    if (!dc) return nullptr;
    return std::make_unique<WindowContext>(native(window), dc);
}

} // namespace Platform
