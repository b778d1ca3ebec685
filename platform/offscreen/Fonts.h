#pragma once
#include <memory>
#include <string>
#include <vector>

#include <ft2build.h>
#include FT_FREETYPE_H

#include "platform/offscreen/OffscreenWindowSystem.h"

namespace Platform {

/// A font of FreeType: the face that was asked for, or the system's nearest, and after it all others of the
/// system for the letters that it lacks.
/// Thread  one at a time
class OffscreenFont final : public Font {
public:
    /// A glyph and its bitmap, valid until the next one is loaded.
    struct Glyph {
        const FT_Bitmap *image = nullptr; // null where nothing is to be drawn
        int32_t left = 0, top = 0;        // of the image: right of the pen, above the base line
        int32_t advance = 0;
    };

    using Library = std::shared_ptr<FT_LibraryRec_>;
    /// Null if the system has no face at all.
    static std::shared_ptr<OffscreenFont> make(Library library, const FontRequest &request);

    Glyph load(char32_t character, bool draw);
    /// Pixels from the top of a line to its base line, and to its bottom.
    int32_t ascent() const { return lineAscent; }
    int32_t lineHeight() const { return lineAscent + lineDescent; }

private:
    struct File {
        std::string path;
        int32_t index; // of the face in the file
        bool hasFailed;
        std::shared_ptr<FT_FaceRec_> face; // null until it is needed
    };

    explicit OffscreenFont(Library shared) : library(std::move(shared)) {}
    FT_Face open(File &file);
    void chooseSize(FT_Face face, int32_t height);
    std::pair<FT_Face, FT_UInt> find(char32_t character);

    const Library library; // outlives the faces below
    std::vector<File> files;
    uint32_t em = 0; // pixels
    int32_t lineAscent = 0, lineDescent = 0;
};

/// What all fonts of one window system share.
class OffscreenWindowSystem::Fonts {
public:
    Fonts();
    OffscreenFont::Library library; // null if it cannot be had
};

} // namespace Platform
