"""A host in another language: it writes down each call with its arguments and can be told to fail.

Members, types and effects are those that the tool expects of its host; the frames are small.
"""

import fcntl
import os
import time

import dbus
import dbus.bus
from dbus.lowlevel import (HANDLER_RESULT_HANDLED, HANDLER_RESULT_NOT_YET_HANDLED, ErrorMessage,
                           MethodCallMessage, MethodReturnMessage)
from gi.repository import GLib

NAME = "Vellumark.Vellumark_Class"
PATH = "/Vellumark/Vellumark_Class"
FORM = "Vellumark.Form"
DESCRIPTORS = NAME + ".Descriptors"
INTROSPECTABLE = "org.freedesktop.DBus.Introspectable"

# What each member may be called with.
SIGNATURES = {
    "Vel_SendFormObject": ["oi"], "Vel_GetAppDir": [""], "Vel_WallpaperFilename": [""],
    "Vel_GetFrameRate": [""], "vel_SetFrameRate": ["d"], "vel_BufferWidth": [""], "vel_BufferHeight": [""],
    "vel_GetTotalFrames": [""], "Vel_GotoFrame": ["i", "d"], "Vel_GotoFrameAdv": ["ii"],
    "vel_GetRbuffer": [""], "vel_GetGbuffer": [""], "Vel_GetBbuffer": [""], "vel_SetRbuffer": ["ay"],
    "vel_SetGBuffer": ["ay"], "vel_SetBBuffer": ["ay"], "vel_CreateAnimAdv": ["ii"], "vel_StatusOpen": ["s"],
    "vel_Status": ["d"], "vel_StatusClose": [""],
}
GETTERS = {"vel_GetRbuffer": 0, "vel_GetGbuffer": 1, "Vel_GetBbuffer": 2}
SETTERS = {"vel_SetRbuffer": 0, "vel_SetGBuffer": 1, "vel_SetBBuffer": 2}
SEALS = fcntl.F_SEAL_SHRINK | fcntl.F_SEAL_GROW


def memory(size, seals=SEALS):
    """A descriptor of that much shared memory."""
    descriptor = os.memfd_create("plane", os.MFD_CLOEXEC | os.MFD_ALLOW_SEALING)
    os.ftruncate(descriptor, size)
    fcntl.fcntl(descriptor, fcntl.F_ADD_SEALS, seals)
    return descriptor


def turn_until(done, seconds):
    """Handles what comes over the bus until it is done; says whether it was in time."""
    end = time.monotonic() + seconds
    while not done() and time.monotonic() < end:
        if not GLib.MainContext.default().iteration(False):
            time.sleep(0.0005)
    return done()


def description(interface, directions):
    """Plane members of one interface with descriptors, as introspection gives them."""
    methods = "".join(f'<method name="{member}"><arg type="h"{direction}/></method>'
                      for member, direction in directions.items())
    return f'<node><interface name="{interface}">{methods}</interface></node>'


class LoggingHost:
    """Frames of 3 by 2, so planes of 12 bytes; frame f, channel c is filled with 10 f + c."""

    def __init__(self, bus, frames=3, width=3, height=2):
        self.bus = bus
        self.width, self.height = width, height
        size = (width + 1) * (height + 1)
        # Large frames are all alike: what counts is how many bytes there are.
        planes = [bytes([c]) * size for c in range(30 if size < 1000 else 1)]
        self.frames = [[planes[(10 * f + c) % len(planes)] for c in range(3)] for f in range(frames)]
        self.descriptors_in = None  # the interface that passes planes by descriptor
        self.setters_take_bytes = False  # by which then only getters pass them
        self.descriptor_for = {}    # getter: a routine that gives the descriptor to pass in its stead
        self.memories = {}          # getter: the descriptor that it passes
        self.seen_memories = set()  # what setters have passed
        self.buffer_frame = 0
        self.calls = []   # (member, argument, ...)
        self.faults = {}  # (member, n): what happens instead of an answer
        self.answer_later = {}  # member: routine that is given a routine that answers
        self.when_silent = lambda: None
        self.forms = {}   # path: sender
        self.shows_late = False
        self.show_errors = []  # of windows that came up, or what they said instead
        bus.add_message_filter(self._filter)
        bus.request_name(NAME, dbus.bus.NAME_FLAG_DO_NOT_QUEUE)

    def fail(self, member, nth, how):
        """At the nth call of the member: "error", "leave" the bus, no answer ("silence"), another value as
        the answer, or a tuple of values."""
        self.faults[member, nth] = how

    def names(self):
        return [call[0] for call in self.calls]

    def call_form(self, path, routine, then):
        """Calls a routine of a window; `then` gets the error's text or None."""
        self.bus.call_async(self.forms[path], path, FORM, routine, "", (), lambda *_: then(None),
                            lambda error: then(error.get_dbus_message()), timeout=60)

    def _filter(self, connection, message):
        if not isinstance(message, MethodCallMessage) or message.get_path() != PATH:
            return HANDLER_RESULT_NOT_YET_HANDLED
        member = message.get_member()
        if message.get_interface() == INTROSPECTABLE:
            self._describe(message)
            return HANDLER_RESULT_HANDLED
        arguments = message.get_args_list(byte_arrays=True)
        shared = GETTERS if self.setters_take_bytes else {**GETTERS, **SETTERS}
        by_descriptor = self.descriptors_in if member in shared else None
        if message.get_signature() not in (["", "h"] if by_descriptor else SIGNATURES[member]):
            member = f"{member} called with {message.get_signature()}"
        if message.get_interface() != (by_descriptor or NAME):
            member = f"{member} called in {message.get_interface()}"
        if by_descriptor and arguments:
            arguments = [self._read(arguments[0].take())]
        self.calls.append((member, *map(plain, arguments)))
        fault = self.faults.get((member, self.names().count(member)))
        if fault == "leave":
            connection.close()
        elif fault == "error":
            self._refuse(message, "the host says no")
        elif fault == "wordless":
            self._refuse(message, "")
        elif fault == "silence":
            self.when_silent()
        elif isinstance(fault, tuple):
            self._reply(message, *fault)
        elif fault is not None:
            self._reply(message, fault)
        elif member == "Vel_SendFormObject":
            self._send_form_object(message, str(arguments[0]))
        else:
            self._answer(message, member, arguments)
        return HANDLER_RESULT_HANDLED

    def _send_form_object(self, message, path):
        self.forms[path] = message.get_sender()
        if self.shows_late:
            self._reply(message)
            GLib.timeout_add(300, lambda: self.call_form(path, "Show", self.show_errors.append))
            return
        def shown(error):
            self.show_errors.append(error)
            self._refuse(message, error) if error else self._reply(message)
        self.call_form(path, "Show", shown)

    def _answer(self, message, member, arguments):
        def answer():
            self._reply(message, *self._run(member, arguments))
        self.answer_later.get(member, lambda later: later())(answer)

    def _run(self, member, arguments):
        """Does what the member does and gives its results."""
        if member in GETTERS:
            plane = self.frames[self.buffer_frame][GETTERS[member]]
            return [self._pass(member, plane) if self.descriptors_in else dbus.ByteArray(plane)]
        if member in SETTERS:
            self.frames[self.buffer_frame][SETTERS[member]] = bytes(arguments[0])
        if member == "Vel_GotoFrameAdv":
            self.buffer_frame = int(arguments[0])
        if member == "vel_CreateAnimAdv":
            self.frames = [[b"", b"", b""] for _ in range(int(arguments[0]))]
        results = {"Vel_GetAppDir": "/", "Vel_WallpaperFilename": "", "Vel_GetFrameRate": "12",
                   "vel_BufferWidth": dbus.Int32(self.width), "vel_BufferHeight": dbus.Int32(self.height),
                   "vel_GetTotalFrames": dbus.Int32(len(self.frames))}
        return [results[member]] if member in results else []

    def _describe(self, message):
        if not self.descriptors_in:
            error = ErrorMessage(message, "org.freedesktop.DBus.Error.UnknownMethod", "no description")
            self.bus.send_message(error)
            return
        direction = {True: ' direction="out"', False: ""}  # "in" is what a method's argument is unless it says
        members = GETTERS if self.setters_take_bytes else {**GETTERS, **SETTERS}
        self._reply(message, description(self.descriptors_in, {m: direction[m in GETTERS] for m in members}))

    def _pass(self, getter, plane):
        """The plane in memory that the host makes once for each getter."""
        if getter in self.descriptor_for:
            return self.descriptor_for[getter](plane)
        if getter not in self.memories:
            self.memories[getter] = memory(len(plane))
        os.pwrite(self.memories[getter], plane, 0)
        return dbus.types.UnixFd(self.memories[getter])

    def _read(self, descriptor):
        """What a setter has passed, which nobody can shrink."""
        assert fcntl.fcntl(descriptor, fcntl.F_GET_SEALS) & SEALS == SEALS
        status = os.fstat(descriptor)
        self.seen_memories.add(status.st_ino)
        plane = dbus.ByteArray(os.pread(descriptor, status.st_size, 0))
        os.close(descriptor)
        return plane

    def _reply(self, message, *results):
        reply = MethodReturnMessage(message)
        reply.append(*results)
        self.bus.send_message(reply)

    def _refuse(self, message, text):
        self.bus.send_message(ErrorMessage(message, "Vellumark.Error.Failed", text))


def plain(value):
    """An argument as a Python value: a double as float, so that 2.0 and 2 stay apart in how they print."""
    if isinstance(value, dbus.Double):
        return float(value)
    if isinstance(value, dbus.ByteArray):
        return bytes(value)
    return str(value) if isinstance(value, str) else int(value)
