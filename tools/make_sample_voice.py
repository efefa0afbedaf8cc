#!/usr/bin/env python3
"""Makes the sample: samples/frogs.wav, a line of synthetic speech, and samples/frogs.exp, its filled sheet.

Needs espeak-ng, whose library tells when each sound of speech begins; each frame gets the mouth of the sound
that takes up most of it, and no mouth where the one before is held.
"""

import ctypes
import math
import pathlib
import struct
import wave

LINE = "Five thin frogs jump and hum to the blue moon."
WORDS_PER_MINUTE = 165
FRAMES_PER_SECOND = 24

# Sounds in the synthesizer's own letters. Two mouths: one for each half of the sound.
MOUTHS = {
    "D": "Th", "T": "Th", "@": "E", "@2": "E", "@L": "L", "V": "A", "a": "A", "aa": "A", "aI": "A I", "aU": "A U",
    "eI": "E I", "E": "E", "I": "E", "I2": "E", "i": "E", "i:": "E", "0": "O", "O": "O", "O:": "O", "A:": "O",
    "oU": "O U", "u:": "U", "U": "U", "h": "", ";": "", "w": "W", "f": "F", "v": "V", "r": "R", "g": "G", "k": "K", "z": "S",
    "s": "S", "S": "Ch", "dZ": "Ch", "tS": "Ch", "m": "M", "b": "B", "p": "P", "n": "N", "d": "D", "t": "T",
    "l": "L", "_": "Closed", "_:": "Closed",
}
# A closed lip that is missed is seen at once, however short it is.
WEIGHTS = {"M": 3, "B": 3, "P": 3, "F": 2, "V": 2, "W": 2}
# The synthesizer tells the burst of a stop; lips or teeth have closed before it.
CLOSURE_SECONDS = 0.035
CLOSED_BEFORE = {"p", "b", "tS", "dZ"}
WORD, PHONEME, END = 1, 7, 0


class EventId(ctypes.Union):
    _fields_ = [("number", ctypes.c_int), ("name", ctypes.c_char_p), ("string", ctypes.c_char * 8)]


class Event(ctypes.Structure):
    _fields_ = [("type", ctypes.c_int), ("unique", ctypes.c_uint), ("text_position", ctypes.c_int),
                ("length", ctypes.c_int), ("milliseconds", ctypes.c_int), ("sample", ctypes.c_int),
                ("user_data", ctypes.c_void_p), ("id", EventId)]


def speak():
    """Samples per second, the 16-bit samples, (second, sound) pairs and (second, word) pairs."""
    library = ctypes.CDLL("libespeak-ng.so.1")
    callback_type = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.POINTER(ctypes.c_short), ctypes.c_int,
                                     ctypes.POINTER(Event))
    rate = library.espeak_Initialize(1, 0, None, 1)
    samples, sounds, words = bytearray(), [], []

    @callback_type
    def take(audio, count, events):
        if audio:
            samples.extend(ctypes.string_at(audio, 2 * count))
        i = 0
        while events[i].type != END:
            event = events[i]
            if event.type == PHONEME:
                sound = event.id.string.decode()
                sounds.append((event.sample / rate - (CLOSURE_SECONDS if sound in CLOSED_BEFORE else 0), sound))
            if event.type == WORD:
                start = event.text_position - 1
                words.append((event.sample / rate, LINE[start:start + event.length]))
            i += 1
        return 0

    library.espeak_SetSynthCallback(take)
    library.espeak_SetVoiceByName(b"en-us")
    library.espeak_SetParameter(1, WORDS_PER_MINUTE, 0)
    text = LINE.encode() + b"\0"
    library.espeak_Synth(text, ctypes.c_size_t(len(text)), 0, 0, 0, 1, None, None)
    library.espeak_Synchronize()
    return rate, struct.unpack(f"<{len(samples) // 2}h", samples), sounds, words


def mouth_spans(sounds, seconds):
    """(start, end, mouth) of each sound; a breath takes the mouth of the sound that follows."""
    spans = [(0.0, sounds[0][0], "Closed")]
    starts = [start for start, _ in sounds] + [seconds]
    for (start, sound), end in zip(sounds, starts[1:]):
        mouths = MOUTHS[sound].split() or [""]
        step = (end - start) / len(mouths)
        spans += [(start + i * step, start + (i + 1) * step, mouth) for i, mouth in enumerate(mouths)]
    following = "Closed"
    filled = []
    for start, end, mouth in reversed(spans):
        following = mouth or following
        filled.insert(0, (start, end, following))
    return filled


def mouths_of_frames(spans, frames, seconds):
    """A mouth for each frame, empty where the one before holds on."""
    frame_seconds = seconds / frames
    held = []
    for frame in range(frames):
        shares = {}
        for start, stop, mouth in spans:
            share = overlap(start, stop, frame, frame_seconds) * WEIGHTS.get(mouth, 1)
            shares[mouth] = shares.get(mouth, 0.0) + share
        held.append(max(shares, key=shares.get))
    show_short_sounds(held, spans, frame_seconds)
    return ["" if mouth == before else mouth + " " for before, mouth in zip([""] + held, held)]


def overlap(start, stop, frame, frame_seconds):
    """Seconds of a sound that fall on a frame."""
    return max(0.0, min(stop, (frame + 1) * frame_seconds) - max(start, frame * frame_seconds))


def show_short_sounds(held, spans, frame_seconds):
    """A vowel that its neighbours crowded out gets the frame that most of it falls on, if the mouth there is
    held for another frame."""
    for start, stop, mouth in spans:
        touched = range(int(start / frame_seconds), min(int(stop / frame_seconds) + 1, len(held)))
        if mouth not in {"A", "E", "I", "O", "U"} or any(held[frame] == mouth for frame in touched):
            continue
        best = max(touched, key=lambda frame: overlap(start, stop, frame, frame_seconds))
        if held[best] in held[best + 1:best + 2]:
            held[best] = mouth


def loudness(samples, frames):
    """Track values: the louder the frame, the higher (the smaller) the value."""
    values = []
    for frame in range(frames):
        part = samples[frame * len(samples) // frames:(frame + 1) * len(samples) // frames]
        level = math.sqrt(sum(s * s for s in part) / len(part))
        values.append(round(58 - 52 * min(1.0, level / 9000)))
    return values


def main():
    folder = pathlib.Path(__file__).resolve().parent.parent / "samples"
    rate, samples, sounds, words = speak()
    with wave.open(str(folder / "frogs.wav"), "wb") as file:
        file.setparams((1, 2, rate, len(samples), "NONE", ""))
        file.writeframes(struct.pack(f"<{len(samples)}h", *samples))
    seconds = len(samples) / rate
    rows = round(1 + FRAMES_PER_SECOND * seconds)
    frames = rows - 1
    mouths = mouths_of_frames(mouth_spans(sounds, seconds), frames, seconds)
    comments = [""] * frames
    for second, word in words:
        comments[int(second / seconds * frames)] = f'"{word}"'
    track_frames = round(FRAMES_PER_SECOND * seconds)
    lines = ["ExposureSheet02", str(FRAMES_PER_SECOND), "frogs.wav", "Reserved", "Reserved", f" {rows} ", " 3 ",
             "Reserved", "Reserved"]
    for frame in range(frames):
        lines += [str(frame), mouths[frame], comments[frame]]
    lines += ["Reserved"] * 4 + ["True", "Velocity"] + ["True"] * 4 + [f" {track_frames} "]
    for level in loudness(samples, track_frames):
        lines += [f" {level} ", " 32 ", " 32 ", " 32 "]
    (folder / "frogs.exp").write_bytes("".join(line + "\r\n" for line in lines).encode())
    for frame in range(frames):
        print(f"{frame:3} {frame / frames * seconds:6.3f}  {mouths[frame]:8}{comments[frame]}")


if __name__ == "__main__":
    main()
