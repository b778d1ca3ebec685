"""The mouse cursor during a drag in a number field: four arrows around a dot, as the drag has no limits."""
import math
import struct
import sys

from skin.canvas import Canvas

SIDE = 32
WHITE, OUTLINE = 0xFFFFFF, 0x121519
TIP, BARB, SPREAD = 13.5, 8, 5.5        # arrow head: distances of tip and base from the centre, half width
SHAFT, REST = 1.5, 3.5                  # arrow shaft: half width, distance from the centre
EDGE = 1.25                             # width of the outline


def arrow(context):
    """The path of the arrow that points right; the origin is the centre of the cursor."""
    context.move_to(REST, -SHAFT)
    for x, y in ((BARB, -SHAFT), (BARB, -SPREAD), (TIP, 0), (BARB, SPREAD), (BARB, SHAFT), (REST, SHAFT)):
        context.line_to(x, y)
    context.close_path()


def drag():
    canvas = Canvas(SIDE, SIDE)
    context = canvas.context
    context.translate(SIDE / 2 + 0.5, SIDE / 2 + 0.5)  # centre of the hot spot's pixel
    for ink, width in ((OUTLINE, 2 * EDGE), (WHITE, 0)):
        canvas.ink(ink)
        context.set_line_width(width)
        context.set_line_join(1)  # round
        for turn in range(4):
            context.save()
            context.rotate(turn * math.pi / 2)
            arrow(context)
            if width:
                context.stroke()
            else:
                context.fill()
            context.restore()
        context.arc(0, 0, 1.5 + width / 2, 0, 2 * math.pi)
        context.fill()
    return canvas


def container(canvas, hot):
    """A .cur file: one image of 32-bit pixels with straight alpha, and a mask for displays without alpha."""
    canvas.surface.flush()
    data, stride = bytes(canvas.surface.get_data()), canvas.surface.get_stride()
    pixels, mask = bytearray(), bytearray()
    for y in reversed(range(canvas.height)):
        bits = 0
        for x in range(canvas.width):
            word = int.from_bytes(data[y * stride + 4 * x:y * stride + 4 * x + 4], sys.byteorder)
            alpha = word >> 24
            straight = [min(255, round((word >> shift & 255) * 255 / alpha)) if alpha else 0 for shift in (0, 8, 16)]
            pixels += bytes([*straight, alpha])
            bits = bits << 1 | (alpha < 128)
        mask += bits.to_bytes(canvas.width // 8, "big")
    header = struct.pack("<IiiHHIIiiII", 40, canvas.width, 2 * canvas.height, 1, 32, 0, len(pixels) + len(mask), 0, 0, 0, 0)
    image = header + pixels + mask
    entry = struct.pack("<BBBBHHII", canvas.width, canvas.height, 0, 0, *hot, len(image), 6 + 16)
    return struct.pack("<HHH", 0, 2, 1) + entry + image


def cursors():
    """All cursors by name."""
    return {"drag": container(drag(), (SIDE // 2, SIDE // 2))}
