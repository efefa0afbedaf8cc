"""The program as a user has it before them: where its controls stand, what its menus and dialogs take."""

import os

from desk import TourError, Window, wait_for

HOUSE = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
BUILD = os.path.join(HOUSE, "build")

MAIN_TITLE = r"^Exposure Sheet 2\.3:"
HOST_TITLE = "^Vellumark"
MESSAGE_TITLE = "^Exposure Sheet$"

# Where the main window's controls have their middles, in pixels of its client area.
CONTROLS = {
    "lock": (15, 16), "stop": (147, 15), "play": (173, 15), "play frame": (205, 15), "zoom in": (237, 15),
    "zoom out": (263, 15), "draw": (319, 15), "undo": (345, 15), "clear": (371, 15),
    "yellow": (391, 9), "red": (391, 21), "green": (403, 9), "blue": (403, 21),
    "show yellow": (140, 156), "show red": (150, 156), "show green": (160, 156), "show blue": (170, 156),
}
# Left, top, right, bottom; what follows the window's size has a right or bottom counted from there.
PREVIEW = (4, 32, 133, 161)
WAVE = (136, 32, -4, 96)
TRACKS = (136, 97, -4, 161)
ZOOM_READOUT = (278, 8, 301, 25)
CHANNEL_NAME = (480, 8, 523, 23)
LIST = (6, 166, 110, -4)
GRID = (136, 180, -4, -2)
SCROLL_BAR = (136, 162, -4, 179)

# The menus by the key that opens them, their items from the top.
MENUS = {
    "alt+f": ["Open exposure sheet...", "Save exposure sheet...", "Open Wave file...", "Show sample info...",
              "Record audio...", "Quit"],
    "alt+t": ["10 fps", "12 fps", "15 fps", "24 fps", "25 fps", "30 fps", "Set FPS..."],
    "alt+m": ["Sketch", "Cartoon"],
    "alt+c": ["Frame painter..."],
}
SHAPES = ["None", "A", "B", "Ch", "Closed", "D", "E", "F", "G", "I", "K", "L", "M", "N", "O", "P", "R", "S", "T",
          "Th", "U", "V", "W"]

DESIGN_WIDTH, DESIGN_HEIGHT = 654, 395


def environment(home, **more):
    """What a user who has just come to this machine has: a home of their own, and nothing in it."""
    own = {"HOME": home, "XDG_CONFIG_HOME": home + "/config", "XDG_DATA_HOME": home + "/data",
           "XDG_CACHE_HOME": home + "/cache", "XDG_RUNTIME_DIR": home + "/runtime", "LANG": "C.UTF-8",
           "PATH": os.environ["PATH"], "DISPLAY": os.environ["DISPLAY"], "SDL_AUDIODRIVER": "dummy",
           "DBUS_SESSION_BUS_ADDRESS": "disabled:"}
    for name in ("config", "data", "cache", "runtime"):
        os.makedirs(os.path.join(home, name), mode=0o700, exist_ok=True)
    return {**own, **more}


class Sheet:
    """The running program: its main window and its host's."""

    def __init__(self, desk, process, scale=1, host=None):
        """process: what ends when the program has ended. host: another one than the stand-in."""
        self.desk = desk
        self.process = process
        self.scale = scale
        self.list_lines = None
        self.main = desk.window(MAIN_TITLE)
        self.host = host or Host(desk, scale)
        # The design's client area stands below the menu bar, whose height is the toolkit's choice.
        self.menu_height = self.main.geometry()[3] - DESIGN_HEIGHT * scale
        self.main.front()
        self.desk.settle()

    # Places.

    def at(self, x, y):
        """The screen's point of a place in the client area."""
        left, top, _, _ = self.main.geometry()
        return left + int(x * self.scale), top + self.menu_height + int(y * self.scale)

    def area(self, place):
        """The screen's area of one of the places above."""
        left, top, width, height = self.main.geometry()
        room = (width // self.scale, (height - self.menu_height) // self.scale)
        x1, y1, x2, y2 = [edge if edge >= 0 else room[i % 2] + edge for i, edge in enumerate(place)]
        return (left + x1 * self.scale, top + self.menu_height + y1 * self.scale,
                left + x2 * self.scale, top + self.menu_height + y2 * self.scale)

    def see(self, place=None):
        return self.desk.see(self.area(place)) if place else self.main.see()

    def resize(self, width, height):
        """To that client area."""
        self.main.resize(width * self.scale, height * self.scale + self.menu_height)

    # Hands.

    def press(self, control):
        self.desk.click(*self.at(*CONTROLS[control]))

    def open_menu(self, item):
        """Opens the item's menu and goes down to it, without choosing it yet."""
        key, items = next((key, items) for key, items in MENUS.items() if item in items)
        self.desk.changes(f"the menu of {item}", lambda: self.desk.keys(key))
        steps = items.index(item)
        if steps:
            self.desk.keys(*["Down"] * steps)
            self.desk.settle()

    def choose(self, item):
        self.open_menu(item)
        self.desk.keys("Return")

    def answer(self, key, look=None):
        """Answers the message box before us by the key of one of its buttons; returns what it looked like."""
        box = self.desk.window(MESSAGE_TITLE)
        picture = self.desk.settle(box.area())
        if look:
            look(box)
        box.front()
        self.desk.keys(key)
        self.desk.gone(box)
        return picture

    def file_dialog(self, title, path, look=None):
        """Types a path into the dialog before us."""
        dialog = self.desk.window(title)
        self.desk.settle(dialog.area())
        dialog.front()
        self.desk.keys("ctrl+a")
        self.desk.type(path)
        picture = self.desk.settle(dialog.area())
        if look:
            look(dialog)
        self.desk.confirm(dialog)
        return picture

    def open_wave(self, path, look=None):
        self.choose("Open Wave file...")
        self.file_dialog("^Select a wave file$", path, look)

    def open_sheet(self, path):
        self.choose("Open exposure sheet...")
        self.file_dialog("^Select an exposure sheet$", path)
        self.desk.settle()

    def save_sheet(self, path, look=None):
        self.choose("Save exposure sheet...")
        self.file_dialog("^Select an exposure sheet$", path, look)
        wait_for(f"{path} to be saved", lambda: os.path.exists(path))
        self.desk.settle()

    def wait_title(self, text):
        wait_for(f'a title with "{text}"', lambda: text in self.main.title())
        self.desk.settle()
        return self.main.title()

    # The sheet's rows.

    def row_place(self, row):
        """The middle of a shown row's Frame cell, for row 1 at the top of the grid."""
        return 150, GRID[1] + 21 + 19 * (row - 1) + 10

    def click_row(self, row, column=0):
        x, y = self.row_place(row)
        self.desk.click(*self.at((x, x + 62, x + 150)[column], y))

    def go_home(self):
        """To row 1, whatever had the focus and wherever the grid was scrolled to."""
        self.click_row(2)
        self.desk.keys("Home")
        self.desk.settle()

    def pick(self, shape):
        """Clicks a shape in the list, which must stand there whole."""
        first, last = self.list_lines or self.find_list_lines()
        middle = first + (last - first) * SHAPES.index(shape) / (len(SHAPES) - 1)
        self.desk.click(*self.at(LIST[0] + 8, LIST[1] + middle / self.scale))

    def find_list_lines(self):
        """The middles of the first and the last shape, looked for once, before one of them is marked."""
        lines = text_lines(self.see(LIST))
        if len(lines) != len(SHAPES):
            raise TourError(f"the list of shapes shows {len(lines)} lines")
        self.list_lines = lines[0], lines[-1]
        return self.list_lines

    def frame_box(self):
        """The left and right edge of the current frame's box on the waveform, in canvas pixels; None if it isn't
        in sight. The box is what is bright where neither wave nor ticks are."""
        wave = self.see(WAVE)
        y = wave.size[1] - 10 * self.scale
        bright = [x for x in range(wave.size[0]) if sum(wave.getpixel((x, y))) > 3 * 128]
        return (bright[0] / self.scale, (bright[-1] + 1) / self.scale) if bright else None

    def colored(self, color, place=TRACKS):
        """How many pixels there have exactly that colour."""
        return sum(pixel == color for pixel in self.see(place).getdata())

    # The end.

    def quit(self):
        """By the menu; returns the exit status."""
        self.main.front()
        self.choose("Quit")
        return self.ended()

    def leave_frames(self, look=None):
        """Answers the host, which asks about unsaved frames once our windows have gone; returns the exit status."""
        self.desk.gone(self.main)
        other = lambda: [found for found in self.desk.find(HOST_TITLE) if found != self.host.window.id]
        question = Window(self.desk, wait_for("the host's question", other)[0])
        self.desk.settle(question.area())
        if look:
            look(question)
        question.front()
        self.desk.keys("alt+y")
        return self.ended()

    def ended(self):
        wait_for("the program to end", lambda: self.process.poll() is not None)
        return self.process.returncode


class Host:
    """The window of the stand-in for a host, worked from outside like the program."""

    VIEW = (14, 40, 334, 280)
    BUTTONS = {"first": 24, "back": 57, "play": 91, "forward": 124, "last": 157}
    LOOKS = ["Default", "Dark", "Loud"]

    def __init__(self, desk, scale=1):
        self.desk = desk
        self.scale = scale
        self.window = desk.window(HOST_TITLE)
        self.slider_left = None

    def view(self):
        """The current frame as it shows it."""
        left, top, _, _ = self.window.geometry()
        return self.desk.see(tuple(edge * self.scale + (left, top)[i % 2] for i, edge in enumerate(self.VIEW)))

    def press(self, button):
        left, top, _, height = self.window.geometry()
        self.desk.click(left + self.BUTTONS[button] * self.scale, top + height - 49 * self.scale)
        self.desk.settle(self.window.area())

    def learn_slider(self):
        """Goes to the last and to the first frame, to see where the slider's handle then stands."""
        self.press("last")
        right = self.handle()
        self.press("first")
        self.slider_left, self.slider_right = self.handle(), right

    def frame(self, frames):
        """Which of that many frames it stands on, as the slider shows it."""
        way = (self.handle() - self.slider_left) / (self.slider_right - self.slider_left)
        return round(way * (frames - 1))

    def handle(self):
        """The middle of the slider's handle: the brightest below the picture and right of the buttons."""
        picture = self.window.see()
        width, height = picture.size
        pixels = picture.load()
        middle = height - 49 * self.scale
        bright = [x for y in range(middle - 4, middle + 5) for x in range(width // 2, width)
                  if pixels[x, y][0] > 240 and pixels[x, y][1] > 200]
        if not bright:
            raise TourError("the host's slider shows no handle")
        return (min(bright) + max(bright)) / 2

    def choose_look(self, steps):
        """The item that many steps down in the menu "Look"."""
        self.window.front()
        self.desk.changes("the host's menu", lambda: self.desk.keys("alt+l"))
        self.desk.keys(*["Down"] * steps, "Return")
        self.desk.settle()


def text_lines(picture):
    """The middles of the lines of text on a plain ground, from the top."""
    width, height = picture.size
    ground = picture.getpixel((width - 1, height // 2))
    pixels = picture.load()
    inked = [any(distance(pixels[x, y], ground) > 90 for x in range(width)) for y in range(height)]
    lines, start = [], None
    for y, ink in enumerate(inked + [False]):
        if ink and start is None:
            start = y
        if not ink and start is not None:
            lines.append((start + y - 1) / 2)
            start = None
    return lines


def distance(one, other):
    return sum(abs(a - b) for a, b in zip(one, other))
