"""What Synfig's own readers make of the files that the converter writes: a picture of one colour for each mouth, and
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
# One mouth a frame for a little more than a second; an empty text goes on with the one before.
SHEET = ["Closed", "", "M", "A", "", "", "F", "F", "E", "", "", "", "", "", "L", "U", "", "W", "", "S", "O", "",
         "Ch", "", "B", "", "", "Closed", ""]
SWITCH_NAMES = {"Closed": "rest", "M": "MBP", "B": "MBP", "A": "AI", "F": "FV", "E": "E", "L": "L", "U": "U", "W": "WQ",
                "S": "etc", "Ch": "etc", "O": "O"}
CUE_LETTERS = {"Closed": "X", "M": "A", "B": "A", "A": "D", "F": "G", "E": "C", "L": "H", "U": "F", "W": "F", "S": "B",
               "Ch": "B", "O": "E"}
LEVELS = (0, 0.5, 1)
COLORS = [(r, g, b) for r in LEVELS for g in LEVELS for b in LEVELS][1:]

CANVAS = """<canvas version="1.2" width="8" height="8" xres="2834" yres="2834" view-box="-1 1 1 -1" fps="{rate}"
 begin-time="0f" end-time="{last}f" bgcolor="0 0 0 1">{layer}</canvas>"""
# A group that shows the one of its layers that the file names.
SWITCH = """<layer type="switch" active="true" version="0.0"><param name="canvas"><canvas>{layers}</canvas></param>
 <param name="layer_name"><animated_file type="string"><filename><string>{file}</string></filename></animated_file>
 </param></layer>"""
FILLED = """<layer type="SolidColor" active="true" version="0.1" desc="{name}"><param name="color"><color>
 <r>{color[0]}</r><g>{color[1]}</g><b>{color[2]}</b><a>1</a></color></param></layer>"""
# A list of pictures that have the names of the mouths.
IMPORT = """<layer type="import" active="true" version="0.1">
 <param name="tl"><vector><x>-1</x><y>1</y></vector></param><param name="br"><vector><x>1</x><y>-1</y></vector></param>
 <param name="filename"><string>{file}</string></param></layer>"""


class Synfig(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def path(self, name):
        return os.path.join(self.folder, name)

    def written(self, ending, kind):
        with open(self.path("sheet.csv"), "w", encoding="utf-8") as file:
            file.write("Frame,Shape\n" + "".join(f"{frame},{shape}\n" for frame, shape in enumerate(SHEET)))
        subprocess.run([CONVERTER, "--rate", "24", "--to", kind, self.path("sheet.csv"), self.path("mouths." + ending)],
                       check=True, capture_output=True)
        return self.path("mouths." + ending)

    def rendered(self, names, layer, rate):
        """The name of the mouth that each frame shows."""
        with open(self.path("scene.sif"), "w", encoding="utf-8") as file:
            file.write(CANVAS.format(rate=rate, last=len(SHEET) - 1, layer=layer))
        subprocess.run(["synfig", self.path("scene.sif"), "-t", "png", "-o", self.path("frame.png")], check=True,
                       capture_output=True)
        shown = []
        for name in sorted(name for name in os.listdir(self.folder) if name.startswith("frame.")):
            with Image.open(self.path(name)) as picture:
                pixel = picture.convert("RGB").getpixel((4, 4))
            color = tuple(0 if value < 60 else 1 if value > 230 else 0.5 for value in pixel)
            shown.append(names[COLORS.index(color)] if color in COLORS[:len(names)] else "nothing")
        return shown

    def by_switch(self, ending, table):
        names = sorted(set(table.values()))
        layers = "".join(FILLED.format(name=name, color=color) for name, color in zip(names, COLORS))
        return self.rendered(names, SWITCH.format(layers=layers, file=self.written(ending, ending)), 24)

    @staticmethod
    def expected(table):
        shown = []
        for shape in SHEET:
            shown.append(table[shape] if shape else shown[-1])
        return shown

    def test_cues(self):
        self.assertEqual(self.by_switch("tsv", CUE_LETTERS), self.expected(CUE_LETTERS))

    def test_papagayo(self):
        # Synfig shows the mouth at rest on each word's last frame already, in any program's files.
        self.assertEqual(self.by_switch("pgo", SWITCH_NAMES)[:-1], self.expected(SWITCH_NAMES)[:-1])

    def test_switch_data(self):
        names = sorted(set(SWITCH_NAMES.values()))
        for name, color in zip(names, COLORS):
            Image.new("RGB", (8, 8), tuple(round(255 * level) for level in color)).save(self.path(name + ".jpg"), quality=100)
        # It knows switch data among its lists of pictures, which run at 15 frames a second.
        layer = IMPORT.format(file=self.written("lst", "dat"))
        self.assertEqual(self.rendered(names, layer, 15), self.expected(SWITCH_NAMES))


if __name__ == "__main__":
    unittest.main(verbosity=2)
