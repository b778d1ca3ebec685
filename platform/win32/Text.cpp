#include <algorithm>

#include "platform/win32/Win32WindowSystem.h"

namespace Platform {

namespace {

constexpr size_t kMaxText = 1024; // characters

class Win32Font final : public Font {
public:
    explicit Win32Font(HFONT made) : handle(made) {}
    ~Win32Font() override { DeleteObject(handle); }
    Win32Font(const Win32Font &) = delete;
    Win32Font &operator=(const Win32Font &) = delete;
    const HFONT handle;
};

/// A memory context with a font and, for drawing, a bitmap.
class TextContext {
public:
    explicit TextContext(const Font &font, HGDIOBJ bitmap = nullptr) : context(CreateCompatibleDC(nullptr))
    {
        previousFont = SelectObject(context, static_cast<const Win32Font &>(font).handle);
        if (bitmap) previousBitmap = SelectObject(context, bitmap);
    }
    ~TextContext()
    {
        SelectObject(context, previousFont);
        if (previousBitmap) SelectObject(context, previousBitmap);
        DeleteDC(context);
    }
    TextContext(const TextContext &) = delete;
    TextContext &operator=(const TextContext &) = delete;
    const HDC context;

private:
    HGDIOBJ previousFont, previousBitmap = nullptr;
};

std::u16string_view upToZero(std::u16string_view text)
{
    return text.substr(0, std::min(text.find(u'\0'), kMaxText));
}

const wchar_t *wide(std::u16string_view text)
{
    static_assert(sizeof(wchar_t) == sizeof(char16_t));
    return reinterpret_cast<const wchar_t *>(text.data());
}

} // namespace

FontRef Win32WindowSystem::createFont(const FontRequest &request)
{
    const HFONT made = CreateFontA(request.height, 0, 0, 0, request.bold ? FW_BOLD : 0, 0, 0, 0, 0, 0, 0, 0,
                                   0, request.face.c_str());
    return made ? std::make_shared<Win32Font>(made) : nullptr;
}

void Win32WindowSystem::drawText(Bitmap &to, const Font &font, uint32_t colour, Point at,
                                 std::u16string_view text, bool alignRight)
{
    if (to.isEmpty()) return;
    const std::u16string_view shown = upToZero(text);
    const TextContext target(font, to.handle());
    SetTextAlign(target.context, alignRight ? TA_RIGHT : 0);
    SetTextColor(target.context, RGB(colour >> 16 & 0xFF, colour >> 8 & 0xFF, colour & 0xFF));
    SetBkMode(target.context, TRANSPARENT);
    TextOutW(target.context, at.x, at.y, wide(shown), static_cast<int>(shown.size()));
    GdiFlush(); // callers then read the pixels directly
}

TextSize Win32WindowSystem::measureText(const Font &font, std::u16string_view text)
{
    const std::u16string_view shown = upToZero(text);
    const TextContext target(font);
    SIZE size = {};
    TEXTMETRICA metrics = {};
    GetTextExtentPoint32W(target.context, wide(shown), static_cast<int>(shown.size()), &size);
    GetTextMetricsA(target.context, &metrics);
    return {std::max<int32_t>(size.cx, 0), std::max<int32_t>(metrics.tmHeight, 0)};
}

std::u16string Win32WindowSystem::loadString(uint32_t id)
{
    char16_t text[kMaxText];
    const int length =
        LoadStringW(module(), id, reinterpret_cast<wchar_t *>(text), static_cast<int>(std::size(text) - 1));
    return std::u16string(text, static_cast<size_t>(std::max(length, 0)));
}

} // namespace Platform
