"""Krita as the host: the sheet started from Krita's menu, its rows followed, its frames retrieved and shot."""

import fcntl
import hashlib
import os
import shutil
import time

import dbus
from PIL import Image

from desk import wait_for
from krita_desk import KritaDesk
from program import LIST, MAIN_TITLE, MESSAGE_TITLE, Sheet
from scenes_file import SAMPLE_SHEET
from scenes_painter import ROLL_LENGTH, SHOOT, WIGGLE, done, stamp, way_in
from scenes_sheet import WAVE_FILE

FIRST, FRAMES, RATE = 5, 48, 12
WIDTH, HEIGHT = 320, 240
MEASURED_WIDTH, MEASURED_HEIGHT = 1280, 720
GETTERS = ("vel_GetRbuffer", "vel_GetGbuffer", "Vel_GetBbuffer")
SETTERS = ("vel_SetRbuffer", "vel_SetGBuffer", "vel_SetBBuffer")
DESCRIPTORS = "Vellumark.Vellumark_Class.Descriptors"


def beside_krita(tour):
    krita = KritaDesk(tour)
    krita.ask(f"animation({WIDTH}, {HEIGHT}, {FRAMES}, {FIRST}, {RATE})", 300)
    drawing = exported(tour, krita, "drawing")
    lay_out(tour, krita)
    sheet = start_sheet(tour, krita)
    follow_rows(tour, krita, sheet)
    play(tour, krita, sheet)
    film(tour, krita, sheet, drawing)
    measure(krita)
    change_theme(tour, krita, sheet)
    close_drawing(tour, krita, sheet)
    other_spaces(tour, krita)
    quit_krita(tour, krita)


def planes_of(path):
    """Red, green and blue of a picture."""
    with Image.open(path) as picture:
        return [channel.tobytes() for channel in picture.convert("RGB").split()]


def digests(folder):
    names = sorted(os.listdir(folder))
    return [[hashlib.sha256(plane).hexdigest() for plane in planes_of(os.path.join(folder, name))] for name in names]


def exported(tour, krita, which):
    """The digests of the planes that Krita's own export of each frame has."""
    folder = os.path.join(tour.homes, f"export-{time.monotonic_ns()}")
    krita.ask(f"export({which!r}, {folder!r})", 600)
    return digests(folder)


def lay_out(tour, krita):
    """Krita as an animator has it: a document with a name, its timeline in sight, room for the sheet beside it."""
    krita.ask(f"save('drawing', {os.path.join(tour.homes, 'frogs.kra')!r})", 300)
    krita.ask("show_timeline()")
    krita.window.resize(1216, 900)
    krita.window.move(8, 30)


def start_sheet(tour, krita):
    krita.choose("Tools", "Scripts", "Exposure sheet")
    sheet = Sheet(tour.desk, krita.process, host=krita)
    sheet.main.move(1236, 30)
    sheet.resize(654, 880)
    tour.whole("krita/0-started", "the sheet beside Krita, started from Krita's menu")
    # Chosen again, the menu item brings the sheet forward.
    krita.window.front()
    krita.choose("Tools", "Scripts", "Exposure sheet")
    wait_for("the sheet to come forward", lambda: tour.desk.active_window() == sheet.main.id)
    tour.note(krita_rate=str(krita.call("Vel_GetFrameRate")), krita_frames=int(krita.call("vel_GetTotalFrames")),
              krita_size=[int(krita.call("vel_BufferWidth")), int(krita.call("vel_BufferHeight"))],
              krita_folder=str(krita.call("Vel_GetAppDir")) == tour.homes,
              krita_wallpaper=os.path.basename(str(krita.call("Vel_WallpaperFilename"))))
    return sheet


def follow_rows(tour, krita, sheet):
    sheet.open_wave(WAVE_FILE)
    sheet.wait_title("35 frames")
    times = []
    for row in (7, 3, 10):
        sheet.click_row(row)
        wait_for("Krita to follow", lambda r=row: krita.ask("facts('drawing')")["time"] == FIRST + r - 1)
        times.append(row)
    # A copy, since what the sheet holds is kept beside its file when its document is closed.
    copied = shutil.copytree(os.path.dirname(SAMPLE_SHEET), os.path.join(tour.homes, "frogs"))
    sheet.open_sheet(os.path.join(copied, os.path.basename(SAMPLE_SHEET)))
    sheet.go_home()
    sheet.click_row(27)
    wait_for("Krita to follow", lambda: krita.ask("facts('drawing')")["time"] == FIRST + 26)
    tour.desk.settle()
    tour.picture("krita/1-following", "Krita's time slider on the frame of the sheet's row",
                 tour.desk.see((0, 0, 1906, 940)))
    krita.call("Vel_GotoFrame", "i", -1)
    wait_for("the first frame", lambda: krita.ask("facts('drawing')")["time"] == FIRST)
    krita.call("Vel_GotoFrame", "d", 1000.0)
    wait_for("the last frame", lambda: krita.ask("facts('drawing')")["time"] == FIRST + FRAMES - 1)
    tour.note(krita_followed=times)


def play(tour, krita, sheet):
    sheet.choose("24 fps")
    sheet.answer("alt+y")
    sheet.wait_title("24 fps")
    tour.note(krita_took_24=krita.ask("facts('drawing')")["rate"] == 24)
    sheet.go_home()
    krita.ask("watch_time()")
    sheet.press("play")
    # The sound has 71 frames: beyond Krita's last one it stays there.
    wait_for("Krita to reach its last frame",
             lambda: krita.ask("facts('drawing')")["time"] == FIRST + FRAMES - 1, 60)
    sheet.desk.settle()
    seen = krita.ask("stop_watching()")
    run = [(when, moment) for when, moment in seen if moment > FIRST]
    seconds = run[-1][0] - run[0][0]
    tour.note(krita_played=[moment - FIRST for _, moment in run], krita_played_seconds=seconds)
    print(f"Krita followed {len(run)} frames in {seconds:.2f} s of playback: {(len(run) - 1) / seconds:.1f} a second")


def film(tour, krita, sheet, drawing):
    sheet.main.front()
    krita.ask("passed.clear()")
    before = krita.ask("facts('drawing')")
    painter = way_in(tour, sheet, "krita/")
    tour.note(krita_retrieved=compare(krita.ask("passed"), "get", drawing))
    painter.window.move(40, 560)
    stamp(tour, painter, "krita/")
    shoot(tour, krita, painter, "krita_shot", drawing)
    tour.whole("krita/5-shot", "the roll as a new document of Krita's, in a window of its own")
    painter.window.front()
    painter.click(WIGGLE)
    shoot(tour, krita, painter, "krita_wiggled", drawing)
    done(tour, painter, "krita/")
    after = krita.ask("facts('drawing')")
    tour.note(krita_windows=krita.ask("windows()"),
              krita_drawing_kept=[before[key] == after[key] for key in ("keys", "layers", "clip", "modified")])


def shoot(tour, krita, painter, name, drawing):
    documents = len(krita.ask("windows()"))
    krita.ask("passed.clear()")
    painter.click(SHOOT)
    wait_for("the new animation", lambda: len(krita.ask("windows()")) > documents, 60)
    wait_for("the last frame", lambda: int(krita.call("vel_GetTotalFrames")) == ROLL_LENGTH)
    painter.desk.settle()
    passed = krita.ask("passed")
    shot = exported(tour, krita, "Roll")
    facts = krita.ask("facts('Roll')")
    cells = [next((cell for cell, planes in enumerate(drawing) if planes == frame), None) for frame in shot]
    tour.note(**{name: compare(passed, "set", shot), name + "_facts": facts, name + "_cells": cells})


def compare(passed, member, exports):
    """How many planes passed, and how many of them aren't Krita's own export of that frame."""
    planes = [entry for entry in passed if entry[0] == member]
    return len(planes), sum(digest != exports[frame][channel] for _, frame, channel, digest in planes)


def measure(krita):
    """48 frames to and fro, by a client that does nothing else with them, either way of passing planes."""
    krita.ask(f"animation({MEASURED_WIDTH}, {MEASURED_HEIGHT}, {FRAMES})", 300)
    krita.choose("Tools", "Scripts", "Exposure sheet")
    wait_for("the drawing to be the host's", lambda: int(krita.call("vel_BufferWidth")) == MEASURED_WIDTH - 1)
    store = {}
    for way, interface in (("bytes", "Vellumark.Vellumark_Class"), ("descriptors", DESCRIPTORS)):
        began = time.monotonic()
        for frame in range(FRAMES):
            krita.call("Vel_GotoFrameAdv", "ii", frame, 3)
            planes = [krita.call(getter, interface=interface) for getter in GETTERS]
            store[frame] = planes if way == "bytes" else [read(plane) for plane in planes]
        print(f"{FRAMES} frames of {MEASURED_WIDTH} by {MEASURED_HEIGHT} retrieved by {way} in {time.monotonic() - began:.2f} s")
    lent = [os.memfd_create("plane", os.MFD_ALLOW_SEALING) for _ in SETTERS]
    for way in ("bytes", "descriptors"):
        krita.call("vel_CreateAnimAdv", "ii", FRAMES, 2)
        began = time.monotonic()
        for frame in range(FRAMES):
            krita.call("Vel_GotoFrameAdv", "ii", frame, 3)
            for setter, plane, memory in zip(SETTERS, store[frame], lent):
                if way == "bytes":
                    krita.call(setter, "ay", dbus.ByteArray(plane))
                else:
                    krita.call(setter, "h", write(memory, plane), interface=DESCRIPTORS)
        krita.call("vel_StatusClose")
        print(f"{FRAMES} frames of {MEASURED_WIDTH} by {MEASURED_HEIGHT} shot by {way} in {time.monotonic() - began:.2f} s")
        krita.close("Roll")


def read(descriptor):
    number = descriptor.take()
    try:
        return os.pread(number, MEASURED_WIDTH * MEASURED_HEIGHT, 0)
    finally:
        os.close(number)


def write(memory, plane):
    os.pwrite(memory, plane, 0)
    fcntl.fcntl(memory, fcntl.F_ADD_SEALS, fcntl.F_SEAL_SHRINK | fcntl.F_SEAL_GROW)
    return dbus.types.UnixFd(memory)


def change_theme(tour, krita, sheet):
    """The sheet takes on Krita's colours while it is open."""
    def look():
        return list(sheet.see(LIST).getpixel((60, 3))), os.path.basename(str(krita.call("Vel_WallpaperFilename")))
    sheet.main.front()
    sheet.desk.settle()
    dark = look()
    krita.ask("choose_theme('Krita bright')")
    wait_for("the sheet to change its colours", lambda: look()[0] != dark[0])
    sheet.desk.settle()
    tour.note(krita_themes=[dark, look()], krita_settings=settings_color(krita, "Textbox_Fill_Color"))
    tour.whole("krita/8-bright", "the sheet in the colours of Krita's bright theme")
    krita.ask("choose_theme('Krita dark')")
    wait_for("the sheet to be dark again", lambda: look()[0] == dark[0])


def settings_color(krita, key):
    with open(os.path.join(krita.variables["XDG_CONFIG_HOME"], "vellumark.ini"), encoding="utf-8") as file:
        number = next(int(line.partition("=")[2]) for line in file if line.startswith(key + "="))
    return [number % 256, number // 256 % 256, number // 65536]


def close_drawing(tour, krita, sheet):
    """A document that is closed is an error in words for the sheet, and nothing more for Krita."""
    for which in ("Roll", "Roll", "drawing", "Frogs"):
        krita.close(which)
    try:
        krita.call("vel_GetTotalFrames")
        words = ""
    except dbus.DBusException as error:
        words = error.get_dbus_message()
    sheet.click_row(4)
    box = sheet.desk.window(MESSAGE_TITLE)
    tour.portrait("krita/9-closed", "the sheet's report when its document has been closed in Krita", box)
    box.front()
    sheet.desk.keys("Return")
    sheet.desk.gone(sheet.main)
    wait_for("the host's name to be given back", lambda: not krita.is_host())
    tour.note(krita_closed_words=words, krita_lives=krita.ask("1 + 1") == 2)


def other_spaces(tour, krita):
    """Documents of other depths and colour spaces, one after another for the same sheet."""
    results = {}
    for space in (("RGBA", "U16"), ("RGBA", "F32"), ("GRAYA", "U8"), ("CMYKA", "U8")):
        krita.ask(f"animation(90, 60, 6, space={space!r}, opaque=True)")
        krita.choose("Tools", "Scripts", "Exposure sheet")
        wait_for("the host", krita.is_host)
        wait_for("the document", lambda: int(krita.call("vel_BufferWidth")) == 89)
        folder = os.path.join(tour.homes, "export-" + "-".join(space))
        krita.ask(f"export('drawing', {folder!r}, 'bmp')")
        differ = 0
        for frame, exports in enumerate(digests(folder)):
            krita.call("Vel_GotoFrameAdv", "ii", frame, 3)
            differ += sum(hashlib.sha256(bytes(krita.call(getter))).hexdigest() != digest
                          for getter, digest in zip(GETTERS, exports))
        results["/".join(space)] = differ
        krita.close("drawing")
    tour.note(krita_spaces=results)


def quit_krita(tour, krita):
    """The sheet outlives its host, so that it can say so."""
    main = krita.desk.window(MAIN_TITLE)
    krita.quit()
    tour.note(krita_outlived=krita.desk.find(MAIN_TITLE) != [])
    main.close()
    krita.desk.gone(main)
