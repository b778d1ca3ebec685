"""A small drawing surface on cairo: whole pixels, flat colours, hinted text."""
import sys

import cairo

from skin import palette as p


def rgb(colour):
    return tuple((colour >> shift & 255) / 255 for shift in (16, 8, 0))


def mix(a, b, share):
    """Interpolates from colour a (share 0) to colour b (share 1)."""
    parts = [round((a >> s & 255) + ((b >> s & 255) - (a >> s & 255)) * share) for s in (16, 8, 0)]
    return parts[0] << 16 | parts[1] << 8 | parts[2]


def contrast(a, b):
    """Contrast ratio of two colours by WCAG 2.1, 1 to 21."""
    def luminance(colour):
        linear = [c / 12.92 if c <= 0.04045 else ((c + 0.055) / 1.055) ** 2.4 for c in rgb(colour)]
        return 0.2126 * linear[0] + 0.7152 * linear[1] + 0.0722 * linear[2]
    light, dark = sorted((luminance(a), luminance(b)), reverse=True)
    return (light + 0.05) / (dark + 0.05)


class Canvas:
    """An image of `width` by `height` pixels, filled with the colour `ground` (None: transparent)."""

    def __init__(self, width, height, ground=None):
        self.width, self.height = width, height
        form = cairo.FORMAT_ARGB32 if ground is None else cairo.FORMAT_RGB24
        self.surface = cairo.ImageSurface(form, width, height)
        self.context = cairo.Context(self.surface)
        self.context.set_antialias(cairo.ANTIALIAS_GRAY)
        self.space_letters(cairo.HINT_METRICS_ON)
        if ground is not None:
            self.fill(0, 0, width, height, ground)

    def space_letters(self, metrics):
        options = cairo.FontOptions()
        options.set_antialias(cairo.ANTIALIAS_GRAY)
        options.set_hint_style(cairo.HINT_STYLE_SLIGHT)
        options.set_hint_metrics(metrics)
        self.context.set_font_options(options)

    def narrow(self, scale):
        """Scales later drawing horizontally. Turns off hinted spacing, because narrowed letters would be uneven."""
        self.context.scale(scale, 1)
        if scale != 1:
            self.space_letters(cairo.HINT_METRICS_OFF)

    def ink(self, colour, opacity=1.0):
        self.context.set_source_rgba(*rgb(colour), opacity)

    def fill(self, x, y, width, height, colour, opacity=1.0):
        self.ink(colour, opacity)
        self.context.rectangle(x, y, width, height)
        self.context.fill()

    def shade(self, x, y, width, height, top, bottom, opacity=1.0):
        """Fills with a vertical gradient, one colour per row."""
        for row in range(height):
            self.fill(x, y + row, width, 1, mix(top, bottom, row / max(height - 1, 1)), opacity)

    def frame(self, x, y, width, height, colour, opacity=1.0):
        self.fill(x, y, width, 1, colour, opacity)
        self.fill(x, y + height - 1, width, 1, colour, opacity)
        self.fill(x, y + 1, 1, height - 2, colour, opacity)
        self.fill(x + width - 1, y + 1, 1, height - 2, colour, opacity)

    def round(self, x, y, width, height, radius, colour, opacity=1.0):
        c = self.context
        c.new_sub_path()
        quarter = 1.5707963267948966
        c.arc(x + width - radius, y + radius, radius, -quarter, 0)
        c.arc(x + width - radius, y + height - radius, radius, 0, quarter)
        c.arc(x + radius, y + height - radius, radius, quarter, 2 * quarter)
        c.arc(x + radius, y + radius, radius, 2 * quarter, 3 * quarter)
        c.close_path()
        self.ink(colour, opacity)
        c.fill()

    def text_width(self, words, font, size):
        self.context.select_font_face(font)
        self.context.set_font_size(size)
        return self.context.text_extents(words).x_advance

    def text(self, words, x, baseline, font, size, colour, opacity=1.0, align=0.0):
        """Draws text that starts at x, is centred at x (align 0.5) or ends at x (align 1)."""
        x -= round(self.text_width(words, font, size) * align)
        self.ink(colour, opacity)
        self.context.move_to(x, baseline)
        self.context.show_text(words)

    def draw(self, other, x, y, opacity=1.0):
        self.context.set_source_surface(other.surface, x, y)
        self.context.paint_with_alpha(opacity)

    def draw_part(self, other, left, top, width, height, x, y):
        """Draws a rectangle of `other` with its corner at x, y."""
        self.context.set_source_surface(other.surface, x - left, y - top)
        self.context.rectangle(x, y, width, height)
        self.context.fill()

    def pixel(self, x, y):
        """Colour of a pixel, 0xRRGGBB; the image must be opaque."""
        self.surface.flush()
        at = y * self.surface.get_stride() + 4 * x
        return int.from_bytes(self.surface.get_data()[at:at + 4], sys.byteorder) & 0xFFFFFF

    def write(self, path):
        self.surface.flush()
        self.surface.write_to_png(str(path))


def inset(canvas, x, y, width, height):
    """Draws an edge around the rectangle that makes it look recessed."""
    canvas.fill(x - 1, y - 1, width + 2, 1, p.PANEL_SHADE)
    canvas.fill(x - 1, y, 1, height, mix(p.PANEL, p.PANEL_SHADE, 0.6))
    canvas.fill(x + width, y, 1, height, mix(p.PANEL, p.PANEL_LIGHT, 0.5))
    canvas.fill(x - 1, y + height, width + 2, 1, p.PANEL_LIGHT)


