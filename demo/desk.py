"""A desk to work at: a virtual display with a window manager, a mouse, a keyboard, and eyes.

Nothing here knows the program. Waiting is always for something to be seen, with a time limit, never for a while
to pass: the machine may be slow.
"""

import os
import re
import signal
import struct
import subprocess
import time

from PIL import Image, ImageChops

SCREEN_WIDTH, SCREEN_HEIGHT = 1920, 1200
LIMIT_SECONDS = 20
UMLAUT_KEYS = {"ä": "adiaeresis", "ö": "odiaeresis", "ü": "udiaeresis", "Ä": "Adiaeresis", "Ö": "Odiaeresis",
               "Ü": "Udiaeresis", "ß": "ssharp"}
STILL_SECONDS, STILL_LOOKS = 0.08, 4


class TourError(Exception):
    """Something that should have been seen by now hasn't."""


def wait_for(what, look, seconds=LIMIT_SECONDS):
    """Returns the first true value that look() gives; raises TourError naming what was waited for."""
    end = time.monotonic() + seconds
    while True:
        found = look()
        if found:
            return found
        if time.monotonic() > end:
            raise TourError(f"waited {seconds} seconds for {what}")
        time.sleep(0.01)


class Desk:
    """The display. Use it in a with statement, so that its processes end with it."""

    def __init__(self, folder):
        """folder: an existing folder for the screen's memory and for the users' homes."""
        self.folder = folder
        self.processes = []
        # The processes of the display and of the windows that were seen.
        self.owners = set()
        self.screen = None

    def __enter__(self):
        read_end, write_end = os.pipe()
        screen = f"{SCREEN_WIDTH}x{SCREEN_HEIGHT}x24"
        self.start(["Xvfb", "-displayfd", str(write_end), "-screen", "0", screen, "-fbdir", self.folder,
                    "-nolisten", "tcp", "-noreset"], os.environ, pass_fds=[write_end], stderr=subprocess.DEVNULL)
        os.close(write_end)
        with os.fdopen(read_end) as numbers:
            number = numbers.readline().strip()
        if not number:
            raise TourError("the virtual display didn't come up")
        self.screen = os.open(os.path.join(self.folder, "Xvfb_screen0"), os.O_RDONLY)
        os.environ["DISPLAY"] = ":" + number
        os.environ.pop("WAYLAND_DISPLAY", None)
        self.start(["openbox", "--sm-disable"], os.environ, stdout=subprocess.DEVNULL,
                   stderr=subprocess.DEVNULL)
        wait_for("the window manager", lambda: "window id" in output("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"))
        # A keyboard that has letters beyond ASCII on keys of their own.
        subprocess.run(["setxkbmap", "de"], check=True)
        return self

    def __exit__(self, *_):
        for process in reversed(self.processes):
            end(process)
        if self.screen is not None:
            os.close(self.screen)

    def start(self, command, environment, **options):
        """Starts a process that ends with the desk at the latest."""
        process = subprocess.Popen(command, env=environment, stdin=subprocess.DEVNULL, start_new_session=True,
                                   **options)
        self.processes.append(process)
        self.owners.add(process.pid)
        return process

    # Eyes.

    def see(self, area=None):
        """The screen's pixels as a picture; area is (left, top, right, bottom)."""
        left, top, right, bottom = area or (0, 0, SCREEN_WIDTH, SCREEN_HEIGHT)
        left, top = max(left, 0), max(top, 0)
        right, bottom = min(right, SCREEN_WIDTH), min(bottom, SCREEN_HEIGHT)
        # An X window dump, its header in big-endian words: its size first, the row's bytes in word 12, the
        # number of colour entries, 12 bytes each, in word 19.
        words = struct.unpack(">25I", os.pread(self.screen, 100, 0))
        row_bytes = words[12]
        rows = os.pread(self.screen, (bottom - top) * row_bytes, words[0] + 12 * words[19] + top * row_bytes)
        strip = Image.frombuffer("RGB", (SCREEN_WIDTH, bottom - top), rows, "raw", "BGRX", row_bytes, 1)
        return strip.crop((left, 0, right, bottom - top))

    def settle(self, area=None, seconds=LIMIT_SECONDS):
        """Waits until nothing moves and nobody is at work, and returns what is then seen. A caret's slow blinking
        counts as still."""
        limit = time.monotonic() + seconds
        last = self.see(area)
        since, looks = time.monotonic(), 0
        while time.monotonic() - since < STILL_SECONDS or looks < STILL_LOOKS:
            time.sleep(0.02)
            looks += 1
            now = self.see(area)
            if differs(now, last) or any(at_work(process_id) for process_id in self.owners):
                last = now
                since, looks = time.monotonic(), 0
            if time.monotonic() > limit:
                break
        return last

    def changes(self, what, act, area=None):
        """Does act(), waits for the area to look different and then to be still; returns the new look."""
        before = self.see(area)
        act()
        wait_for(f"{what} to change what is seen", lambda: differs(before, self.see(area)))
        return self.settle(area)

    # Hands.

    def point(self, x, y):
        xdotool("mousemove", x, y)

    def click(self, x, y, button=1):
        xdotool("mousemove", x, y, "click", button)

    def double_click(self, x, y):
        xdotool("mousemove", x, y, "click", "--repeat", 2, "--delay", 60, 1)

    def drag(self, points, pause=0.01):
        """Presses at the first point, moves through the others and lets go at the last."""
        (x, y), *others = points
        xdotool("mousemove", x, y, "mousedown", 1)
        for x, y in others:
            xdotool("mousemove", x, y, "sleep", pause)
        xdotool("mouseup", 1)

    def keys(self, *names):
        xdotool("key", "--delay", 12, *names)

    def type(self, text):
        """Letters beyond ASCII are pressed by the names of their keys: the tool's own way of typing them now and
        then takes them for broken ones."""
        for part in re.split("([äöüÄÖÜß])", text):
            if part in UMLAUT_KEYS:
                self.keys(UMLAUT_KEYS[part])
            elif part:
                xdotool("type", "--delay", 8, part)

    # Windows.

    def find(self, title):
        """The ids of the shown windows whose title fits the pattern, the last one first."""
        return output("xdotool", "search", "--onlyvisible", "--name", title).split()[::-1]

    def window(self, title, seconds=LIMIT_SECONDS):
        found = wait_for(f'a window with the title "{title}"', lambda: self.find(title), seconds)
        return Window(self, found[0])

    def active_window(self):
        """The id of the window that has the focus."""
        return output("xdotool", "getactivewindow").strip()

    def confirm(self, window):
        """Presses Return until the dialog has closed: a list of completions may take the first one for itself."""
        for _ in range(2):
            self.keys("Return")
            try:
                return self.gone(window, LIMIT_SECONDS / 4)
            except TourError:
                window.front()
        self.keys("Return")
        return self.gone(window)

    def gone(self, window, seconds=LIMIT_SECONDS):
        """Waits until that window isn't shown any more."""
        wait_for("a window to close", lambda: not shown(window.id), seconds)


class Window:
    """A window on the desk, by its id. Places in it are pixels from its inner left top corner."""

    def __init__(self, desk, window_id):
        self.desk = desk
        self.id = window_id
        wait_for("the window to be drawn", lambda: shown(self.id))
        desk.owners.add(self.process_id())

    def title(self):
        return output("xdotool", "getwindowname", self.id).rstrip("\n")

    def process_id(self):
        return int(output("xdotool", "getwindowpid", self.id) or 0)

    def geometry(self):
        """(left, top, width, height) on the screen, without the frame."""
        facts = {}
        for line in output("xwininfo", "-id", self.id).splitlines():
            name, _, value = line.strip().partition(":")
            facts[name] = value.strip()
        try:
            return tuple(int(facts[name]) for name in
                         ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height"))
        except KeyError:
            raise TourError(f"window {self.id} has gone") from None

    def area(self):
        left, top, width, height = self.geometry()
        return left, top, left + width, top + height

    def framed_area(self):
        """With the title bar and the frame that the window manager draws."""
        left, top, right, bottom = self.area()
        facts = output("xprop", "-id", self.id, "_NET_FRAME_EXTENTS").rpartition("=")[2]
        edges = [int(edge) for edge in facts.split(",")] if "," in facts else [0, 0, 0, 0]
        return (max(left - edges[0], 0), max(top - edges[2], 0), min(right + edges[1], SCREEN_WIDTH),
                min(bottom + edges[3], SCREEN_HEIGHT))

    def front(self):
        """Gives it the focus."""
        def active():
            if self.desk.active_window() == self.id:
                return True
            output("xdotool", "windowactivate", self.id)
            return False

        wait_for("the window to come to the front", active)

    def move(self, left, top):
        """Puts the frame's corner there and waits until it stands there."""
        before = self.geometry()[:2]
        xdotool("windowmove", self.id, left, top)
        wait_for("the window to move", lambda: self.geometry()[:2] != before or shown_at(self, left, top))
        self.desk.settle()

    def resize(self, width, height):
        xdotool("windowsize", self.id, width, height)
        wait_for("the window's new size", lambda: self.geometry()[2:] == (width, height))
        self.desk.settle()

    def close(self):
        """By the window frame's close button, as the window manager does it."""
        self.front()
        xdotool("key", "alt+F4")

    def see(self):
        return self.desk.see(self.area())


def at_work(process_id):
    """Whether the process runs, or waits only for its turn on the processor."""
    try:
        with open(f"/proc/{process_id}/stat", encoding="ascii", errors="replace") as file:
            return file.read().rpartition(")")[2].split()[0] in "RD"
    except OSError:
        return False


def shown(window_id):
    return "IsViewable" in output("xwininfo", "-id", window_id)


def shown_at(window, left, top):
    x, y, _, _ = window.geometry()
    return 0 <= x - left < 40 and 0 <= y - top < 60


def differs(one, other):
    return one.size != other.size or ImageChops.difference(one, other).getbbox() is not None


def output(*command):
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True,
                          check=False).stdout


def xdotool(*words):
    words = ["xdotool", *map(str, words)]
    if subprocess.run(words, stdout=subprocess.DEVNULL, check=False).returncode != 0:
        raise TourError("this couldn't be done: " + " ".join(words))


def end(process):
    """Ends a process of ours and what it started."""
    if process.poll() is None:
        try:
            os.killpg(process.pid, signal.SIGTERM)
            process.wait(5)
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, signal.SIGKILL)
            process.wait(5)
        except ProcessLookupError:
            pass
