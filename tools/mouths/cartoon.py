"""The Cartoon set: black line and solid black shapes on white."""

import numpy as np

from . import model, raster
from .model import CENTRE_X, bump, lerp
from .raster import between, distance, smooth


def draw(m):
    """Mouth `m` as 128 by 128 grey levels: 0 ink, 255 paper, edges between."""
    x, y = raster.grid()
    c = model.curves(m)
    ink = np.zeros_like(x)
    for stroke in _head(m):
        ink = np.maximum(ink, _stroke(x, y, *stroke))
    ink = np.maximum(ink, _upper_lip(x, y, m, c))
    if m.teeth == "bite":
        ink = np.maximum(ink, _tucked_lip(x, y, c))
    if m.opening:
        ink = np.maximum(ink, _inside(x, y, m, c))
    for stroke in _strokes(m, c):
        ink = np.maximum(ink, _stroke(x, y, *stroke))
    return np.rint(255 * (1 - raster.shrink(ink)))


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


def _head(m):
    """What is there behind every mouth: jaw, nose and the folds of the cheeks."""
    yield model.jaw_line(m), 0.5, 3.4, 0.57
    ball, left, right = model.nose()
    yield ball, 0.5, 2.8, 0.55
    yield left, 0.4, 2.0, 0.6
    yield right, 0.4, 1.6, 0.6
    if m.crease:
        for fold in model.creases(m):
            yield fold, 0.3, 2.4 * m.crease, 0.62


def _upper_lip(x, y, m, c):
    """The lip in shade, solid: fullest beside the bow, running out to nothing at the corners."""
    if m.push:
        return _pushed_lip(x, y, m, c)
    at = c.inner_top[:, 0]
    outer = np.interp(at, c.outer_top[:, 0], c.outer_top[:, 1])
    share = lerp(0.5, 0.15, m.press)
    top = np.stack([at, lerp(c.inner_top[:, 1], outer, share)], axis=1)
    return between(x, y, top, c.inner_top)


def _pushed_lip(x, y, m, c):
    """An upper lip in shade that curls round the opening, with a white rim next to the black of it."""
    d_in, _ = distance(x, y, model.closed(c.inner_top, c.inner_bottom), 30)
    d_out, _ = distance(x, y, c.outer_top, 30)
    across = d_in / (d_in + d_out + 1e-3)
    side = np.abs(np.arctan2(x - CENTRE_X, c.corner_y - y)) * 2 / np.pi  # 0 on top, 1 at a corner
    # Round a small mouth the black goes on to the corners: white on both sides of the opening would make it an eye.
    fade = lerp(1.0, 0.3, smooth(0.5, 1.0, m.push))
    least = lerp(0.3, 0.05, m.push) + fade * smooth(0.25, 1.0, side) ** 1.3
    end = c.corner_y + (1.0 - fade) * 14.0 * (across - 0.55)  # it runs out along the outline
    lip = between(x, y, c.outer_top, c.outer_bottom) * (y < end)
    return lip * (across >= least) * (d_in >= 2.6)


def _tucked_lip(x, y, c):
    """The lower lip drawn in under the teeth: in their shade, and dented by the two in front."""
    at, edge = c.inner_bottom.T
    low = np.stack([at, edge + 6.5 * np.sin(np.pi * np.linspace(0, 1, len(at))) ** 1.5], axis=1)
    return between(x, y, c.inner_bottom, low) * ~_front_teeth(x, y, c)


def _front_teeth(x, y, c):
    """What of the two front teeth stands over the lower lip."""
    edge = np.interp(x[0], c.inner_bottom[:, 0], c.inner_bottom[:, 1])[None, :]
    off = np.abs(np.abs(x - CENTRE_X) - 0.5 * model.UPPER_TEETH[0]) / (0.5 * model.UPPER_TEETH[0])
    return y < edge + 3.2 * np.sqrt(np.clip(1 - off**4, 0, 1))


def _strokes(m, c):
    """All lines of a mouth as (points, thin, thick, heavy)."""
    if m.push:
        yield from _ring(m, c)
        return
    if m.opening:
        yield c.inner_top, 2.0, 2.4, 0.5
        if m.teeth != "bite":
            yield c.inner_bottom, 1.6, 4.4, 0.56
        yield _part(c.outer_bottom, 0.29, 0.73), 0.3, 3.2, 0.55
    elif m.press:
        yield c.inner_top, 2.2, 5.0, 0.54
        brushes = ((0.4, 3.2, 0.5), (0.4, 3.2, 0.5), (0.3, 1.8, 0.5), (0.3, 3.0, 0.55), (0.3, 2.2, 0.45))
        for fold, brush in zip(model.pressed_folds(c), brushes):
            yield fold, *brush
    else:
        yield c.inner_top, 1.6, 4.6, 0.56
        yield _part(c.outer_bottom, 0.3, 0.74), 0.3, 3.4, 0.55
    if m.roundness < 0.5 and m.crease < 1:  # the fold of a broad smile takes the corner in
        yield _tuck(m, c, -1), 0.4, 3.0, 0.4
        yield _tuck(m, c, 1), 0.4, 2.6, 0.4
    if m.teeth in ("both", "bite"):
        yield from _tooth_gaps(m, c)


def _ring(m, c):
    """Lips pushed forward: an outline of their own, a fold below, hollow cheeks."""
    yield c.outer_top, 1.6, 2.8, 0.4
    yield c.outer_bottom, 1.6, 4.6, 0.56
    t = np.linspace(-1, 1, 17)
    low = c.outer_bottom[:, 1].max() + 4.5
    if low < m.chin - 5:
        yield np.stack([CENTRE_X + 1.5 + 9 * t, low - 1.6 * t**2], axis=1), 0.3, 2.4, 0.55
    if m.push > 0.9:
        # Drawn-in cheeks, the more so the smaller the mouth.
        for side in (-1, 1):
            at = c.outer_top[-1 if side > 0 else 0] + (side * 7.0, 0.0)
            yield np.stack([at[0] + side * 3.0 * t**2, at[1] + (14.0 - 0.4 * m.width) * t], axis=1), 0.3, 2.2, 0.55


def _tuck(m, c, side):
    """The crease that carries a corner on into the cheek: up with a smile, else down."""
    t = np.linspace(-0.4, 1, 13)
    end = c.inner_top[-1 if side > 0 else 0]
    turn = lerp(1.0, -1.0, smooth(1.0, -2.0, m.corner))
    long = lerp(4.5, 3.2, m.roundness)
    return np.stack([end[0] + side * long * (t + 0.2), end[1] + turn * 4.2 * np.sign(t) * np.abs(t) ** 1.6], axis=1)


def _tooth_gaps(m, c):
    """Hairs between the teeth, from the biting edge toward the root; through both rows when they close."""
    for gap in model.tooth_gaps(model.UPPER_TEETH[: 1 if m.teeth == "bite" else 4]):
        top = np.interp(gap, c.inner_top[:, 0], c.inner_top[:, 1])
        bottom = np.interp(gap, c.inner_bottom[:, 0], c.inner_bottom[:, 1])
        if m.teeth == "bite":
            over = 3.0 if gap == CENTRE_X else 0.0
            yield np.array([[gap, top + 3], [gap, bottom + over]]), 0.6, 1.8, 0.65
        else:
            edge = model.upper_teeth_edge(gap)
            yield np.array([[gap, top + 3.5], [gap, bottom - 3.5]]), 0.5, 1.6, (edge - top) / (bottom - top)


def _inside(x, y, m, c):
    """The black of the mouth, less teeth and tongue."""
    hole = between(x, y, c.inner_top, c.inner_bottom)
    white = np.zeros_like(x)
    if m.tongue == "low":
        white = _low_tongue(x, y, m, c)
    if m.tongue == "raised":
        white = _raised_tongue(x, y, m, c)
    if m.teeth:
        white = np.where(y < model.upper_teeth_edge(x) + 1.8, 0, white)
        white = np.maximum(white, _teeth(x, y, m, c))
    return hole * (1 - white)


def _teeth(x, y, m, c):
    top = np.interp(x[0], c.inner_top[:, 0], c.inner_top[:, 1])[None, :]
    bottom = np.interp(x[0], c.inner_bottom[:, 0], c.inner_bottom[:, 1])[None, :]
    if m.teeth == "bite":
        # The front teeth stand on the lip; the row ends in a round corner, black beside it.
        end = 0.74 * m.width
        rest = np.sqrt(1 - np.clip((np.abs(x - CENTRE_X) - 0.8 * end) / (0.2 * end), 0, 1) ** 2)
        return (y < lerp(top, bottom, rest)).astype(np.float32)
    edge = model.upper_teeth_edge(x)
    # The row ends in a round corner short of where the lip hides the biting edge.
    end = 0.92 * np.max(np.abs(x - CENTRE_X) * ((top < edge - 1) & (top < bottom - 1)))
    rest = np.sqrt(1 - np.clip((np.abs(x - CENTRE_X) - 0.8 * end) / (0.2 * end), 0, 1) ** 2)
    if m.teeth == "upper":
        return (y < lerp(top, edge, rest)).astype(np.float32)
    low = model.lower_teeth_edge(x, m) + 2.0
    upper = (y < edge) & (y > lerp(edge, top - 1, rest))
    lower = (y > low) & (y < lerp(low, bottom + 1, rest))
    return (upper | lower).astype(np.float32)


def _low_tongue(x, y, m, c):
    """The tongue's back as a hump, heaped to the near side, with a groove that tapers."""
    bottom = c.inner_bottom[:, 1].max()
    rise = 0.46 * m.opening
    u = (x - CENTRE_X) / (0.72 * m.width)
    edge = bottom - rise * np.sqrt(np.clip(1 - u**2, 0, 1)) + 0.09 * m.opening * bump(u, 0.2)
    inside = (y > edge) & (np.abs(u) < 1)
    if rise < 12:
        return inside.astype(np.float32)
    groove = np.abs(x - CENTRE_X) < 1.3 * smooth(bottom - 1, edge, y) * smooth(edge, edge + 2, y)
    return (inside & ~groove).astype(np.float32)


def _raised_tongue(x, y, m, c):
    """The underside of the lifted tongue, with the band that ties it below."""
    bottom = c.inner_bottom[:, 1].max()
    tip = model.UPPER_TEETH_EDGE + 0.6
    rise = np.clip((y - tip) / (bottom - tip), 0, 1)
    half = model.raised_tongue_half(rise)
    inside = (np.abs(x - CENTRE_X) < half) & (y > tip)
    band = np.abs(x - CENTRE_X) < 1.3 * np.clip(np.sin(np.pi * np.clip((rise - 0.36) / 0.5, 0, 1)), 0, 1) ** 0.7
    return (inside & ~band).astype(np.float32)
