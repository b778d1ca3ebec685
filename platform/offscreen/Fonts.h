#pragma once
#include <memory>
#include <string>
#include <vector>

#include <ft2build.h>
#include FT_FREETYPE_H

#include "platform/offscreen/OffscreenWindowSystem.h"

namespace Platform {

/// A FreeType font: the requested face or the nearest match, with all other system faces as fallback for
/// missing characters.
/// Thread  one at a time
class OffscreenFont final : public Font {
public:
    /// A glyph and its bitmap, valid until the next call of load().
    struct Glyph {
        const FT_Bitmap *image = nullptr; // null if not drawn or empty
        int32_t left = 0, top = 0;        // corner of the image: right of the pen, above the baseline
        int32_t advance = 0;
    };

    using Library = std::shared_ptr<FT_LibraryRec_>;
    /// Null if the system has no face at all.
    static std::shared_ptr<OffscreenFont> make(Library library, const FontRequest &request);

    Glyph load(char32_t character, bool draw);
    /// Pixels from the top of a line to its baseline.
    int32_t ascent() const { return lineAscent; }
    int32_t lineHeight() const { return lineAscent + lineDescent; }

private:
    struct File {
        std::string path;
        int32_t index; // of the face in the file
        bool hasFailed;
        std::shared_ptr<FT_FaceRec_> face; // null until first use
    };

    explicit OffscreenFont(Library shared) : library(std::move(shared)) {}
    FT_Face open(File &file);
    void chooseSize(FT_Face face, int32_t height);
    std::pair<FT_Face, FT_UInt> find(char32_t character);

    const Library library; // must outlive the faces below
    std::vector<File> files;
    uint32_t em = 0; // pixels
    int32_t lineAscent = 0, lineDescent = 0;
};

/// The FreeType library that all fonts of one window system share.
class OffscreenWindowSystem::Fonts {
public:
    Fonts();
    OffscreenFont::Library library; // null if FreeType cannot be initialised
};

} // namespace Platform
