"""The host in a process of its own: the stand-in as a program, the sheet started from its menu, both on a session
bus that is theirs alone."""

import os
import shutil

from desk import wait_for
from program import HOST_TITLE, Host, Sheet, environment
from scenes_painter import ROLL_LENGTH, film
from scenes_sheet import WAVE_FILE
from scenes_sound import HOST_FRAMES


def two_processes(tour):
    desk = tour.desk
    variables = environment(os.path.join(tour.homes, "apart"))
    del variables["DBUS_SESSION_BUS_ADDRESS"]
    process = tour.run(["dbus-run-session", "--", "vellumark-standin"], variables)
    host = Host(desk)
    host.window.front()
    desk.changes("the host's menu", lambda: desk.keys("alt+t"))
    tour.portrait("apart/0-host", "the host as a program of its own, about to start the sheet", host.window)
    desk.keys("Return")
    sheet = Sheet(desk, process=process)
    sheet.main.move(20, 20)
    sheet.host.learn_slider()
    sheet.main.front()
    sheet.open_wave(WAVE_FILE)
    sheet.wait_title("35 frames")
    sheet.click_row(7)
    wait_for("the host to follow", lambda: sheet.host.frame(HOST_FRAMES) == 6)
    tour.whole("apart/0-following", "the host follows the sheet's row from its own process")
    sheet.choose("24 fps")
    sheet.answer("alt+y")
    tour.note(apart_title=sheet.wait_title("24 fps"))
    tour.note(apart_processes=len({sheet.main.process_id(), host.window.process_id()}))
    film(tour, sheet, "apart/")
    sheet.main.front()
    sheet.choose("Quit")
    desk.gone(sheet.main)
    tour.note(host_outlives_sheet=bool(desk.find(HOST_TITLE)))
    save_frames(tour, host)
    host.window.close()
    wait_for("the host to end", lambda: process.poll() is not None)
    tour.note(apart_exit_status=process.returncode)


def save_frames(tour, host):
    """The animation that was shot, taken out of the host as numbered pictures."""
    folder = os.path.join(tour.folder, "apart", "frames")
    shutil.rmtree(folder, ignore_errors=True)
    os.makedirs(folder)
    host.window.front()
    host.desk.keys("ctrl+s")
    dialog = host.desk.window("^Save as numbered pictures$")
    dialog.front()
    host.desk.keys("ctrl+a")
    host.desk.type(os.path.join(folder, "shot"))
    host.desk.settle(dialog.area())
    host.desk.confirm(dialog)
    wait_for("the pictures", lambda: len(os.listdir(folder)) == ROLL_LENGTH)
    host.desk.settle()
    tour.left("apart/frames", "the roll's frames as the host saved them")
