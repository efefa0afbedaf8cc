"""The sheet file: saved, opened again, saved once more; and the sample's own sheet."""

import os
import shutil

from program import HOUSE

SAMPLE_SHEET = os.path.join(HOUSE, "samples", "frogs.exp")


def save_and_open(tour, sheet):
    first, again = tour.path("frogs-tour.exp"), tour.path("frogs-tour-again.exp")
    sheet.press("show green")
    sheet.save_sheet(first, lambda dialog: tour.portrait("22-save", "the sheet being saved", dialog))
    tour.left("frogs-tour.exp", "the sheet as saved")
    # What opening must bring back is changed first.
    sheet.press("show green")
    sheet.press("show blue")
    sheet.choose("10 fps")
    sheet.answer("alt+n")
    sheet.wait_title("10 fps")
    sheet.open_sheet(first)
    tour.note(title_reopened=sheet.wait_title("24 fps"))
    tour.portrait("23-reopened", "the saved sheet opened again", sheet.main)
    sheet.save_sheet(again)
    tour.left("frogs-tour-again.exp", "the opened sheet saved once more")


def open_sample(tour, sheet):
    """The sample's sheet names its wave file without a folder: it is found beside the sheet."""
    folder = os.path.join(tour.folder, "samples")
    os.makedirs(folder, exist_ok=True)
    for name in ("frogs.exp", "frogs.wav"):
        shutil.copy(os.path.join(HOUSE, "samples", name), folder)
    sheet.open_sheet(os.path.join(folder, "frogs.exp"))
    tour.note(title_of_sample=sheet.wait_title("24 fps"))
    sheet.choose("Sketch")
    sheet.go_home()
    sheet.desk.keys(*["Down"] * 19)
    sheet.desk.point(*sheet.at(60, 600))
    tour.whole("24-sample", "the sample's filled sheet")
    tour.portrait("25-sample", "the sample's filled sheet", sheet.main)
