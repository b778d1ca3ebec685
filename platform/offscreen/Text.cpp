#include <algorithm>

#include "platform/offscreen/EmbeddedStrings.h"
#include "platform/offscreen/Fonts.h"
#include "platform/offscreen/OffscreenWindow.h"

namespace Platform {

namespace {

constexpr size_t kMaxText = 1024; // 16-bit words
constexpr char32_t kReplacement = 0xFFFD;

/// Decodes UTF-16 up to the first zero; an unpaired surrogate becomes U+FFFD.
std::u32string characters(std::u16string_view text)
{
    const std::u16string_view shown = text.substr(0, std::min(text.find(u'\0'), kMaxText));
    std::u32string found;
    for (size_t i = 0; i < shown.size(); ++i) {
        const char32_t word = shown[i];
        const char32_t next = i + 1 < shown.size() ? shown[i + 1] : 0;
        if ((word & 0xF800) != 0xD800)
            found += word;
        else if ((word & 0xFC00) == 0xD800 && (next & 0xFC00) == 0xDC00) {
            found += static_cast<char32_t>(0x10000 + ((word & 0x3FF) << 10) + (next & 0x3FF));
            ++i;
        } else
            found += kReplacement;
    }
    return found;
}

uint32_t blended(uint32_t ground, uint32_t colour, uint32_t coverage)
{
    uint32_t result = 0;
    for (const uint32_t shift : {16u, 8u, 0u}) {
        const uint32_t below = ground >> shift & 0xFF, above = colour >> shift & 0xFF;
        result |= (below * (255 - coverage) + above * coverage + 127) / 255 << shift;
    }
    return result;
}

/// `left` and `top` may be outside the bitmap; the glyph is clipped to it.
void drawGlyph(Bitmap &to, const FT_Bitmap &image, int64_t left, int64_t top, uint32_t colour)
{
    for (uint32_t y = 0; y < image.rows; ++y) {
        const int64_t row = top + y;
        if (row < 0 || row >= to.height()) continue;
        const uint8_t *const coverage = image.buffer + static_cast<int64_t>(y) * image.pitch;
        for (uint32_t x = 0; x < image.width; ++x) {
            const int64_t column = left + x;
            if (column < 0 || column >= to.width() || coverage[x] == 0) continue;
            uint32_t &pixel = pixelAt(to, {static_cast<int32_t>(column), static_cast<int32_t>(row)});
            pixel = blended(pixel, colour, coverage[x]);
        }
    }
}

/// Fonts are const to callers; loading a glyph changes only their caches.
OffscreenFont &ours(const Font &font)
{
    return const_cast<OffscreenFont &>(static_cast<const OffscreenFont &>(font));
}

int32_t widthOf(OffscreenFont &font, const std::u32string &text)
{
    int32_t width = 0;
    for (const char32_t character : text) width += font.load(character, false).advance;
    return std::max(width, 0);
}

} // namespace

OffscreenWindowSystem::OffscreenWindowSystem() : fontLibrary(std::make_unique<Fonts>()) {}

OffscreenWindowSystem::~OffscreenWindowSystem() = default;

FontRef OffscreenWindowSystem::createFont(const FontRequest &request)
{
    return OffscreenFont::make(fontLibrary->library, request);
}

void OffscreenWindowSystem::drawText(Bitmap &to, const Font &font, uint32_t colour, Point at,
                                     std::u16string_view text, bool alignRight)
{
    if (to.isEmpty() || to.format() != Bitmap::Format::colour) return;
    OffscreenFont &face = ours(font);
    const std::u32string shown = characters(text);
    const int64_t baseLine = static_cast<int64_t>(at.y) + face.ascent();
    int64_t pen = static_cast<int64_t>(at.x) - (alignRight ? widthOf(face, shown) : 0);
    for (const char32_t character : shown) {
        const OffscreenFont::Glyph glyph = face.load(character, true);
        if (glyph.image) drawGlyph(to, *glyph.image, pen + glyph.left, baseLine - glyph.top, colour);
        pen += glyph.advance;
    }
}

TextSize OffscreenWindowSystem::measureText(const Font &font, std::u16string_view text)
{
    OffscreenFont &face = ours(font);
    return {widthOf(face, characters(text)), face.lineHeight()};
}

std::u16string OffscreenWindowSystem::loadString(uint32_t id)
{
    for (const EmbeddedString *entry = embeddedStrings; entry->text; ++entry)
        if (entry->id == id) return entry->text;
    return {};
}

} // namespace Platform
