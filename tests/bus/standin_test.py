"""The stand-in as a host process, with a tool in another language.

Run under dbus-run-session: standin_test.py <vellumark-standin>.
"""

import fcntl
import os
import subprocess
import sys
import tempfile
import unittest
from xml.etree import ElementTree

import dbus
from dbus.lowlevel import (HANDLER_RESULT_HANDLED, HANDLER_RESULT_NOT_YET_HANDLED, ErrorMessage,
                           MethodCallMessage, MethodReturnMessage)
from dbus.mainloop.glib import DBusGMainLoop

from logging_host import DESCRIPTORS, GETTERS, NAME, PATH, SEALS, SETTERS, memory, turn_until

STANDIN = sys.argv.pop(1)
PLANE = 321 * 241


class Tool:
    """A tool with one window, which asks the host for the rate while it comes up."""

    def __init__(self):
        self.bus = dbus.SessionBus(private=True, mainloop=DBusGMainLoop())
        self.bus.set_exit_on_disconnect(False)
        self.bus.add_message_filter(self._filter)
        self.show_error = None
        self.asked = []
        self.rate_while_loading = None

    def call_shared(self, member, signature="", *arguments):
        return self.call(member, signature, *arguments, interface=DESCRIPTORS)

    def call(self, member, signature="", *arguments, interface=NAME):
        """Calls the host; gives its answer, or raises its error."""
        answer = []
        self.bus.call_async(NAME, PATH, interface, member, signature, arguments, lambda *values: answer.append(values),
                            answer.append, byte_arrays=True, timeout=30)
        if not turn_until(lambda: answer, 15):
            raise TimeoutError
        if isinstance(answer[0], dbus.DBusException):
            raise answer[0]
        return answer[0][0] if answer[0] else None

    def _filter(self, connection, message):
        if not isinstance(message, MethodCallMessage) or message.get_path() != "/Form1":
            return HANDLER_RESULT_NOT_YET_HANDLED
        self.asked.append(f"{message.get_interface()}.{message.get_member()}")

        def answer(rate):
            self.rate_while_loading = str(rate)
            reply = (ErrorMessage(message, "Tool.Error", self.show_error) if self.show_error
                     else MethodReturnMessage(message))
            connection.send_message(reply)
        connection.call_async(NAME, PATH, NAME, "Vel_GetFrameRate", "", (), answer, print)
        return HANDLER_RESULT_HANDLED


class StandIn(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.environment = dict(os.environ, HOME=self.folder.name, XDG_CONFIG_HOME=self.folder.name,
                                XDG_DATA_HOME=self.folder.name, QT_QPA_PLATFORM="offscreen")
        self.process = subprocess.Popen([STANDIN], env=self.environment, stderr=subprocess.DEVNULL)
        self.tool = Tool()
        self.assertTrue(turn_until(lambda: self.tool.bus.name_has_owner(NAME), 15))

    def tearDown(self):
        self.tool.bus.close()
        self.process.terminate()
        self.process.wait()
        self.folder.cleanup()

    def test_shows_a_window_that_calls_back_while_it_loads(self):
        self.assertIsNone(self.tool.call("Vel_SendFormObject", "oi", "/Form1", 0))
        self.assertEqual(self.tool.asked, ["Vellumark.Form.Show"])
        self.assertEqual(self.tool.rate_while_loading, "12")
        self.tool.show_error = "can't come up"
        with self.assertRaisesRegex(dbus.DBusException, "can't come up"):
            self.tool.call("Vel_SendFormObject", "oi", "/Form1", 0)

    def test_works_on_frames_that_it_really_holds(self):
        call = self.tool.call
        self.assertEqual(call("vel_GetTotalFrames"), 48)
        self.assertEqual((call("vel_BufferWidth"), call("vel_BufferHeight")), (320, 240))
        call("Vel_GotoFrameAdv", "ii", 7, 3)
        self.assertEqual(len(call("vel_GetGbuffer")), PLANE)
        call("vel_CreateAnimAdv", "ii", 5, 2)
        self.assertEqual(call("vel_GetTotalFrames"), 5)
        call("Vel_GotoFrameAdv", "ni", 4, 3)
        for value, setter in enumerate(SETTERS):
            call(setter, "ay", dbus.ByteArray(bytes([value]) * PLANE))
        for value, getter in enumerate(GETTERS):
            self.assertEqual(call(getter), bytes([value]) * PLANE)
        for frame, signature in [(-1, "i"), (2.5, "d"), (1000, "i")]:
            call("Vel_GotoFrame", signature, frame)
        call("vel_SetFrameRate", "d", 23.976)
        self.assertEqual(call("Vel_GetFrameRate"), "23.976")
        self.assertTrue(os.path.isdir(call("Vel_GetAppDir")))
        self.assertTrue(os.path.isfile(call("Vel_WallpaperFilename")))

    def test_passes_planes_by_descriptor_as_by_bytes(self):
        call, shared = self.tool.call, self.tool.call_shared
        call("vel_CreateAnimAdv", "ii", 2, 2)
        call("Vel_GotoFrameAdv", "ii", 1, 3)
        # Memory may be longer than the plane. It is the tool's, which may write something else into it.
        lent = memory(PLANE + 5000)
        os.pwrite(lent, bytes([7]) * PLANE, 0)
        shared("vel_SetGBuffer", "h", dbus.types.UnixFd(lent))
        os.pwrite(lent, bytes([8]) * PLANE, 0)
        self.assertEqual(call("vel_GetGbuffer"), bytes([7]) * PLANE)
        kept = set()
        for _ in range(3):
            given = shared("vel_GetGbuffer").take()
            self.assertEqual(fcntl.fcntl(given, fcntl.F_GET_SEALS) & SEALS, SEALS)
            self.assertEqual(os.pread(given, 2 * PLANE, 0), bytes([7]) * PLANE)
            kept.add(os.fstat(given).st_ino)
            os.close(given)
        self.assertEqual(len(kept), 1)
        with self.assertRaisesRegex(dbus.DBusException, "Failed: a table of 77360 bytes"):
            shared("vel_SetRbuffer", "h", dbus.types.UnixFd(memory(PLANE - 1)))
        with self.assertRaisesRegex(dbus.DBusException, "descriptors"):
            shared("Vel_GetFrameRate")

    def test_tells_how_to_be_called(self):
        description = self.tool.call("Introspect", interface="org.freedesktop.DBus.Introspectable")
        interfaces = {interface.get("name"): {method.get("name"): [argument.get("type") for argument in method]
                                              for method in interface}
                      for interface in ElementTree.fromstring(description)}
        self.assertEqual({name: len(methods) for name, methods in interfaces.items() if name.startswith(NAME)},
                         {NAME: 20, DESCRIPTORS: 6})
        # Each member with an argument less, with one more, and with each of another type.
        values = {"o": "/Form1", "i": 1, "d": 1.5, "s": "x", "ay": dbus.ByteArray(bytes(PLANE)), "as": dbus.Array(["x"])}
        for method in ElementTree.fromstring(description).iterfind(f"interface[@name='{NAME}']/method"):
            types = [argument.get("type") for argument in method.iterfind("arg[@direction='in']")]
            wrong = [types[:-1]] if types else []
            wrong += [types + ["i"], *(types[:i] + [other] + types[i + 1:] for i in range(len(types))
                                       for other in {"o", "s", "ay", "as"} - {types[i]})]
            for given in wrong:
                with self.subTest(member=method.get("name"), given=given):
                    with self.assertRaisesRegex(dbus.DBusException, "Failed: (it takes . arguments|argument . can't be)"):
                        self.tool.call(method.get("name"), "".join(given), *(values[type] for type in given))
        self.assertEqual((self.tool.call("vel_GetTotalFrames"), self.tool.call("Vel_GetFrameRate")), (48, "12"))
        self.assertEqual(self.tool.asked, [])
        for member in (*GETTERS, *SETTERS):
            self.assertEqual(interfaces[DESCRIPTORS][member], ["h"])

    def test_leaves_the_name_to_the_host_that_has_it(self):
        second = subprocess.Popen([STANDIN], env=self.environment, stderr=subprocess.PIPE, text=True)
        self.addCleanup(second.communicate)
        self.addCleanup(second.kill)
        said = next((line for line in second.stderr if "host" in line), "")
        self.assertIn("Another host is running", said)
        self.assertEqual(self.tool.call("vel_GetTotalFrames"), 48)

    def test_helps_in_the_users_language(self):
        # The toolkit's --help and --version end the process without tidying up, which is no leak.
        environment = self.environment | {"LANGUAGE": "de", "ASAN_OPTIONS": "detect_leaks=0"}
        told = subprocess.check_output([STANDIN, "--help"], env=environment, text=True)
        self.assertIn("Zeichenprogramm", told)
        if os.path.exists("/usr/share/qt6/translations/qtbase_de.qm"):  # the toolkit's own words
            self.assertIn("Optionen:", told)
        version = subprocess.check_output([STANDIN, "--version"], env=environment, text=True)
        self.assertRegex(version, r"^vellumark-standin \d+\.\d")


if __name__ == "__main__":
    unittest.main(verbosity=2)
