"""The English labels and tool tips of the editor: one image per row of its text table."""
from skin import palette as p
from skin.canvas import Canvas
from skin.shared import text_rows

NARROW_LABEL, NARROW_OPTION, NARROW_TIP = 0.94, 0.94, 0.885    # so that the longest of each kind fits
SPACE = " \u200a"    # a space and a hair space, because narrowing makes spaces too small
ROWS = text_rows()
TITLES = [(words, width) for _, _, width, _, _, words in ROWS[:7]]
# Text, width, alignment (0 left, 1 right) and horizontal scale. The first image is narrower than its field.
LABELS = [("crossover:", 48, 0, NARROW_LABEL)] + \
    [(words, width, 1, 1) for _, _, width, _, _, words in ROWS[8:21]] + \
    [(words.replace(" ", SPACE), width, 1, NARROW_OPTION) for _, _, width, _, _, words in ROWS[21:24]]
TIP_WIDTHS = [53, 48, 46, 50] + [width for width in (55, 54, 67, 78) for _ in p.BAND_X] + [65]
TIPS = [(words, width) for (*_, words), width in zip(ROWS[24:], TIP_WIDTHS)]
DARK_TITLES = (4, 6)


def title(row, words, width):
    canvas = Canvas(width, 18)
    if row in DARK_TITLES:
        canvas.text(words, 0, 13, p.TITLE_FONT, p.TITLE_SIZE, p.LABEL)
    else:
        for x, y, strength in ((0, 1, 0.55), (1, 1, 0.35)):  # a shadow, for contrast on the lighter bars
            canvas.text(words, x, 13 + y, p.TITLE_FONT, p.TITLE_SIZE, 0x000000, strength)
        canvas.text(words, 0, 13, p.TITLE_FONT, p.TITLE_SIZE, p.TITLE)
    return canvas


def label(words, width, height, baseline, colour, align, narrow=1.0):
    """An image of a text, aligned left (align 0) or right (align 1) and scaled horizontally by `narrow`."""
    canvas = Canvas(width, height)
    canvas.narrow(narrow)
    canvas.text(words, width / narrow * align, baseline, p.LABEL_FONT, p.LABEL_SIZE, colour, align=align)
    return canvas


def images():
    pictures = [title(row, *rest) for row, rest in enumerate(TITLES)]
    pictures += [label(words, width, 12, 10, p.LABEL, align, narrow) for words, width, align, narrow in LABELS]
    pictures += [label(words, width, 15, 11, p.TIP, 0, NARROW_TIP) for words, width in TIPS]
    for row, picture in enumerate(pictures):
        yield f"TranslatedText{row}", picture
