#include "ui/window/FrameBase.h"

#include <algorithm>

#include "plugin/Product.h"
#include "ui/window/KeyboardProxy.h"
#include "ui/window/WindowBase.h"

namespace UI::Native {

using Platform::windowSystem;

FrameBase::FrameBase(Platform::WindowHandle hostHandle, Point origin, Plugin *effect)
    : Reflected("Native::FrameBase"),
      handle(hostHandle),
      originX(origin.x),
      originY(origin.y),
      plugin(effect),
      fonts(kFonts)
{
    ++liveCount;
    constexpr int32_t kHeight = -9; // pixels
    const char *const kFaces[kFonts] = {"Arial", "Arial Black", "Arial Italic"};
    for (uint32_t i = 0; i < kFonts; ++i) setFont(i, {kHeight, kFaces[i], false});
}

FrameBase::~FrameBase()
{
    frameDestroying = true;
    for (WindowBase *window : windows) delete window;
    --liveCount;
}

void FrameBase::setFont(uint32_t index, const FontSpec &spec)
{
    if (index >= fonts.size()) return;
    const auto made = windowSystem().createFont({spec.height, false, spec.name.c_str()});
    if (made) fonts[index] = made;
}

void FrameBase::createKeyboardProxy()
{
    if (!keyboardProxy) keyboardProxy = new KeyboardProxy(this);
}

void FrameBase::addWindow(WindowBase *window)
{
    windows.push_back(window);
    // Keep the proxy last, so that it is destroyed last.
    const auto proxy = std::find(windows.begin(), windows.end(), static_cast<WindowBase *>(keyboardProxy));
    if (keyboardProxy && proxy != windows.end()) std::rotate(proxy, proxy + 1, windows.end());
}

void FrameBase::forgetWindow(WindowBase *window)
{
    if (mouseCapture == window) mouseCapture = nullptr;
    if (!frameDestroying) std::erase(windows, window);
}

void FrameBase::setMouseCapture(WindowBase *window)
{
    if (!window) return;
    endDrag();
    mouseCapture = window;         // first: the system reports the change at once
    if (!window->nativeHandle()) { // the host closed the editor when the gesture began
        mouseCaptureLost(window);
        return;
    }
    windowSystem().captureMouse(window->nativeHandle());
    holdsMouse = true;
}

void FrameBase::releaseMouseCapture()
{
    if (!mouseCapture) return;
    mouseCapture = nullptr;
    if (std::exchange(holdsMouse, false)) windowSystem().releaseMouse();
}

void FrameBase::mouseCaptureLost(WindowBase *window)
{
    if (window != mouseCapture) return;
    holdsMouse = false; // another window has the capture now
    abandonDrag();
    if (!holdsMouse) mouseCapture = nullptr;
}

void FrameBase::endDrag()
{
    if (mouseCapture) mouseCapture->onMouseUp({}, 0);
}

void FrameBase::abandonDrag()
{
    if (mouseCapture) mouseCapture->onCaptureLost();
}

bool FrameBase::ctrlDown() const { return windowSystem().isKeyDownNow(Platform::kKeyControl); }

bool FrameBase::shiftDown() const { return windowSystem().isKeyDownNow(Platform::kKeyShift); }

bool FrameBase::altDown() const { return windowSystem().isKeyDownNow(Platform::kKeyAlt); }

Point FrameBase::windowOrigin() const { return windowSystem().windowOrigin(handle).value_or(Point{}); }

Point FrameBase::cursorPosition() const
{
    const auto pointer = windowSystem().pointer();
    return pointer ? *pointer - windowOrigin() - Point{originX, originY} : Point{};
}

uint32_t FrameBase::milliseconds() const { return windowSystem().milliseconds(); }

const Platform::CursorRef &FrameBase::arrow()
{
    if (!arrowCursor) arrowCursor = windowSystem().loadCursor(Platform::CursorKind::arrow);
    return arrowCursor;
}

void FrameBase::blit(const SurfaceRef &from, Platform::DeviceContext &dc, const Rect &source, Point to)
{
    if (from && !from->isEmpty()) dc.copy(from->bitmap(), source, to);
}

std::string FrameBase::nativeClassName(const Plugin &effect, const char *stem)
{
    return String("Audio_%1v%2f%3_Win32")
               .arg(Product::kName)
               .arg(Product::kVersion)
               .arg(effect.getHostFormat())
               .c_str() +
           std::string(stem);
}

} // namespace UI::Native
