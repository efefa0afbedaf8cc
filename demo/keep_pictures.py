#!/usr/bin/python3
"""Keeps the tour's pictures that the documents show, in docs/pictures."""

import os

from PIL import Image

HOUSE = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
TOUR = os.path.join(HOUSE, "build", "tour")
KEPT = {"04-wave.png": "wave.png", "13-tracks.png": "curves.png", "25-sample.png": "sheet.png",
        "painter/1-options.png": "roll_length.png", "painter/3-stamped.png": "frame_painter.png",
        "apart/0-host.png": "host.png", "krita/1-following.png": "krita.png"}

for source, target in KEPT.items():
    if not os.path.exists(os.path.join(TOUR, source)):
        continue  # its chapter wasn't given
    with Image.open(os.path.join(TOUR, source)) as picture:
        picture.save(os.path.join(HOUSE, "docs", "pictures", target), optimize=True)
        print(f"docs/pictures/{target}: {picture.size[0]} by {picture.size[1]}")
