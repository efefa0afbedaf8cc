#!/usr/bin/python3
"""Draws the windows' icons into assets/icons, and the desktop's drawings of any size into packaging/icons. Needs
python3-cairo.

Each size has lines and edges of its own on whole pixels; the small ones leave
out what would blur (rows, teeth, dabs of paint) instead of shrinking it.
"""

from math import pi
from pathlib import Path

import cairo

from draw_buttons import rounded

HOUSE = Path(__file__).resolve().parent.parent
OUT = HOUSE / "assets" / "icons"
OUT_OF_ANY_SIZE = HOUSE / "packaging" / "icons"
SIZES = (16, 24, 32, 48, 64, 128, 256)

SLATE = (85, 85, 102)
SLATE_DEEP = (52, 52, 66)
INK = (30, 30, 40)
YELLOW = (255, 238, 136)
YELLOW_DEEP = (236, 206, 92)
LIP = (186, 66, 72)
LIP_DEEP = (142, 44, 56)
TEETH = (255, 252, 240)
TEAL = (46, 132, 128)
TEAL_DEEP = (24, 88, 92)
WOOD = (246, 224, 184)
WOOD_DEEP = (220, 184, 130)
RED = (214, 84, 74)
RED_DEEP = (132, 36, 40)


def set_colour(c, rgb, alpha=1.0):
    c.set_source_rgba(*(v / 255 for v in rgb), alpha)


def set_shade(c, top, bottom, y0, y1):
    shade = cairo.LinearGradient(0, y0, 0, y1)
    shade.add_color_stop_rgb(0, *(v / 255 for v in top))
    shade.add_color_stop_rgb(1, *(v / 255 for v in bottom))
    c.set_source(shade)


def new_picture(side, path=None):
    """A picture, or a drawing of any size that goes into a file."""
    surface = cairo.SVGSurface(str(path), side, side) if path else cairo.ImageSurface(cairo.FORMAT_ARGB32, side, side)
    return surface, cairo.Context(surface)


def mouth(c, cx, cy, half, tall, teeth):
    """An open mouth around (cx, cy), `half` wide to each side, `tall` times as high as the usual one."""
    c.save()
    c.translate(cx, cy)
    c.scale(half, half * tall)
    c.move_to(-1, -0.05)
    c.curve_to(-0.7, -0.25, -0.45, -0.62, -0.24, -0.62)
    c.curve_to(-0.12, -0.62, -0.08, -0.52, 0, -0.52)
    c.curve_to(0.08, -0.52, 0.12, -0.62, 0.24, -0.62)
    c.curve_to(0.45, -0.62, 0.7, -0.25, 1, -0.05)
    c.curve_to(0.6, 0.95, -0.6, 0.95, -1, -0.05)
    c.close_path()
    set_shade(c, LIP_DEEP, LIP, -0.5, 0.5)
    c.fill()
    c.move_to(-0.74, -0.06)
    c.curve_to(-0.3, -0.32, 0.3, -0.32, 0.74, -0.06)
    c.curve_to(0.4, 0.52, -0.4, 0.52, -0.74, -0.06)
    c.close_path()
    set_colour(c, INK)
    c.fill_preserve()
    c.clip()
    if teeth:
        c.rectangle(-0.6, -0.4, 1.2, 0.42)
        set_colour(c, TEETH)
        c.fill()
        c.translate(0, 0.5)
        c.scale(0.42, 0.22)
        c.arc(0, 0, 1, 0, 2 * pi)
        set_colour(c, (222, 120, 118))
        c.fill()
        c.restore()
        c.save()
        c.translate(cx - 0.22 * half, cy + 0.53 * half * tall)
        c.scale(0.2 * half, 0.045 * half)
        c.arc(0, 0, 1, 0, 2 * pi)
        set_colour(c, (255, 214, 208), 0.75 if half > 16 else 0)
        c.fill()
    c.restore()


# Per size: the sheet's box (x, y, width, height), header height, its rows' y
# from the sheet's top, the x of the upright rule, line width; the mouth's
# middle, half width and height, and whether its teeth show.
SHEETS = {
    16: ((2, 1, 12, 14), 3, (), 0, 1, (8, 9.5, 5.0, 1.1), False),
    24: ((3, 1, 18, 22), 4, (4,), 4, 1, (13, 14.5, 6.8, 1.05), True),
    32: ((4, 2, 24, 28), 5, (5, 18), 5, 1, (17, 18, 9.4, 0.95), True),
    48: ((6, 3, 36, 42), 7, (7, 14, 28), 8, 1, (26, 27.5, 14, 0.95), True),
    64: ((8, 4, 48, 56), 9, (9, 18, 37), 10, 1, (35, 36.5, 18.5, 0.95), True),
    128: ((17, 8, 94, 112), 18, (18, 36, 54, 72), 20, 2, (69, 72, 36.5, 0.95), True),
    256: ((34, 16, 188, 224), 36, (36, 72, 108, 144), 40, 3, (137, 144, 73, 0.95), True),
}


def app_icon(size, path=None):
    """An exposure sheet, slate head and yellow rows, with the mouth that it times."""
    surface, c = new_picture(size, path)
    (x, y, w, h), head, rows, rule, line, (mx, my, half, tall), teeth = SHEETS[size]
    corner = max(1.0, size / 22)
    _shadow(c, lambda: rounded(c, x, y, w, h, corner), size)
    rounded(c, x, y, w, h, corner)
    set_shade(c, (255, 244, 176), YELLOW_DEEP, y, y + h)
    c.fill_preserve()
    c.save()
    c.clip()
    c.rectangle(x, y, w, head)
    set_shade(c, (110, 110, 130), SLATE, y, y + head)
    c.fill()
    if rule:
        c.rectangle(x, y + head, rule, h - head)
        set_colour(c, SLATE, 0.16)
        c.fill()
        c.rectangle(x + rule, y + head, line, h - head)
        set_colour(c, SLATE, 0.55)
        c.fill()
    for row in rows:
        c.rectangle(x, y + head + row, w, line)
        set_colour(c, SLATE, 0.4)
        c.fill()
    c.restore()
    rounded(c, x + line / 2, y + line / 2, w - line, h - line, max(0.5, corner - line / 2))
    set_colour(c, SLATE_DEEP)
    c.set_line_width(line)
    c.stroke()
    mouth(c, mx, my, half, tall, teeth)
    if size == 16:  # teeth as one row of whole pixels
        c.rectangle(6, 8, 4, 1)
        set_colour(c, TEETH)
        c.fill()
    return surface


def _shadow(c, path, size):
    """A soft shadow below right, where there is room for one."""
    if size < 48:
        return
    for step in range(4):
        c.save()
        c.translate(0, size / 128 * (step + 1))
        path()
        set_colour(c, INK, 0.12)
        c.fill()
        c.restore()


# Dabs of paint: their place in shares of the palette, and their colour.
DABS = (
    ((-0.46, -0.16), (214, 74, 66)),
    ((-0.12, -0.50), (240, 190, 60)),
    ((0.32, -0.42), (74, 150, 84)),
    ((0.56, -0.02), (66, 104, 188)),
    ((-0.38, 0.28), (250, 250, 246)),
)
# The small sizes have fewer, on whole pixels: x, y and side of a square, and which colour.
SMALL_DABS = {
    16: ((4, 7, 2, 0), (6, 4, 2, 1), (10, 5, 2, 3)),
    24: ((6, 10, 3, 0), (9, 6, 3, 1), (14, 6, 3, 2), (17, 10, 3, 3)),
}


def host_icon(size, path=None):
    """A painter's palette on a round teal ground: another program's window, at any size."""
    surface, c = new_picture(size, path)
    middle = size / 2
    c.arc(middle, middle, middle - max(0.5, size / 64), 0, 2 * pi)
    set_shade(c, TEAL, TEAL_DEEP, 0, size)
    c.fill()
    c.save()
    c.translate(middle, middle * (1.02 if size > 24 else 1))
    reach = size * (0.40 if size > 24 else 0.44)
    c.scale(reach, reach * 0.9)
    _palette_outline(c)
    set_shade(c, WOOD, WOOD_DEEP, -1, 1)
    c.fill()
    for (x, y), colour in DABS if size not in SMALL_DABS else ():
        c.arc(x, y, 0.165, 0, 2 * pi)
        set_colour(c, colour)
        c.fill()
    c.restore()
    for x, y, side, which in SMALL_DABS.get(size, ()):
        rounded(c, x, y, side, side, 0.6)
        set_colour(c, DABS[which][1])
        c.fill()
    return surface


def _palette_outline(c):
    """A rounded board with a bay for the hand and a hole for the thumb."""
    c.set_fill_rule(cairo.FILL_RULE_EVEN_ODD)
    c.move_to(0.05, 0.86)
    c.curve_to(-0.55, 0.92, -0.98, 0.5, -0.98, 0.0)
    c.curve_to(-0.98, -0.52, -0.5, -0.88, 0.06, -0.88)
    c.curve_to(0.6, -0.88, 1.0, -0.5, 0.98, -0.02)
    c.curve_to(0.97, 0.42, 0.66, 0.42, 0.46, 0.36)
    c.curve_to(0.2, 0.28, 0.1, 0.42, 0.18, 0.56)
    c.curve_to(0.26, 0.72, 0.22, 0.84, 0.05, 0.86)
    c.close_path()


def recorder_icon(size, path=None):
    """A microphone on a round red ground."""
    surface, c = new_picture(size, path)
    middle = size / 2
    c.arc(middle, middle, middle - max(0.5, size / 64), 0, 2 * pi)
    set_shade(c, RED, RED_DEEP, 0, size)
    c.fill()
    # The middle of an upright line of an odd width stands on a whole pixel's middle, of an even one between two.
    line = max(1, round(size / 14))
    half = round(size * 0.13) + (0.5 if line % 2 else 0)
    c.translate(middle + (0.5 if line % 2 else 0), 0)
    top, bottom = round(size * 0.16), round(size * 0.58)
    rounded(c, -half, top, 2 * half, bottom - top, half)
    set_shade(c, (255, 252, 240), (226, 214, 190), top, bottom)
    c.fill()
    for grille in range(3) if size >= 48 else ():
        y = top + (bottom - top) * (0.26 + 0.15 * grille)
        c.rectangle(-half * 0.62, y, half * 1.24, max(1, size / 64))
        set_colour(c, RED_DEEP, 0.55)
        c.fill()
    cradle = half + line * 1.5
    c.arc(0, bottom - half, cradle, 0, pi)
    c.move_to(0, bottom - half + cradle)
    c.line_to(0, round(size * 0.82))
    c.move_to(-half, round(size * 0.82))
    c.line_to(half, round(size * 0.82))
    c.set_line_width(line)
    c.set_line_cap(cairo.LINE_CAP_ROUND if size > 24 else cairo.LINE_CAP_BUTT)
    set_colour(c, (255, 252, 240))
    c.stroke()
    return surface


def painter_icon(scale):
    """A strip of film with a brush across it, 29 by 29."""
    surface, c = new_picture(29 * scale)
    c.scale(scale, scale)
    c.set_fill_rule(cairo.FILL_RULE_EVEN_ODD)
    rounded(c, 1, 8, 27, 17, 1)
    for x in range(3, 27, 4):
        c.rectangle(x, 10, 2, 2)
        c.rectangle(x, 21, 2, 2)
    set_shade(c, SLATE, SLATE_DEEP, 8, 25)
    c.fill()
    for x in (3, 11, 19):
        c.rectangle(x, 13, 7, 7)
        set_shade(c, (255, 246, 190), YELLOW, 13, 20)
        c.fill()
    _brush(c)
    return surface


def _brush(c):
    """From its tip, on the middle cell, up to the right; a light rim keeps it off the film."""
    c.save()
    c.translate(10.5, 19.5)
    c.rotate(-pi / 4)
    for rim in (True, False):
        _brush_part(c, rim, (186, 66, 72), lambda: _bristles(c))
        _brush_part(c, rim, (206, 206, 214), lambda: c.rectangle(7.5, -2, 3, 4))
        _brush_part(c, rim, (150, 96, 48), lambda: _handle(c))
    c.restore()


def _brush_part(c, rim, colour, path):
    path()
    if rim:
        set_colour(c, (255, 255, 255), 0.9)
        c.set_line_width(2)
        c.set_line_join(cairo.LINE_JOIN_ROUND)
        c.stroke()
    else:
        set_colour(c, colour)
        c.fill()


def _bristles(c):
    c.move_to(0, 0)
    c.curve_to(2, -0.5, 3, -3, 7.5, -2)
    c.line_to(7.5, 2)
    c.curve_to(4.5, 3, 2.5, 1.6, 0, 0)
    c.close_path()


def _handle(c):
    c.move_to(10.5, -1.8)
    c.curve_to(14, -2.4, 18, -1.2, 22, -0.7)
    c.arc(22, 0, 0.8, -pi / 2, pi / 2)
    c.curve_to(18, 1.2, 14, 2.4, 10.5, 1.8)
    c.close_path()


def main():
    OUT.mkdir(parents=True, exist_ok=True)
    for size in SIZES:
        app_icon(size).write_to_png(str(OUT / f"app-{size}.png"))
        host_icon(size).write_to_png(str(OUT / f"host-{size}.png"))
        recorder_icon(size).write_to_png(str(OUT / f"recorder-{size}.png"))
    painter_icon(1).write_to_png(str(OUT / "painter-29.png"))
    painter_icon(2).write_to_png(str(OUT / "painter-29@2x.png"))
    OUT_OF_ANY_SIZE.mkdir(parents=True, exist_ok=True)
    for name, draw in (("exposure-sheet", app_icon), ("vellumark-standin", host_icon),
                       ("exposure-sheet-recorder", recorder_icon)):
        draw(SIZES[-1], OUT_OF_ANY_SIZE / (name + ".svg")).finish()


if __name__ == "__main__":
    main()
