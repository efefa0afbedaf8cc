"""The recorder: started by the sheet, fed by a device that reads a file, its take saved and opened."""

import os
import struct
import time

from desk import differs, wait_for

SAMPLES_A_SECOND, SECONDS = 44100, 20


def voice():
    """No two stretches of it are alike, so that what was recorded is found in it again at one place alone."""
    state, samples = 1, []
    for _ in range(SAMPLES_A_SECOND * SECONDS):
        state = state * 1103515245 + 12345 & 0x7FFFFFFF
        samples.append((state >> 16) // 8 - 2048)
    return struct.pack(f"<{len(samples)}h", *samples)


def record_and_open(tour):
    heard = os.path.join(tour.homes, "voice.raw")
    with open(heard, "wb") as file:
        file.write(voice())
    sheet = tour.start(SDL_AUDIODRIVER="disk", SDL_DISKAUDIOFILEIN=heard,
                       SDL_DISKAUDIOFILE=os.path.join(tour.homes, "listened.raw"))
    sheet.main.move(20, 20)
    sheet.choose("Record audio...")
    recorder = tour.desk.window("^Recorder$")
    tour.portrait("recorder/1-ready", "the recorder, as \"Record audio...\" starts it", recorder)
    record(tour, recorder)
    path = save(tour, sheet, recorder)
    recorder.front()
    tour.desk.keys("ctrl+q")
    tour.desk.gone(recorder)
    sheet.main.front()
    sheet.open_wave(path)
    tour.note(recorder_title=wait_taken(sheet))
    tour.portrait("recorder/4-opened", "the take on the sheet's timeline", sheet.main)
    tour.note(recorder_exit_status=sheet.quit())


def wait_taken(sheet):
    wait_for("the take in the title", lambda: " 0 frames" not in sheet.main.title())
    return sheet.main.title()


def record(tour, recorder):
    """Records for a second, and listens to some of it."""
    desk = tour.desk
    recorder.front()
    desk.keys("alt+r")
    wait_for("the level", lambda: shows_level(recorder))
    time.sleep(1)
    tour.picture("recorder/2-recording", "a recording, and its level", desk.see(recorder.framed_area()))
    desk.keys("alt+t")
    wait_for("the recording's end", lambda: not shows_level(recorder))
    recorded = desk.settle(recorder.area())
    desk.keys("alt+l")
    wait_for("the take to be heard", lambda: differs(recorded, recorder.see()))
    desk.keys("alt+t")
    desk.settle(recorder.area())


def save(tour, sheet, recorder):
    path = tour.path("recorder/take.wav")
    recorder.front()
    tour.desk.keys("alt+s")
    sheet.file_dialog("^Save the recording$", path)
    wait_for("the saved take", lambda: os.path.exists(path))
    tour.portrait("recorder/3-saved", "what was recorded, saved", recorder)
    tour.left("recorder/take.wav", "the take as saved")
    return path


def shows_level(recorder):
    """The meter's bar is the one thing in the window that is green."""
    return any(green > red + 40 and green > blue + 20 for red, green, blue in recorder.see().getdata())
