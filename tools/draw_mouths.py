#!/usr/bin/python3
"""Draws the two mouth sets into assets/mouths, each mouth twice: as the bitmap that the system is given, and at
double size for dense screens. Needs python3-numpy and python3-pil."""

from pathlib import Path

import numpy as np
from PIL import Image

from mouths import cartoon, model, raster, sketch

OUT = Path(__file__).resolve().parent.parent / "assets" / "mouths"


def main():
    for name, look in (("sketch", sketch), ("cartoon", cartoon)):
        for number, mouth in model.MOUTHS.items():
            raster.set_density(1)
            raster.write_bmp(OUT / name / f"{number}.bmp", look.draw(mouth))
            raster.set_density(2)
            Image.fromarray(look.draw(mouth).astype(np.uint8)).save(OUT / name / f"{number}@2x.png", optimize=True)


if __name__ == "__main__":
    main()
