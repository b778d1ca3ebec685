#pragma once
#include <optional>
#include <set>
#include <string>
#include <windows.h>

#include "tests/editor/Desk.h"

/// A desktop with real windows. Input goes through SendInput, so Windows handles hit tests, mouse capture, focus and key
/// states. Timers fire only inside wait().
class Win32Desk final : public Desk {
public:
    Win32Desk(int32_t width, int32_t height);
    ~Win32Desk() override;

    Platform::WindowHandle window() const override { return reinterpret_cast<Platform::WindowHandle>(host); }
    void destroyWindow() override;
    Platform::Bitmap shot() override;
    void moveTo(Point at) override;
    void press() override;
    void release() override;
    void doubleClick() override;
    void wheel(int32_t delta) override;
    void keyDown(uint32_t key) override;
    void keyUp(uint32_t key) override;
    void wait(uint32_t ms) override;
    void answerPrompt(const char *text, bool confirm) override;
    ResourceUsage resourceUsage() const override;

private:
    enum class Timers { held, served };
    struct Answer {
        std::string text;
        bool confirm;
    };

    static LRESULT CALLBACK hostProcedure(HWND window, UINT message, WPARAM word, LPARAM number);
    static void CALLBACK lookForPrompt(HWND, UINT, UINT_PTR, DWORD);
    void typeAnswer();
    static void pump(Timers timers);
    static void holdKeys();
    void settle();
    static void useMouse(DWORD flags, DWORD data = 0);

    HWND host = nullptr;
    std::optional<Answer> answer; // for the next prompt
    bool promptAnswered = false;  // since the last keyDown()
    UINT_PTR promptTimer = 0;
    static inline HWND answered = nullptr; // the last answered prompt
    static inline std::set<uint32_t> keysHeld;
    static inline Win32Desk *latest = nullptr; // for the timer callback, which has no user pointer
};
