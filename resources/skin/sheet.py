"""Pictures for review: a sheet of all images with their names, and the whole editor in three states."""
import math

import cairo

from skin import palette as p
from skin.canvas import Canvas, contrast
from skin.meters import BARS, BAR_WIDTH, OVER, REDUCTION_SEGMENT, SEGMENT, frequency_column
from skin.numbers import STRIP, WIDTHS
from skin.shared import text_rows


def enlarged(image, factor):
    big = Canvas(image.width * factor, image.height * factor)
    big.context.scale(factor, factor)
    big.context.set_source_surface(image.surface, 0, 0)
    big.context.get_source().set_filter(cairo.FILTER_NEAREST)
    big.context.paint()
    return big


def contact_sheet(images, width=1640):
    """Every image at 100 % and 400 % (large images: 100 % only) on a background as in the editor."""
    canvas = Canvas(width, 4000, 0x6A7078)  # cropped below
    x, y, tallest = 10, 10, 0
    for name, image in images.items():
        large = image.width > 200
        pair = [image] if large else [image, enlarged(image, 4)]
        cell = max(sum(part.width + 6 for part in pair), 150)
        height = max(part.height for part in pair) + 22
        if x + cell > width - 10:
            x, y, tallest = 10, y + tallest, 0
        canvas.text(name, x, y + 9, p.LABEL_FONT, 9, 0xFFFFFF)
        ground = 0xFFFFE1 if name.startswith("TranslatedText") and int(name[14:]) > 23 else \
            p.PANEL if name.startswith("TranslatedText") and 3 < int(name[14:]) != 5 else 0x46515A
        left = x
        for part in pair:
            canvas.fill(left, y + 13, part.width, part.height, ground)
            canvas.draw(part, left, y + 13)
            left += part.width + 6
        x, tallest = x + cell + 8, max(tallest, height)
    cropped = Canvas(width, y + tallest, 0)
    cropped.draw(canvas, 0, 0)
    return cropped


STATES = ("idle", "busy", "bypassed")


class Mock:
    """Composes the editor from its images as the editor does."""

    def __init__(self, images):
        self.images = images
        self.canvas = Canvas(*p.EDITOR, 0)
        self.put("Background", 0, 0)

    def put(self, name, x, y):
        self.canvas.draw(self.images[name], x, y)

    def number(self, words, strip, right, y):
        width = sum(WIDTHS[STRIP.index(c)] for c in words)
        x = right - width
        for c in words:
            index = STRIP.index(c)
            self.canvas.draw_part(self.images[strip], sum(WIDTHS[:index]), 0, WIDTHS[index], 7, x, y)
            x += WIDTHS[index]

    def field(self, words, x, y, size="Small", focus=False):
        self.put(f"TextEdit_Background_{size}", x, y)
        width = (p.LARGE_FIELD if size == "Large" else p.SMALL_FIELD)[0]
        self.number(words, "TextEdit_Numbers", x + width - 1, y + 3)
        if focus:
            self.put(f"TextEdit_FocusOverlay_{size}", x, y)

    def slider(self, size, x, y, share, pressed=False, focus=False):
        self.put(f"Slider_Track_{size}", x, y)
        height = (p.LARGE_TRACK if size == "Large" else p.SMALL_TRACK)[1]
        top = y + round((height - p.HANDLE) * share)
        self.put("Slider_Handle_Pressed" if pressed else "Slider_Handle_Normal", x, top)
        if focus:
            self.put("Slider_FocusOverlay", x, top)

    def level(self, size, x, y, bars, peaks, over=False):
        _, height, _ = p.LARGE_METER if size == "Large" else p.SMALL_METER
        self.put(f"LevelMeter_{size}_Off", x, y)
        on = self.images[f"LevelMeter_{size}_On"]
        for left, light, bar, peak in zip(BARS, OVER, bars, peaks):
            top = height - SEGMENT * bar - 2
            self.canvas.draw_part(on, left, top, BAR_WIDTH, SEGMENT * bar, x + left, y + top)
            if peak:
                top = height - SEGMENT * peak - 2
                self.canvas.draw_part(on, left, top, BAR_WIDTH, SEGMENT, x + left, y + top)
            if over:
                self.canvas.draw_part(on, light, 2, 4, 2, x + light, y + 2)

    def reduction(self, x, y, bar, peak):
        self.put("GainReductionMeter_Off", x, y)
        on = self.images["GainReductionMeter_On"]
        self.canvas.draw_part(on, 2, 2, 4, REDUCTION_SEGMENT * bar, x + 2, y + 2)
        if peak:
            top = REDUCTION_SEGMENT * peak + 2
            self.canvas.draw_part(on, 2, top, 4, REDUCTION_SEGMENT, x + 2, y + top)

    def bar(self, x, width, colour):
        self.canvas.fill(x, p.BANDS_Y, width, p.BAR_HEIGHT, colour)

    def spectrum(self, cutoffs, busy):
        x, y, width, height = p.SPECTRUM
        self.put("MultiBandSpectrum_Background", x, y)
        edges = [20, *cutoffs, 20000]
        if busy:
            for band, colour in enumerate(p.CURVES):
                rows = [band_curve(column, edges[band], edges[band + 1]) for column in range(width)]
                for column, row in enumerate(rows):
                    if row < height - 1:
                        self.canvas.fill(x + column, y + row, 1, height - row, colour, 130 / 255)
                        self.canvas.fill(x + column, y + row, 1, 2, colour, 130 / 255)
        for cutoff in cutoffs:
            for row in range(0, height, 2):
                self.canvas.fill(x + frequency_column(cutoff), y + row, 1, 1, 0xFFFFFF)

    def labels(self):
        for row, x, y, _, _ in label_places():
            self.put(f"TranslatedText{row}", x, y)


def label_places():
    """Row, position and size of every label in the editor's text table."""
    for row, (x, y, width, height, _, _) in enumerate(text_rows()[:24]):
        bands = [row] if row < 4 else range(4) if 12 <= row <= 16 else [None]
        for band in bands:
            left, top = (0, 0) if band is None else (p.BAND_X[band], p.BANDS_Y)
            yield row, x + left, y + top, width, height


def band_curve(column, low, high):
    """Row of a synthetic spectrum, pink with a few resonances, limited to one band."""
    hz = 20 * 1000 ** (column / p.SPECTRUM[2])
    db = -22 - 3.5 * math.log2(max(hz, 60) / 60) * 0.9 + 5 * math.sin(column * 0.21) * math.sin(column * 0.047 + 1)
    db += 2.5 * math.sin(column * 1.7) * min(1, column / 150)
    if hz < 45:
        db -= 24 * math.log2(45 / hz)
    if low > 20 and hz < low * 1.1:
        db -= 24 * max(0, math.log2(low * 1.1 / hz))
    if high < 20000 and hz > high / 1.1:
        db -= 24 * max(0, math.log2(hz * 1.1 / high))
    return min(max(round((p.SPECTRUM[3] - 1) * -db / p.SPECTRUM_DB), 0), p.SPECTRUM[3] - 1)


def mock(images, state):
    busy, other = state == "busy", state == "bypassed"
    m = Mock(images)
    cutoffs = (120, 2000, 10000) if not busy else (180, 1400, 7200)
    m.spectrum(cutoffs, busy)
    for x, cutoff in zip(p.CUTOFF_FIELD_X, cutoffs):
        m.field(f"{cutoff}" if cutoff >= 100 else f"{cutoff:.1f}", x, p.TOP_FIELD_Y, "Large", focus=other and x == 223)
    m.slider("Large", *p.OUTPUT_SLIDER, 0.5 if not busy else 0.39, pressed=busy, focus=other)
    m.level("Large", *p.OUTPUT_METER, (39, 36) if busy else (0, 0), (48, 42) if busy else (0, 0), over=busy)
    x, y, width, height = p.READOUT
    strip, words = ("LevelMeterReadout_Numbers_Red", "0.4") if busy else ("LevelMeterReadout_Numbers_Green", "-Inf")
    text_width = sum(WIDTHS[STRIP.index(c)] for c in words)
    m.number(words, strip, x + (width - text_width) // 2 + text_width, y + 1)
    m.field("4.0" if busy else "0.0", p.STRIP_FIELD_X, p.TOP_FIELD_Y)
    for band, left in enumerate(p.BAND_X):
        m.bar(left, p.BAND_WIDTH, p.INACTIVE_BAR if other or (busy and band == 3) else p.BANDS[band])
        for index, (name, lit) in enumerate((("Solo", other and band == 1), ("Bypass", other or (busy and band == 3)))):
            m.put(f"Button_{name}_{'On' if lit else 'Off'}_{'Pressed' if busy and band == 2 and not index else 'Normal'}",
                  left + p.SWITCH_X[index], 240)
        if other and band == 0:
            m.put("Button_FocusOverlay", left + p.SWITCH_X[0], 240)
        bars = ((30, 28), (34, 33), (26, 27), (18, 20))[band] if busy else (0, 0)
        m.level("Small", left + p.BAND_METER[0], p.BAND_METER[1], bars, [b + 3 if b else 0 for b in bars])
        m.reduction(left + p.BAND_REDUCTION[0], p.BAND_REDUCTION[1], (3, 7, 2, 0)[band] if busy else 0,
                    (5, 9, 3, 0)[band] if busy else 0)
        m.slider("Small", left + p.BAND_SLIDER[0], p.BAND_SLIDER[1], (0.4, 0.45, 0.55, 0.3)[band] if busy else 0,
                 focus=other and band == 2)
        values = (("-24.0", "3.0", "2.5", "12.0", "180"), ("-27.0", "4.5", "4.0", "8.0", "120"),
                  ("-33.0", "2.0", "3.0", "4.0", "90.0"), ("-18.0", "0.0", "1.5", "1.0", "60.0"))[band] if busy else \
            ("0.0", "0.0", "1.0", "10.0", "100")
        for row, words in zip(p.BAND_FIELD_Y, values):
            m.field(words, left + p.BAND_FIELD_X, row)
    m.bar(p.STRIP_X, p.STRIP_WIDTH, p.INACTIVE_BAR if other else p.LIMITER_BAR)
    m.put(f"Button_Bypass_{'On' if other else 'Off'}_Normal", *p.LIMITER_SWITCH)
    for y, words in zip(p.LIMITER_FIELD_Y, ("-6.0", "-0.3", "4.0", "250") if busy else ("0.0", "0.0", "4.0", "500")):
        m.field(words, p.STRIP_FIELD_X, y)
    for index, y in enumerate(p.CHECK_Y):
        on = other or (busy and index == 1)
        m.put(f"CheckBox_{'On' if on else 'Off'}_{'Pressed' if busy and index == 2 else 'Normal'}", p.CHECK_X, y)
        if other and index == 2:
            m.put("CheckBox_FocusOverlay", p.CHECK_X, y)
    m.labels()
    if busy:
        tip(m, "TranslatedText41", 290, 330)
    return m.canvas


def tip(m, name, x, y):
    image = m.images[name]
    m.canvas.fill(x, y, image.width + 12, image.height + 2, 0)
    m.canvas.fill(x + 1, y + 1, image.width + 10, image.height, 0xFFFFE1)
    m.put(name, x + 6, y + 1)


def legibility(background):
    """Yields the required contrasts: name of the colour pair, ratio, least ratio."""
    for ground in ("PANEL", "PANEL_BAR"):
        yield f"labels on {ground}", contrast(p.LABEL, getattr(p, ground)), 7
    yield "units and scales on the panel", contrast(p.QUIET, p.PANEL), 4.5
    yield "numbers in a field", contrast(p.DIGIT, p.WELL), 7
    yield "text of a tool tip", contrast(p.TIP, 0xFFFFE1), 7
    # The editor draws labels in languages other than English in black, directly on the background.
    for row, x, y, width, height in label_places():
        if row > 3 and row != 5:
            darkest = min(contrast(0, background.pixel(column, line))
                          for column in range(x, x + width) for line in range(y, y + height))
            yield f"black on the darkest pixel under label {row} at {x}, {y}", darkest, 7
