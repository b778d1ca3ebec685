#pragma once
#include <cairo.h>
#include <memory>
#include <span>
#include <string>

namespace App {

struct Colour {
    double red, green, blue; // 0 to 1
};
struct Position {
    double x, y;
};
struct Box {
    double left, top, right, bottom;
    double width() const { return right - left; }
    double height() const { return bottom - top; }
};
enum class Align { left, centre, right };
enum class PictureFormat { png, svg };

struct CairoDestroy {
    void operator()(cairo_t *context) const { cairo_destroy(context); }
    void operator()(cairo_surface_t *surface) const { cairo_surface_destroy(surface); }
};
using CairoContext = std::unique_ptr<cairo_t, CairoDestroy>;
using CairoSurface = std::unique_ptr<cairo_surface_t, CairoDestroy>;

/// The bytes of a PNG file; empty if there is not enough memory.
std::string encodePng(cairo_surface_t *surface);

/// Draws a picture on a white page. Coordinates and sizes are in points; a PNG has kPixelsPerPoint pixels per
/// point.
/// Errors  Failure from the constructor and from finish if there is not enough memory
class Drawing {
public:
    Drawing(PictureFormat format, double width, double height);

    void line(Position from, Position to, Colour colour, double width);
    void path(std::span<const Position> points, Colour colour, double width);
    void fill(std::span<const Position> outline, Colour colour, double opacity);
    void rectangle(const Box &rect, Colour colour, double width);
    /// Draws the text with its left end, centre or right end, according to `align`, at `at` on the baseline.
    /// Returns the width.
    double text(Position at, const std::string &text, double size, Colour colour, Align align = Align::left,
                bool bold = false);
    /// Draws the text rotated to read upwards, centred on `at`.
    void verticalText(Position at, const std::string &text, double size, Colour colour);
    /// Clips all drawing to `rect` until unclip().
    void clip(const Box &rect);
    void unclip();

    /// Returns the bytes of the file. Call no other function afterwards.
    std::string finish();

    static constexpr double kPixelsPerPoint = 1.5;

private:
    void trace(std::span<const Position> points);
    void use(Colour colour, double opacity = 1.0);
    void font(double size, bool bold);

    const PictureFormat format;
    std::string bytes;
    CairoSurface surface;
    CairoContext context;
};

} // namespace App
