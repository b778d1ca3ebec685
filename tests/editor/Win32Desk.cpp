#include "tests/editor/Win32Desk.h"

#include <algorithm>
#include <utility>

#include "platform/win32/ResourceIds.h"

namespace {

constexpr char kHostClass[] = "Tessarine test host";
constexpr Point kCorner{40, 30}; // screen position of the host window
constexpr UINT kMostDoubleClickMs = 5000;
constexpr UINT kLookMs = 10;                        // interval of lookForPrompt()
constexpr int kRounds = 4, kRoundsAfterPrompt = 10; // of settle()

bool isExtended(uint32_t key)
{
    return (key >= Platform::kKeyPageUp && key <= Platform::kKeyDown) || key == VK_INSERT || key == VK_DELETE;
}

void useKey(uint32_t key, bool down)
{
    INPUT input = {};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = static_cast<WORD>(key);
    input.ki.wScan = static_cast<WORD>(MapVirtualKeyA(key, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = (down ? 0 : KEYEVENTF_KEYUP) | (isExtended(key) ? KEYEVENTF_EXTENDEDKEY : 0);
    SendInput(1, &input, sizeof input);
}

void typeKey(uint32_t key)
{
    useKey(key, true);
    useKey(key, false);
}

void typeCharacter(char character)
{
    const SHORT key = VkKeyScanA(character);
    const bool shifted = (key & 0x100) != 0;
    if (shifted) useKey(VK_SHIFT, true);
    typeKey(key & 0xFF);
    if (shifted) useKey(VK_SHIFT, false);
}

/// Drops mouse moves that do not change the position: Windows may send one at any time.
class Moves {
public:
    void expect() { last.reset(); }
    bool take(const MSG &message)
    {
        const Point at{message.pt.x, message.pt.y};
        return std::exchange(last, at) != at;
    }

private:
    std::optional<Point> last;
} moves;

BOOL CALLBACK findPrompt(HWND window, LPARAM found)
{
    if (!GetDlgItem(window, kPromptFieldId) || !IsWindowVisible(window)) return TRUE;
    *reinterpret_cast<HWND *>(found) = window;
    return FALSE;
}

} // namespace

std::unique_ptr<Desk> Desk::make(int32_t width, int32_t height)
{
    return std::make_unique<Win32Desk>(width, height);
}

Win32Desk::Win32Desk(int32_t width, int32_t height)
{
    WNDCLASSEXA made = {};
    made.cbSize = sizeof made;
    made.lpfnWndProc = &hostProcedure;
    made.hInstance = GetModuleHandleA(nullptr);
    made.hCursor = LoadCursorA(nullptr, MAKEINTRESOURCEA(32512));
    made.lpszClassName = kHostClass;
    RegisterClassExA(&made); // fails harmlessly if already registered
    SetCursorPos(0, 0);      // outside the host window
    host = CreateWindowExA(WS_EX_TOPMOST, kHostClass, "Host", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN,
                           kCorner.x, kCorner.y, width, height, nullptr, nullptr, made.hInstance, nullptr);
    SetForegroundWindow(host);
    SetFocus(host);
    latest = this;
    promptTimer = SetTimer(nullptr, 0, kLookMs, &lookForPrompt);
    pump(Timers::held);
}

Win32Desk::~Win32Desk()
{
    KillTimer(nullptr, promptTimer);
    if (latest == this) latest = nullptr;
    destroyWindow();
    pump(Timers::held);
}

void Win32Desk::destroyWindow()
{
    if (host) DestroyWindow(host);
    host = nullptr;
}

LRESULT CALLBACK Win32Desk::hostProcedure(HWND window, UINT message, WPARAM word, LPARAM number)
{
    if (message == WM_SYSCOMMAND && (word & 0xFFF0) == SC_KEYMENU) return 0; // Alt opens no menu
    return DefWindowProcA(window, message, word, number);
}

/// Processes all pending messages. Limits paint messages and messages posted by other threads, which may never end.
/// Requests mouse messages first: Wine loses a double click that it finds while it looks for other messages.
void Win32Desk::pump(Timers timers)
{
    constexpr UINT kFirstPosted = 0xC000; // first registered message
    int paints = 1000, posted = 4;        // limits; one action causes fewer
    const auto serve = [&](UINT first, UINT last) {
        MSG message;
        if (!PeekMessageA(&message, nullptr, first, last, PM_REMOVE)) return false;
        if (message.message == WM_PAINT && --paints < 0) return false;
        if (message.message >= kFirstPosted) --posted;
        if (message.message == WM_MOUSEMOVE && !moves.take(message)) return true;
        TranslateMessage(&message);
        DispatchMessageA(&message);
        return true;
    };
    if (timers == Timers::served) {
        while (posted > 0 && serve(0, 0)) {}
        return;
    }
    while (serve(WM_TIMER + 1, posted > 0 ? ~0u : kFirstPosted - 1) || serve(1, WM_TIMER - 1)) {}
}

Platform::Bitmap Win32Desk::shot()
{
    pump(Timers::held);
    RECT area = {};
    GetClientRect(host, &area);
    Platform::Bitmap picture(area.right, area.bottom, Platform::Bitmap::Format::colour);
    const HDC screen = GetDCEx(host, nullptr, DCX_CACHE); // includes child windows
    const HDC memory = CreateCompatibleDC(screen);
    const HGDIOBJ before = SelectObject(memory, picture.handle());
    BitBlt(memory, 0, 0, area.right, area.bottom, screen, 0, 0, SRCCOPY);
    SelectObject(memory, before);
    DeleteDC(memory);
    ReleaseDC(host, screen);
    GdiFlush();
    auto *pixels = static_cast<uint32_t *>(picture.pixels());
    std::for_each_n(pixels, area.right * area.bottom, [](uint32_t &pixel) { pixel &= 0xFFFFFF; });
    return picture;
}

void Win32Desk::moveTo(Point at)
{
    POINT there = {at.x, at.y};
    if (host)
        ClientToScreen(host, &there);
    else
        there = {at.x + kCorner.x, at.y + kCorner.y};
    holdKeys();
    moves.expect();
    SetCursorPos(there.x, there.y);
    pump(Timers::held);
    holdKeys();
}

/// Presses held keys again: after a mouse event Wine may release them, as its X server reports no pressed key.
void Win32Desk::holdKeys()
{
    if (keysHeld.empty()) return;
    pump(Timers::held);
    for (const uint32_t key : keysHeld)
        if ((GetAsyncKeyState(static_cast<int>(key)) & 0x8000) == 0) useKey(key, true);
}

void Win32Desk::useMouse(DWORD flags, DWORD data)
{
    holdKeys();
    INPUT input = {};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    input.mi.mouseData = data;
    SendInput(1, &input, sizeof input);
    pump(Timers::held);
}

/// Clicks the middle button first, so that two quick presses do not become a double click.
void Win32Desk::press()
{
    useMouse(MOUSEEVENTF_MIDDLEDOWN);
    useMouse(MOUSEEVENTF_MIDDLEUP);
    useMouse(MOUSEEVENTF_LEFTDOWN);
}

void Win32Desk::release() { useMouse(MOUSEEVENTF_LEFTUP); }

void Win32Desk::doubleClick()
{
    const UINT usual = GetDoubleClickTime();
    SetDoubleClickTime(kMostDoubleClickMs); // a busy machine may delay the second click
    press();
    release();
    useMouse(MOUSEEVENTF_LEFTDOWN);
    release();
    SetDoubleClickTime(usual);
}

void Win32Desk::wheel(int32_t delta) { useMouse(MOUSEEVENTF_WHEEL, static_cast<DWORD>(delta)); }

/// After the pointer has moved or a prompt has closed, the X server reports the window under the pointer, and Wine then
/// releases all keys. Waits until this has happened.
void Win32Desk::settle()
{
    const int rounds = std::exchange(promptAnswered, false) ? kRoundsAfterPrompt : kRounds;
    for (int round = 0; round < rounds; ++round) {
        pump(Timers::held);
        Sleep(kLookMs);
    }
}

void Win32Desk::keyDown(uint32_t key)
{
    if (keysHeld.empty()) settle();
    keysHeld.insert(key);
    holdKeys();
    pump(Timers::held);
    holdKeys();
}

void Win32Desk::keyUp(uint32_t key)
{
    keysHeld.erase(key);
    useKey(key, false);
    pump(Timers::held);
}

void Win32Desk::wait(uint32_t ms)
{
    if (ms == 0) {
        pump(Timers::held);
        return;
    }
    const DWORD start = GetTickCount();
    for (;;) {
        pump(Timers::served);
        const DWORD passed = GetTickCount() - start;
        if (passed >= ms) return;
        MsgWaitForMultipleObjects(0, nullptr, FALSE, ms - passed, QS_ALLINPUT);
    }
}

void Win32Desk::answerPrompt(const char *text, bool confirm) { answer = Answer{text, confirm}; }

/// Runs as a timer inside the prompt's message loop. Cancels a prompt without a prepared answer, which would stay open
/// for ever.
void CALLBACK Win32Desk::lookForPrompt(HWND, UINT, UINT_PTR, DWORD)
{
    HWND prompt = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), &findPrompt, reinterpret_cast<LPARAM>(&prompt));
    if (prompt && prompt != answered && latest) latest->typeAnswer();
    answered = prompt;
}

void Win32Desk::typeAnswer()
{
    if (const auto first = std::exchange(whilePrompted, {})) first();
    const Answer typed = std::exchange(answer, std::nullopt).value_or(Answer{"", false});
    for (const char character : typed.text) typeCharacter(character);
    typeKey(typed.confirm ? VK_RETURN : VK_ESCAPE);
    promptAnswered = true;
}
