#include "ui/draw/GlyphStrip.h"

#include <algorithm>
#include <iterator>

#include "ui/draw/Copy.h"

namespace UI::Native::GlyphStrip {

namespace {

struct Glyph {
    char character;
    int32_t from, wide; // pixels, in the strip
};

// The strip of the numeric fields has no letters: it ends with the minus.
constexpr Glyph kGlyphs[] = {{'0', 0, 6},  {'1', 6, 4},  {'2', 10, 6}, {'3', 16, 6}, {'4', 22, 6},
                             {'5', 28, 5}, {'6', 33, 6}, {'7', 39, 5}, {'8', 44, 6}, {'9', 50, 5},
                             {'.', 55, 3}, {'-', 58, 4}, {'I', 62, 3}, {'n', 65, 5}, {'f', 70, 4}};

const Glyph *find(char character)
{
    const auto found = std::find_if(std::begin(kGlyphs), std::end(kGlyphs),
                                    [&](const Glyph &glyph) { return glyph.character == character; });
    return found == std::end(kGlyphs) ? nullptr : found;
}

} // namespace

int32_t textWidth(std::string_view text)
{
    int32_t width = 0;
    for (const char character : text)
        if (const Glyph *glyph = find(character)) width += glyph->wide;
    return width;
}

void draw(const PixmapRef &strip, std::string_view text, const SurfaceRef &to, Point at)
{
    for (const char character : text) {
        const Glyph *glyph = find(character);
        if (!glyph) continue;
        drawPixmap(strip, Rect::at({glyph->from, 0}, glyph->wide, kHeight), to, at, 0);
        at.x += glyph->wide;
    }
}

} // namespace UI::Native::GlyphStrip
