#pragma once
#include "platform/offscreen/OffscreenWindowSystem.h"
#include "tests/editor/Desk.h"

/// A desk in memory. Its window system, with its clock and its records, is open to tests that need more than
/// a person sees.
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
    Holdings holdings() const override;

    Platform::OffscreenWindowSystem system;

private:
    static constexpr Point kCorner{40, 30}; // of the host window on the screen

    Platform::WindowHandle host;
};
