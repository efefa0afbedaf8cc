"""The same job by keyboard alone, and what only a mouse does: wheel and drop."""

import os
import time

from PIL import Image

from desk import differs, wait_for, xdotool
from program import HOUSE, WAVE, environment
from scenes_painter import ROLL, FramePainter
from scenes_sheet import WAVE_FILE
from scenes_sound import cursor_shown

SAMPLE_SHEET = os.path.join(HOUSE, "samples", "frogs.exp")

# What is typed in the column "Shape", by row, and what then stands there.
TYPED = {1: "m", 4: "o", 7: "th", 10: "ch", 13: "e"}
SHAPES_TYPED = {1: "M ", 4: "O ", 7: "Th ", 10: "Ch ", 13: "E "}
COMMENT_ROW, COMMENT = 4, "so"
# How often Shift+Up or, below 0, Shift+Down is pressed on the red track, by row: two pixels each.
BENT = {4: 6, 5: 3, 6: -4}
STAMPED_BY_KEY = 3


def by_keyboard(tour):
    """From the sound to a shot roll without touching the mouse."""
    sheet = tour.start()
    keys = sheet.desk.keys
    sheet.main.front()
    keys("alt+f", "w")
    sheet.file_dialog("^Select a wave file$", WAVE_FILE)
    sheet.wait_title("35 frames")
    keys("alt+t", "4")
    sheet.answer("alt+y")
    sheet.wait_title("71 frames")
    sheet.main.front()
    type_shapes(tour, sheet)
    type_comment(tour, sheet)
    play_and_stop(tour, sheet)
    cell = bend_track(tour, sheet)
    keys("ctrl+s")
    path = tour.path("keys/by-keyboard.exp")
    sheet.file_dialog("^Select an exposure sheet$", path)
    wait_for(f"{path} to be saved", lambda: os.path.exists(path))
    tour.left("keys/by-keyboard.exp", "the sheet that was made by keyboard alone")
    film_by_keyboard(tour, sheet, cell)
    sheet.main.front()
    keys("alt+f", "q")
    tour.note(keys_exit_status=sheet.leave_frames())


def type_shapes(tour, sheet):
    """From the header, where a new sheet stands, into the first row's column "Shape"."""
    sheet.desk.keys("Down", "Left")
    for row in range(1, max(TYPED) + 1):
        if row in TYPED:
            sheet.desk.keys(*TYPED[row])
        sheet.desk.keys("Down")
    sheet.desk.settle()
    boxes = []
    for step in ("ctrl+Up", "ctrl+Up", "ctrl+Up", "ctrl+Down"):
        sheet.desk.keys(step)
        sheet.desk.settle()
        boxes.append(sheet.frame_box())
    tour.note(keys_boxes=boxes)
    tour.portrait("keys/1-shapes", "shapes typed by their letters", sheet.main)


def type_comment(tour, sheet):
    sheet.desk.keys("Home", *["Down"] * (COMMENT_ROW - 1), "Right", "Return")
    sheet.desk.settle()
    sheet.desk.type(COMMENT)
    sheet.desk.keys("Return")
    sheet.desk.settle()
    tour.portrait("keys/2-comment", "a comment, begun and ended by Return", sheet.main)


def play_and_stop(tour, sheet):
    sheet.desk.keys("space")
    wait_for("the cursor", lambda: cursor_shown(sheet))
    time.sleep(0.5)
    sheet.desk.keys("space")
    wait_for("the run to stop", lambda: not cursor_shown(sheet))
    tour.note(keys_stopped_box=sheet.desk.settle() and sheet.frame_box())


def bend_track(tour, sheet):
    """Draws on the red track; returns what the host shows on the way, on the frame of the row."""
    keys = sheet.desk.keys
    to_draw_button, to_red = 7, 4
    keys("Home", *["Tab"] * to_draw_button, "space", *["Tab"] * to_red, "space",
         *["shift+Tab"] * (to_draw_button + to_red))
    row = 1
    for target, presses in BENT.items():
        keys(*["Down"] * (target - row), *["shift+Up" if presses > 0 else "shift+Down"] * abs(presses))
        row = target
    sheet.desk.settle()
    tour.portrait("keys/3-track", "a track drawn with Shift and the arrow keys", sheet.main)
    keys("Home", *["Down"] * STAMPED_BY_KEY)
    sheet.desk.settle()
    return sheet.host.view()


def film_by_keyboard(tour, sheet, cell):
    keys = sheet.desk.keys
    keys("alt+c", "f")
    options = sheet.desk.window(r"^Frame painter options\.\.\.$")
    options.front()
    keys("1", "2", "Return")
    painter = FramePainter(sheet.desk)
    painter.window.front()
    keys("Tab", *["Right"] * STAMPED_BY_KEY, "Tab", "Tab", "Right", "space", "space")
    sheet.desk.settle()
    tour.portrait("keys/4-roll", "a cell chosen and stamped by keys", painter.window)
    tour.note(keys_roll=[painter.thumbnail(ROLL, i).getpixel((50, 60)) for i in range(4)])
    to_shoot = 5
    keys(*["Tab"] * to_shoot, "space")
    wait_for("the new animation, blank at its start", lambda: is_white(sheet.host.view()))
    sheet.desk.settle()
    painter.window.front()
    keys("Tab", "space")
    sheet.answer("alt+y")
    sheet.desk.gone(painter.window)
    sheet.main.front()
    keys("Home", "Down")
    wait_for("the stamped frame in the host", lambda: not is_white(sheet.host.view()))
    sheet.desk.settle()
    tour.note(keys_shot=not differs(sheet.host.view(), cell))


def is_white(picture):
    return picture.getextrema() == ((255, 255),) * 3


def wheel_and_drop(tour):
    sheet = tour.start()
    drop(tour, SAMPLE_SHEET, sheet.at(400, 300))
    tour.note(drop_title=sheet.wait_title("24 fps"))
    tour.whole("hands/1-dropped", "a sheet dropped on the window")
    turn_wheel(tour, sheet)
    drop_pictures(tour, sheet)
    tour.note(hands_exit_status=sheet.quit())


def drop(tour, path, target):
    """Drags a file from another program's window and lets it fall at a point of the screen."""
    source_process = tour.run([os.path.join(os.path.dirname(__file__), "drag_source.py"), path],
                              environment(os.path.join(tour.homes, "files")))
    source = tour.desk.window("^A file$")
    left, top, width, height = source.geometry()
    x, y = left + width // 2, top + height // 2
    # The source sees a drag begin, and the target is asked on the way whether it takes what comes.
    tour.desk.drag([(x, y), (x + 12, y), (x + 30, y - 20), (target[0] - 30, target[1]), (target[0] - 8, target[1]),
                    target, (target[0] + 2, target[1])], pause=0.15)
    wait_for("the drop", lambda: source_process.poll() is not None)


def turn_wheel(tour, sheet):
    """With Ctrl the frame under the pointer stays there while the timeline zooms; without, the timeline scrolls."""
    sheet.click_row(3)
    sheet.desk.keys("Home", *["Down"] * 10)
    sheet.desk.settle()
    boxes = [sheet.frame_box()]
    left, top, _, _ = sheet.area(WAVE)
    middle = sum(boxes[0]) / 2
    # High up: the pointer is bright too, and the box is looked for below it.
    sheet.desk.point(left + round(middle), top + 10)
    turn("ctrl", 4, 8)
    sheet.desk.settle()
    boxes.append(sheet.frame_box())
    tour.portrait("hands/2-zoomed", "zoomed about the pointer by the wheel", sheet.main)
    turn(None, 5, 3)
    sheet.desk.settle()
    boxes.append(sheet.frame_box())
    turn("ctrl", 5, 8)
    sheet.desk.settle()
    boxes.append(sheet.frame_box())
    tour.note(wheel_boxes=boxes)


def turn(held, button, notches):
    words = ["click", "--repeat", notches, "--delay", 30, button]
    xdotool(*(["keydown", held] if held else []), *words, *(["keyup", held] if held else []))


def drop_pictures(tour, sheet):
    """A picture on the host's window: its animation is then that one frame."""
    folder = os.path.join(tour.folder, "hands")
    os.makedirs(folder, exist_ok=True)
    path = os.path.join(folder, "red.png")
    Image.new("RGB", (64, 48), (200, 30, 20)).save(path)
    host = sheet.host
    left, top, width, height = host.window.geometry()
    drop(tour, path, (left + width // 2, top + height // 3))
    wait_for("the dropped picture", lambda: (200, 30, 20) in host.view().getdata())
    tour.portrait("hands/3-picture", "a picture dropped on the host's window", host.window)
