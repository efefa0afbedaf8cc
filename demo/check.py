"""Looks at what the tour left: the titles, the saved sheets, the sound that went out, and what was seen on the way.

Expected values are worked out from the sample (65,601 samples at 22,050 a second, 16 bits: 2.9751 seconds) and from
what the scenes did.
"""

import json
import os
import wave

from PIL import Image

from program import HOUSE
from scenes_hands import BENT, COMMENT, COMMENT_ROW, SHAPES_TYPED
from scenes_painter import ROLL_LENGTH, STAMPED
from scenes_recorder import voice
from scenes_sheet import COMMENTS, WAVE_FILE, shapes_left
from scenes_timeline import red_value, yellow_value

TITLE = "Exposure Sheet 2.3:  Project audio is 3. seconds, "
DATA_BYTES = 131202
ROWS_AT_24 = 72
TRACK_FRAMES_AT_24 = 71

# Each chapter's first complaint is made on purpose, to show that complaints are heard.
HEARD = "This is heard."
# How the lines begin that the programs should write: the sheet ends with its document, and what it held is kept.
EXPECTED_COMPLAINTS = {"krita": ["exposure-sheet: The host's member vel_GetTotalFrames failed: the document \"Roll\" "
                                 "has been closed in Krita", "The sheet as it stood is in "]}


class Checks:
    """Collects what is not as it should be, so that one look tells all of it."""

    def __init__(self, folder):
        self.folder = folder
        self.failures = []
        self.count = 0
        with open(os.path.join(folder, "facts.json"), encoding="utf-8") as file:
            self.facts = json.load(file)

    def equal(self, what, is_so, should_be):
        self.true(f"{what} is {is_so!r}, should be {should_be!r}", is_so == should_be)

    def true(self, failure, is_so):
        self.count += 1
        if not is_so:
            self.failures.append(failure)

    def fact(self, name, should_be):
        self.equal(name, self.facts.get(name), should_be)

    def lines(self, name):
        with open(os.path.join(self.folder, name), "rb") as file:
            content = file.read()
        self.true(f"{name} has a line without CR LF", content.count(b"\n") == content.count(b"\r\n"))
        return content.decode("utf-8").split("\r\n")

    def bytes(self, name):
        with open(os.path.join(self.folder, name), "rb") as file:
            return file.read()


def check_sheet(checks):
    checks.fact("title_at_start", "Exposure Sheet 2.3:  Project audio is . seconds, 0 frames at 12 fps")
    checks.fact("title_with_wave", TITLE + "35 frames at 12 fps")
    checks.fact("title_at_24", TITLE + "71 frames at 24 fps")
    checks.fact("title_after_cancel", TITLE + "71 frames at 24 fps")
    checks.fact("title_reopened", TITLE + "71 frames at 24 fps")
    checks.fact("title_of_sample", TITLE + "71 frames at 24 fps")
    checks.fact("host_took_24", True)
    checks.fact("exit_status", 0)
    check_timeline(checks)
    check_run(checks)
    check_file(checks)


def check_timeline(checks):
    # Frame 7 of 71 on 760 pixels, and at twice the width; scrolled to the end it is out of sight.
    one, two, scrolled, back = checks.facts["boxes"]
    near(checks, "the box at 100 percent", one, (7 * 760 / 71, 8 * 760 / 71))
    near(checks, "the box at 200 percent", two, (7 * 1520 / 71, 8 * 1520 / 71))
    checks.equal("the box scrolled out of sight", scrolled, None)
    checks.equal("the box at 100 percent again", back, one)

    looks = checks.facts["tracks"]
    in_sight = {moment: {name for name, pixels in look.items() if pixels > 300} for moment, look in looks.items()}
    # Where tracks lie on one another, the last one is seen.
    for moment, colors in {"flat": {"blue"}, "yellow drawn": {"yellow", "blue"},
                           "red drawn": {"yellow", "red", "blue"}, "blue and yellow hidden": {"red", "green"},
                           "red undone": {"yellow", "green"}, "cleared": {"green"},
                           "clear and stroke undone": {"yellow", "green"}}.items():
        checks.equal(f"the tracks in sight, {moment},", in_sight[moment], colors)

    checks.true("the Sketch mouth doesn't stand on its grey", checks.facts["sketch_ground"][0] in (163, 164))
    checks.fact("cartoon_ground", [255, 255, 255])


def near(checks, what, box, edges):
    fits = box is not None and all(abs(one - other) <= 1.5 for one, other in zip(box, edges))
    checks.true(f"{what} is {box}, should be about {edges}", fits)


def check_run(checks):
    """The host has 48 frames; the run passes through all of them, ever forward, and the last one stays."""
    frames = checks.facts["locked_frames"]
    checks.true(f"the host didn't go ever forward: {frames}", frames == sorted(frames))
    checks.true(f"the host was seen on too few frames: {frames}", len(set(frames)) >= 6)
    checks.equal("the host's last frame of the run", frames[-1], 47)
    checks.equal("the host's frames of the run without the lock", set(checks.facts["free_frames"]), {0})
    for run in ("locked_mouths", "free_mouths"):
        checks.true(f"the mouth hardly moved: {run} {checks.facts[run]}", checks.facts[run] >= 3)
    # The run never reaches the last row: it ends on row 70, frame 69.
    near(checks, "the box after the run", checks.facts["locked_box"], (69 * 760 / 71, 70 * 760 / 71))
    near(checks, "the box after scrubbing", checks.facts["scrubbed_box"], (40 * 760 / 71, 41 * 760 / 71))
    checks.fact("scrubbed_host", 40)


def check_file(checks):
    lines = checks.lines("frogs-tour.exp")
    checks.equal("the count of lines", len(lines) - 1, 20 + 3 * (ROWS_AT_24 - 1) + 4 * TRACK_FRAMES_AT_24)
    head = ["ExposureSheet02", "24", WAVE_FILE, "Reserved", "Reserved", " 72 ", " 3 ", "Reserved", "Reserved"]
    checks.equal("the head", lines[:9], head)

    shapes, at = shapes_left(), 9
    for row in range(1, ROWS_AT_24):
        shape = shapes.get(row, "")
        checks.equal(f"row {row}", lines[at:at + 3],
                     [str(row - 1), shape + " " if shape else "", COMMENTS.get(row, "")])
        at += 3
    # The lock is on; blue was hidden while drawing, green before saving.
    checks.equal("the toggles", lines[at:at + 11], ["Reserved"] * 4 + ["True", "Velocity", "True", "True", "False",
                                                                      "False", " 71 "])
    check_tracks(checks, [int(value) for value in lines[at + 11:-1]])

    # "A " comes back as "A"; all else comes back as it was.
    again = checks.lines("frogs-tour-again.exp")
    stripped = [line.rstrip() if i % 3 == 1 and 9 <= i < at else line for i, line in enumerate(lines)]
    checks.equal("the sheet opened and saved again", again, stripped)


def check_tracks(checks, values):
    tracks = [values[channel::4] for channel in range(4)]
    for name, track, value in (("yellow", tracks[0], yellow_value), ("red", tracks[1], red_value)):
        drawn = [frame for frame in range(4, 61) if track[frame] == value(frame)]
        passed_over = [frame for frame in range(4, 61) if track[frame] == 32]
        checks.true(f"the {name} stroke isn't where the mouse went: {track}",
                    len(drawn) >= 45 and len(set(drawn) | set(passed_over)) >= 56)
        checks.equal(f"the {name} track beside the stroke", set(track[:3] + track[62:]), {32})
    checks.equal("the green and the blue track", set(tracks[2] + tracks[3]), {32})


def check_sound(checks):
    """Frame 10 of 36: byte 36,445 rounded down to a sample, 3,644 bytes long."""
    with wave.open(WAVE_FILE) as file:
        data = file.readframes(file.getnframes())
    checks.equal("the sample's bytes", len(data), DATA_BYTES)
    heard = checks.bytes("frame-10.raw")
    checks.true("the device wasn't given frame 10's bytes", data[36444:36444 + 3644] in heard)
    checks.true("the device was given more than frame 10", data[36444 - 2:36444 + 3644] not in heard and
                data[36444:36444 + 3646] not in heard)
    checks.true("the device wasn't given the whole sound", data in checks.bytes("whole.raw"))


def check_film(checks, folder):
    for name in ("negative", "stamped", "blank_is_white", "wiggled", "held_frames_differ", "stays_on_no"):
        checks.fact(folder + name, True)
    stamped = [frame for frames in STAMPED.values() for frame in frames if frame < 7]
    checks.fact(folder + "frames_equal", {str(frame): True for frame in stamped})
    checks.fact(folder + "scrolled", [True, True])
    checks.fact(folder + "last_frame", ROLL_LENGTH - 1)
    checks.true("the host didn't play", checks.facts[folder + "played_looks"] >= 4)


def check_painter(checks):
    check_film(checks, "painter/")
    checks.fact("painter_exit_status", 0)


def check_apart(checks):
    check_film(checks, "apart/")
    checks.fact("apart_processes", 2)
    checks.fact("apart_title", TITLE + "71 frames at 24 fps")
    checks.fact("host_outlives_sheet", True)
    checks.fact("apart_exit_status", 0)
    frames = os.path.join(checks.folder, "apart", "frames")
    names = sorted(os.listdir(frames))
    checks.equal("the count of saved frames", len(names), ROLL_LENGTH)
    for name in names:
        with Image.open(os.path.join(frames, name)) as picture:
            checks.equal(f"the size of {name}", picture.size, (320, 240))


def check_look(checks):
    """The list's ground is the theme's; the window's is fixed, and covered by the wallpaper."""
    grounds = {"default": [85, 85, 102], "dark": [30, 32, 37], "loud": [66, 0, 98]}
    hung = [name for name in checks.facts if name.startswith("gallery/") and not name.endswith("/exit")]
    checks.equal("the count of galleries", len(hung), 9)
    for name in hung:
        look, ground, _ = name.split("/")[1].split("-")
        checks.equal(f"{name}: the list's ground", checks.facts[name]["list"], grounds[look])
        plain = checks.facts[name]["window"] == [143, 149, 158]
        checks.equal(f"{name}: the window's ground is plain", plain, ground == "plain")
        checks.fact(name + "/exit", 0)
    for step in (1, 2):
        checks.fact(f"live_change_{step}", True)


def check_keys(checks):
    """Ctrl with the arrow keys goes from shape to shape, the track has been drawn, the roll's frame is shot."""
    rows = [row - 1 for row in sorted(SHAPES_TYPED)]
    width = 514 / 71
    for step, frame in enumerate((rows[-1], rows[-2], rows[-3], rows[-2])):
        near(checks, f"the box after step {step}", checks.facts["keys_boxes"][step],
             (frame * width, (frame + 1) * width))
    stopped = checks.facts["keys_stopped_box"]
    checks.true(f"Space didn't stop the run: {stopped}", stopped is not None and stopped[1] < 514 / 2)
    lines = checks.lines("keys/by-keyboard.exp")
    at = 9
    for row in range(1, ROWS_AT_24):
        comment = COMMENT if row == COMMENT_ROW else ""
        checks.equal(f"row {row}", lines[at:at + 3], [str(row - 1), SHAPES_TYPED.get(row, ""), comment])
        at += 3
    values = [int(value) for value in lines[at + 11:-1]]
    red = {frame + 1: value for frame, value in enumerate(values[1::4]) if value != 32}
    checks.equal("the red track", red, {row: 32 - 2 * presses for row, presses in BENT.items()})
    checks.equal("the other tracks", set(values[0::4] + values[2::4] + values[3::4]), {32})
    blank, *stamped, after = [tuple(color) for color in checks.facts["keys_roll"]]
    checks.true("the roll isn't stamped where the keys went",
                blank == after == (255, 255, 255) and len(set(stamped)) == 1 and stamped[0] != blank)
    checks.fact("keys_shot", True)
    checks.fact("keys_exit_status", 0)


def check_hands(checks):
    checks.fact("drop_title", TITLE + "71 frames at 24 fps")
    at_first, zoomed, scrolled, back = checks.facts["wheel_boxes"]
    middle = sum(at_first) / 2
    checks.true(f"the wheel didn't zoom: {zoomed}", zoomed[1] - zoomed[0] > 2 * (at_first[1] - at_first[0]))
    checks.true(f"the frame left the pointer: {at_first}, {zoomed}", zoomed[0] - 2 <= middle <= zoomed[1] + 2)
    checks.true(f"the wheel didn't scroll: {zoomed}, {scrolled}", scrolled is None or scrolled[0] < zoomed[0] - 10)
    checks.equal("the box at 100 percent again", back, at_first)
    checks.fact("hands_exit_status", 0)


def check_recorder(checks):
    """What was saved is what the device gave, sample by sample, and the sheet has its frames."""
    with wave.open(os.path.join(checks.folder, "recorder", "take.wav")) as file:
        form = file.getnchannels(), file.getsampwidth(), file.getframerate()
        data = file.readframes(file.getnframes())
    checks.equal("the take's form", form, (1, 2, 44100))
    checks.true("the take is shorter than the recording lasted", len(data) > 44100)
    checks.true("the take isn't what the device gave", voice().startswith(data))
    frames = int(12 * len(data) / 88200)
    checks.true(f"the title doesn't tell {frames} frames", f" {frames} frames at 12" in checks.facts["recorder_title"])
    checks.fact("recorder_exit_status", 0)


def check_krita(checks):
    for name, should_be in {"rate": "12", "frames": 48, "size": [319, 239], "wallpaper": "night.png",
                            "followed": [7, 3, 10], "folder": True, "took_24": True, "drawing_kept": [True] * 4,
                            "retrieved": [3 * 48, 0], "shot": [3 * ROLL_LENGTH, 0],
                            "wiggled": [3 * ROLL_LENGTH, 0], "lives": True, "outlived": True}.items():
        checks.fact("krita_" + name, should_be)
    check_krita_run(checks)

    checks.fact("krita_shot_cells", roll_cells())
    for name, keys in (("krita_shot_facts", [0, 1, 5, 7]), ("krita_wiggled_facts", list(range(8)))):
        facts = dict(checks.facts[name], modified=None)
        checks.equal(name, facts, {"size": [320, 240], "rate": 24, "resolution": 96.0, "modified": None, "time": 0,
                                   "clip": [0, ROLL_LENGTH - 1], "layers": ["Roll"], "keys": keys})
    checks.equal("Krita's windows", checks.facts["krita_windows"], [["Frogs"], ["Roll"], ["Roll"]])

    (dark, night), (bright, slate) = checks.facts["krita_themes"]
    checks.equal("the wallpapers", [night, slate], ["night.png", "slate.png"])
    checks.true("the bright theme isn't brighter", min(bright) > max(dark))
    checks.equal("the list's ground", bright, checks.facts["krita_settings"])
    checks.true("no words for a closed document", "has been closed" in checks.facts["krita_closed_words"])
    checks.fact("krita_spaces", {"RGBA/U16": 0, "RGBA/F32": 0, "GRAYA/U8": 0, "CMYKA/U8": 0})


def roll_cells():
    cells = [None] * ROLL_LENGTH
    for cell, frames in STAMPED.items():
        for frame in frames:
            # What stands beyond the strip's edge was scrolled to and not stamped.
            cells[frame] = cell if frame < 7 else None
    return cells


def check_krita_run(checks):
    frames = checks.facts["krita_played"]
    checks.true(f"Krita didn't go ever forward: {frames}", frames == sorted(frames) and frames[-1] == 47)
    # Frames that were queued up would have come after the sound's 48 frames, which last 2 seconds.
    checks.true("Krita lagged behind the sound", checks.facts["krita_played_seconds"] < 3)
    checks.true(f"Krita followed too few frames: {frames}", len(frames) >= 8)


def check_complaints(checks, chapter):
    complaints, expected = checks.facts["complaints in " + chapter], [HEARD, *EXPECTED_COMPLAINTS.get(chapter, [])]
    beginnings = [line[:len(beginning)] for line, beginning in zip(complaints, expected)]
    checks.equal("complaints in " + chapter, beginnings + complaints[len(expected):], expected)


def main(folder, chapters):
    checks = Checks(folder)
    for chapter in chapters:
        {"sheet": check_sheet, "sound": check_sound, "painter": check_painter, "apart": check_apart,
         "keys": check_keys, "hands": check_hands, "recorder": check_recorder, "look": check_look, "krita": check_krita}[chapter](checks)
        check_complaints(checks, chapter)
    for failure in checks.failures:
        print("NOT AS IT SHOULD BE:", failure)
    print(f"{checks.count - len(checks.failures)} of {checks.count} things are as they should be.")
    return 1 if checks.failures else 0
