"""The Sketch set: lips and teeth in soft grey shading, light from the upper left."""

import numpy as np

from . import model, raster
from .model import CENTRE_X, bump, lerp
from .raster import blur, between, distance, smooth

GROUND = 163.5  # drawn as a fine pattern of 163 and 164
LIGHT = np.array([-0.42, -0.62, 0.66])


def draw(m):
    """Mouth `m` as 128 by 128 grey levels."""
    x, y = raster.grid()
    c = model.curves(m)
    outer = between(x, y, c.outer_top, c.outer_bottom)
    inner = between(x, y, c.inner_top, c.inner_bottom) if m.opening else np.zeros_like(x)
    image = _head(_skin(x, y, m, c, outer), x, y, m)
    image = _faded_to_ground(image)
    image = _over(image, _lips(x, y, m, c), blur(outer, 0.45))
    if m.opening:
        image = _over(image, _inside(x, y, m, c), inner)
    image = _lines(image, x, y, m, c, inner)
    if m.teeth == "bite":
        image = _biting_teeth(image, x, y, m, c)
    return _levels(raster.shrink(image))


def _over(under, paint, mask):
    return under + (paint - under) * mask


def _skin(x, y, m, c, outer):
    """The ground, with the soft shadows that lips throw and the dents around them."""
    below = np.roll(outer, (4 * raster.FINE, int(1.5 * raster.FINE)), axis=(0, 1))
    image = GROUND - (34 + 14 * m.push) * blur(below, 3.5) * smooth(c.corner_y - 4, c.corner_y + 14, y)
    # The groove above the bow: a dark side to the left, a light one to the right.
    bow = c.outer_top[:, 1].min()
    groove = smooth(bow - 16, bow - 4, y) * smooth(bow + 5, bow - 2, y)
    image += groove * (8 * bump(x - 69.5, 3.6) - 10 * bump(x - 62, 4.2))
    # Light along the rim of the upper lip.
    image += 13 * blur(np.roll(outer, -2 * raster.FINE, axis=0), 1.8) * (y < c.corner_y)
    for side in (-1, 1):
        end = CENTRE_X + side * (c.outer_top[-1, 0] - CENTRE_X)
        depth = (1 - m.roundness) * (22 + 16 * m.press)
        image -= depth * bump(x - end - side * 1.5, 5.0) * bump(y - c.corner_y - 1, 6.0)
    return _pressed(image, x, y, c) if m.press else image


def _pressed(image, x, y, c):
    """The skin around lips that are rolled in: it swells beside the lips and folds where the swelling ends."""
    for at, wide, high in ((-5.5, 15, 3.0), (8.5, 17, 3.2), (27.5, 11, 4.0)):
        image = image + 24 * bump((x - CENTRE_X + 3) / wide, 1.0) * bump((y - model.REST_LINE - at) / high, 1.0)
    for fold, depth in zip(model.pressed_folds(c), (58, 66, 30, 52, 44)):
        d, along = distance(x, y, fold, 10)
        run = np.clip(np.sin(np.pi * along), 0, 1)
        image = image - run * (depth * bump(d, 1.5) + 0.35 * depth * bump(d, 4.0))
    return image


def _head(image, x, y, m):
    """Jaw, nose and cheeks behind the mouth: soft shade with a pencil line in it."""
    line = model.jaw_line(m)
    d, along = distance(x, y, line)
    half = np.interp(y, *_half_width(line), right=-1.0)
    inside = blur((np.abs(x - CENTRE_X) < half).astype(np.float32), 0.6)
    # The face turns away to the right and below; the light comes past its left side.
    away = lerp(0.35, 1.0, smooth(0.2, 0.75, along))
    image = image + inside * (7 - 30 * away * bump(d, 9.0)) - (1 - inside) * 16 * bump(d, 6.0) * away
    image = image - lerp(8, 48, np.clip(np.sin(np.pi * along), 0, 1) ** 1.5) * bump(d, lerp(0.8, 1.7, away))
    chin = np.hypot((x - CENTRE_X + 4) / 12, (y - m.chin + 9) / 5)
    image = image + 20 * bump(chin, 1.0) * inside
    image = image + 12 * bump(np.hypot((x - 31) / 9, (y - 50) / 11), 1.0) * (1 + 0.2 * m.cheek)
    for fold in model.creases(m) if m.crease else ():
        d, along = distance(x, y, fold, 10)
        depth = m.crease * np.clip(np.sin(np.pi * along), 0, 1)
        image = image + depth * (12 * bump(d, 4.0) - 44 * bump(d, 1.6))
    return _nose(image, x, y)


def _half_width(line):
    """Half the width of the face over y, from the line's left half."""
    left = line[: len(line) // 2 + 1]
    return left[:, 1], CENTRE_X - left[:, 0]


def _nose(image, x, y):
    ball = np.hypot((x - 61) / 7, (y - 20) / 7)
    image = image + 26 * bump(ball, 0.8)
    under = bump((x - CENTRE_X - 1) / 13, 1.0) * bump(y - 33, 3.6)
    image = image - 24 * under
    for side, depth in ((-1, 54), (1, 66)):
        hole = np.hypot((x - CENTRE_X - side * 6.8) / 3.4, (y - 28.6 - 0.12 * side * (x - CENTRE_X)) / 1.7)
        image = image - depth * bump(hole, 0.9)
    for points, weight in zip(model.nose(), (30, 44, 52)):
        d, along = distance(x, y, points, 8)
        image = image - weight * bump(d, 1.1) * np.clip(np.sin(np.pi * along), 0, 1)
    return image


def _faded_to_ground(image):
    at = (np.arange(image.shape[0]) + 0.5) / raster.FINE
    x, y = np.meshgrid(at, at)
    edge = np.minimum(np.minimum(x, 128 - x), np.minimum(y, 128 - y))
    return GROUND + (image - GROUND) * smooth(4, 14, edge)


def _lips(x, y, m, c):
    """Shaded lips everywhere; the caller cuts them out."""
    d_in, _ = distance(x, y, model.closed(c.inner_top, c.inner_bottom))
    d_out, _ = distance(x, y, np.concatenate([model.closed(c.outer_top, c.outer_bottom), c.outer_top[:1]]))
    across = d_in / (d_in + d_out + 1e-3)  # 0 at the opening, 1 at the rim
    thick = d_in + d_out
    turn = lerp(2.0, 9.0, m.roundness)
    lower = smooth(-turn, turn, y - _mouth_line(x, c))
    height = lerp(_swell(across, 0.72), _swell(across, 0.42), lower) * thick * lerp(0.5, 0.62, m.push)
    height = blur(height, 0.9)
    slope_y, slope_x = np.gradient(height, 1 / raster.FINE)
    length = np.sqrt(slope_x**2 + slope_y**2 + 1)
    lit = (-slope_x * LIGHT[0] - slope_y * LIGHT[1] + LIGHT[2]) / length
    shade = lerp(96.0, 108.0, lower) + 60 * (lit - 0.5)
    shade += lerp(14, 125, lower) * bump(x - 56, 16) * np.clip(lit, 0, 1) ** 8
    shade -= 12 * smooth(60, 100, x)
    shade -= (16 + 22 * m.roundness) * bump(d_in, 2.0 + 2.0 * m.push)
    return shade + _creases(x, y, m, c) * np.sin(np.pi * across) * lerp(0.7, 1, lower)


def _swell(across, peak):
    """A lip's section from opening to rim, highest at `peak`, 0 at both ends."""
    bend = np.log(0.5) / np.log(peak)
    return np.sin(np.pi * np.clip(across, 0, 1) ** bend)


def _mouth_line(x, c):
    """The y where the lips part, or would, at every x."""
    middle = (c.inner_top + c.inner_bottom) / 2
    return np.interp(x[0], middle[:, 0], middle[:, 1])[None, :]


def _creases(x, y, m, c):
    """Faint folds across the lips, upright on a wide mouth and rays on a round one; pushed lips fold more."""
    ray = np.arctan2(x - CENTRE_X, np.abs(y - c.corner_y) + 6) * 24
    at = lerp(x * 1.5, ray, m.roundness)
    fold = np.sin(at + 2.1 * np.sin(at * 0.21)) + 0.6 * np.sin(at * 1.73 + 1.3)
    return fold * lerp(1.8, 4.2, m.push)


def _inside(x, y, m, c):
    """The dark of the mouth with tongue and teeth in it."""
    top, bottom = c.inner_top[:, 1].min(), c.inner_bottom[:, 1].max()
    image = 32 + 26 * smooth(lerp(top, bottom, 0.3), bottom, y) + 0 * x
    if m.tongue == "deep":
        image += 24 * bump((x - 61) / m.width, 0.6) * smooth(lerp(top, bottom, 0.55), lerp(top, bottom, 0.8), y)
    if m.tongue == "low":
        image = _low_tongue(image, x, y, m, c)
    if m.tongue == "raised":
        image = _raised_tongue(image, x, y, m, c)
    if m.teeth == "both" or m.opening > 12:
        image = _lower_teeth(image, x, y, m)
    if m.teeth in ("upper", "both"):
        image = _upper_teeth(image, x, y, m)
    under = y - np.interp(x[0], c.inner_top[:, 0], c.inner_top[:, 1])[None, :]
    return image * lerp(0.5, 1.0, smooth(0, 6.5, under))


def _low_tongue(image, x, y, m, c):
    """The tongue on the floor of the mouth: a broad back with a groove, dark towards its rim."""
    bottom = c.inner_bottom[:, 1].max()
    rise = 0.4 * m.opening + 2
    u = (x - CENTRE_X) / (0.86 * m.width)
    edge = bottom + 2 - rise * np.sqrt(np.clip(1 - u**2, 0, 1)) + 1.6 * bump(u, 0.14)
    depth = y - edge
    mask = blur((depth > 0).astype(np.float32), 0.5) * smooth(1.0, 0.75, np.abs(u))
    shade = 62 + 70 * smooth(0, 7, depth) * bump(u + 0.12, 0.62) - 26 * smooth(6, 18, depth)
    shade -= 26 * bump(x - CENTRE_X, 1.5) * smooth(1, 5, depth)
    return _over(image, shade, mask)


def _raised_tongue(image, x, y, m, c):
    """The tip behind the upper teeth, so the underside shows, with its band below."""
    bottom = c.inner_bottom[:, 1].max()
    tip = model.UPPER_TEETH_EDGE - 1
    rise = np.clip((y - tip) / (bottom - tip), 0, 1)
    half = model.raised_tongue_half(rise)
    u = (x - CENTRE_X) / np.maximum(half, 0.1)
    mask = blur(((np.abs(u) < 1) & (y > tip)).astype(np.float32), 0.5)
    round_off = np.clip(1 - (u + 0.22) ** 2 / 1.5, 0, 1)
    shade = 62 + 104 * round_off * lerp(1.0, 0.3, smooth(0.25, 1.0, rise))
    shade -= 26 * bump(x - CENTRE_X, 1.1) * smooth(0.3, 0.5, rise) * smooth(1.0, 0.75, rise)
    shade -= 34 * smooth(tip + 7.5, tip + 2, y)
    return _over(image, shade, mask)


def _teeth(x, gaps):
    """Grey of a row of teeth: each one rounded, the row turning away to the sides."""
    off = np.abs(x - CENTRE_X)
    arch = lerp(226, 92, smooth(4, 40, off + 2.5 * (x > CENTRE_X)))
    nearest = np.min(np.abs(x[0][:, None] - gaps[None, :]), axis=1)[None, :]
    return arch - 30 * bump(nearest, 0.75) - 12 * bump(nearest, 2.2)


def _upper_teeth(image, x, y, m):
    gaps = model.tooth_gaps(model.UPPER_TEETH)
    nearest = np.min(np.abs(x[0][:, None] - gaps[None, :]), axis=1)[None, :]
    edge = model.upper_teeth_edge(x) - 1.4 * bump(nearest, 1.1)
    mask = blur((y < edge).astype(np.float32), 0.35) * smooth(42, 36, np.abs(x - CENTRE_X))
    shade = _teeth(x, gaps) - 26 * smooth(3.5, 0, edge - y)
    return _over(image, shade, mask)


def _biting_teeth(image, x, y, m, c):
    """Upper teeth in front of the lower lip, which they dent."""
    top = np.interp(x[0], c.inner_top[:, 0], c.inner_top[:, 1])[None, :]
    bottom = np.interp(x[0], c.inner_bottom[:, 0], c.inner_bottom[:, 1])[None, :]
    gaps = model.tooth_gaps(model.UPPER_TEETH)
    nearest = np.min(np.abs(x[0][:, None] - gaps[None, :]), axis=1)[None, :]
    edge = bottom + 1.2 + 2.6 * bump(x - CENTRE_X, 13.0) - 1.6 * bump(nearest, 1.1)
    shown = (bottom - top) > 1.0
    mask = blur(((y > top) & (y < edge) & shown).astype(np.float32), 0.35)
    image = image - 58 * blur(((y > top) & (y < edge + 2.8) & shown).astype(np.float32), 1.0) * (1 - mask)
    shade = _teeth(x, gaps) * lerp(0.55, 1.0, smooth(0, 5.5, y - top))
    return _over(image, shade, mask)


def _lower_teeth(image, x, y, m):
    gaps = model.tooth_gaps(model.LOWER_TEETH)
    nearest = np.min(np.abs(x[0][:, None] - gaps[None, :]), axis=1)[None, :]
    edge = model.lower_teeth_edge(x, m) + 1.0 * bump(nearest, 1.0) + 0.8
    mask = blur((y > edge).astype(np.float32), 0.35) * smooth(42, 36, np.abs(x - CENTRE_X))
    shade = _teeth(x, gaps) * 0.88 + 14 * smooth(2.2, 0, y - edge)
    return _over(image, shade, mask)


def _lines(image, x, y, m, c, inner):
    """The pencil: the dark where lips meet or part, and the tucked corners."""
    if m.opening:
        d, _ = distance(x, y, model.closed(c.inner_top, c.inner_bottom), 12)
        image = image - 40 * bump(d, 1.6) * (1 - inner) - 20 * bump(d, 1.0) * inner
    else:
        d, along = distance(x, y, c.inner_top, 12)
        weight = lerp(0.75, 1.0, np.sin(np.pi * along))
        image = image - weight * (78 * bump(d, lerp(1.15, 1.5, m.press)) + 22 * bump(d, 3))
    for rim, weight in ((c.outer_top, 12), (c.outer_bottom, 26)):
        d, along = distance(x, y, rim, 8)
        image = image - weight * bump(d, 1.1) * np.sin(np.pi * along) * lerp(0.45, 1.0, along)
    for side in (-1, 1):
        end = CENTRE_X + side * m.width
        tuck = 34 * (1 - m.roundness) * bump(np.hypot(x - end, (y - c.corner_y) * 1.3), 3.0)
        image = image - tuck
    return image


def _levels(image):
    """Whole grey levels by a checkerboard of thresholds, which makes the ground's pattern."""
    rows, columns = np.indices(image.shape)
    threshold = np.where((rows + columns) % 2, 0.25, 0.75)
    return np.clip(np.floor(image + threshold), 0, 255)
