#include "platform/offscreen/Fonts.h"

#include <algorithm>
#include <cstdlib>

#include <fontconfig/fontconfig.h>
#include FT_TRUETYPE_TABLES_H

namespace Platform {

namespace {

constexpr int32_t kDefaultEm = 12; // pixels, for a request without a height
constexpr int32_t kMaxEm = 1000;

using Pattern = std::unique_ptr<FcPattern, decltype(&FcPatternDestroy)>;
using Set = std::unique_ptr<FcFontSet, decltype(&FcFontSetSortDestroy)>;

const FcChar8 *bytes(const char *text) { return reinterpret_cast<const FcChar8 *>(text); }

/// All scalable faces of the system, best match first.
Set sortedFaces(const FontRequest &request)
{
    const Pattern wanted(FcPatternCreate(), &FcPatternDestroy);
    FcPatternAddString(wanted.get(), FC_FAMILY, bytes(request.face.c_str()));
    FcPatternAddInteger(wanted.get(), FC_WEIGHT, request.bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
    FcPatternAddInteger(wanted.get(), FC_SLANT, FC_SLANT_ROMAN);
    FcPatternAddBool(wanted.get(), FC_SCALABLE, FcTrue);
    FcPatternAddBool(wanted.get(), FC_VARIABLE, FcFalse);
    // Otherwise the substitute for a missing Japanese face could lack Japanese characters.
    if (request.face.starts_with("MS ")) FcPatternAddString(wanted.get(), FC_LANG, bytes("ja"));
    FcConfigSubstitute(nullptr, wanted.get(), FcMatchPattern);
    FcDefaultSubstitute(wanted.get());
    FcResult result = FcResultNoMatch;
    return Set(FcFontSort(nullptr, wanted.get(), FcTrue, nullptr, &result), &FcFontSetSortDestroy);
}

/// Converts font units to pixels. Rounds up, so that no glyph is clipped.
int32_t scaled(int32_t units, uint32_t em, FT_Face face)
{
    const int32_t perEm = std::max<int32_t>(face->units_per_EM, 1);
    return (std::max(units, 0) * static_cast<int32_t>(em) + perEm - 1) / perEm;
}

} // namespace

OffscreenWindowSystem::Fonts::Fonts()
{
    FT_Library made = nullptr;
    if (FT_Init_FreeType(&made) == 0) library = OffscreenFont::Library(made, &FT_Done_FreeType);
}

std::shared_ptr<OffscreenFont> OffscreenFont::make(Library library, const FontRequest &request)
{
    if (!library) return nullptr;
    const Set faces = sortedFaces(request);
    std::shared_ptr<OffscreenFont> font(new OffscreenFont(std::move(library)));
    for (int i = 0; faces && i < faces->nfont; ++i) {
        FcChar8 *path = nullptr;
        int index = 0;
        if (FcPatternGetString(faces->fonts[i], FC_FILE, 0, &path) != FcResultMatch) continue;
        FcPatternGetInteger(faces->fonts[i], FC_INDEX, 0, &index);
        font->files.push_back({reinterpret_cast<const char *>(path), index, false, nullptr});
    }
    for (File &file : font->files) {
        const FT_Face first = font->open(file);
        if (!first) continue;
        font->chooseSize(first, request.height);
        FT_Set_Pixel_Sizes(first, font->em, font->em);
        return font;
    }
    return nullptr;
}

/// Uses the line height of Windows (OS/2 table) if the face has it.
void OffscreenFont::chooseSize(FT_Face face, int32_t height)
{
    const auto *const metrics = static_cast<const TT_OS2 *>(FT_Get_Sfnt_Table(face, FT_SFNT_OS2));
    const int32_t above = metrics ? metrics->usWinAscent : face->ascender;
    const int32_t below = metrics ? metrics->usWinDescent : -face->descender;
    const int64_t line = std::max(above + below, 1);
    int64_t pixels = kDefaultEm;
    if (height < 0) pixels = -static_cast<int64_t>(height);
    if (height > 0) pixels = static_cast<int64_t>(height) * face->units_per_EM / line;
    em = static_cast<uint32_t>(std::clamp<int64_t>(pixels, 1, kMaxEm));
    const auto lineAt = [&](uint32_t size) { return scaled(above, size, face) + scaled(below, size, face); };
    while (height > 0 && em > 1 && lineAt(em) > height) --em; // both parts are rounded up
    lineAscent = scaled(above, em, face);
    lineDescent = scaled(below, em, face);
}

FT_Face OffscreenFont::open(File &file)
{
    if (!file.face && !file.hasFailed) {
        FT_Face opened = nullptr;
        file.hasFailed = FT_New_Face(library.get(), file.path.c_str(), file.index, &opened) != 0;
        if (file.hasFailed) return nullptr;
        file.face = std::shared_ptr<FT_FaceRec_>(opened, &FT_Done_Face);
        if (em > 0) FT_Set_Pixel_Sizes(opened, em, em);
    }
    return file.face.get();
}

/// The first face with the character, or the first face and its glyph for missing characters.
std::pair<FT_Face, FT_UInt> OffscreenFont::find(char32_t character)
{
    FT_Face first = nullptr;
    for (File &file : files) {
        const FT_Face face = open(file);
        if (!face) continue;
        if (!first) first = face;
        if (const FT_UInt glyph = FT_Get_Char_Index(face, character)) return {face, glyph};
    }
    return {first, 0};
}

OffscreenFont::Glyph OffscreenFont::load(char32_t character, bool draw)
{
    const auto [face, index] = find(character);
    const FT_Int32 flags = FT_LOAD_TARGET_LIGHT | FT_LOAD_NO_BITMAP | (draw ? FT_LOAD_RENDER : 0);
    if (!face || FT_Load_Glyph(face, index, flags) != 0) return {};
    const FT_GlyphSlot slot = face->glyph;
    Glyph glyph;
    glyph.advance = static_cast<int32_t>((slot->advance.x + 32) >> 6);
    if (draw && slot->bitmap.pixel_mode == FT_PIXEL_MODE_GRAY) {
        glyph.image = &slot->bitmap;
        glyph.left = slot->bitmap_left;
        glyph.top = slot->bitmap_top;
    }
    return glyph;
}

} // namespace Platform
