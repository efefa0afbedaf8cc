#!/usr/bin/python3
"""Shows the program at work: starts it on a virtual display, drives it from outside with mouse and keyboard, and
leaves pictures and saved files in build/tour/.

    demo/tour.py            the tour
    demo/tour.py --check    the tour, and then a look at whether it left what it should
    demo/tour.py NAME...    only those chapters; "krita" is one of them, and needs Krita
"""

import concurrent.futures
import importlib
import json
import os
import shutil
import sys
import tempfile
import time

import check
import scenes_apart
import scenes_file
import scenes_hands
import scenes_look
import scenes_painter
import scenes_recorder
import scenes_sheet
import scenes_sound
import scenes_timeline
from desk import Desk, TourError
from program import BUILD, HOUSE, Sheet, environment

# How lines begin that the sound driver, the bus and Krita write of themselves.
OTHERS_TALK = ("CRITICAL: ", "dbus-daemon[", "krita.lib", "QObject::", "QAbstractItemModel::", "/usr/lib/",
               "WARNING: the destination object of KisSynchronizedConnection", "qt.",
               # One of Krita's panels needs packages of the toolkit that Krita doesn't bring along: its complaint, and
               # the line of code that this quotes, with many blanks in front.
               "Warning: QQml_", "qrc:/", "file:///usr/lib/", 8 * " ", "Failed to fetch display info")


class Tour:
    """What a scene is given: the desk, and somewhere to put what it saw."""

    def __init__(self, desk, folder, homes):
        self.desk = desk
        self.folder = folder
        self.homes = homes
        os.makedirs(homes, exist_ok=True)
        self.facts = {}
        self.pictures = 0

    def picture(self, name, what, image):
        self.pictures += 1
        path = os.path.join(self.folder, name + ".png")
        os.makedirs(os.path.dirname(path), exist_ok=True)
        image.save(path)
        print(f"{os.path.relpath(path, HOUSE)}: {what}", flush=True)

    def whole(self, name, what):
        """A picture of the whole desk."""
        self.picture(name, what, self.desk.settle())

    def portrait(self, name, what, window):
        """A picture of one window with its frame."""
        self.desk.settle(window.area())
        self.picture(name, what, self.desk.see(window.framed_area()))

    def note(self, **facts):
        self.facts.update(facts)

    def path(self, name):
        """Where a file of that name is left; an older one is taken away."""
        path = os.path.join(self.folder, name)
        if os.path.exists(path):
            os.remove(path)
        return path

    def left(self, name, what):
        print(f"{os.path.relpath(os.path.join(self.folder, name), HOUSE)}: {what}", flush=True)

    def start(self, home="home", scale=1, **variables):
        """The program for a user with that home."""
        if scale != 1:
            variables["QT_SCALE_FACTOR"] = str(scale)
        variables = environment(os.path.join(self.homes, home), **variables)
        return Sheet(self.desk, self.run(["exposure-sheet"], variables), scale)

    def run(self, command, variables):
        """Starts a program of ours by name, or one that starts it; keeps its complaints."""
        with open(os.path.join(self.homes, "complaints"), "a", encoding="utf-8") as complaints:
            words = [os.path.join(BUILD, word) if os.path.exists(os.path.join(BUILD, word)) else word
                     for word in command]
            return self.desk.start(words, variables, stderr=complaints)

    def complaints(self):
        """What the programs wrote to the standard error, but for what their drivers always say."""
        with open(os.path.join(self.homes, "complaints"), encoding="utf-8") as file:
            lines = [line.rstrip() for line in file]
        return [line for line in lines if line and not line.startswith(OTHERS_TALK)]


def the_sheet(tour):
    """One sitting, from the start of the program to its end."""
    sheet = tour.start()
    scenes_sheet.start(tour, sheet)
    scenes_sheet.open_wave(tour, sheet)
    scenes_sheet.sample_info(tour, sheet)
    scenes_sheet.change_rate(tour, sheet)
    scenes_sheet.set_rate(tour, sheet)
    scenes_sheet.fill_rows(tour, sheet)
    scenes_timeline.zoom_and_scroll(tour, sheet)
    scenes_timeline.draw_tracks(tour, sheet)
    scenes_timeline.change_mouths(tour, sheet)
    scenes_sound.play_through(tour, sheet)
    scenes_sound.scrub(tour, sheet)
    scenes_file.save_and_open(tour, sheet)
    scenes_file.open_sample(tour, sheet)
    tour.note(exit_status=sheet.quit())


CHAPTERS = {
    "sheet": the_sheet,
    "sound": scenes_sound.what_is_heard,
    "painter": scenes_painter.embedded,
    "apart": scenes_apart.two_processes,
    "keys": scenes_hands.by_keyboard,
    "hands": scenes_hands.wheel_and_drop,
    "recorder": scenes_recorder.record_and_open,
    "look": scenes_look.gallery,
}
# Given only when they are named: they need a program that not every desk has.
ELSEWHERE = {"krita": lambda tour: importlib.import_module("scenes_krita").beside_krita(tour)}
# A chapter mostly waits for something to be seen, so three desks are worked at side by side.
DESKS = (("sheet", "sound", "recorder"), ("painter", "apart", "keys", "hands"), ("look",), ("krita",))


def give_at_one_desk(folder, chapters):
    """Gives the chapters one after another; returns what they noted."""
    facts = {}
    if not chapters:
        return facts
    homes = tempfile.mkdtemp(prefix="tour-")
    try:
        with Desk(homes) as desk:
            for name in chapters:
                began = time.monotonic()
                tour = Tour(desk, folder, os.path.join(homes, name))
                tour.run(["/bin/sh", "-c", f"echo '{check.HEARD}' >&2"], None).wait()
                try:
                    (CHAPTERS | ELSEWHERE)[name](tour)
                except Exception:
                    tour.picture("stopped-in-" + name, "the desk when the tour stopped", desk.see())
                    raise
                facts.update(tour.facts)
                facts["complaints in " + name] = tour.complaints()
                print(f"-- {name}: {tour.pictures} pictures, {time.monotonic() - began:.0f} s", flush=True)
    finally:
        shutil.rmtree(homes, ignore_errors=True)
    return facts


def give(chapters):
    """Gives the chapters; returns the folder in which they left what they saw."""
    folder = os.path.join(BUILD, "tour")
    os.makedirs(folder, exist_ok=True)
    shares = [[name for name in share if name in chapters] for share in DESKS]
    facts = {}
    with concurrent.futures.ProcessPoolExecutor(len(DESKS)) as desks:
        for noted in desks.map(give_at_one_desk, [folder] * len(DESKS), shares):
            facts.update(noted)
    with open(os.path.join(folder, "facts.json"), "w", encoding="utf-8") as file:
        json.dump(facts, file, indent=1)
    return folder


def main(arguments):
    wants_check = "--check" in arguments
    chapters = [name for name in arguments if name != "--check"] or list(CHAPTERS)
    try:
        folder = give(chapters)
    except TourError as error:
        print(f"The tour stopped: {error}", file=sys.stderr)
        return 1
    print(f"The pictures and files are in {os.path.relpath(folder, HOUSE)}/.")
    return check.main(folder, chapters) if wants_check else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
