#pragma once
#include "platform/offscreen/OffscreenWindowSystem.h"
#include "tests/editor/Desk.h"

/// A simulated desktop with offscreen windows. Tests may access its window system directly.
class OffscreenDesk final : public Desk {
public:
    OffscreenDesk(int32_t width, int32_t height);
    ~OffscreenDesk() override;

    Platform::WindowHandle window() const override { return host; }
    void destroyWindow() override;
    Platform::Bitmap shot() override { return system.screenshot(host); }
    void moveTo(Point at) override { system.movePointer(at + kCorner); }
    void press() override { system.pressButton(); }
    void release() override { system.releaseButton(); }
    void doubleClick() override { system.doubleClick(); }
    void wheel(int32_t delta) override { system.turnWheel(delta); }
    void keyDown(uint32_t key) override { system.pressKey(key); }
    void keyUp(uint32_t key) override { system.releaseKey(key); }
    void wait(uint32_t ms) override { system.advance(ms); }
    void answerPrompt(const char *text, bool confirm) override;
    ResourceUsage resourceUsage() const override;

    Platform::OffscreenWindowSystem system;

private:
    static constexpr Point kCorner{40, 30}; // screen position of the host window

    Platform::WindowHandle host;
};
