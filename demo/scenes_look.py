"""The gallery: every window in three themes, with and without wallpaper, small and large, at two scales."""

import os

from desk import wait_for
from program import HOUSE, Host
from scenes_painter import FramePainter

SAMPLE_SHEET = os.path.join(HOUSE, "samples", "frogs.exp")
NO_WALLPAPER_STEPS = 3
SMALL, LARGE = (654, 395), (1100, 760)


def gallery(tour):
    for number, look in enumerate(Host.LOOKS):
        dress(tour, number)
        for wallpaper in (True, False):
            if not wallpaper:
                dress(tour, NO_WALLPAPER_STEPS)
            hang(tour, look, wallpaper, scale=1)
            # At twice the size one of the two grounds is enough to see.
            if wallpaper != (look == "Loud"):
                hang(tour, look, wallpaper, scale=2)


def dress(tour, steps):
    """Chooses an item of the host's menu "Look" in a run of its own; colours bring their wallpaper along."""
    sheet = tour.start(home="gallery")
    sheet.main.move(20, 20)
    before = sheet.main.see()
    sheet.host.choose_look(steps)
    live = before != sheet.main.see()
    tour.note(**{f"live_change_{steps}": live})
    sheet.quit()


def hang(tour, look, wallpaper, scale):
    folder = f"gallery/{look.lower()}-{'wallpaper' if wallpaper else 'plain'}-x{scale}"
    ground = " on its wallpaper" if wallpaper else ""
    sheet = tour.start(home="gallery", scale=scale)
    sheet.main.move(0, 20)

    def show(name, what, window):
        tour.portrait(f"{folder}/{name}", f"{what}, {look.lower()} colours{ground}, scale {scale}", window)

    sheet.open_sheet(SAMPLE_SHEET)
    sheet.wait_title("24 fps")
    sheet.click_row(2)
    sheet.desk.keys("Home", *["Down"] * 11)
    sheet.desk.settle()
    show("main", "the main window", sheet.main)
    tour.note(**{folder: corner_colors(sheet)})
    if scale == 1:
        sheet.resize(*LARGE)
        show("main-large", "the main window, large", sheet.main)
        sheet.resize(*SMALL)
    show("host", "the host's window", sheet.host.window)
    for item, title, name in (("Show sample info...", "^Sample info$", "sample-info"),
                              ("Set FPS...", "^Set Frames per second$", "set-fps")):
        sheet.choose(item)
        window = sheet.desk.window(title)
        show(name, "a dialog", window)
        window.front()
        window.close()
        sheet.desk.gone(window)
    show_painter(sheet, show)
    tour.note(**{folder + "/exit": sheet.quit()})


def show_painter(sheet, show):
    sheet.main.front()
    sheet.choose("Frame painter...")
    options = sheet.desk.window(r"^Frame painter options\.\.\.$")
    show("painter-options", "the way into the frame painter", options)
    options.front()
    sheet.desk.keys("Return")
    painter = FramePainter(sheet.desk)
    show("painter", "the frame painter", painter.window)
    painter.window.front()
    painter.window.close()
    sheet.answer("alt+y", lambda box: show("question", "a question", box))
    sheet.desk.gone(painter.window)
    wait_for("the main window alone", lambda: not sheet.desk.find("^Frame painter"))


def corner_colors(sheet):
    """Of the list's ground, of the preview's ground and of the window's ground beside the tool strip."""
    screen = sheet.desk.see()
    return {name: screen.getpixel(sheet.at(*place)) for name, place in
            (("list", (100, 380)), ("window", (600, 15)), ("wave", (300, 64)))}
