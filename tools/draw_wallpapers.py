#!/usr/bin/python3
"""Draws the host's wallpapers into assets/wallpapers. Needs python3-numpy and python3-pil.

All are low in contrast, and all but night are light, since labels on them are
black. Every pattern is built from waves that fit the tile a whole number of
times, so tiles meet without a seam.
"""

from pathlib import Path

import numpy as np
from PIL import Image

OUT = Path(__file__).resolve().parent.parent / "assets" / "wallpapers"


def noise(height, width, fall, seed, stretch=1.0):
    """Seamless noise of mean 0 and spread 1; `fall` above 0 makes it smoother, `stretch` above 1 longer in x."""
    random = np.random.default_rng(seed)
    v, u = np.meshgrid(np.fft.fftfreq(height) * height, np.fft.rfftfreq(width) * width, indexing="ij")
    pitch = np.hypot(u * stretch, v)
    weight = np.where(pitch > 0, 1.0 / np.maximum(pitch, 4) ** fall, 0)
    spectrum = np.fft.rfft2(random.standard_normal((height, width))) * weight
    field = np.fft.irfft2(spectrum, (height, width))
    return field / field.std()


def tinted(levels, colour):
    """Departures from the mean, in grey levels, laid over a colour; as a picture."""
    rgb = np.array(colour)[None, None, :] + levels[:, :, None]
    return Image.fromarray(np.clip(np.rint(rgb), 0, 255).astype(np.uint8), "RGB")


def linen(side=96, thread=3):
    """A plain weave: threads over and under, each of its own thickness and shade."""
    random = np.random.default_rng(11)
    count = side // thread
    y, x = np.indices((side, side))
    over = (x // thread + y // thread) % 2
    swell_x = np.sin(np.pi * (x % thread + 0.5) / thread)
    swell_y = np.sin(np.pi * (y % thread + 0.5) / thread)
    warp = random.normal(0, 2.2, count)[x // thread] + 3.0 * swell_x + 1.6 * noise(side, side, 1.0, 12, 0.12)
    weft = random.normal(0, 2.2, count)[y // thread] + 3.0 * swell_y + 1.6 * noise(side, side, 1.0, 13, 8.0) + 1.5
    woven = np.where(over == 1, warp, weft)
    return tinted(woven - woven.mean(), (178, 175, 164))


def slate(side=160):
    """Cleft stone: broad soft layers, lit from the upper left."""
    relief = noise(side, side, 1.5, 21, 0.55)
    lit = (relief - np.roll(relief, 1, axis=0)) + 0.6 * (relief - np.roll(relief, 1, axis=1))
    stone = 2.6 * relief + 2.6 * lit / lit.std() + 0.9 * noise(side, side, 0.1, 22)
    return tinted(stone, (155, 162, 173))


def paper(side=128):
    """Laid paper: fine grain, a few long fibres, faint ribs."""
    grain = 1.5 * noise(side, side, 0.4, 31)
    cloud = 1.5 * noise(side, side, 1.6, 32)
    fibre = noise(side, side, 0.9, 33, 6.0) + noise(side, side, 0.9, 34, 0.16)
    ribs = 1.0 * np.sin(2 * np.pi * np.arange(side) / 4)[:, None]
    sheet = grain + cloud + 1.2 * fibre + ribs
    return tinted(sheet - sheet.mean(), (192, 186, 172))


def night(side=160):
    """The slate after dark, for the dark look: flatter, since on a dark ground the same steps stand out more."""
    relief = noise(side, side, 1.5, 41, 0.55)
    lit = (relief - np.roll(relief, 1, axis=0)) + 0.6 * (relief - np.roll(relief, 1, axis=1))
    stone = 1.3 * relief + 1.5 * lit / lit.std() + 0.6 * noise(side, side, 0.1, 42)
    return tinted(stone, (47, 50, 57))


def main():
    OUT.mkdir(parents=True, exist_ok=True)
    for wallpaper in (linen, slate, paper, night):
        wallpaper().save(OUT / f"{wallpaper.__name__}.png", optimize=True)


if __name__ == "__main__":
    main()
