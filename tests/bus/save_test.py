"""Saves that are killed, and saves whose calls to the system fail: the old sheet or the new one stands there whole.

Run under dbus-run-session: save_test.py <session driver> <the library of faulty calls> [--every-call]. Without that
each kind of save has only some of its calls killed.
"""

import errno
import os
import subprocess
import sys
import time
import unittest
import unittest.mock

EVERY_CALL = "--every-call" in sys.argv and not sys.argv.remove("--every-call")
LIBRARY = sys.argv.pop()

from tool_session import Session, sheet_file  # noqa: E402  takes the driver from the arguments

OLD = "the old sheet\n" * 40
# "lay KIND" prepares the folder for a save; "keep N" notes what the folder holds after it.
SCRIPT = """
cd "$(dirname "$0")"
if [ $1 = keep ]; then
  mkdir -p "kept/$2"
  cp -L sheets/frog.exp "kept/$2/held"
  ls -A sheets far | grep -v -e ':$' -e '^$' -e frog.exp -e real.exp > "kept/$2/others"
  mv "Copy of "* "kept/$2/"
  exit 0
fi
rm -rf sheets far
mkdir sheets far
case $2 in
  old) cp -a old sheets/frog.exp;;
  link) cp -a old far/real.exp; ln -s ../far/real.exp sheets/frog.exp;;
esac
"""
ERRORS = [errno.ENOSPC, errno.EIO, errno.EACCES, errno.EDQUOT]
LASTING = 1000 + errno.EIO  # a disk that fails from that call on
NO_NAMELESS, REFUSES, RENAME = "FAULTY_NO_NAMELESS", "FAULTY_REFUSES", "FAULTY_RENAME"


class Save(Session):
    # Which file there is before, and what the file system says.
    kinds = {
        "replaced": ("old", []), "new": (None, []), "behind a link": ("link", []),
        "replaced where files need names": ("old", [NO_NAMELESS]), "new where files need names": (None, [NO_NAMELESS]),
        "in a folder that can't be written": ("old", [REFUSES]),
        "somebody else's in a folder for all": ("old", [RENAME]),
    }
    def begin(self, **host):
        super().begin(**host)
        self.sheets = os.path.join(self.folder.name, "sheets")
        with open(os.path.join(self.folder.name, "old"), "w", newline="") as old:
            old.write(OLD)
        os.setxattr(old.name, "user.note", b"keep me")
        self.script = os.path.join(self.folder.name, "script")
        with open(self.script, "w") as script:
            script.write(SCRIPT)
        self.target = os.path.join(self.sheets, "frog.exp")

    def lay(self, before):
        """The folder as it is before a save."""
        subprocess.run(["sh", self.script, "lay", str(before)], check=True)

    def state(self):
        """What the sheet's file holds, and what else stands in its folder and in the user's documents."""
        try:
            with open(self.target, newline="") as file:
                held = file.read()
        except FileNotFoundError:
            held = None
        others = [name for name in os.listdir(os.path.dirname(os.path.realpath(self.target)))
                  if name not in ("frog.exp", "real.exp")]
        copies = [name for name in os.listdir(self.folder.name) if name.startswith("Copy of ")]
        return held, others, copies

    def run_save(self, conditions, *steps):
        environment = {"LD_PRELOAD": LIBRARY, "FAULTY_FOLDER": self.folder.name, "ASAN_OPTIONS": "verify_asan_link_order=0"}
        environment.update({name: self.sheets for name in conditions})
        self.host.calls.clear()  # it counts them at each call
        with unittest.mock.patch.dict(os.environ, environment):
            return self.run_tool("shown", f"wave={self.sound}", "cell=2,1,A ", "cell=3,2,hello, frog", "row=4", *steps)

    def calls_of(self, before, conditions):
        self.lay(before)
        status, seen, reported = self.run_save(conditions, "arm=0,0", f"save={self.target}", "disarm", "held", "quit")
        self.assertEqual(status, 0, reported)
        self.new = sheet_file(seen)
        self.assertEqual(self.state(), (self.new, [], []))
        return int(next(line for line in seen if line.startswith("calls ")).split()[1])

    def test_killed(self):
        for kind, (before, conditions) in self.kinds.items():
            calls = self.calls_of(before, conditions)
            self.assertGreater(calls, 10)
            points = [(call, when) for call in range(1, calls + 1) for when in (-1, -2)]
            # The last calls put the new file in the old one's place.
            for call, when in points if EVERY_CALL else points[:-12:len(points) // 3] + points[-12::2]:
                with self.subTest(kind=kind, call=call, of=calls, after=when == -2):
                    self.lay(before)
                    status, _, reported = self.run_save(conditions, f"arm={call},{when}", f"save={self.target}",
                                                        "wait")
                    self.assertEqual(status, -9, reported)
                    self.check_killed(before, conditions)

    def check_killed(self, before, conditions):
        # What the kill can't reach may still be under way.
        end = time.monotonic() + 5
        held, others, copies = self.state()
        while others and NO_NAMELESS not in conditions and time.monotonic() < end:
            held, others, copies = self.state()
        if NO_NAMELESS not in conditions:
            self.assertEqual(others, [])
        for name in others:
            self.assertTrue(name.startswith(".saving-"))
        for name in copies:
            with open(os.path.join(self.folder.name, name), newline="") as file:
                self.assertEqual(file.read(), OLD)
            os.unlink(os.path.join(self.folder.name, name))
        if held not in (OLD if before else None, self.new):
            self.assertTrue(copies, "torn, and no copy of the old file")
            self.assertTrue({REFUSES, RENAME} & set(conditions))
        elif before:
            self.assertEqual(os.getxattr(self.target, "user.note"), b"keep me")
        if others:  # goes with the next save
            status, _, reported = self.run_save([], f"save={self.target}", "quit")
            self.assertEqual(self.state(), (self.new, [], []), reported)

    def test_with_a_call_that_fails(self):
        for kind, (before, conditions) in self.kinds.items():
            calls = self.calls_of(before, conditions)
            for error in ERRORS + [LASTING] * (REFUSES in conditions):
                every = EVERY_CALL or error == LASTING
                at = range(1, calls + 1) if every else range(1 + ERRORS.index(error), calls + 1, 4)
                self.begin_anew()
                steps = [[f"shell=sh {self.script} lay {before}", f"arm={call},{error}", f"save={self.target}",
                          "disarm", f"shell=sh {self.script} keep {call} 2> /dev/null"] for call in at]
                status, seen, reported = self.run_save(conditions, *sum(steps, []), "held", "quit")
                self.assertEqual(status, 0, reported)
                self.new = sheet_file(seen)
                told = "\n".join(seen).split("saved\n")
                for call, words in zip(at, told):
                    with self.subTest(kind=kind, call=call, of=calls, error=error):
                        self.check_failed(before, conditions, os.path.join(self.folder.name, "kept", str(call)), words)

    def check_failed(self, before, conditions, folder, words):
        def held(name):
            with open(os.path.join(folder, name), newline="") as file:
                return file.read()
        copies = [name for name in os.listdir(folder) if name.startswith("Copy of ")]
        if RENAME in conditions:  # where the removal is what fails, the next save does it
            self.assertRegex(held("others"), r"^(\.saving-.*\n)?$")
        else:
            self.assertEqual(held("others"), "")
        if "message" not in words:
            self.assertEqual(held("held"), self.new)
        elif "is spoilt" in words:
            self.assertEqual(held(copies[0]), OLD)
            self.assertIn(copies[0], words)
        elif before:
            self.assertEqual(held("held"), OLD, words)
        else:
            self.assertFalse(os.path.exists(os.path.join(folder, "held")), words)


if __name__ == "__main__":
    unittest.main(verbosity=2)
