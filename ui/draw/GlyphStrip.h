#pragma once
#include <string_view>

#include "ui/draw/Pixmap.h"
#include "ui/draw/Surface.h"

/// Draws numbers from a strip: one image with all glyphs side by side. Characters without a glyph are skipped.
namespace UI::Native::GlyphStrip {

constexpr int32_t kHeight = 7; // pixels

/// Width of the drawn text in pixels.
int32_t textWidth(std::string_view text);
void draw(const PixmapRef &strip, std::string_view text, const SurfaceRef &to, Point at);

} // namespace UI::Native::GlyphStrip
