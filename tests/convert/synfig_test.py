"""What Synfig's own readers make of the files that the converter writes: a layer of one colour for each mouth, and
the colours that it then renders frame by frame.

Run: synfig_test.py <converter>.
"""

import os
import subprocess
import sys
import tempfile
import unittest

from PIL import Image

CONVERTER = sys.argv.pop(1)
# One mouth a frame for a little more than a second.
SHEET = "Closed Closed M A A A F F E E E E E E L U U W W S O O Ch Ch B B B Closed Closed".split()
SWITCH_NAMES = {"Closed": "rest", "M": "MBP", "B": "MBP", "A": "AI", "F": "FV", "E": "E", "L": "L", "U": "U", "W": "WQ",
                "S": "etc", "Ch": "etc", "O": "O"}
CUE_LETTERS = {"Closed": "X", "M": "A", "B": "A", "A": "D", "F": "G", "E": "C", "L": "H", "U": "F", "W": "F", "S": "B",
               "Ch": "B", "O": "E"}
LEVELS = (0, 0.5, 1)
COLORS = [(r, g, b) for r in LEVELS for g in LEVELS for b in LEVELS][1:]

# A group that shows the one of its layers that the file names.
CANVAS = """<canvas version="1.2" width="8" height="8" xres="2834" yres="2834" view-box="-1 1 1 -1" fps="24"
 begin-time="0f" end-time="{last}f" bgcolor="0 0 0 1">
 <layer type="switch" active="true" version="0.0"><param name="canvas"><canvas>{layers}</canvas></param>
 <param name="layer_name"><animated_file type="string"><filename><string>{file}</string></filename></animated_file>
 </param></layer></canvas>"""
FILLED = """<layer type="SolidColor" active="true" version="0.1" desc="{name}"><param name="color"><color>
 <r>{color[0]}</r><g>{color[1]}</g><b>{color[2]}</b><a>1</a></color></param></layer>"""


class Synfig(unittest.TestCase):
    def shown(self, kind, table):
        """The name of the mouth that each frame shows."""
        with tempfile.TemporaryDirectory() as folder:
            sheet, mouths, scene = (os.path.join(folder, name) for name in ("sheet.csv", "mouths." + kind, "scene.sif"))
            with open(sheet, "w", encoding="utf-8") as file:
                file.write("Frame,Shape\n" + "".join(f"{frame},{shape}\n" for frame, shape in enumerate(SHEET)))
            subprocess.run([CONVERTER, "--rate", "24", sheet, mouths], check=True, capture_output=True)
            names = sorted(set(table.values()))
            layers = "".join(FILLED.format(name=name, color=color) for name, color in zip(names, COLORS))
            with open(scene, "w", encoding="utf-8") as file:
                file.write(CANVAS.format(last=len(SHEET) - 1, layers=layers, file=mouths))
            subprocess.run(["synfig", scene, "-t", "png", "-o", os.path.join(folder, "frame.png")], check=True,
                           capture_output=True)
            shown = []
            for name in sorted(name for name in os.listdir(folder) if name.startswith("frame.")):
                with Image.open(os.path.join(folder, name)) as picture:
                    pixel = picture.convert("RGB").getpixel((4, 4))
                color = tuple(0 if value < 60 else 1 if value > 230 else 0.5 for value in pixel)
                shown.append(names[COLORS.index(color)] if color in COLORS[:len(names)] else "nothing")
            return shown

    def test_mouths(self):
        for kind, table in (("tsv", CUE_LETTERS), ("pgo", SWITCH_NAMES)):
            with self.subTest(kind):
                # Synfig shows the mouth at rest on each word's last frame already, in any program's files.
                self.assertEqual(self.shown(kind, table)[:-1], [table[shape] for shape in SHEET[:-1]])


if __name__ == "__main__":
    unittest.main(verbosity=2)
