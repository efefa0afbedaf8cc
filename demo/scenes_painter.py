"""The frame painter: the host's frames as cells, a new roll of film, and what the host is given."""

from desk import differs, wait_for
from program import Host

# Places in the frame painter's window, in pixels.
CELLS, ROLL = (8, 36), (8, 194)
STRIP_WIDTH, STRIP_HEIGHT = 729, 77
CELL_BAR, ROLL_BAR = (8, 144), (8, 302)
WIGGLE = (18, 338)
RETRIEVE, SHOOT, DONE = (131, 16), (60, 386), (194, 386)
THUMB = 101

ROLL_LENGTH = 12
# Which cell is stamped onto which frames of the roll; the others stay blank.
STAMPED = {3: [0], 6: [1, 2, 3, 4], 1: [5, 6], 10: [10]}
BLANK_FRAME = 8


class FramePainter:
    def __init__(self, desk):
        self.desk = desk
        self.window = desk.window("^Frame painter$")
        self.desk.settle()

    def at(self, place, right=0, down=0):
        left, top, _, _ = self.window.geometry()
        return left + place[0] + right, top + place[1] + down

    def click(self, place, right=0, down=0):
        self.desk.click(*self.at(place, right, down))
        self.desk.settle()

    def thumbnail(self, strip, index):
        """What the strip shows there while it isn't scrolled."""
        left, top = self.at(strip, index * THUMB, 0)
        return self.desk.see((left, top, left + THUMB, top + STRIP_HEIGHT - 2))

    def choose(self, cell):
        self.click(CELLS, cell * THUMB + 50, 30)

    def drag_bar(self, bar, end):
        x, y = self.at(bar)
        self.desk.drag([(x + 25, y), (x + 60, y), (x + 160, y), (x + end, y)])
        self.desk.settle()


def learn_frames(host, frames):
    """Steps through the host's first frames and keeps what it shows."""
    host.press("first")
    looks = [host.view()]
    for _ in range(frames - 1):
        host.press("forward")
        looks.append(host.view())
    host.press("first")
    return looks


def embedded(tour):
    sheet = tour.start()
    sheet.main.move(20, 20)
    sheet.host.learn_slider()
    film(tour, sheet, "painter/")
    look = lambda box: tour.portrait("painter/8-question", "the host asks before the shot frames are gone", box)
    sheet.main.front()
    sheet.choose("Quit")
    tour.note(painter_exit_status=sheet.leave_frames(look))


def film(tour, sheet, folder):
    """The whole way from the host's frames to a new animation in the host."""
    host = sheet.host
    before = learn_frames(host, max(STAMPED) + 1)
    sheet.main.front()
    painter = way_in(tour, sheet, folder)
    painter.window.move(40, 480)
    stamp(tour, painter, folder)
    shoot(tour, painter, host, before, folder)
    shoot_wiggled(tour, painter, host, folder)
    done(tour, painter, folder)


def way_in(tour, sheet, folder):
    sheet.choose("Frame painter...")
    options = sheet.desk.window(r"^Frame painter options\.\.\.$")
    options.front()
    sheet.desk.keys("ctrl+a")
    sheet.desk.type(str(ROLL_LENGTH))
    tour.portrait(folder + "1-options", "how long the new roll shall be", options)
    sheet.desk.keys("Return")
    return FramePainter(sheet.desk)


def stamp(tour, painter, folder):
    tour.portrait(folder + "2-open", "the host's frames as cells, and a blank roll", painter.window)
    blank = painter.thumbnail(ROLL, 0)
    negative = painter.thumbnail(CELLS, 3)
    painter.choose(3)
    negative = differs(negative, painter.thumbnail(CELLS, 3))
    painter.click(ROLL, 50, 30)
    stamped = differs(blank, painter.thumbnail(ROLL, 0))
    painter.choose(6)
    painter.desk.drag([painter.at(ROLL, frame * THUMB + step, 40) for frame in range(1, 5) for step in (20, 70)])
    painter.choose(1)
    painter.desk.drag([painter.at(ROLL, frame * THUMB + step, 40) for frame in (5, 6) for step in (20, 70)])
    painter.desk.settle()
    tour.note(**{folder + "negative": negative, folder + "stamped": stamped,
                 folder + "roll_thumbs": [painter.thumbnail(ROLL, i).getpixel((50, 60)) for i in range(7)]})
    tour.portrait(folder + "3-stamped", "cells stamped onto the roll, by clicks and drags", painter.window)
    # Cell and frame 10 stand beyond the strips' right edge.
    left = [(CELLS, 0, painter.thumbnail(CELLS, 0)), (ROLL, 5, painter.thumbnail(ROLL, 5))]
    painter.drag_bar(CELL_BAR, 150)
    painter.drag_bar(ROLL_BAR, STRIP_WIDTH - 10)
    tour.note(**{folder + "scrolled": [differs(painter.thumbnail(strip, i), seen) for strip, i, seen in left]})
    tour.portrait(folder + "4-scrolled", "both strips scrolled", painter.window)


def shoot(tour, painter, host, before, folder):
    painter.click(SHOOT)
    wait_for("the new animation", lambda: not differs(host.view(), before[3]))
    painter.desk.settle()
    tour.whole(folder + "5-shot", "the roll as a new animation in the host")
    host.learn_slider()
    frames = learn_frames(host, ROLL_LENGTH)
    equal = {frame: not differs(frames[frame], before[cell])
             for cell, stamped in STAMPED.items() for frame in stamped if frame < 7}
    blank = frames[BLANK_FRAME].getextrema() == ((255, 255),) * 3
    host.press("last")
    tour.note(**{folder + "frames_equal": equal, folder + "blank_is_white": blank,
                 folder + "last_frame": host.frame(ROLL_LENGTH)})
    host.press("first")


def shoot_wiggled(tour, painter, host, folder):
    plain = host.view()
    painter.window.front()
    painter.click(WIGGLE)
    painter.click(SHOOT)
    wait_for("the wiggled animation", lambda: differs(host.view(), plain))
    painter.desk.settle()
    tour.whole(folder + "6-wiggled", "the roll shot again with the wiggle on")
    frames = learn_frames(host, 5)
    held_frames_differ = all(differs(one, other) for one, other in zip(frames[1:], frames[2:]))
    looks = watch_host_play(host)
    tour.note(**{folder + "wiggled": differs(frames[0], plain), folder + "held_frames_differ": held_frames_differ,
                 folder + "played_looks": looks})


def watch_host_play(host, wanted=4):
    """Lets the host play; returns how many changes of its picture were seen, up to those wanted."""
    left, top, _, height = host.window.geometry()
    changes, last = 0, host.view()
    host.desk.click(left + Host.BUTTONS["play"], top + height - 49)

    def one_more():
        nonlocal changes, last
        now = host.view()
        changes += differs(now, last)
        last = now
        return changes >= wanted

    wait_for("the host to play", one_more)
    host.desk.click(left + Host.BUTTONS["play"], top + height - 49)
    host.desk.settle()
    return changes


def done(tour, painter, folder):
    painter.window.front()
    painter.click(DONE)
    box = painter.desk.window("^Exposure Sheet$")
    tour.portrait(folder + "7-done", "the question before the window closes", box)
    box.front()
    painter.desk.keys("alt+n")
    painter.desk.gone(box)
    painter.desk.settle()
    stays = painter.desk.find("^Frame painter$") != []
    painter.click(DONE)
    box = painter.desk.window("^Exposure Sheet$")
    box.front()
    painter.desk.keys("alt+y")
    painter.desk.gone(painter.window)
    tour.note(**{folder + "stays_on_no": stays})
