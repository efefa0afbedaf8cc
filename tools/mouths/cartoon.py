"""The Cartoon set: black line and solid black shapes on white."""

import numpy as np

from . import model, raster
from .model import CENTRE_X, bump, lerp
from .raster import between, distance, smooth


def draw(m):
    """Mouth `m` as 128 by 128 grey levels: 0 ink, 255 paper, edges between."""
    x, y = raster.grid()
    c = model.curves(m)
    ink = _upper_lip(x, y, m, c)
    if m.opening:
        ink = np.maximum(ink, _inside(x, y, m, c))
    for stroke in _strokes(m, c):
        ink = np.maximum(ink, _stroke(x, y, *stroke))
    return np.rint(255 * (1 - raster.shrink(ink)))


def _upper_lip(x, y, m, c):
    """The lip in shade, solid; it thins out towards the sides of a round mouth.

    A white rim stays between it and the black of an open mouth.
    """
    d_in, _ = distance(x, y, model.closed(c.inner_top, c.inner_bottom))
    d_out, _ = distance(x, y, c.outer_top)
    across = d_in / (d_in + d_out + 1e-3)
    side = np.abs(np.arctan2(x - CENTRE_X, c.corner_y - y)) * 2 / np.pi  # 0 on top, 1 at a corner
    least = m.roundness * smooth(0.2, 1.0, side) ** 1.3
    rim = 1.3 * smooth(0, 8, m.opening * bump(x - CENTRE_X, 0.8 * m.width)) if m.opening else 0.0
    lip = between(x, y, c.outer_top, c.outer_bottom) * (y < _parting(x, c))
    return lip * (across >= least) * (d_in >= rim)


def _parting(x, c):
    """The lower end of the upper lip at every x."""
    return np.interp(x[0], c.inner_top[:, 0], c.inner_top[:, 1])[None, :]


def _stroke(x, y, points, thin, thick, heavy=0.5):
    """A brush line: `thin` at its ends, `thick` where `heavy` (0 to 1) says."""
    d, along = distance(x, y, points, thick)
    skew = np.log(0.5) / np.log(heavy)
    width = lerp(thin, thick, np.clip(np.sin(np.pi * along**skew), 0, 1))
    return (d < width / 2).astype(np.float32)


def _part(edge, start, end):
    """The piece of an edge between two shares of its run."""
    n = len(edge) - 1
    return edge[round(start * n) : round(end * n) + 1]


def _strokes(m, c):
    """All lines of a mouth as (points, thin, thick, heavy)."""
    yield c.outer_top, 1.2, 2.2, 0.5
    yield c.outer_bottom, 0.9, 3.4, 0.56
    if m.opening:
        yield c.inner_bottom, 0.8, 2.2, 0.55
    else:
        yield c.inner_top, 1.2, lerp(2.6, 3.6, m.press), 0.5
    if m.press:
        yield _dent(c, -1), 0.4, 2.4, 0.5
        yield _dent(c, 1), 0.4, 2.4, 0.5
    elif m.roundness < 0.7:
        yield _tuck(c, -1), 0.4, 2.0, 0.3
        yield _tuck(c, 1), 0.4, 2.0, 0.3
    yield _under(m, c), 0.3, 2.4, 0.55
    if m.teeth in ("both", "bite"):
        yield from _tooth_gaps(m, c)


def _tuck(c, side):
    """The crease that carries a corner on into the cheek."""
    t = np.linspace(-0.3, 1, 13)
    end = c.outer_top[-1 if side > 0 else 0]
    return np.stack([end[0] + side * 3.0 * t, end[1] + 2.2 * np.abs(t) ** 1.5], axis=1)


def _dent(c, side):
    """The bracket beside a corner that is pressed shut."""
    t = np.linspace(-1, 1, 17)
    end = c.outer_top[-1 if side > 0 else 0]
    return np.stack([end[0] + side * (4.5 - 1.8 * t**2), end[1] + 0.5 + 5.0 * t], axis=1)


def _under(m, c):
    """The shadow between lower lip and chin."""
    t = np.linspace(-1, 1, 17)
    half = lerp(12.0, 8.0, m.roundness)
    low = c.outer_bottom[:, 1].max() + 5.5
    return np.stack([CENTRE_X + 1.5 + half * t, low - 1.4 * t**2], axis=1)


def _tooth_gaps(m, c):
    """Short hairs between the teeth, from the biting edge toward the root."""
    for gap in model.tooth_gaps(model.UPPER_TEETH[: 3 if m.teeth == "bite" else 4]):
        edge = model.upper_teeth_edge(gap)
        if m.teeth == "bite":
            edge = np.interp(gap, c.inner_bottom[:, 0], c.inner_bottom[:, 1])
        yield _hair(gap, edge, -6.0)
    if m.teeth == "both":
        for gap in model.tooth_gaps(model.LOWER_TEETH[:5]):
            yield _hair(gap, model.lower_teeth_edge(gap, m) + 1.5, 3.0)


def _hair(x, y, length):
    return np.array([[x, y], [x, y + length]]), 0.6, 1.2, 0.3


def _inside(x, y, m, c):
    """The black of the mouth, less teeth and tongue."""
    hole = between(x, y, c.inner_top, c.inner_bottom)
    white = np.zeros_like(x)
    if m.tongue == "low":
        white = _low_tongue(x, y, m, c)
    if m.tongue == "raised":
        white = _raised_tongue(x, y, m, c)
    if m.teeth:
        white = np.where(y < model.upper_teeth_edge(x) + 1.6, 0, white)
        white = np.maximum(white, _teeth(x, y, m, c))
    return hole * (1 - white)


def _teeth(x, y, m, c):
    top = np.interp(x[0], c.inner_top[:, 0], c.inner_top[:, 1])[None, :]
    bottom = np.interp(x[0], c.inner_bottom[:, 0], c.inner_bottom[:, 1])[None, :]
    if m.teeth == "bite":
        return (y < bottom - 1).astype(np.float32)
    edge = model.upper_teeth_edge(x)
    # The row ends in a round corner short of where the lip hides the biting edge.
    end = 0.92 * np.max(np.abs(x - CENTRE_X) * ((top < edge - 1) & (top < bottom - 1)))
    rest = np.sqrt(1 - np.clip((np.abs(x - CENTRE_X) - 0.8 * end) / (0.2 * end), 0, 1) ** 2)
    if m.teeth == "upper":
        return (y < lerp(top, edge, rest)).astype(np.float32)
    low = model.lower_teeth_edge(x, m) + 1.6
    upper = (y < edge) & (y > lerp(edge, top - 1, rest))
    lower = (y > low) & (y < lerp(low, bottom + 1, rest))
    return (upper | lower).astype(np.float32)


def _low_tongue(x, y, m, c):
    bottom = c.inner_bottom[:, 1].max()
    rise = 0.4 * m.opening
    u = (x - CENTRE_X) / (0.7 * m.width)
    edge = bottom - rise * np.sqrt(np.clip(1 - u**2, 0, 1)) + 1.5 * bump(u, 0.16)
    inside = (y > edge) & (np.abs(u) < 1)
    if rise < 14:
        return inside.astype(np.float32)
    groove = np.abs(x - CENTRE_X) < 1.1 * np.clip((y - edge - 3) / 6, 0, 1) * np.clip((bottom - 2 - y) / 5, 0, 1)
    return (inside & ~groove).astype(np.float32)


def _raised_tongue(x, y, m, c):
    """The underside of the lifted tongue, with the band that ties it below."""
    bottom = c.inner_bottom[:, 1].max()
    tip = model.UPPER_TEETH_EDGE + 0.6
    rise = np.clip((y - tip) / (bottom - tip), 0, 1)
    half = model.raised_tongue_half(rise)
    inside = (np.abs(x - CENTRE_X) < half) & (y > tip)
    band = np.abs(x - CENTRE_X) < 1.0 * np.clip(np.sin(np.pi * np.clip((rise - 0.36) / 0.5, 0, 1)), 0, 1) ** 0.7
    return (inside & ~band).astype(np.float32)
