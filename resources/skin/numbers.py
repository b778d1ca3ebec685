"""The digit strips. The glyphs are drawn pixel by pixel, as an outline font is illegible in seven rows."""
from skin import palette as p
from skin.canvas import Canvas
from skin.shared import glyphs

ROWS = 7
STRIP, WIDTHS = glyphs()
FIELD_GLYPHS = 12   # fields show no "Inf"

# '#' is opaque, '+' has an opacity of 0.35, which rounds a corner.
GLYPHS = {
    "0": ("+###+", "#...#", "#...#", "#...#", "#...#", "#...#", "+###+"),
    "1": ("..#", "+##", "..#", "..#", "..#", "..#", "..#"),
    "2": ("+###+", "#...#", "....#", "..+#+", ".+#..", "+#...", "#####"),
    "3": ("+###+", "#...#", "....#", "..##+", "....#", "#...#", "+###+"),
    "4": ("...##", "..+##", ".+#.#", "+#..#", "#####", "....#", "....#"),
    "5": ("####", "#...", "###+", "...#", "...#", "#..#", "+##+"),
    "6": ("+###+", "#....", "#....", "####+", "#...#", "#...#", "+###+"),
    "7": ("####", "...#", "..+#", "..#+", ".+#.", ".#+.", ".#.."),
    "8": ("+###+", "#...#", "#...#", "+###+", "#...#", "#...#", "+###+"),
    "9": ("+##+", "#..#", "#..#", "+###", "...#", "...#", "+##+"),
    ".": ("..", "..", "..", "..", "..", "++", "##"),
    "-": ("...", "...", "...", "###", "...", "...", "..."),
    "I": (".#", ".#", ".#", ".#", ".#", ".#", ".#"),
    "n": ("....", "....", "###+", "#..#", "#..#", "#..#", "#..#"),
    "f": (".+##", ".#..", "###.", ".#..", ".#..", ".#..", ".#.."),
}


def strip(colour, count):
    canvas = Canvas(sum(WIDTHS[:count]), ROWS)
    left = 0
    for glyph, width in zip(STRIP[:count], WIDTHS):
        for y, row in enumerate(GLYPHS[glyph]):
            for x, mark in enumerate(row):
                if mark != ".":
                    canvas.fill(left + x, y, 1, 1, colour, 1.0 if mark == "#" else 0.35)
        left += width
    return canvas


def images():
    for name, colour in (("Green", p.GREEN), ("Red", p.RED), ("Yellow", p.YELLOW)):
        yield f"LevelMeterReadout_Numbers_{name}", strip(colour, len(STRIP))
    yield "TextEdit_Numbers", strip(p.DIGIT, FIELD_GLYPHS)
