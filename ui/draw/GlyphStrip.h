#pragma once
#include <string_view>

#include "ui/draw/Pixmap.h"
#include "ui/draw/Surface.h"

/// Numbers set from a strip of glyphs that stand side by side in one image. Characters that the strips do not
/// have take no room.
namespace UI::Native::GlyphStrip {

constexpr int32_t kHeight = 7; // pixels

/// Pixels from the first glyph to the end of the last.
int32_t textWidth(std::string_view text);
void draw(const PixmapRef &strip, std::string_view text, const SurfaceRef &to, Point at);

} // namespace UI::Native::GlyphStrip
