#pragma once
#include "ui/window/WindowBase.h"

namespace UI::Native {

/// A window of the editor with a native window behind it; what controls derive from.
class Window : public Reflected<Window, WindowBase> {
public:
    static constexpr const char *kClassName = "UI::Native::Window";

    /// Without `makeHandle` the subclass makes its native window itself.
    Window(FrameBase *ownerFrame, WindowBase *parentWindow, const String &windowName, bool makeHandle = true)
        : Reflected(ownerFrame, parentWindow, windowName)
    {
        createNative(windowName, makeHandle);
    }
};

} // namespace UI::Native
