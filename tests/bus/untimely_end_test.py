"""Ends that the user hasn't asked for, by other ways than a host that fails in a session: signals, failures of the
tool's own, a host or a bus that goes before any window is there.

Run under dbus-run-session: untimely_end_test.py <session driver> <the program>.
"""

import os
import signal
import subprocess
import sys
import unittest

import dbus
from dbus.mainloop.glib import DBusGMainLoop

PROGRAM = sys.argv.pop()

import tool_session  # noqa: E402  takes the driver from the arguments
from logging_host import LoggingHost, turn_until  # noqa: E402


class UntimelyEnd(tool_session.Session):
    def begin(self, **host):
        super().begin(**host)
        self.begun = os.path.join(self.folder.name, "begun")

    def sheet(self):
        return ["shown", f"wave={self.sound}", "cell=2,1,A ", "cell=3,2,hello, frog", "track=1,2,9", "held"]

    def test_by_a_signal(self):
        ways = {  # what is under way when it comes, and whether the host then answers
            "nothing": (None, True), "a call to the host": ("row=5", False),
            "a walk through the sheet": ("save=frog.exp", True)}
        for number in (signal.SIGTERM, signal.SIGHUP, signal.SIGINT):
            for way, (step, answers) in ways.items():
                with self.subTest(number=number, way=way):
                    self.begin_anew()
                    if step is None:
                        step = f"signal={int(number)}"
                    self.host.answer_later["Vel_GotoFrame"] = self.signalling(number, answers)
                    status, seen, reported = self.run_tool(*self.sheet(), f"touch={self.begun}", step, "wait")
                    self.assertEqual(status, -number, reported)
                    self.check_rescued(seen, reported)

    def signalling(self, number, answers):
        def answer_or_not(answer):
            if os.path.exists(self.begun):
                os.kill(self.tool.pid, number)
                if not answers:
                    return
            answer()
        return answer_or_not

    def test_a_signal_that_it_was_started_not_to_mind_ends_nothing(self):
        self.addCleanup(signal.signal, signal.SIGHUP, signal.signal(signal.SIGHUP, signal.SIG_IGN))
        status, _, reported = self.run_tool(*self.sheet(), f"signal={int(signal.SIGHUP)}", "quit")
        self.assertEqual((status, self.rescued()), (0, []), reported)

    def test_by_a_failure_of_the_tools_own(self):
        for step, expected, words in (("throw=the words", 1, "the words"), ("exit", 1, ""),
                                      ("terminate=the words", -signal.SIGABRT, "the words")):
            with self.subTest(step=step):
                self.begin_anew()
                # As a write to the pipe of a terminal that has gone sends it.
                written = f"signal={int(signal.SIGPIPE)}"
                status, seen, reported = self.run_tool(*self.sheet(), written, step, "wait")
                self.assertEqual(status, expected, reported)
                self.assertIn(words, reported)
                self.check_rescued(seen, reported)

    def test_an_empty_or_saved_sheet_and_one_that_is_quit_leave_nothing(self):
        kept = os.path.join(self.folder.name, "kept.exp")
        for made, ends, words in (
                ([], "throw=the words", "the words\n"), (self.sheet(), "quit", ""),
                ([*self.sheet(), f"save={kept}"], "throw=the words", f"saved in {kept} as it stands")):
            with self.subTest(ends=ends, words=words):
                _, _, reported = self.run_tool("shown", *made, ends)
                self.assertIn(words, reported)
                self.assertEqual(self.rescued(), [])

    def start_program(self, **bus):
        environment = {name: value for name, value in os.environ.items()
                       if name not in ("DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR")}
        program = subprocess.Popen([PROGRAM], text=True, stderr=subprocess.PIPE, env=environment | bus | {
            "HOME": self.folder.name, "QT_QPA_PLATFORM": "offscreen", "SDL_AUDIODRIVER": "dummy"})
        self.addCleanup(program.kill)
        return program

    def test_without_a_bus_the_program_has_nothing_to_report(self):
        for bus in {}, {"DBUS_SESSION_BUS_ADDRESS": f"unix:path={self.folder.name}/nobody"}:
            with self.subTest(bus=bus):
                program = self.start_program(**bus)
                with self.assertRaises(subprocess.TimeoutExpired):
                    program.wait(3)
                program.send_signal(signal.SIGTERM)
                # A report that nobody has read yet would be told now.
                self.assertNotRegex(program.communicate(timeout=20)[1], "exposure-sheet: (?!ended by)")

    def test_a_report_before_the_first_window_waits_for_its_reader(self):
        for way in ("leave", "answer, then leave", "answer, then the bus goes"):
            with self.subTest(way=way):
                daemon = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address"], text=True,
                                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
                self.addCleanup(daemon.communicate)
                self.addCleanup(daemon.kill)
                address = daemon.stdout.readline().strip()
                bus = dbus.bus.BusConnection(address, mainloop=DBusGMainLoop())
                bus.set_exit_on_disconnect(False)
                host = LoggingHost(bus)
                host.fail("Vel_SendFormObject", 1, "leave" if way == "leave" else ())
                program = self.start_program(DBUS_SESSION_BUS_ADDRESS=address)
                turn_until(lambda: host.calls, 20)
                turn_until(lambda: False, 0.3)
                self.assertIsNone(program.poll())
                daemon.kill() if way.endswith("bus goes") else way == "leave" or bus.close()
                turn_until(lambda: False, 1)
                self.assertIsNone(program.poll(), "the report is still to be read")
                program.send_signal(signal.SIGTERM)
                self.assertIn("The host's member Vel_SendFormObject failed", program.communicate(timeout=20)[1])
                self.assertEqual(program.returncode, -signal.SIGTERM)


if __name__ == "__main__":
    unittest.main(verbosity=2)
