#pragma once
#include "ui/window/Window.h"

namespace UI::Native {

/// A hidden child of the editor's window that can have the focus instead of a control. It discards keys, and ends
/// any drag when it loses the focus.
class KeyboardProxy : public Reflected<KeyboardProxy, Window> {
public:
    static constexpr const char *kClassName = "UI::Native::KeyboardProxy";

    explicit KeyboardProxy(FrameBase *ownerFrame);

    std::optional<intptr_t> onEvent(Platform::WindowHandle window, const Platform::Event &event) override;
};

} // namespace UI::Native
