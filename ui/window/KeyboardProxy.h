#pragma once
#include "ui/window/Window.h"

namespace UI::Native {

/// A hidden child of the host-side window that may hold the focus without being a control. It swallows keys,
/// and when it loses the focus a drag ends.
class KeyboardProxy : public Reflected<KeyboardProxy, Window> {
public:
    static constexpr const char *kClassName = "UI::Native::KeyboardProxy";

    explicit KeyboardProxy(FrameBase *ownerFrame);

    std::optional<intptr_t> onEvent(Platform::WindowHandle window, const Platform::Event &event) override;
};

} // namespace UI::Native
