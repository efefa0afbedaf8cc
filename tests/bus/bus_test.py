"""The tool beside a host in another process and another language.

Run under dbus-run-session: bus_test.py <session driver>. The driver is the tool with a user made of words.
"""

import os
import unittest

import dbus
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib

import logging_host
from tool_session import Session

START = [("Vel_SendFormObject", "/Form1", 0), ("Vel_GetAppDir",), ("Vel_WallpaperFilename",),
         ("Vel_GetFrameRate",)]


def follow(calls):
    """The frames that the tool has sent the host to, as they were written on the wire."""
    return [call[1] for call in calls if call[0] == "Vel_GotoFrame"]


class BusSession(Session):
    def test_starts_shows_early_or_late_and_ends(self):
        for self.host.shows_late in (True, False):
            self.host.calls.clear()
            status, seen, _ = self.run_tool("shown", "quit")
            self.assertEqual((status, seen, self.host.calls[:4]), (0, [], START))
        # The empty sheet stands on its header row, frame -1, and that is sent as it is.
        self.assertEqual(set(self.host.calls[4:]), {("vel_GetTotalFrames",), ("Vel_GotoFrame", -1)})

    def test_plays_a_whole_session(self):
        # A host may list its descriptors in an interface of their own or beside the bytes.
        for interface in (None, logging_host.DESCRIPTORS, logging_host.NAME):
            with self.subTest(descriptors=interface):
                self.begin_anew()
                self.host.descriptors_in = interface
                self.play_a_whole_session()
                # Each channel has one piece of memory, made once.
                self.assertEqual(len(self.host.seen_memories), 3 if interface else 0)

    def play_a_whole_session(self):
        status, seen, reported = self.run_tool(
            "shown", f"wave={self.sound}", "row=5", "row=2", "rate=24", "play", "played", "frame-painter", "length=4", "stamp=2",
            "shoot", "done", "quit")
        self.assertEqual((status, reported.count("failed")), (0, 0), reported)
        self.assertEqual(seen, ["message Use the frame rate in the main program as well?",
                                "message Exit Frame Painter"])
        calls = self.host.calls
        names = self.host.names()
        # Row 5 is frame 4, past the last of the host's three; row 2 is frame 1.
        before_rate = calls[:names.index("vel_SetFrameRate")]
        self.assertEqual(before_rate[-4:], [("vel_GetTotalFrames",), ("Vel_GotoFrame", 2),
                                            ("vel_GetTotalFrames",), ("Vel_GotoFrame", 1)])
        # On the wire a whole frame is an integer.
        self.assertEqual({type(frame) for frame in follow(before_rate)}, {int})
        self.assertEqual(calls[len(before_rate)], ("vel_SetFrameRate", 24.0))
        # A playback's advance is a fraction.
        self.assertEqual({type(frame) for frame in follow(calls)}, {int, float})

        retrieval = names.index("vel_BufferWidth")
        expected = [("vel_BufferWidth",), ("vel_BufferHeight",), ("vel_GetTotalFrames",),
                    ("vel_StatusOpen", "Retrieving frames..."), ("vel_Status", 0.0)]
        for frame in range(3):
            expected += [("Vel_GotoFrameAdv", frame, 3), ("vel_GetRbuffer",), ("vel_GetGbuffer",),
                         ("Vel_GetBbuffer",), ("vel_Status", 100 / 3 * frame)]
        expected += [("Vel_GotoFrame", 0), ("vel_StatusClose",), ("Vel_SendFormObject", "/FPOptions", 0),
                     ("Vel_SendFormObject", "/FramePainter", 0), ("Vel_WallpaperFilename",)]
        self.assertEqual(calls[retrieval:retrieval + len(expected)], expected)

        white, cell = [b"\xff" * 12] * 3, [bytes([10 + c]) * 12 for c in range(3)]
        roll = [white, white, cell, white]
        expected = [("vel_StatusOpen", "Saving..."), ("vel_CreateAnimAdv", 4, 2), ("vel_StatusOpen", "Developing...")]
        for frame, (red, green, blue) in enumerate(roll):
            expected += [("Vel_GotoFrameAdv", frame, 3), ("vel_SetRbuffer", red), ("vel_SetGBuffer", green),
                         ("vel_SetBBuffer", blue), ("vel_Status", 25.0 * frame)]
        expected += [("Vel_GotoFrame", 0), ("vel_StatusClose",)]
        shooting = calls.index(expected[0])
        self.assertEqual(calls[shooting:shooting + len(expected)], expected)
        self.assertEqual(self.host.frames, roll)

    def test_playback_goes_on_in_silence(self):
        # As where the sound library can't be loaded.
        with open(os.path.join(self.folder.name, "libSDL2-2.0.so.0"), "wb"):
            status, _, _ = self.run_tool("shown", f"wave={self.sound}", "play", "played", "quit",
                                         LD_LIBRARY_PATH=self.folder.name)
        self.assertEqual((status, max(follow(self.host.calls))), (0, 2))

    def test_calls_back_during_a_call_and_nothing_else_runs(self):
        order = []

        def call_back_first(answer):
            def called_back(error):
                order.append(error)
                GLib.timeout_add(100, answer)
            if "/Form1" in self.host.forms and "Vel_GotoFrame" in self.host.names():
                self.host.call_form("/Form1", "PrefsCallback", called_back)
            else:
                answer()

        self.host.answer_later["vel_GetTotalFrames"] = call_back_first
        status, seen, _ = self.run_tool("shown", f"wave={self.sound}", "row-amid-events=2", "quit")
        self.assertEqual(status, 0)
        self.assertEqual(set(order), {None})
        self.assertEqual(seen, ["moved", "event"])

    def test_a_window_tells_its_name_to_anyone_and_obeys_only_the_host(self):
        stranger = dbus.SessionBus(private=True, mainloop=DBusGMainLoop())
        stranger.set_exit_on_disconnect(False)
        properties, answers = "org.freedesktop.DBus.Properties", {}
        asked = [("/Form1", properties, "Get", ("Vellumark.Form", "Name")), ("/Form1", "Vellumark.Form", "Nonsense", ()),
                 ("/Form1", "Vellumark.Form", "PrefsCallback", ()), ("/Form2", "Vellumark.Form", "Show", ())]

        def ask(answer):
            for path, interface, routine, arguments in asked:
                def take(result, key=(path, routine)):
                    answers[key] = result.get_dbus_name() if isinstance(result, dbus.DBusException) else result
                    if len(answers) == len(asked):
                        stranger.close()
                        answer()
                stranger.call_async(self.host.forms["/Form1"], path, interface,
                                    routine, "s" * len(arguments), arguments, take, take)

        self.host.answer_later["Vel_GetFrameRate"] = ask
        status, _, reported = self.run_tool("shown", "quit")
        self.assertEqual(status, 0, reported)
        error = "org.freedesktop.DBus.Error."
        self.assertEqual(answers, {("/Form1", "Get"): "Form1", ("/Form1", "Nonsense"): error + "UnknownMethod",
                                   ("/Form1", "PrefsCallback"): error + "AccessDenied",
                                   ("/Form2", "Show"): error + "UnknownObject"})

    def test_an_answer_of_another_form_is_reported_by_member(self):
        painter = ["frame-painter", "length=2", "shoot", "done"]
        cases = [  # member, nth call, what happens, steps, words of the report
            ("Vel_GetAppDir", 1, "error", [], "the host says no"),
            ("Vel_GetAppDir", 1, "wordless", [], "Vellumark.Error.Failed"),
            ("Vel_GetFrameRate", 1, dbus.Int32(12), [], "an integer where a text"),
            ("vel_GetTotalFrames", 1, "12", [], "a text where an integer"),
            ("vel_GetTotalFrames", 1, dbus.Double(3), [], "a double where an integer"),
            ("vel_GetTotalFrames", 1, dbus.Int16(3), [], "a short integer where an integer"),
            ("vel_GetTotalFrames", 1, (), [], "nothing where an integer"),
            ("vel_GetTotalFrames", 1, dbus.Byte(3), [], "another type where an integer"),
            ("Vel_GetBbuffer", 3, dbus.ByteArray(bytes(13)), painter, "13 bytes where 12"),
            ("vel_GetGbuffer", 1, dbus.String("x"), painter, "a text where a byte table"),
        ]
        for member, nth, how, steps, report in cases:
            with self.subTest(member=member, nth=nth, how=how):
                self.begin_anew()
                self.host.fail(member, nth, how)
                self.host.shows_late = how == "error"  # when no call of the tool's waits for the window
                status, seen, reported = self.run_tool("shown", *steps, "quit")
                self.assertEqual(status, 1, reported)
                self.assertIn(f"The host's member {member} failed", reported)
                self.assertIn(report, reported)
                if not steps:
                    while not self.host.show_errors:
                        GLib.MainContext.default().iteration(True)
                    self.assertIn(report, self.host.show_errors[0])


if __name__ == "__main__":
    unittest.main(verbosity=2)
