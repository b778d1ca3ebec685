"""The background of the editor: panels, title bars, edges of fields and meters, scales, units and the name."""
from skin import palette as p
from skin.canvas import Canvas, inset, mix
from skin.controls import slider_row
from skin.meters import frequency_column, level_row, reduction_row, spectrum_row


def panel(canvas, x, y, width, bottom, bar=None):
    canvas.fill(x - 1, y - 1, width + 2, bottom - y + 2, mix(p.CHASSIS, 0, 0.35))
    canvas.fill(x, y, width, bottom - y, p.PANEL)
    canvas.fill(x, y, width, 1, p.PANEL_LIGHT)
    canvas.fill(x, bottom - 1, width, 1, p.PANEL_SHADE)
    if bar is not None:
        canvas.fill(x, y, width, p.BAR_HEIGHT, bar)
        canvas.fill(x, y + p.BAR_HEIGHT, width, 1, p.PANEL_LIGHT)


def scale_text(canvas, words, x, row, align):
    canvas.text(words, x, row + 4, p.LABEL_FONT, p.SCALE_SIZE, p.QUIET, align=align)


def unit(canvas, words, x, field_y):
    canvas.text(words, x, field_y + 10, p.LABEL_FONT, p.SCALE_SIZE, p.QUIET)


def tick(canvas, x, row, width=3, strong=False):
    canvas.fill(x, row, width, 1, p.LABEL if strong else p.QUIET, 1.0 if strong else 0.75)


def spectrum_panel(canvas):
    x, y, width, height = p.SPECTRUM
    inset(canvas, x, y, width, height)
    for hz, words in ((20, "20 Hz"), (50, "50"), (100, "100"), (200, "200"), (500, "500"), (1000, "1k"), (2000, "2k"),
                      (5000, "5k"), (10000, "10k"), (20000, "20k")):
        column = x + frequency_column(hz)
        canvas.fill(min(column, x + width - 1), y - 4, 1, 3, p.QUIET, 0.75)
        scale_text(canvas, words, column, y - 10, {20: 0.0, 20000: 1.0}.get(hz, 0.5))
    scale_text(canvas, "dB", x + width + 9, y - 10, 0)
    for db in range(0, -p.SPECTRUM_DB - 1, -20):
        row = y + spectrum_row(db)
        tick(canvas, x + width + 1, row)
        scale_text(canvas, f"\u2212{-db}" if db else "0", x + width + 6, row, 0)
    for field_x in p.CUTOFF_FIELD_X:
        inset(canvas, field_x, p.TOP_FIELD_Y, *p.LARGE_FIELD)
        unit(canvas, "Hz", field_x + p.LARGE_FIELD[0] + 4, p.TOP_FIELD_Y)


def output_panel(canvas):
    slider_x, slider_y = p.OUTPUT_SLIDER
    for step in range(7):
        row = slider_y + slider_row(p.LARGE_TRACK[1], step / 6)
        db = p.GAIN_DB - step * p.GAIN_DB // 3
        tick(canvas, slider_x - 4, row, strong=db == 0)
        scale_text(canvas, f"+{db}" if db > 0 else f"\u2212{-db}" if db else "0", slider_x - 7, row, 1)
    meter_x, meter_y = p.OUTPUT_METER
    inset(canvas, meter_x, meter_y, *p.LARGE_METER[:2])
    for db in range(0, -p.METER_DB - 1, -10):
        row = meter_y + level_row(p.LARGE_METER, db)
        tick(canvas, meter_x + p.LARGE_METER[0] + 2, row)
        scale_text(canvas, f"\u2212{-db}" if db else "0", meter_x + p.LARGE_METER[0] + 8, row, 0)
    x, y, width, height = p.READOUT
    canvas.fill(x - 1, y - 1, width + 2, height + 2, p.WELL)
    canvas.frame(x - 1, y - 1, width + 2, height + 2, p.WELL_TOP)
    inset(canvas, x - 1, y - 1, width + 2, height + 2)
    inset(canvas, p.STRIP_FIELD_X, p.TOP_FIELD_Y, *p.SMALL_FIELD)
    unit(canvas, "dB", p.STRIP_FIELD_X + p.SMALL_FIELD[0] + 4, p.TOP_FIELD_Y)


def band_panel(canvas, left):
    meter_x, meter_y = left + p.BAND_METER[0], p.BAND_METER[1]
    reduction_x = left + p.BAND_REDUCTION[0]
    inset(canvas, meter_x, meter_y, *p.SMALL_METER[:2])
    inset(canvas, reduction_x, p.BAND_REDUCTION[1], *p.REDUCTION_METER[:2])
    for step in range(7):
        db = -p.METER_DB * step // 6
        row = meter_y + level_row(p.SMALL_METER, db)
        tick(canvas, meter_x + p.SMALL_METER[0] + 1, row, 1)  # longer ticks would look like minus signs
        scale_text(canvas, str(-db), left + 38, row, 0.5)
        tick(canvas, left + 46, p.BAND_SLIDER[1] + slider_row(p.SMALL_TRACK[1], step / 6), 1)
    for db in range(0, -p.REDUCTION_DB - 1, -10):
        row = p.BAND_REDUCTION[1] + reduction_row(db)
        tick(canvas, reduction_x + p.REDUCTION_METER[0] + 2, row, 2)
        scale_text(canvas, str(-db), reduction_x + p.REDUCTION_METER[0] + 7, row, 0)
    for y, words in zip(p.BAND_FIELD_Y, ("dB", "dB", ": 1", "ms", "ms")):
        inset(canvas, left + p.BAND_FIELD_X, y, *p.SMALL_FIELD)
        unit(canvas, words, left + p.BAND_FIELD_X + p.SMALL_FIELD[0] + 3, y)


def limiter_panel(canvas):
    for y, words in zip(p.LIMITER_FIELD_Y, ("dB", "dB", "ms", "ms")):
        inset(canvas, p.STRIP_FIELD_X, y, *p.SMALL_FIELD)
        unit(canvas, words, p.STRIP_FIELD_X + p.SMALL_FIELD[0] + 4, y)


def options_panel(canvas):
    for y in p.CHECK_Y:
        inset(canvas, p.CHECK_X, y, 13, 13)
    canvas.fill(p.STRIP_X + 8, 437, p.STRIP_WIDTH - 16, 1, p.RULE)
    canvas.fill(p.STRIP_X + 8, 438, p.STRIP_WIDTH - 16, 1, p.PANEL_LIGHT)
    for index, colour in enumerate(p.BANDS):
        height = (9, 15, 12, 7)[index]
        canvas.fill(p.STRIP_X + 13 + 5 * index, 467 - height, 4, height, colour)
    canvas.text("tessarine", p.STRIP_X + 38, 467, p.TITLE_FONT, 14, p.LABEL)


def background():
    canvas = Canvas(*p.EDITOR, p.CHASSIS)
    panel(canvas, p.BAND_X[0], p.TOP_Y, p.BAND_X[3] + p.BAND_WIDTH - p.BAND_X[0], p.TOP_BOTTOM)
    panel(canvas, p.STRIP_X, p.TOP_Y, p.STRIP_WIDTH, p.TOP_BOTTOM, p.PANEL_BAR)
    for left, colour in zip(p.BAND_X, p.BANDS):
        panel(canvas, left, p.BANDS_Y, p.BAND_WIDTH, p.BANDS_BOTTOM, colour)
        band_panel(canvas, left)
    panel(canvas, p.STRIP_X, p.BANDS_Y, p.STRIP_WIDTH, p.LIMITER_BOTTOM, p.LIMITER_BAR)
    panel(canvas, p.STRIP_X, p.OPTIONS_Y, p.STRIP_WIDTH, p.BANDS_BOTTOM, p.PANEL_BAR)
    spectrum_panel(canvas)
    output_panel(canvas)
    limiter_panel(canvas)
    options_panel(canvas)
    return canvas


def images():
    yield "Background", background()
