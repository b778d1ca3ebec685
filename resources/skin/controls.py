"""Buttons, check boxes, sliders and number fields."""
import math

from skin import palette as p
from skin.canvas import Canvas, mix

SWITCH, LIMITER_SWITCH, CHECK = 17, 15, 13
WHITE, BLACK = 0xFFFFFF, 0x000000


def switch_face(canvas, x, y, lit, pressed, letter):
    """Draws a button of 15 by 15 pixels: dark, or in the colour `lit`."""
    size = 15
    if lit:
        top, bottom = (mix(lit, BLACK, 0.22), mix(lit, BLACK, 0.10)) if pressed else (mix(lit, WHITE, 0.25), lit)
    else:
        top, bottom = (0x101215, 0x1D2126) if pressed else (0x3C424A, 0x262A30)
    canvas.round(x, y, size, size, 2.5, 0x0B0C0E)
    canvas.round(x + 1, y + 1, size - 2, size - 2, 1.5, bottom)
    canvas.shade(x + 1, y + 2, size - 2, size - 4, top, bottom)
    canvas.fill(x + 2, y + 1, size - 4, 1, BLACK if pressed else WHITE, 0.35 if pressed else 0.28)
    ink = 0x1A1400 if lit == p.SOLO else WHITE
    for row, marks in enumerate(LETTERS[letter]):
        for column, mark in enumerate(marks):
            if mark != ".":
                strength = (1.0 if mark == "#" else 0.45) * (1.0 if lit else 0.78)
                canvas.fill(x + 5 + column, y + 4 + row + pressed, 1, 1, ink, strength)


LETTERS = {
    "S": ("+###+", "#...#", "#+...", "+###+", "...+#", "#...#", "+###+"),
    "B": ("####+", "#...#", "#...#", "####+", "#...#", "#...#", "####+"),
}


def switches():
    for name, letter, colour in (("Bypass", "B", p.BYPASS), ("Solo", "S", p.SOLO)):
        for state, lit in (("Off", None), ("On", colour)):
            for look, pressed in (("Normal", 0), ("Pressed", 1)):
                canvas = Canvas(SWITCH, SWITCH)
                canvas.round(1, 2, 15, 15, 2.5, WHITE, 0.18)  # highlight below the button
                switch_face(canvas, 1, 1, lit, pressed, letter)
                yield f"Button_{name}_{state}_{look}", canvas
    focus = Canvas(SWITCH, SWITCH)
    focus.round(0, 0, SWITCH, SWITCH, 3.5, p.ACCENT)
    focus.context.set_operator(0)  # clear: removes the inside
    focus.round(2, 2, SWITCH - 4, SWITCH - 4, 1.5, BLACK)
    yield "Button_FocusOverlay", focus
    for state, lit in (("Off", None), ("On", p.BYPASS)):
        for look, pressed in (("Normal", 0), ("Pressed", 1)):
            canvas = Canvas(LIMITER_SWITCH, LIMITER_SWITCH, p.LIMITER_BAR)
            switch_face(canvas, 0, 0, lit, pressed, "B")
            yield f"Button_LimiterBypass_{state}_{look}", canvas


def check_boxes():
    for state in ("Off", "On"):
        for look in ("Normal", "Pressed"):
            canvas = Canvas(CHECK, CHECK, p.PANEL)
            canvas.frame(0, 0, CHECK, CHECK, p.WELL_TOP)
            pressed = look == "Pressed"
            canvas.fill(1, 1, CHECK - 2, CHECK - 2, 0x2B333C if pressed else p.WELL)
            if not pressed:
                canvas.fill(1, 1, CHECK - 2, 1, p.WELL_TOP)
            if state == "On":
                c = canvas.context
                canvas.ink(mix(p.ACCENT, WHITE, 0.35) if pressed else p.ACCENT)
                c.set_line_width(2.2)
                c.move_to(3, 6.6)
                c.line_to(5.5, 9.2)
                c.line_to(10.2, 3.6)
                c.stroke()
            yield f"CheckBox_{state}_{look}", canvas
    focus = Canvas(CHECK, CHECK)
    focus.frame(0, 0, CHECK, CHECK, p.ACCENT)
    focus.frame(1, 1, CHECK - 2, CHECK - 2, p.ACCENT, 0.35)
    yield "CheckBox_FocusOverlay", focus


def slider_row(height, share):
    """Row of the handle's centre on a track, for a position between 0 (top) and 1 (bottom)."""
    return p.HANDLE // 2 + math.floor((height - p.HANDLE) * share + 0.5)


def track(size, marks, middle=None):
    """The groove of a slider, with marks next to it at positions between 0 (top) and 1 (bottom)."""
    width, height = size
    canvas = Canvas(width, height, p.PANEL)
    for share in marks:
        strong = share == middle
        canvas.fill(13, slider_row(height, share), 3, 1, p.LABEL if strong else p.QUIET, 1.0 if strong else 0.75)
    canvas.round(4, 3, 5, height - 6, 2, p.PANEL_LIGHT)
    canvas.round(4, 3, 5, height - 7, 2, p.PANEL_SHADE)
    canvas.round(5, 4, 3, height - 8, 1, p.WELL)
    canvas.fill(5, 5, 1, height - 10, p.WELL_TOP)
    return canvas


def handle(pressed):
    canvas = Canvas(p.HANDLE, p.HANDLE)
    canvas.round(0, 1, 13, 12, 2.5, BLACK, 0.30)
    canvas.round(0, 0, 13, 12, 2.5, 0x2A2E34)
    top, bottom = (0xD9DEE3, 0xAEB5BD) if pressed else (0xFBFCFD, 0xC6CCD3)
    canvas.round(1, 1, 11, 10, 1.5, bottom)
    canvas.shade(1, 2, 11, 8, top, bottom)
    canvas.fill(2, 1, 9, 1, WHITE, 0.9)
    for row in (3, 9):  # grip lines
        canvas.fill(3, row, 7, 1, BLACK, 0.18)
    canvas.fill(1, 6, 11, 1, p.ACCENT if pressed else 0x2A2E34)
    canvas.fill(1, 7, 11, 1, WHITE, 0.5)
    return canvas


def sliders():
    sixths = [step / 6 for step in range(7)]
    yield "Slider_Track_Large", track(p.LARGE_TRACK, sixths, middle=0.5)
    yield "Slider_Track_Small", track(p.SMALL_TRACK, sixths)
    yield "Slider_Handle_Normal", handle(False)
    yield "Slider_Handle_Pressed", handle(True)
    focus = Canvas(p.HANDLE, p.HANDLE)
    focus.round(0, 0, 13, 12, 2.5, p.ACCENT)
    focus.context.set_operator(0)
    focus.round(2, 2, 9, 8, 1, BLACK)
    yield "Slider_FocusOverlay", focus


def fields():
    for name, (width, height) in (("Large", p.LARGE_FIELD), ("Small", p.SMALL_FIELD)):
        well = Canvas(width, height, p.WELL)
        well.frame(0, 0, width, height, p.WELL_TOP)
        well.fill(1, 1, width - 2, 1, p.WELL_TOP, 0.6)
        yield f"TextEdit_Background_{name}", well
        focus = Canvas(width, height)
        focus.frame(0, 0, width, height, p.ACCENT)
        focus.fill(1, 1, width - 2, height - 2, p.ACCENT, 0.14)
        yield f"TextEdit_FocusOverlay_{name}", focus


def images():
    yield from switches()
    yield from check_boxes()
    yield from sliders()
    yield from fields()
