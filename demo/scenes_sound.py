"""The sound: played through with the host following, scrubbed, and what of it reaches the device."""

import os
import time

from desk import differs, wait_for
from program import CONTROLS, PREVIEW, WAVE
from scenes_sheet import WAVE_FILE

HOST_FRAMES = 48
CURSOR = (255, 0, 0)


def cursor_shown(sheet):
    return any(pixel == CURSOR for pixel in sheet.see(WAVE).getdata())


def watch_run(tour, sheet, name):
    """Presses play and looks on until the cursor has gone; returns the host's frames and how often the mouth
    changed."""
    sheet.press("play")
    wait_for("the cursor", lambda: cursor_shown(sheet))
    frames, mouths, began, pictured = [], 0, time.monotonic(), False
    mouth = sheet.see(PREVIEW)
    while cursor_shown(sheet):
        frames.append(sheet.host.frame(HOST_FRAMES))
        now = sheet.see(PREVIEW)
        mouths += differs(mouth, now)
        mouth = now
        if not pictured and time.monotonic() - began > 0.9:
            tour.picture(name, "the run on its way", sheet.desk.see())
            pictured = True
    sheet.desk.settle()
    return frames, mouths


def play_through(tour, sheet):
    sheet.host.learn_slider()
    sheet.main.front()
    frames, mouths = watch_run(tour, sheet, "18-playing")
    tour.note(locked_frames=frames, locked_mouths=mouths, locked_box=sheet.frame_box())
    tour.whole("19-played", "the run has ended: the host has followed")
    sheet.go_home()
    wait_for("the host's first frame", lambda: sheet.host.frame(HOST_FRAMES) == 0)
    sheet.press("lock")
    frames, mouths = watch_run(tour, sheet, "20-playing-unlocked")
    tour.note(free_frames=frames, free_mouths=mouths)
    sheet.press("lock")
    sheet.desk.settle()


def scrub(tour, sheet):
    """A drag along the waveform, from frame 10 to frame 40."""
    left, top, right, _ = sheet.area(WAVE)
    places = [(left + round((frame + 0.5) * (right - left) / 71), top + 40) for frame in range(10, 41)]
    sheet.desk.drag(places, pause=0.02)
    # The pointer would lie over the box.
    sheet.desk.point(*sheet.at(*CONTROLS["lock"]))
    wait_for("the last scrubbed frame", lambda: sheet.host.frame(HOST_FRAMES) == 40)
    sheet.desk.settle()
    tour.note(scrubbed_box=sheet.frame_box(), scrubbed_host=sheet.host.frame(HOST_FRAMES))
    tour.whole("21-scrubbed", "scrubbed to frame 40, and the host with it")


def what_is_heard(tour):
    """Runs with a device that writes down what it is given."""
    slice_file, whole_file = tour.path("frame-10.raw"), tour.path("whole.raw")
    hear(tour, slice_file, hear_frame)
    hear(tour, whole_file, hear_all)
    tour.left("frame-10.raw", "what the device was given for frame 10")
    tour.left("whole.raw", "what the device was given for the whole sound")


def hear(tour, path, act):
    sheet = tour.start(SDL_AUDIODRIVER="disk", SDL_DISKAUDIOFILE=path)
    sheet.main.move(20, 20)
    sheet.open_wave(WAVE_FILE)
    sheet.wait_title("35 frames")
    act(sheet)
    wait_for("the device's file", lambda: os.path.exists(path) and os.path.getsize(path) > 0)
    sheet.quit()


def hear_frame(sheet):
    """Row 11 is put at the grid's end of sight by the keyboard, then played."""
    sheet.click_row(1)
    sheet.desk.keys(*["Down"] * 10)
    sheet.desk.settle()
    sheet.press("play frame")
    sheet.desk.settle()


def hear_all(sheet):
    sheet.press("play")
    wait_for("the cursor", lambda: cursor_shown(sheet))
    wait_for("the run's end", lambda: not cursor_shown(sheet))
