"""The eleven mouths as a few numbers each, and the curves that follow from them.

Lengths are pixels of the finished 128 by 128 picture, x to the right, y down.
The skull doesn't move when a jaw drops: the upper teeth keep one place in all
eleven mouths, the upper lip nearly so, and the lower lip and teeth travel.
"""

from dataclasses import dataclass

import numpy as np

SIZE = 128
CENTRE_X = 64.0
REST_LINE = 54.0  # where closed lips meet
UPPER_TEETH_EDGE = 61.0  # the biting edge of the upper teeth, hidden at rest


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
    part: float = 1.0  # share of the width over which the lips part
    teeth: str = ""  # "", "upper", "both", "bite"
    tongue: str = ""  # "", "low", "raised", "deep" (far back, seen in shading alone)


MOUTHS = {
    1: Mouth(width=38, opening=46, jaw=48, lift=5, roundness=0.62, upper=14, lower=17, teeth="upper", tongue="low"),
    2: Mouth(width=45, upper=8, lower=10, press=1),
    3: Mouth(width=48, opening=23, jaw=0.5, lift=6, roundness=0.3, upper=11, lower=14, corner=-1, teeth="both"),
    4: Mouth(width=42, upper=15, lower=20, corner=1.5),
    5: Mouth(width=41, opening=21, jaw=24, lift=1, roundness=0.2, upper=14, lower=18, teeth="upper", tongue="low"),
    6: Mouth(width=53, opening=31, jaw=30, lift=6, roundness=0.15, upper=11, lower=14, corner=-7, teeth="upper", tongue="low"),
    7: Mouth(width=43, opening=11, jaw=8, lift=5, upper=12, lower=12, corner=3, part=0.74, teeth="bite"),
    8: Mouth(width=39, opening=39, jaw=41, lift=4, roundness=0.45, upper=13, lower=16.5, teeth="upper", tongue="raised"),
    9: Mouth(width=25, opening=42, jaw=44, lift=4, roundness=1, push=0.45, upper=15, lower=18, tongue="deep"),
    10: Mouth(width=16, opening=20, jaw=16, lift=1, roundness=1, push=1, upper=18, lower=20),
    11: Mouth(width=13.5, opening=6, jaw=6, lift=-2, roundness=0.75, push=1, upper=18, lower=19),
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


def curves(m, samples=161):
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
