#pragma once
#include <windows.h>

#include "platform/WindowSystem.h"

namespace Platform {

/// The window system of Windows: handles are HWNDs, GDI copies pixels.
class Win32WindowSystem final : public WindowSystem {
public:
    Win32WindowSystem();

    WindowHandle createWindow(const WindowRequest &request) override;
    void destroyWindow(WindowHandle window) override;
    bool unregisterClass(const std::string &className) override;
    void setClient(WindowHandle window, WindowClient *client) override;
    WindowClient *client(WindowHandle window) const override;
    void moveWindow(WindowHandle window, const Rect &place, bool repaint) override;
    void showWindow(WindowHandle window, bool activate) override;
    void hideWindow(WindowHandle window) override;
    void raiseWindow(WindowHandle window) override;
    WindowHandle focus() const override;
    void setFocus(WindowHandle window) override;
    void captureMouse(WindowHandle window) override;
    void releaseMouse() override;
    void setOpacity(WindowHandle window, uint8_t opacity) override;

    void invalidate(WindowHandle window, const OptionalRect &area, bool erase) override;
    void validate(WindowHandle window, const OptionalRect &area) override;
    void redrawAll(WindowHandle window) override;
    std::unique_ptr<DeviceContext> beginPaint(WindowHandle window, Rect &clip) override;
    void endPaint(WindowHandle window, std::unique_ptr<DeviceContext> context) override;
    std::unique_ptr<DeviceContext> windowContext(WindowHandle window) override;

    bool setTimer(WindowHandle window, uint32_t id, uint32_t periodMs) override;
    void killTimer(WindowHandle window, uint32_t id) override;
    void post(WindowHandle window, uint32_t code) override;
    void sendRenderTick(WindowHandle window) override;
    void serveRenderTicks(WindowHandle window) override;
    uint32_t milliseconds() const override;

    bool isKeyDown(uint32_t key) const override;
    bool isKeyDownNow(uint32_t key) const override;
    std::optional<Point> pointer() const override;
    void setPointer(Point at) override;
    std::optional<Point> windowOrigin(WindowHandle window) const override;
    Point toScreen(WindowHandle window, Point at) const override;
    CursorRef loadCursor(CursorKind kind) override;
    void showCursor(const CursorRef &cursor) override;

    FontRef createFont(const FontRequest &request) override;
    void drawText(Bitmap &to, const Font &font, uint32_t colour, Point at, std::u16string_view text,
                  bool alignRight) override;
    TextSize measureText(const Font &font, std::u16string_view text) override;
    std::u16string loadString(uint32_t id) override;
    std::optional<std::string> promptText(const PromptRequest &request) override;

    static HWND native(WindowHandle window) { return reinterpret_cast<HWND>(window); }
    /// The library or program that contains this code and its resources.
    static HINSTANCE module();

private:
    static LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM word, LPARAM number);
    std::optional<Event> translate(HWND window, UINT message, WPARAM word, LPARAM number) const;

    const UINT renderTickMessage, customMessage;
};

} // namespace Platform
