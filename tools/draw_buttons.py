#!/usr/bin/python3
"""Draws the tool buttons' pictures into assets/icons. Needs python3-cairo.

One style: dark slate glyphs, a little lighter at the top, with a white edge of
light one pixel below, on a transparent ground. Coordinates are pixels of the
single size and edges stand on whole pixels there, so that the picture is crisp
unscaled; the double size draws the same outlines twice as large.
"""

from math import pi
from pathlib import Path

import cairo

OUT = Path(__file__).resolve().parent.parent / "assets" / "icons"
DARK = (0.125, 0.135, 0.19)
LIFTED = (0.27, 0.29, 0.38)
SOFT = (0.125, 0.135, 0.19, 0.42)
LIGHT = (1, 1, 1, 0.62)


class Pen:
    """Draws one glyph twice: as the light edge below it, then as itself."""

    def __init__(self, context, height, edge):
        self.context = context
        self.edge = edge
        shade = cairo.LinearGradient(0, 3, 0, height - 3)
        shade.add_color_stop_rgb(0, *LIFTED)
        shade.add_color_stop_rgb(1, *DARK)
        self.shade = shade

    def ink(self, soft=False):
        if self.edge:
            self.context.set_source_rgba(*LIGHT[:3], LIGHT[3] * (0.5 if soft else 1))
        elif soft:
            self.context.set_source_rgba(*SOFT)
        else:
            self.context.set_source(self.shade)

    def fill(self, soft=False):
        self.ink(soft)
        self.context.fill()

    def stroke(self, width, soft=False):
        self.ink(soft)
        self.context.set_line_width(width)
        self.context.stroke()

    def box(self, x, y, width, height, round_by=0.0, soft=False):
        rounded(self.context, x, y, width, height, round_by)
        self.fill(soft)

    def polygon(self, *points, soft=False):
        for x, y in points:
            self.context.line_to(x, y)
        self.context.close_path()
        self.fill(soft)


def rounded(context, x, y, width, height, radius):
    if radius <= 0:
        context.rectangle(x, y, width, height)
        return
    context.new_sub_path()
    for cx, cy, start in (
        (x + width - radius, y + radius, -pi / 2),
        (x + width - radius, y + height - radius, 0),
        (x + radius, y + height - radius, pi / 2),
        (x + radius, y + radius, pi),
    ):
        context.arc(cx, cy, radius, start, start + pi / 2)
    context.close_path()


def play(pen):
    """A play mark with the sound's bars behind it."""
    pen.polygon((4, 5), (12, 11.5), (4, 18))
    for x, half in ((13, 3.5), (15, 6.5), (17, 4.5), (19, 2.5)):
        pen.box(x, 11.5 - half, 1, 2 * half)


def stop(pen):
    pen.box(7, 7, 9, 9, 1)


def play_frame(pen):
    """One cell of film with a play mark in it."""
    c = pen.context
    c.set_fill_rule(cairo.FILL_RULE_EVEN_ODD)
    rounded(c, 4, 4, 15, 15, 1)
    c.rectangle(5, 7, 13, 9)
    for x in (6, 9, 12, 15):
        c.rectangle(x, 5, 2, 1)
        c.rectangle(x, 17, 2, 1)
    pen.fill()
    pen.polygon((9, 8), (15, 11.5), (9, 15))


def _lens(pen):
    c = pen.context
    c.arc(9.5, 9.5, 4.75, 0, 2 * pi)
    pen.stroke(1.5)
    c.set_line_cap(cairo.LINE_CAP_ROUND)
    c.move_to(14.2, 14.2)
    c.line_to(17.8, 17.8)
    pen.stroke(2.8)


def zoom_in(pen):
    _lens(pen)
    c = pen.context
    c.rectangle(7, 9, 5, 1)
    c.rectangle(9, 7, 1, 2)
    c.rectangle(9, 10, 1, 2)
    pen.fill()


def zoom_out(pen):
    _lens(pen)
    pen.box(7, 9, 5, 1)


def draw(pen):
    """A pencil on the curve that it draws."""
    c = pen.context
    c.move_to(3, 18)
    c.curve_to(6, 13.5, 8.5, 16, 11, 18)
    c.curve_to(13.5, 20, 16.5, 19.5, 20, 15.5)
    pen.stroke(1.3)
    c.save()
    c.translate(7.5, 15)
    c.rotate(-pi / 4)
    pen.polygon((0, 0), (4, -2.4), (4, 2.4))
    c.rectangle(4.7, -2.4, 6.2, 4.8)
    pen.fill()
    c.rectangle(11.6, -2.4, 2.2, 4.8)
    pen.fill()
    c.restore()


def undo(pen):
    c = pen.context
    c.move_to(7, 9)
    c.line_to(13, 9)
    c.arc(13, 13, 4, -pi / 2, pi / 2)
    c.line_to(8, 17)
    pen.stroke(2)
    pen.polygon((3, 9), (9, 4), (9, 14))


def clear(pen):
    """An eraser that leaves the curve flat behind it."""
    c = pen.context
    pen.box(3, 18, 17, 1)
    c.save()
    c.translate(9, 15.6)
    c.rotate(-pi / 4)
    rounded(c, -1.8, -3.6, 5.2, 7.2, 1.4)
    pen.fill(soft=True)
    rounded(c, 4, -3.6, 7.2, 7.2, 1.2)
    pen.fill()
    c.restore()


def lock(pen):
    """A padlock that holds the bars of a sound; 22 by 24 like its button."""
    c = pen.context
    c.set_fill_rule(cairo.FILL_RULE_EVEN_ODD)
    rounded(c, 5, 11, 12, 9, 1)
    for x, y, height in ((7, 14, 3), (10, 13, 5), (13, 14, 3)):
        c.rectangle(x, y, 2, height)
    pen.fill()
    c.move_to(7.75, 11)
    c.line_to(7.75, 8)
    c.arc(11, 8, 3.25, pi, 0)
    c.line_to(14.25, 11)
    pen.stroke(1.7)


GLYPHS = (play, stop, play_frame, zoom_in, zoom_out, draw, undo, clear, lock)


def picture(glyph, scale):
    width, height = (22, 24) if glyph is lock else (23, 23)
    surface = cairo.ImageSurface(cairo.FORMAT_ARGB32, width * scale, height * scale)
    for edge in (True, False):
        context = cairo.Context(surface)
        context.scale(scale, scale)
        if edge:
            context.translate(0, 1)
        glyph(Pen(context, height, edge))
    return surface


def main():
    OUT.mkdir(parents=True, exist_ok=True)
    for glyph in GLYPHS:
        picture(glyph, 1).write_to_png(str(OUT / f"{glyph.__name__}.png"))
        picture(glyph, 2).write_to_png(str(OUT / f"{glyph.__name__}@2x.png"))


if __name__ == "__main__":
    main()
