#include "apps/tessarine/pictures/Drawing.h"

#include <cairo-svg.h>
#include <cairo.h>
#include <cmath>

#include "apps/tessarine/console/Failure.h"
#include "apps/tessarine/console/Text.h"
#include "apps/tessarine/pictures/Palette.h"

namespace App {

namespace {

constexpr const char *kFont = "DejaVu Sans";

cairo_status_t append(void *bytes, const unsigned char *data, unsigned count)
{
    static_cast<std::string *>(bytes)->append(reinterpret_cast<const char *>(data), count);
    return CAIRO_STATUS_SUCCESS;
}

cairo_surface_t *makeSurface(PictureFormat format, double width, double height, std::string *bytes)
{
    if (format == PictureFormat::svg)
        return cairo_svg_surface_create_for_stream(append, bytes, width, height);
    const auto pixels = [](double points) {
        return static_cast<int>(std::lround(points * Drawing::kPixelsPerPoint));
    };
    return cairo_image_surface_create(CAIRO_FORMAT_RGB24, pixels(width), pixels(height));
}

} // namespace

std::string encodePng(cairo_surface_t *surface)
{
    std::string bytes;
    return cairo_surface_write_to_png_stream(surface, append, &bytes) == CAIRO_STATUS_SUCCESS ? bytes : "";
}

Drawing::Drawing(PictureFormat pictureFormat, double width, double height)
    : format(pictureFormat),
      surface(makeSurface(format, width, height, &bytes)),
      context(cairo_create(surface.get()))
{
    if (cairo_status(context.get()) != CAIRO_STATUS_SUCCESS)
        throw Failure("not enough memory to draw the picture; close other programs and try again");
    if (format == PictureFormat::png) cairo_scale(context.get(), kPixelsPerPoint, kPixelsPerPoint);
    cairo_set_line_join(context.get(), CAIRO_LINE_JOIN_ROUND);
    use(Palette::kPaper);
    cairo_paint(context.get());
}

void Drawing::use(Colour colour, double opacity)
{
    cairo_set_source_rgba(context.get(), colour.red, colour.green, colour.blue, opacity);
}

void Drawing::font(double size, bool bold)
{
    cairo_select_font_face(context.get(), kFont, CAIRO_FONT_SLANT_NORMAL,
                           bold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(context.get(), size);
}

void Drawing::trace(std::span<const Position> points)
{
    cairo_new_path(context.get());
    for (const Position &point : points) cairo_line_to(context.get(), point.x, point.y);
}

void Drawing::line(Position from, Position to, Colour colour, double width)
{
    const Position ends[] = {from, to};
    path(ends, colour, width);
}

void Drawing::path(std::span<const Position> points, Colour colour, double width)
{
    trace(points);
    use(colour);
    cairo_set_line_width(context.get(), width);
    cairo_stroke(context.get());
}

void Drawing::fill(std::span<const Position> outline, Colour colour, double opacity)
{
    trace(outline);
    cairo_close_path(context.get());
    use(colour, opacity);
    cairo_fill(context.get());
}

void Drawing::rectangle(const Box &rect, Colour colour, double width)
{
    cairo_rectangle(context.get(), rect.left, rect.top, rect.width(), rect.height());
    use(colour);
    cairo_set_line_width(context.get(), width);
    cairo_stroke(context.get());
}

double Drawing::text(Position at, const std::string &words, double size, Colour colour, Align align,
                     bool bold)
{
    const std::string text = validUtf8(words);
    font(size, bold);
    cairo_text_extents_t extents;
    cairo_text_extents(context.get(), text.c_str(), &extents);
    const double shift = align == Align::left ? 0.0 : align == Align::centre ? 0.5 : 1.0;
    use(colour);
    cairo_move_to(context.get(), at.x - shift * extents.x_advance, at.y);
    cairo_show_text(context.get(), text.c_str());
    return extents.x_advance;
}

void Drawing::verticalText(Position at, const std::string &words, double size, Colour colour)
{
    cairo_save(context.get());
    cairo_translate(context.get(), at.x, at.y);
    cairo_rotate(context.get(), -std::acos(0.0));
    text({0.0, 0.0}, words, size, colour, Align::centre);
    cairo_restore(context.get());
}

void Drawing::clip(const Box &rect)
{
    cairo_save(context.get());
    cairo_rectangle(context.get(), rect.left, rect.top, rect.width(), rect.height());
    cairo_clip(context.get());
}

void Drawing::unclip() { cairo_restore(context.get()); }

std::string Drawing::finish()
{
    if (format == PictureFormat::png) bytes = encodePng(surface.get());
    cairo_surface_finish(surface.get());
    if (cairo_status(context.get()) != CAIRO_STATUS_SUCCESS || bytes.empty())
        throw Failure(std::string("the picture cannot be drawn: ") +
                      cairo_status_to_string(cairo_status(context.get())));
    return std::move(bytes);
}

} // namespace App
