"""The tool with a user made of words, beside a host that writes down what it is asked.

The test file that uses this takes the session driver as its first argument and runs under dbus-run-session.
"""

import os
import subprocess
import sys
import tempfile
import unittest
import wave

import dbus
from dbus.mainloop.glib import DBusGMainLoop

from logging_host import LoggingHost, turn_until

DRIVER = sys.argv.pop(1)
# Seconds after which the tool counts as hanging: planes of 64 MiB take a minute on a machine that is busy otherwise.
PATIENCE = 240


def sheet_file(seen):
    """The file that the sheet told last by the driver must give, line by line as docs/files.md has it."""
    begins = max(i for i, line in enumerate(seen) if line.startswith("held rate"))
    held = [line.split(" ", 2)[1:] for line in seen[begins:] if line.startswith("held ")]
    of = lambda what: [text for name, text in held if name == what]
    cells, values = of("cell"), of("value")
    for i in range(0, len(cells), 3):
        cells[i] = cells[i] or str(i // 3)
    number = lambda n: f" {n} "
    lines = ["ExposureSheet02", *of("rate"), *of("sound"), "Reserved", "Reserved", number(len(cells) // 3 + 1),
             number(3), "Reserved", "Reserved", *cells, *["Reserved"] * 4, of("toggle")[0], "Velocity",
             *of("toggle")[1:], number(len(values) // 4), *map(number, values)]
    return "".join(line + "\r\n" for line in lines)


class Session(unittest.TestCase):
    """A host and a folder with a sound, anew for each test."""

    def setUp(self):
        self.begin()

    def tearDown(self):
        self.end()

    def begin(self, **host):
        self.bus = dbus.SessionBus(private=True, mainloop=DBusGMainLoop())
        self.bus.set_exit_on_disconnect(False)
        self.host = LoggingHost(self.bus, **host)
        self.folder = tempfile.TemporaryDirectory()
        self.sound = os.path.join(self.folder.name, "half a second.wav")
        with wave.open(self.sound, "wb") as sound:  # 6 frames at 12 fps
            sound.setnchannels(1)
            sound.setsampwidth(1)
            sound.setframerate(8000)
            sound.writeframes(bytes(4000))

    def end(self):
        self.bus.close()
        self.folder.cleanup()

    def begin_anew(self, **host):
        self.end()
        self.begin(**host)

    def rescued(self):
        """The files that sheets were rescued to."""
        return [os.path.join(self.folder.name, name) for name in sorted(os.listdir(self.folder.name))
                if name.startswith("Rescued ")]

    def check_rescued(self, seen, reported):
        """There is one rescued file; the report names it, and it holds what the sheet held."""
        files = self.rescued()
        self.assertEqual(len(files), 1, reported)
        self.assertIn(files[0], reported)
        with open(files[0], newline="") as file:
            self.assertEqual(file.read(), sheet_file(seen))

    def run_tool(self, *steps, **variables):
        """Plays the steps with the tool; gives its status, what its user saw and what it reported."""
        environment = dict(os.environ, HOME=self.folder.name, QT_QPA_PLATFORM="offscreen", SDL_AUDIODRIVER="dummy",
                           **variables)
        self.tool = tool = subprocess.Popen([DRIVER, *steps], env=environment, stdout=subprocess.PIPE,
                                            stderr=subprocess.PIPE, text=True)
        if not turn_until(lambda: tool.poll() is not None, PATIENCE):
            tool.kill()
            # By name: an argument may be a plane of 64 MiB.
            self.fail(f"the tool hangs after {[call[0] for call in self.host.calls[-3:]]}")
        seen, reported = tool.communicate()
        return tool.returncode, seen.splitlines(), reported
