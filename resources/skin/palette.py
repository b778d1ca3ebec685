"""Colours and sizes of the skin: change these first for a new skin. Values that the editor also uses are read from its
sources."""
from skin.shared import constants

LAYOUT, WINDOW, SPECTRUM_CODE = (constants(f) for f in ("editor/Layout.h", "editor/MainWindow.cpp",
                                                        "controls/MultiBandSpectrum.cpp"))
LEVEL, REDUCTION_CODE, SCALE = (constants(f"controls/{f}") for f in ("LevelMeter.cpp", "GainReductionMeter.cpp",
                                                                     "MeterScale.h"))
AXIS, READOUT_CODE = constants("controls/SpectrumAxis.h"), constants("controls/LevelMeterReadout.h")

# Colours are 0xRRGGBB, as in the editor's sources.
CHASSIS = 0x3B4047          # between the panels
PANEL = 0xB9BEC5            # background of every label; contrast with black 11:1
PANEL_LIGHT = 0xD4D8DD      # upper edge, towards the light
PANEL_SHADE = 0x8B9199      # lower edge, away from the light
PANEL_BAR = 0xA6ADB6        # title bars with dark text; contrast with black 9:1
RULE = 0xA2A8B0             # line between groups of a panel

WELL = 0x171A1F             # fields, meters
WELL_TOP = 0x0C0E11         # upper edge of a field or meter, in shadow
WELL_LINE = 0x2C3239        # faint line inside a field or meter
SPECTRUM_TOP, SPECTRUM_BOTTOM = 0x20262D, 0x14171B
GRID, GRID_STRONG = 0x2A3138, 0x424B55

LABEL = 0x121519            # text on the panel
QUIET = 0x454B53            # units and scales on the panel
TITLE = 0xFFFFFF            # text on a coloured bar
TIP = 0x1A1D21              # text on the yellow of a tool tip
DIGIT = 0xE4ECF2            # numbers in a field
ACCENT = 0x2FA8FF           # keyboard focus, pressed handle, checked box

BANDS = WINDOW["kBarColours"]                       # title bars; the editor recolours them
CURVES = SPECTRUM_CODE["kCurveColours"]             # spectra
LIMITER_BAR, INACTIVE_BAR = WINDOW["kLimiterColour"], WINDOW["kInactiveColour"]

GREEN, YELLOW, RED = 0x3DDC84, 0xFFD83D, 0xFF4B3E   # level
REDUCTION = 0xFF8A5C                                # gain reduction
SOLO, BYPASS = 0xFFE052, 0xF2493D                   # lit buttons

# Fonts: Inter, under the SIL Open Font License.
LABEL_FONT, TITLE_FONT = "Inter Medium", "Inter Semi Bold"
LABEL_SIZE, TITLE_SIZE, SCALE_SIZE = 10, 12, 9      # pixels

# Positions, in pixels from the upper left corner of the editor.
EDITOR = LAYOUT["kWidth"], LAYOUT["kHeight"]
BAND_X, BAND_WIDTH = LAYOUT["kBandX"], LAYOUT["kBandWidth"]
STRIP_X, STRIP_WIDTH = LAYOUT["kStripX"], LAYOUT["kStripWidth"]
BANDS_Y, BAR_HEIGHT, BANDS_BOTTOM = LAYOUT["kBarTop"], LAYOUT["kBarHeight"], 481
TOP_Y, TOP_BOTTOM = 7, 231
LIMITER_BOTTOM, OPTIONS_Y = 334, 339
SPECTRUM = (*LAYOUT["kSpectrum"], 377, 167)         # x, y, width, height
SPECTRUM_HZ = AXIS["kLowestHz"], AXIS["kHighestHz"]
SPECTRUM_DB = int(AXIS["kRangeDb"])                 # range: 0 at the top, -SPECTRUM_DB at the bottom
CUTOFF_FIELD_X, TOP_FIELD_Y = LAYOUT["kCutoffX"], LAYOUT["kTopFieldY"]
LARGE_FIELD, SMALL_FIELD = (37, 13), (33, 13)
BAND_FIELD_X = LAYOUT["kBandFieldX"]
BAND_FIELD_Y = [LAYOUT[f"k{field}Y"] for field in ("Threshold", "Gain", "Ratio", "Attack", "Release")]
STRIP_FIELD_X = LAYOUT["kLimiterFieldX"]
LIMITER_FIELD_Y = [LAYOUT[f"kLimiter{field}Y"] for field in ("Threshold", "Margin", "Attack", "Release")]
READOUT = (*LAYOUT["kOutputReadout"], READOUT_CODE["kWidth"], READOUT_CODE["kHeight"])
OUTPUT_SLIDER, OUTPUT_METER = LAYOUT["kOutputSlider"], LAYOUT["kOutputMeter"]
BAND_METER, BAND_SLIDER, BAND_REDUCTION = (LAYOUT[f"k{part}"] for part in ("BandMeter", "ThresholdSlider",
                                                                           "ReductionMeter"))
SWITCH_X = LAYOUT["kSolo"][0], LAYOUT["kBypass"][0]
CHECK_X, CHECK_Y = LAYOUT["kCheckX"], [LAYOUT[f"k{box}Y"] for box in ("SpectrumOnInput", "Brickwall", "BandLink")]
LIMITER_SWITCH = LAYOUT["kLimiterBypass"]

LARGE_TRACK, SMALL_TRACK, HANDLE = (16, 159), (16, 129), 13
GAIN_DB = 18                                        # range of the output slider: +-GAIN_DB
LARGE_METER, SMALL_METER = (22, 150, LEVEL["kOutputSegments"]), (22, 123, LEVEL["kBandSegments"])  # width, height, segments
METER_DB = int(-SCALE["kLowestDb"])                 # range of meters and thresholds: -METER_DB to 0
REDUCTION_METER = (8, 123, SCALE["kReductionSegments"])
REDUCTION_DB = int(-SCALE["kDeepestReductionDb"])
