"""The sheet: a voice track opened, the rate chosen, rows filled with shapes and comments."""

import os

from program import HOUSE, SHAPES

WAVE_FILE = os.path.join(HOUSE, "samples", "frogs.wav")

# Row by row from row 2 on; an empty name leaves the row without a shape.
FILLED = ["F", "A", "I", "", "V", "Th", "E", "N", "", "F", "R", "O", "", "G", "S", "", "D", "A", "M", "P", "U", "W",
          "L", "Closed"]
FIRST_FILLED_ROW = 2
COMMENTS = {3: "Five thin frogs", 9: 'half "croak", half song', 14: "Mücken über Grün"}


def start(tour, sheet):
    sheet.main.move(20, 20)
    tour.note(title_at_start=sheet.main.title())
    tour.whole("01-start", "the program and its host, just started")


def open_wave(tour, sheet):
    sheet.open_menu("Open Wave file...")
    tour.portrait("02-file-menu", "the File menu", sheet.main)
    sheet.desk.keys("Return")
    sheet.file_dialog("^Select a wave file$", WAVE_FILE,
                      lambda dialog: tour.portrait("03-open-wave", "the sample chosen in the dialog", dialog))
    tour.note(title_with_wave=sheet.wait_title("35 frames"))
    tour.portrait("04-wave", "the voice track on the timeline, the rows that it gives", sheet.main)


def sample_info(tour, sheet):
    sheet.choose("Show sample info...")
    info = sheet.desk.window("^Sample info$")
    tour.portrait("05-sample-info", "what the wave file says of itself", info)
    info.close()
    sheet.desk.gone(info)


def change_rate(tour, sheet):
    sheet.open_menu("24 fps")
    tour.portrait("06-timing-menu", "the Timing menu", sheet.main)
    sheet.desk.keys("Return")
    before = sheet.host.window.see()
    sheet.answer("alt+y", lambda box: tour.portrait("07-use-rate", "is the rate for the host as well?", box))
    tour.note(title_at_24=sheet.wait_title("24 fps"), host_took_24=before != sheet.host.window.see())


def set_rate(tour, sheet):
    sheet.choose("Set FPS...")
    dialog = sheet.desk.window("^Set Frames per second$")
    dialog.front()
    tour.portrait("08-set-fps", "any other rate", dialog)
    press_in(sheet, dialog, 2730 / 15 * 0.82, 106)
    sheet.desk.gone(dialog)
    tour.note(title_after_cancel=sheet.main.title())


def press_in(sheet, window, x, y):
    """Clicks a place in another window of the program, in its own pixels."""
    left, top, _, _ = window.geometry()
    sheet.desk.click(left + x * sheet.scale, top + y * sheet.scale)


def fill_rows(tour, sheet):
    sheet.resize(900, 640)
    sheet.click_row(FIRST_FILLED_ROW)
    sheet.desk.settle()
    for shape in FILLED:
        if shape:
            sheet.pick(shape)
        sheet.desk.keys("Down")
    sheet.go_home()
    for row, comment in COMMENTS.items():
        sheet.click_row(row, column=2)
        sheet.desk.type(comment)
        if row == 9:
            tour.portrait("09-comment", "a comment being typed", sheet.main)
        sheet.desk.keys("Return")
    sheet.click_row(3)
    tour.portrait("10-filled", "shapes and comments in the rows", sheet.main)
    # "None" and Delete both empty a cell.
    sheet.click_row(FIRST_FILLED_ROW + FILLED.index("U"))
    sheet.pick("None")
    sheet.click_row(FIRST_FILLED_ROW + FILLED.index("W"), column=1)
    sheet.desk.keys("Delete")
    sheet.desk.settle()


def shapes_left():
    """What the Shape cells then hold, by row."""
    filled = {FIRST_FILLED_ROW + i: shape for i, shape in enumerate(FILLED) if shape not in ("", "U", "W")}
    assert set(filled.values()) <= set(SHAPES)
    return filled
