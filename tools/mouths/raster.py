"""Pixels: a fine grid of points, distances, blurs, and the way down to 128."""

import numpy as np

from .model import CENTRE_X, SIZE

POINTS = 3  # fine points per pixel of the picture, each way
FINE = POINTS  # fine points per length of the model: those of one pixel, or of several
TURN, FORESHORTENING, LEAN = 2.0, 0.0016, 0.03


def set_density(density):
    """From here on pictures have so many pixels to a length of the model, each way."""
    global FINE
    FINE = POINTS * density


def grid():
    """x and y of every fine point, as the model measures the face from in front.

    The head is drawn turned a little to the right and leaning: the far side is
    shorter than the near one and stands higher.
    """
    at = (np.arange(SIZE * FINE, dtype=np.float32) + 0.5) / FINE
    x, y = np.meshgrid(at, at)
    turned = x - CENTRE_X - TURN
    return CENTRE_X + turned * (1 + FORESHORTENING * turned), y + LEAN * turned


def between(x, y, top, bottom):
    """1 where a point lies below edge `top` and above edge `bottom`, else 0."""
    y_top = np.interp(x[0], top[:, 0], top[:, 1])
    y_bottom = np.interp(x[0], bottom[:, 0], bottom[:, 1])
    inside_x = (x[0] >= top[0, 0]) & (x[0] <= top[-1, 0])
    return ((y >= y_top) & (y <= y_bottom) & inside_x).astype(np.float32)


def distance(x, y, points, reach=None):
    """Distance of every grid point to a polyline, and how far along it (0 to 1).

    With `reach`, points farther than that from the polyline's box are not
    measured and get a large distance.
    """
    far = np.full(x.shape, 1e3, np.float32)
    along = np.zeros(x.shape, np.float32)
    window = (slice(None), slice(None))
    if reach is not None:
        (x0, y0), (x1, y1) = points.min(axis=0) - reach, points.max(axis=0) + reach
        near = (x >= x0) & (x <= x1) & (y >= y0) & (y <= y1)
        rows, columns = np.flatnonzero(near.any(axis=1)), np.flatnonzero(near.any(axis=0))
        if not rows.size:
            return far, along
        window = (slice(rows[0], rows[-1] + 1), slice(columns[0], columns[-1] + 1))
    px, py = x[window], y[window]
    best = np.full(px.shape, 1e6, np.float32)
    where = np.zeros(px.shape, np.float32)
    steps = np.hypot(*np.diff(points, axis=0).T)
    ends = np.concatenate([[0.0], np.cumsum(steps)])
    for (ax, ay), (bx, by), step, start in zip(points[:-1], points[1:], steps, ends[:-1]):
        if step == 0:
            continue
        dx, dy = (bx - ax) / step, (by - ay) / step
        t = np.clip((px - ax) * dx + (py - ay) * dy, 0, step)
        d = (px - ax - t * dx) ** 2 + (py - ay - t * dy) ** 2
        nearer = d < best
        best = np.where(nearer, d, best)
        where = np.where(nearer, (start + t) / ends[-1], where)
    far[window] = np.sqrt(best)
    along[window] = where
    return far, along


def blur(image, sigma):
    """Gaussian blur; `sigma` in lengths of the model."""
    sigma *= FINE
    radius = int(3 * sigma + 1)
    kernel = np.exp(-0.5 * (np.arange(-radius, radius + 1) / sigma) ** 2)
    kernel /= kernel.sum()
    for axis in (0, 1):
        padded = np.pad(image, [(radius, radius) if a == axis else (0, 0) for a in (0, 1)], mode="edge")
        spectrum = np.fft.rfft(padded, axis=axis)
        n = padded.shape[axis]
        shape = [1, 1]
        shape[axis] = -1
        wave = np.fft.rfft(np.roll(np.pad(kernel, (0, n - kernel.size)), -radius)).reshape(shape)
        padded = np.fft.irfft(spectrum * wave, n, axis=axis)
        keep = [slice(None), slice(None)]
        keep[axis] = slice(radius, n - radius)
        image = padded[tuple(keep)]
    return image.astype(np.float32)


def smooth(a, b, value):
    """0 at a and before, 1 at b and beyond, an S between."""
    t = np.clip((value - a) / (b - a), 0, 1)
    return t * t * (3 - 2 * t)


def shrink(image):
    """The finished picture from the fine one: the mean of each pixel's points."""
    side = SIZE * FINE // POINTS
    return image.reshape(side, POINTS, side, POINTS).mean(axis=(1, 3))


def write_bmp(path, levels):
    """Writes rows of grey levels as an uncompressed BMP of 8 bits with a plain grey ramp."""
    height, width = levels.shape
    offset = 14 + 40 + 1024
    u32 = lambda n: int(n).to_bytes(4, "little")
    u16 = lambda n: int(n).to_bytes(2, "little")
    header = b"BM" + u32(offset + width * height) + u32(0) + u32(offset)
    info = u32(40) + u32(width) + u32(height) + u16(1) + u16(8) + u32(0)
    info += u32(width * height) + u32(2835) * 2 + u32(256) + u32(256)
    ramp = b"".join(bytes((n, n, n, 0)) for n in range(256))
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(header + info + ramp + levels[::-1].astype(np.uint8).tobytes())
