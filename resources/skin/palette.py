"""Colours and sizes of the skin: everything that a new skin would change first."""

# Colours are 0xRRGGBB, as in the code of the editor.
CHASSIS = 0x3B4047          # between the panels
PANEL = 0xB9BEC5            # ground under every label; black stands on it at 11:1
PANEL_LIGHT = 0xD4D8DD      # edge towards the light, above
PANEL_SHADE = 0x8B9199      # edge away from it
PANEL_BAR = 0xA6ADB6        # title bars with dark words; black stands on it at 9:1
RULE = 0xA2A8B0             # line between groups of one panel

WELL = 0x171A1F             # fields, meters
WELL_TOP = 0x0C0E11         # upper edge of a well, in its own shadow
WELL_LINE = 0x2C3239        # quiet line inside a well
SPECTRUM_TOP, SPECTRUM_BOTTOM = 0x20262D, 0x14171B
GRID, GRID_STRONG = 0x2A3138, 0x424B55

LABEL = 0x121519            # words on the panel
QUIET = 0x454B53            # units and scales on the panel
TITLE = 0xFFFFFF            # words on a coloured bar
TIP = 0x1A1D21              # words on the yellow of a tool tip
DIGIT = 0xE4ECF2            # numbers in a field
ACCENT = 0x2FA8FF           # keyboard focus, the held handle, a ticked box

BANDS = (0x3D7D96, 0xD68C17, 0x77963D, 0xAD47A5)    # title bars; the editor recolours them
CURVES = (0x00BAFF, 0xFF9C00, 0xA8FF00, 0xAD47A5)   # spectra, as the editor draws them
LIMITER_BAR, INACTIVE_BAR = 0x626C7B, 0x535353

GREEN, YELLOW, RED = 0x3DDC84, 0xFFD83D, 0xFF4B3E   # level
REDUCTION = 0xFF8A5C                                # gain reduction
SOLO, BYPASS = 0xFFE052, 0xF2493D                   # lit buttons

# Fonts: Inter, under the SIL Open Font License.
LABEL_FONT, TITLE_FONT = "Inter Medium", "Inter Semi Bold"
LABEL_SIZE, TITLE_SIZE, SCALE_SIZE = 10, 12, 9      # pixels

# Places, in pixels from the upper left corner of the editor.
EDITOR = (547, 488)
BAND_X = (7, 111, 215, 319)
BAND_WIDTH, STRIP_X, STRIP_WIDTH = 99, 423, 117
BAR_HEIGHT = 24
BANDS_Y, BANDS_BOTTOM = 236, 481
TOP_Y, TOP_BOTTOM = 7, 231
LIMITER_BOTTOM, OPTIONS_Y = 334, 339
SPECTRUM = (14, 24, 377, 167)                       # x, y, width, height
SPECTRUM_HZ = (20, 20000)
SPECTRUM_DB = 80                                    # from 0 at the top down to minus this
CUTOFF_FIELD_X, TOP_FIELD_Y = (91, 223, 355), 210
LARGE_FIELD, SMALL_FIELD = (37, 13), (33, 13)
BAND_FIELD_X, BAND_FIELD_Y = 47, (400, 415, 430, 445, 460)
STRIP_FIELD_X, LIMITER_FIELD_Y = 481, (268, 283, 298, 313)
READOUT = (477, 39, 38, 10)
OUTPUT_SLIDER, OUTPUT_METER = (460, 46), (485, 51)
BAND_METER, BAND_SLIDER, BAND_REDUCTION = (6, 268), (47, 266), (69, 268)
SWITCH_X, CHECK_X, CHECK_Y = (61, 78), 517, (373, 393, 413)
LIMITER_SWITCH = (519, 240)

LARGE_TRACK, SMALL_TRACK, HANDLE = (16, 159), (16, 129), 13
GAIN_DB = 18                                        # the output slider goes from minus this to plus this
LARGE_METER, SMALL_METER = (22, 150, 47), (22, 123, 38)     # width, height, segments
METER_DB = 60                                       # meters and thresholds go from minus this to 0
REDUCTION_METER = (8, 123, 24)
REDUCTION_DB = 30
