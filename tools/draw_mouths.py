#!/usr/bin/python3
"""Draws the two mouth sets into assets/mouths. Needs python3-numpy."""

from pathlib import Path

from mouths import cartoon, model, raster, sketch

OUT = Path(__file__).resolve().parent.parent / "assets" / "mouths"


def main():
    for name, look in (("sketch", sketch), ("cartoon", cartoon)):
        for number, mouth in model.MOUTHS.items():
            raster.write_bmp(OUT / name / f"{number}.bmp", look.draw(mouth))


if __name__ == "__main__":
    main()
