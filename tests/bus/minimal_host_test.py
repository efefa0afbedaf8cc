"""The host that the documents give as an example, as it stands there, beside the tool.

Run under dbus-run-session: minimal_host_test.py <session driver> <document>.
"""

import os
import re
import subprocess
import sys
import tempfile
import unittest

import dbus

from logging_host import GETTERS, NAME, PATH, turn_until

DRIVER, DOCUMENT = sys.argv[1:3]
del sys.argv[1:3]
PLANE = 320 * 240


def program():
    with open(DOCUMENT, encoding="utf-8") as file:
        return re.search(r"```python\n(.*?)```", file.read(), re.DOTALL).group(1)


class MinimalHost(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.host = subprocess.Popen([sys.executable, "-c", program()], cwd=self.folder.name,
                                     stdout=subprocess.DEVNULL)
        self.bus = dbus.SessionBus()
        self.assertTrue(turn_until(lambda: self.bus.name_has_owner(NAME), 30))

    def tearDown(self):
        self.host.kill()
        self.host.wait()
        self.folder.cleanup()

    def call(self, member, signature="", *arguments):
        return self.bus.call_blocking(NAME, PATH, NAME, member, signature, arguments, byte_arrays=True)

    def test_a_whole_session(self):
        environment = dict(os.environ, HOME=self.folder.name, QT_QPA_PLATFORM="offscreen", SDL_AUDIODRIVER="dummy")
        steps = ["shown", "rate=24", "frame-painter", "length=4", "stamp=2", "shoot", "done", "quit"]
        tool = subprocess.run([DRIVER, *steps], env=environment, capture_output=True, text=True, timeout=60, check=False)
        self.assertEqual((tool.returncode, tool.stderr.count("failed")), (0, 0), tool.stderr)
        self.assertEqual((self.call("Vel_GetFrameRate"), self.call("vel_GetTotalFrames")), ("24", 4))
        # The second of the grey frames was put on the roll's third; the others are blank.
        for frame, grey in [(0, 255), (2, 235), (3, 255)]:
            self.call("Vel_GotoFrameAdv", "ii", frame, 3)
            for getter in GETTERS:
                self.assertEqual(self.call(getter), bytes([grey]) * PLANE)

    def test_refuses_in_words(self):
        with self.assertRaisesRegex(dbus.DBusException, "5 bytes where a plane has 76800"):
            self.call("vel_SetRbuffer", "ay", dbus.ByteArray(b"short"))


if __name__ == "__main__":
    unittest.main(verbosity=2)
