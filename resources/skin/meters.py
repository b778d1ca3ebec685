"""Level and gain-reduction meters, unlit and lit, and the background of the spectrum."""
import math

from skin import palette as p
from skin.canvas import Canvas, mix

SEGMENT = p.LEVEL["kSegmentHeight"]                             # rows, including the gap
REDUCTION_SEGMENT = p.REDUCTION_CODE["kSegmentHeight"]
BARS, BAR_WIDTH = (p.LEVEL["kLeftBar"], p.LEVEL["kRightBar"]), p.LEVEL["kBarWidth"]
OVER = p.LEVEL["kLeftLight"], p.LEVEL["kRightLight"]            # columns of the clip lights
WARN_SEGMENTS = p.LEVEL["kWarningSegments"]                     # yellow, at the top
DIM = 0.86              # mix of an unlit segment: 0 is its colour, 1 the background


def level_row(meter, db):
    """Row of a level meter at which a bar of `db` ends."""
    _, height, segments = meter
    return height - 2 - math.floor(SEGMENT * (segments + 1) * (db + p.METER_DB) / p.METER_DB + 0.5)


def reduction_row(db):
    return 2 + math.floor(REDUCTION_SEGMENT * p.REDUCTION_METER[2] * -db / p.REDUCTION_DB + 0.5)


def level_colour(segment, segments):
    if segment > segments:
        return p.RED
    return p.YELLOW if segment > segments - WARN_SEGMENTS else p.GREEN


def light(canvas, x, y, width, height, colour, lit):
    canvas.fill(x, y, width, height, colour if lit else mix(colour, p.WELL, DIM))
    if lit:
        canvas.fill(x, y, width, 1, mix(colour, 0xFFFFFF, 0.25))


def well(width, height):
    canvas = Canvas(width, height, p.WELL)
    canvas.frame(0, 0, width, height, p.WELL_TOP)
    return canvas


def level_meter(meter, lit):
    width, height, segments = meter
    canvas = well(width, height)
    for left, over in zip(BARS, OVER):
        # The extra lit segment above the top one is for peaks only, just below the clip light.
        for segment in range(1, segments + (2 if lit else 1)):
            light(canvas, left, height - SEGMENT * segment - 2, BAR_WIDTH, SEGMENT - 1,
                  level_colour(segment, segments), lit)
        light(canvas, over, p.LEVEL["kLightTop"], p.LEVEL["kLightWidth"], 2, p.RED, lit)
    return canvas


def reduction_meter(lit):
    width, height, segments = p.REDUCTION_METER
    canvas = well(width, height)
    for segment in range(segments):
        light(canvas, 2, 2 + REDUCTION_SEGMENT * segment, 4, REDUCTION_SEGMENT - 1, p.REDUCTION, lit)
    return canvas


def frequency_column(hz):
    """Column of a frequency in the spectrum, on a logarithmic scale over three decades."""
    low, high = p.SPECTRUM_HZ
    return math.floor(math.log2(hz / low) / math.log2(high / low) * p.SPECTRUM[2] + 0.5)


def spectrum_row(db):
    return math.floor((p.SPECTRUM[3] - 1) * -db / p.SPECTRUM_DB + 0.5)


def spectrum_ground():
    _, _, width, height = p.SPECTRUM
    canvas = Canvas(width, height, p.WELL)
    canvas.shade(0, 0, width, height, p.SPECTRUM_TOP, p.SPECTRUM_BOTTOM)
    lines = [step * decade for decade in (10, 100, 1000, 10000) for step in range(1, 10)]
    for hz in lines:
        if p.SPECTRUM_HZ[0] < hz < p.SPECTRUM_HZ[1]:
            strong = hz in (100, 1000, 10000)
            canvas.fill(frequency_column(hz), 0, 1, height, p.GRID_STRONG if strong else p.GRID)
    for db in range(-10, -p.SPECTRUM_DB, -10):
        canvas.fill(0, spectrum_row(db), width, 1, p.GRID_STRONG if db % 20 == 0 else p.GRID)
    canvas.fill(0, 0, width, 1, p.WELL_TOP)
    return canvas


def images():
    for state, lit in (("Off", False), ("On", True)):
        yield f"GainReductionMeter_{state}", reduction_meter(lit)
        yield f"LevelMeter_Large_{state}", level_meter(p.LARGE_METER, lit)
        yield f"LevelMeter_Small_{state}", level_meter(p.SMALL_METER, lit)
    yield "MultiBandSpectrum_Background", spectrum_ground()
