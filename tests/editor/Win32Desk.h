#pragma once
#include <optional>
#include <set>
#include <string>
#include <windows.h>

#include "tests/editor/Desk.h"

/// A desk on the screen of Windows, with the system's own mouse and keyboard: what the person does goes through
/// SendInput, so hit tests, the capture, the focus and the state of the keys are the system's. Between two
/// actions timers do not go off, only while wait() lasts.
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
    Holdings holdings() const override;

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
    void settleAfterPrompt();
    static void useMouse(DWORD flags, DWORD data = 0);

    HWND host = nullptr;
    std::optional<Answer> answer; // of the next prompt
    bool promptAnswered = false;  // since the last key that was held
    UINT_PTR promptTimer = 0;
    static inline HWND answered = nullptr; // the prompt that has been dealt with
    static inline std::set<uint32_t> keysHeld;
    static inline Win32Desk *latest = nullptr; // a timer's call carries no pointer
};
