#pragma once
#include "ui/window/WindowBase.h"

namespace UI::Native {

/// An editor window that creates its native window; base class of the controls.
class Window : public Reflected<Window, WindowBase> {
public:
    static constexpr const char *kClassName = "UI::Native::Window";

    /// If `makeHandle` is false, the subclass creates the native window.
    Window(FrameBase *ownerFrame, WindowBase *parentWindow, const String &windowName, bool makeHandle = true)
        : Reflected(ownerFrame, parentWindow, windowName)
    {
        createNative(windowName, makeHandle);
    }
};

} // namespace UI::Native
