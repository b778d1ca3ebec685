"""The English words of the editor, a picture to each row of its text table."""
from skin import palette as p
from skin.canvas import Canvas

BANDS = ("1", "2", "3", "4")
NARROW_LABEL, NARROW_OPTION, NARROW_TIP = 0.94, 0.94, 0.885    # so that the longest of each kind fits
SPACE = " \u200a"    # a hair wider than a space; narrowed words run together without it
# Rows of the text table: words, width, where they stand (0 left, 1 right) and how narrow they are.
TITLES = [(f"band {band}", 55) for band in BANDS] + [("output gain", 111), ("limiter", 90), ("options", 111)]
LABELS = [("crossover:", 48, 0, NARROW_LABEL), ("low:", 27, 1, 1), ("mid:", 55, 1, 1), ("high:", 55, 1, 1)] + \
    [("gain:", 54, 1, 1)] + \
    [(words, 42, 1, 1) for words in ("thresh:", "gain:", "ratio:", "attack:", "release:")] + \
    [(words, 54, 1, 1) for words in ("threshold:", "margin:", "attack:", "release:")] + \
    [(words.replace(" ", SPACE), 90, 1, NARROW_OPTION)
     for words in ("spectrum on input:", "brickwall limiter:", "link band controls:")]
TIPS = [("Output Gain", 53), ("Low Cutoff", 48), ("Mid Cutoff", 46), ("High Cutoff", 50)] + \
    [(f"Band {band} {what}", width) for what, width in (("Gain", 55), ("Solo", 54), ("Bypass", 67), ("Threshold", 78))
     for band in BANDS] + [("Limiter Bypass", 65)]
DARK_TITLES = (4, 6)


def title(row, words, width):
    canvas = Canvas(width, 18)
    if row in DARK_TITLES:
        canvas.text(words, 0, 13, p.TITLE_FONT, p.TITLE_SIZE, p.LABEL)
    else:
        for x, y, strength in ((0, 1, 0.55), (1, 1, 0.35)):  # a shadow, for the lighter bars
            canvas.text(words, x, 13 + y, p.TITLE_FONT, p.TITLE_SIZE, 0x000000, strength)
        canvas.text(words, 0, 13, p.TITLE_FONT, p.TITLE_SIZE, p.TITLE)
    return canvas


def label(words, width, height, baseline, colour, align, narrow=1.0):
    """Words at the left or, with align 1, up to the right edge, `narrow` times as wide as their font has them."""
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
