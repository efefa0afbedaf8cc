"""Every way in which a host may fail the tool, one after the other.

Run under dbus-run-session: fault_test.py <session driver>. Wherever the tool ends by it, the sheet is rescued with all
that it held.
"""

import fcntl
import os
import socket
import unittest

import dbus

from logging_host import DESCRIPTORS, GETTERS, memory
from tool_session import Session

PAINTER = ["frame-painter", "length=2", "shoot", "done", "quit"]
RESULTS = ["Vel_GetAppDir", "Vel_WallpaperFilename", "Vel_GetFrameRate", "vel_BufferWidth", "vel_BufferHeight",
           "vel_GetTotalFrames", *GETTERS]
# Where a failed call is passed over: the nth call of the member.
GUARDED = {("Vel_WallpaperFilename", 1), ("Vel_WallpaperFilename", 2), ("Vel_GetAppDir", 2), ("vel_StatusOpen", 1),
           *(("vel_Status", nth) for nth in range(1, 5))}
# Under the address sanitizer the bus library's buffer is copied whole with every piece of a message that arrives: there
# a plane of 64 MiB that comes as bytes takes minutes.
LARGE_MESSAGES = "ADDRESS_SANITIZER" not in os.environ


class Faults(Session):
    def case(self, *, steps=PAINTER, expected=""):
        """One session with the host as it is now; `expected` in the report, or none of it if it is None."""
        status, seen, reported = self.run_tool(f"give-up-when={self.silent}", "shown", *steps)
        self.assertEqual(status, 0 if expected is None else 1, reported)
        self.assertIn(expected or "", reported)
        if expected is not None and any(line.startswith(("held cell", "held sound /")) for line in seen):
            self.check_rescued(seen, reported)
        else:
            self.assertEqual(self.rescued(), [], reported)

    def begin(self, **host):
        super().begin(**host)
        self.silent = os.path.join(self.folder.name, "silent")
        self.host.when_silent = lambda: open(self.silent, "w").close()

    def whole(self):
        """A session that goes through all there is: a sheet made, retimed and played."""
        comment = "hello, \"frog\" \N{LATIN SMALL LETTER U WITH DIAERESIS}"
        return [f"wave={self.sound}", "row=2", "cell=2,1,A ", f"cell=3,2,{comment}", "track=1,2,9", "hide",
                "cell=5,1,Closed ", "track=0,3,255", "rate=24", "cell=9,1,M ", "row=1", *PAINTER]

    def test_each_member_fails_in_each_way(self):
        self.case(steps=self.whole(), expected=None)
        names = self.host.names()
        others = [dbus.UInt64(1), (), dbus.Array([1], signature="i"), (dbus.Int32(1), dbus.Int32(1))]
        for member in sorted(set(names)):
            faults = [("error", 1), ("error", names.count(member)), ("silence", 1), ("leave", 1)]
            faults += [(other, 1) for other in others if member in RESULTS]
            for how, nth in faults:
                with self.subTest(member=member, nth=nth, how=how):
                    self.begin_anew()
                    self.host.fail(member, nth, how)
                    guarded = (member, nth) in GUARDED
                    words = f"The host's member {'' if guarded else member}"
                    # A guarded call passes over the failure; the next one then meets a host that has gone or was given up.
                    goes_on = guarded and how not in ("silence", "leave")
                    self.case(steps=self.whole(), expected=None if goes_on else words)

    def test_descriptors(self):
        def some(make):
            return lambda plane: dbus.types.UnixFd(make(plane))

        def filled(seals, extra=0):
            def make(plane):
                made = memory(len(plane) + extra, 0)
                os.pwrite(made, plane, 0)
                fcntl.fcntl(made, fcntl.F_ADD_SEALS, seals)
                return made
            return some(make)

        both, no_memory, no_seal = fcntl.F_SEAL_SHRINK | fcntl.F_SEAL_GROW, "isn't one of shared memory", "isn't sealed"
        faults = [
            (some(lambda plane: memory(len(plane) - 1)), "11 bytes where 12"),
            (some(lambda plane: memory(0)), "of no size"),
            (filled(0), no_seal), (filled(fcntl.F_SEAL_SHRINK), no_seal), (filled(fcntl.F_SEAL_GROW), no_seal),
            (some(lambda plane: os.pipe()[0]), no_memory),
            (some(lambda plane: socket.socketpair()[0].detach()), no_memory),
            (some(lambda plane: os.open("/dev/zero", os.O_RDONLY)), no_memory),
            (some(lambda plane: os.open("/", os.O_RDONLY)), no_memory),
            (some(lambda plane: os.open(__file__, os.O_RDONLY)), no_memory),
            (lambda plane: "text", "a text where a byte table"),
            # What a host is free to do: pass other memory each time, or longer memory, or plain bytes.
            (filled(both), None), (filled(both, 5000), None), (filled(both | fcntl.F_SEAL_WRITE), None),
            (dbus.ByteArray, None),
        ]
        for getter in GETTERS:
            for number, (descriptor, words) in enumerate(faults):
                with self.subTest(getter=getter, fault=number):
                    self.begin_anew()
                    self.host.descriptors_in = DESCRIPTORS
                    self.host.descriptor_for[getter] = descriptor
                    self.case(expected=words and f"The host's member {getter} failed: it " and words)

    def test_sizes(self):
        below, most, above, twice = (7935, 8319), (8191, 8191), (8191, 8192), (8191, 16383)
        for interface, setters_take_bytes, size, too_many in [
                (DESCRIPTORS, False, below, None), (DESCRIPTORS, False, most, None), (DESCRIPTORS, False, above, None),
                (DESCRIPTORS, False, twice, None), (None, True, below, None), (None, True, most, None),
                (DESCRIPTORS, True, above, 67117056), (DESCRIPTORS, True, twice, 134217728)]:
            if interface is None and not LARGE_MESSAGES:
                continue
            with self.subTest(interface=interface, setters_take_bytes=setters_take_bytes, size=size):
                self.begin_anew(frames=2, width=size[0], height=size[1])
                self.host.descriptors_in = interface
                self.host.setters_take_bytes = setters_take_bytes
                self.case(steps=["frame-painter", "length=1", "shoot", "done", "quit"],
                          expected=too_many and "The host's member vel_SetRbuffer failed: a plane of "
                          f"{too_many} bytes is more than a message of the bus carries")


if __name__ == "__main__":
    unittest.main(verbosity=2)
