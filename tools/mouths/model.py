"""The eleven mouths as a few numbers each, and the curves that follow from them.

Lengths are pixels of the finished 128 by 128 picture, x to the right, y down.
The skull doesn't move when a jaw drops: nose, temples and upper teeth keep one
place in all eleven mouths, the upper lip nearly so, and the lower lip, the lower
teeth and the chin travel. Everything but the nose stays between y 36 and 118,
the part of the pictures that a printed sheet shows.
"""

from dataclasses import dataclass

import numpy as np

SIZE = 128
CENTRE_X = 64.0
REST_LINE = 56.0  # where closed lips meet
UPPER_TEETH_EDGE = 60.0  # the biting edge of the upper teeth, hidden at rest


@dataclass(frozen=True)
class Mouth:
    """One mouth. Every length in pixels, `roundness` and `push` from 0 to 1."""

    width: float  # from the middle to a corner of the opening
    opening: float = 0.0  # between the lips, at the middle
    jaw: float = 0.0  # how far the lower teeth stand below their closed place
    lift: float = 0.0  # how far the upper lip is raised
    roundness: float = 0.0  # 0: corners pointed, 1: an oval
    push: float = 0.0  # lips pushed forward: fuller, with a stronger light
    upper: float = 13.0  # thickness of the upper lip at its peaks
    lower: float = 17.0  # thickness of the lower lip
    corner: float = 0.0  # corners down (above 0) or up (below 0)
    press: float = 0.0  # lips pressed: a hard line, dents at the corners
    chin: float = 97.0  # where the line of the jaw is lowest
    cheek: float = 0.0  # cheeks blown out or pushed up (above 0), or drawn in (below 0)
    crease: float = 0.0  # the fold from nose to corner that a spread mouth pushes up
    part: float = 1.0  # share of the width over which the lips part
    teeth: str = ""  # "", "upper", "both", "bite"
    tongue: str = ""  # "", "low", "raised", "deep" (far back, seen in shading alone)


MOUTHS = {
    1: Mouth(width=34, opening=51, jaw=54, lift=10, roundness=0.62, upper=10, lower=8.5, chin=116.5, cheek=-2, teeth="upper", tongue="low"),
    2: Mouth(width=33, upper=6, lower=7, corner=2.5, press=1, chin=89, cheek=3.5),
    3: Mouth(width=38, opening=25, jaw=0.5, lift=8.5, roundness=0.5, upper=8, lower=10, corner=-2, chin=98, cheek=2.5, crease=0.7, teeth="both"),
    4: Mouth(width=31, upper=10, lower=14, corner=-2.5, chin=97),
    5: Mouth(width=33, opening=21, jaw=24, lift=2, roundness=0.3, upper=11, lower=13, chin=104, teeth="upper", tongue="low"),
    6: Mouth(width=40, opening=35, jaw=37, lift=9, roundness=0.25, upper=9, lower=11, corner=-9, chin=109, cheek=4.5, crease=1, teeth="upper", tongue="low"),
    7: Mouth(width=34, opening=12, jaw=9, lift=7, upper=9, lower=10, corner=4.5, part=0.84, chin=93, cheek=1, teeth="bite"),
    8: Mouth(width=34, opening=45, jaw=48, lift=7, roundness=0.5, upper=11, lower=10, chin=115, cheek=-1, teeth="upper", tongue="raised"),
    9: Mouth(width=20, opening=43, jaw=43, lift=4, roundness=1, push=0.45, upper=11, lower=12, chin=116.5, cheek=-7, tongue="deep"),
    10: Mouth(width=12, opening=17, jaw=16, lift=-1, roundness=1, push=1, upper=14, lower=15, chin=105, cheek=-5),
    11: Mouth(width=7.5, opening=6, jaw=6, lift=-3, roundness=0.8, push=1, upper=12, lower=12, chin=96, cheek=-7),
}


def lerp(a, b, t):
    return a + (b - a) * t


def bump(x, sigma):
    return np.exp(-((x / sigma) ** 2))


@dataclass(frozen=True)
class Curves:
    """Four edges over x, left to right, as arrays of (x, y); and the corner's y."""

    outer_top: np.ndarray
    inner_top: np.ndarray
    inner_bottom: np.ndarray
    outer_bottom: np.ndarray
    corner_y: float


def _arch(u, flat, steep):
    """1 in the middle, 0 at u = -1 and 1; `steep` 0.5 ends upright, 1 ends in a point."""
    return np.maximum(0.0, 1.0 - np.abs(u) ** flat) ** steep


def curves(m, samples=97):
    """The edges of the lips of mouth `m`."""
    u = -np.cos(np.linspace(0.0, np.pi, samples))
    top = REST_LINE - m.lift
    bottom = top + m.opening
    corner_y = top + m.opening * lerp(0.42, 0.5, m.roundness) + m.corner
    steep = lerp(0.86, 0.5, m.roundness)

    line = corner_y + (top - corner_y) * _arch(u, 2.3, steep)
    gap = m.opening * _arch(np.clip(u / m.part, -1, 1), 2.3, steep)
    # Where lips touch, the tubercle of the upper lip bows the line between them.
    bow_line = (1 - m.press * 0.6) * (1 - m.roundness) * (2.0 * bump(u, 0.2) - 1.6 * bump(np.abs(u) - 0.42, 0.2))
    inner_x = CENTRE_X + u * m.width
    inner_top = line + bow_line * lerp(1.0, 0.6, m.opening > 0)
    inner_bottom = line + gap + bow_line * bump(m.opening, 6.0)

    side = lerp(2.0, lerp(0.5, 0.75, m.push) * m.upper, m.roundness)
    reach = m.width + side
    outer_x = CENTRE_X + u * reach
    dip = lerp(4.2, 2.6, m.roundness) * min(1.0, m.upper / 12)
    rise = _arch(u, lerp(1.6, 2.0, m.roundness), lerp(1.06, 0.6, m.roundness))
    outer_top = corner_y + (top - m.upper - corner_y) * rise + dip * bump(u * reach, lerp(7.0, 5.5, m.roundness))
    fall = _arch(u, lerp(2.3, 2.3, m.roundness), lerp(1.05, 0.56, m.roundness))
    outer_bottom = corner_y + (bottom + m.lower - corner_y) * fall

    def pair(x, y):
        return np.stack([x, y], axis=1)

    return Curves(
        pair(outer_x, outer_top),
        pair(inner_x, inner_top),
        pair(inner_x, inner_bottom),
        pair(outer_x, outer_bottom),
        corner_y,
    )


def _through(points, samples=16):
    """A smooth polyline through `points`."""
    p = np.asarray(points, float)
    p = np.concatenate([2 * p[:1] - p[1:2], p, 2 * p[-1:] - p[-2:-1]])
    t = np.linspace(0, 1, samples, endpoint=False)[:, None]
    runs = []
    for a, b, c, d in zip(p[:-3], p[1:-2], p[2:-1], p[3:]):
        runs.append(b + 0.5 * t * (c - a + t * (2 * a - 5 * b + 4 * c - d + t * (3 * (b - c) + d - a))))
    return np.concatenate(runs + [p[-2:-1]])


def jaw_line(m):
    """The sides of the face and the jaw below: it hangs from the temples, which don't move.

    A dropped jaw is longer and narrower, as the same skin has to reach farther.
    """
    drop = m.chin - 97.0
    cheek = 47.0 + m.cheek
    half = [(46.0, 8.0), (47.0 + 0.4 * m.cheek, 28.0), (cheek, 52.0)]
    half += [(42.5 + 0.6 * m.cheek - 0.16 * drop, m.chin - 21.0 - 0.3 * drop)]
    half += [(29.0 - 0.2 * drop, m.chin - 6.5 - 0.06 * drop), (13.0 - 0.06 * drop, m.chin - 0.9)]
    right = [(CENTRE_X + x, y) for x, y in half]
    left = [(CENTRE_X - x, y) for x, y in half]
    return _through(left + [(CENTRE_X, m.chin)] + right[::-1])


def nose():
    """The ball of the nose, open at the top, and its two wings."""
    ball = _through([(57.0, 13.0), (53.6, 20.0), (56.8, 27.5), (64.0, 31.0), (71.2, 27.5), (74.4, 20.0), (71.5, 13.5)])
    left = _through([(51.5, 19.5), (47.6, 23.5), (49.2, 28.5), (55.0, 28.6)])
    return ball, left, left * (-1, 1) + (2 * CENTRE_X, 0)


def creases(m):
    """The folds beside a spread mouth, from the wing of the nose round the corner."""
    run = np.array([(22.0, 33.5), (31.0, 37.0), (m.width - 0.5, 43.5), (m.width + 3.2, 50.0), (m.width + 3.6, 56.0)])
    return [_through(run * (side, 1) + (CENTRE_X, 0), 8) for side in (-1, 1)]


def pressed_folds(c):
    """Where lips that are rolled in push up the skin, with curves `c`: brackets at the corners, a bulge above the lips
    and one below, a fold over the chin."""
    t = np.linspace(-1, 1, 17)

    def bracket(side):
        end = c.outer_top[-1 if side > 0 else 0]
        return np.stack([end[0] + side * (6.5 - 3.0 * t**2), end[1] - 0.5 + 7.0 * t], axis=1)

    above = np.stack([CENTRE_X + 15 * t, REST_LINE - 8.5 + 2.2 * t**2], axis=1)
    below = np.stack([CENTRE_X + 1 + 17 * t, REST_LINE + 10.5 - 3.0 * t**2], axis=1)
    chin = np.stack([CENTRE_X + 10 * t, REST_LINE + 21.5 + 4.0 * t**2], axis=1)
    return bracket(-1), bracket(1), above, below, chin


def closed(top, bottom):
    """The closed outline between two edges that share their ends."""
    return np.concatenate([top, bottom[::-1]])


def raised_tongue_half(rise):
    """Half the width of a lifted tongue, from its round tip (0) to the floor (1)."""
    root = np.clip((rise - 0.55) / 0.45, 0, 1)
    return 17.5 * np.clip(1 - (1 - rise) ** 2.4, 0, 1) ** 0.58 + 5.0 * root**2


# Widths of the teeth from the middle outward, as the arch turns them away.
UPPER_TEETH = (10.2, 8.0, 7.4, 6.2, 5.0, 4.0)
LOWER_TEETH = (6.2, 6.0, 6.0, 5.6, 5.0, 4.4, 3.4)


def tooth_gaps(widths):
    """The x of every gap between neighbouring teeth, left to right."""
    right = np.cumsum(widths)
    return CENTRE_X + np.concatenate([-right[::-1], [0.0], right])


def upper_teeth_edge(x):
    """The biting edge of the upper teeth at x: an arch that rises to the sides."""
    off = np.abs(x - CENTRE_X)
    return UPPER_TEETH_EDGE - 4.0 * (off / 36.0) ** 2


def lower_teeth_edge(x, m):
    """The biting edge of the lower teeth at x, for the jaw of mouth `m`."""
    off = np.abs(x - CENTRE_X)
    return UPPER_TEETH_EDGE + m.jaw - 4.0 * (off / 36.0) ** 2
