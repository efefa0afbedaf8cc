"""The reader that docs/files.md gives as an example, as it stands there, over real sheets.

Run as files_test.py <the tree's folder>.
"""

import os
import re
import subprocess
import sys
import unittest

HOUSE = sys.argv.pop(1)


def read(sheet):
    with open(os.path.join(HOUSE, "docs", "files.md"), encoding="utf-8") as file:
        reader = re.search(r"```python\n(.*?)```", file.read(), re.DOTALL).group(1)
    run = subprocess.run([sys.executable, "-X", "utf8", "-c", reader, os.path.join(HOUSE, sheet)], capture_output=True,
                         encoding="utf-8", check=True)
    return run.stdout.splitlines()


class ReaderOfTheDocuments(unittest.TestCase):
    def test_reads_rows_and_curves(self):
        lines = read("samples/frogs.exp")
        self.assertEqual(lines[:4], ["71 frames at 24 a second, sound frogs.wav", '0\tF\t"Five"', "2\tA\t", "4\tI\t"])
        self.assertEqual(read("tests/sheet/golden/filled.exp")[1:], [
            '0\tA\tHe says "frog", then, quietly, leaves', "2\tClosed\tlips, shut 声", "highest: 64 63 32 255"])
        self.assertEqual(read("tests/sheet/golden/empty.exp")[-1], "highest: no curves")

    def test_reads_an_older_edition_in_the_older_code_page(self):
        self.assertEqual(read("tests/sheet/golden/older.exp")[:2], [
            "2 frames at 12 a second, sound C:\\Töne\\frosch.wav", "0\tÖ\tgrößer"])


if __name__ == "__main__":
    unittest.main()
