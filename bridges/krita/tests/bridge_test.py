"""The bridge without Krita: its members on a bus, over a small double of Krita's documented interface.

Run under dbus-run-session: bridge_test.py.
"""

import fcntl
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest
from unittest.mock import DEFAULT, MagicMock, call, patch

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path[:0] = [os.path.join(HERE, "double"), os.path.dirname(HERE)]

from krita import Krita  # noqa: E402
from PyQt5.QtCore import QByteArray, QEventLoop, QObject, QSettings, QTimer, Q_CLASSINFO, pyqtSlot  # noqa: E402
from PyQt5.QtDBus import (QDBusAbstractAdaptor, QDBusConnection, QDBusMessage, QDBusObjectPath,  # noqa: E402
                          QDBusPendingCallWatcher, QDBusPendingReply, QDBusUnixFileDescriptor)
from PyQt5.QtGui import QColor, QImage, QPalette, QStandardItemModel  # noqa: E402
from PyQt5.QtWidgets import QAction, QApplication, QDockWidget, QMainWindow, QTableView, QToolButton  # noqa: E402

import importlib.util  # noqa: E402

# The package itself starts with Krita's list of extensions; its modules are what is tested.
PACKAGE = importlib.util.module_from_spec(importlib.util.spec_from_loader("exposure_sheet", None, is_package=True))
PACKAGE.__path__ = [os.path.join(os.path.dirname(HERE), "exposure_sheet")]
sys.modules["exposure_sheet"] = PACKAGE

from exposure_sheet import extension, roll, status, theme, tool  # noqa: E402
from exposure_sheet.host import Host  # noqa: E402
from exposure_sheet.planes import TakenPlanes  # noqa: E402
from exposure_sheet.wire import Service, program_name  # noqa: E402
from exposure_sheet.words import Refused  # noqa: E402

NAME, PATH = "Vellumark.Vellumark_Class", "/Vellumark/Vellumark_Class"
OPEN_WINDOW, TIMELINE = roll.open_window, roll.Timeline
WIDTH, HEIGHT, FIRST, FRAMES = 3, 2, 10, 6
GETTERS = ("vel_GetRbuffer", "vel_GetGbuffer", "Vel_GetBbuffer")
SETTERS = ("vel_SetRbuffer", "vel_SetGBuffer", "vel_SetBBuffer")


class Timeline:
    """Krita's timeline, for the double's documents."""
    BLANK, DUPLICATE = "blank", "duplicate"

    def __init__(self, window):
        self.layer = window.layers[0]

    def make_key(self, _, moment, kind):
        assert self.layer.document.activeNode() is self.layer and self.layer.is_animated
        assert kind == self.BLANK or not self.layer.hasKeyframeAtTime(moment), "a frame is lost"
        pixels = WIDTH * HEIGHT
        self.layer.keys[moment] = b"\xff" * 4 * pixels if kind == self.BLANK else self.layer.shown_at(moment)


class Form(QDBusAbstractAdaptor):
    Q_CLASSINFO("D-Bus Interface", "Vellumark.Form")
    fails = False
    dressed = 0

    @pyqtSlot()
    def PrefsCallback(self):
        self.dressed += 1

    @pyqtSlot(QDBusMessage)
    def Show(self, message):
        # The tool asks its host while the window loads.
        self.parent().rate = self.parent().test.call("Vel_GetFrameRate")
        if self.fails:
            message.setDelayedReply(True)
            self.parent().test.client.send(message.createErrorReply("A.Tool", "can't come up"))


class Bridge(unittest.TestCase):
    def setUp(self):
        roll.Timeline, roll.open_window = Timeline, lambda krita, document: document
        self.krita = Krita.instance()
        self.krita.open.clear()
        self.document = self.krita.createDocument(WIDTH, HEIGHT, "Frogs")
        self.document.setFullClipRangeStartTime(FIRST)
        self.document.setFullClipRangeEndTime(FIRST + FRAMES - 1)
        self.document.setCurrentTime(FIRST)
        self.layer = self.document.layers[0]
        self.layer.keys = {FIRST + f: bytes([10 * f + c for c in (2, 1, 0)] + [255]) * 6 for f in range(FRAMES)}
        self.status, self.gone = MagicMock(), []
        self.host = Host(self.document, self.status)
        self.service = Service(self.host, self.gone.append)
        self.assertIsNone(self.service.start())
        self.client = QDBusConnection.connectToBus(QDBusConnection.SessionBus, "client")

    def tearDown(self):
        lent, taken = list(self.service._lent.values()), list(self.service._taken._mapped.values())
        self.service.stop()
        self.assertTrue(all(memory.closed for memory in [plane._memory for plane in lent] + taken))
        for plane in lent:
            self.assertRaises(OSError, os.fstat, plane.descriptor)
        QDBusConnection.disconnectFromBus("client")

    def ask(self, member, *given, interface=NAME):
        message = QDBusMessage.createMethodCall(NAME, PATH, interface, member)
        message.setArguments(given)
        watcher, loop = QDBusPendingCallWatcher(self.client.asyncCall(message, 20000)), QEventLoop()
        watcher.finished.connect(loop.quit)
        if not watcher.isFinished():
            loop.exec()
        return QDBusPendingReply(watcher).reply()

    def call(self, member, *given, **where):
        reply = self.ask(member, *given, **where)
        self.assertEqual(reply.errorMessage(), "")
        return reply.arguments()[0] if reply.arguments() else None

    def plane(self, getter):
        return bytes(self.call(getter))

    def refused(self, words, member, *given, **where):
        self.assertIn(words, self.ask(member, *given, **where).errorMessage())

    def test_tells_of_the_document(self):
        for member, answer in [("vel_BufferWidth", 2), ("vel_BufferHeight", 1), ("vel_GetTotalFrames", FRAMES),
                               ("Vel_GetFrameRate", "24"), ("Vel_GetAppDir", os.path.expanduser("~"))]:
            self.assertEqual(self.call(member), answer)
        self.assertIn(os.path.basename(self.call("Vel_WallpaperFilename")), ("night.png", "slate.png"))
        for rate, kept in [(23.976, "24"), (12.5, "12"), (0.2, "1"), (0.0, "1"), (float("nan"), "1")]:
            self.call("vel_SetFrameRate", rate)
            self.assertEqual(self.call("Vel_GetFrameRate"), kept)
        for file, folder in [("/frogs/a.kra", "/frogs"), ("", "/frogs"), ("/toads/b.kra", "/toads")]:
            document = self.krita.createDocument(WIDTH, HEIGHT, "Toads")
            document.setFileName(file)
            self.host.take(document)
            self.assertEqual(self.call("Vel_GetAppDir"), folder)

    def test_goes_to_the_frame_or_the_end_that_it_lies_beyond(self):
        for frame, time in [(3, 13), (-1, 10), (1000, 15), (2.5, 12), (3.5, 14), (-7.0, 10)]:
            self.call("Vel_GotoFrame", frame)
            self.wait_until(lambda t=time: self.document.currentTime() == t)
        self.call("Vel_GotoFrameAdv", 1, 3)
        self.wait_until(lambda: self.document.currentTime() == 11)
        self.refused("no frame inf", "Vel_GotoFrame", float("inf"))

    def test_skips_frames_while_krita_is_busy(self):
        self.document.went.clear()
        self.document.busy = True
        for frame in (1, 2, 3, 4):
            self.call("Vel_GotoFrame", frame)
        self.document.busy = False
        self.wait_until(lambda: self.document.currentTime() == FIRST + 4)
        self.assertEqual(self.document.went, [FIRST + 4])
        # What was asked for before counts no more when a frame's planes are read, the tool ends or the document closes.
        drawing, toads = self.host.drawing(), self.krita.createDocument(WIDTH, HEIGHT, "Toads")

        def end():
            self.host.take(toads)
            self.host.end()
            self.host.take(self.document)
        for no_more, went in [(lambda: self.plane(GETTERS[0]), [FIRST]), (end, []), (self.krita.open.clear, [])]:
            self.document.busy = True
            self.call("Vel_GotoFrame", 3)
            self.document.went.clear()
            no_more()
            self.document.busy = False
            drawing._since_move.invalidate()
            drawing._follow()
            self.assertEqual(self.document.went, went)

    def wait_until(self, done):
        loop, timer = QEventLoop(), QTimer(interval=2)
        timer.timeout.connect(lambda: done() and loop.quit())
        QTimer.singleShot(10000, loop.quit)
        timer.start()
        loop.exec()
        self.assertTrue(done())

    def test_gives_the_planes_either_way(self):
        for frame in (4, 0):
            self.call("Vel_GotoFrameAdv", frame, 3)
            for channel, getter in enumerate(GETTERS):
                self.assertEqual(self.plane(getter), bytes([10 * frame + channel]) * 6)
        # The slider moves when Krita comes to it: the picture is that of the frame all the same.
        self.document.busy = True
        self.call("Vel_GotoFrameAdv", 3, 3)
        self.assertEqual(self.plane(GETTERS[0]), bytes([30]) * 6)
        self.call("Vel_GotoFrameAdv", 3, 3)
        self.document.setCurrentTime(FIRST)  # by the user
        self.assertEqual(self.plane(GETTERS[0]), bytes([30]) * 6)
        self.document.busy = False
        memories = []
        for frame in (2, 5):
            self.call("Vel_GotoFrameAdv", frame, 3)
            lent = self.call("vel_GetGbuffer", interface=NAME + ".Descriptors")
            descriptor = lent.fileDescriptor()
            seals = fcntl.fcntl(descriptor, fcntl.F_GET_SEALS)
            self.assertEqual(seals & (fcntl.F_SEAL_SHRINK | fcntl.F_SEAL_GROW), fcntl.F_SEAL_SHRINK | fcntl.F_SEAL_GROW)
            self.assertEqual(os.pread(descriptor, 100, 0), bytes([10 * frame + 1]) * 6)
            memories.append((os.fstat(descriptor).st_dev, os.fstat(descriptor).st_ino))
        self.assertEqual(memories[0], memories[1])
        # The next document is a pixel wider.
        before = self.service._lent[1]._memory
        self.host.take(self.krita.createDocument(WIDTH + 1, HEIGHT, "Toads"))
        lent = self.call("vel_GetGbuffer", interface=NAME + ".Descriptors")
        self.assertEqual((os.fstat(lent.fileDescriptor()).st_size, before.closed), ((WIDTH + 1) * HEIGHT, True))

    def test_started_again_it_works_with_the_active_document(self):
        self.service.stop()
        toads, sheet = self.krita.createDocument(WIDTH + 1, HEIGHT, "Toads"), extension.ExposureSheet(None)
        toads.setFileName("/toads/large.kra")
        with patch.multiple(extension, Tool=DEFAULT, theme=DEFAULT) as doubles, \
                patch.multiple(Krita, create=True, activeDocument=DEFAULT, activeWindow=DEFAULT, icon=DEFAULT) as krita, \
                patch.object(Service, "call_form") as called:
            doubles["theme"].store.side_effect = [True, True, False, True]
            seen = []
            for document in (self.document, None, toads, self.document):
                krita["activeDocument"].return_value = document
                sheet.start()
                sheet._session._service.forms = ["sheet", "painter"]
                seen.append((self.call("vel_BufferWidth"), *self.plane(GETTERS[1])))
                self.call("Vel_GotoFrameAdv", 4, 3)
                self.plane(GETTERS[1])
            # Another document begins at its first frame.
            self.assertEqual(seen, [(2, *[1] * 6), (2, *[41] * 6), (3, *[255] * 8), (2, *[1] * 6)])
            for _ in range(2):
                QApplication.instance().paletteChanged.emit(QPalette())
            with patch.object(Host, "end") as end:
                sheet._session._tool_left("another tool")
            end.assert_not_called()
            doubles["Tool"].call_args[0][0](0)
            QApplication.instance().paletteChanged.emit(QPalette())
        self.assertEqual(called.mock_calls, [call("sheet", "Show")] * 3 + [call("sheet", "PrefsCallback"),
                                                                          call("painter", "PrefsCallback")])
        self.assertEqual(krita["activeWindow"]().activeView().showFloatingMessage.mock_calls,
                         [call(f"The exposure sheet works with {name}", krita["icon"](), 6000, 1)
                          for name in ("Frogs", "large.kra", "Frogs")])
        self.assertFalse(self.client.interface().isServiceRegistered(NAME).value())

    def test_lays_what_is_transparent_on_white(self):
        # The user may make the picture wider meanwhile.
        for wide, end in [(3, None), (4, lambda: self.call("vel_StatusClose")), (4, self.host.end)]:
            self.document.setWidth(wide)
            self.layer.keys[FIRST] = bytes([0, 50, 100, 128]) * wide + bytes(4 * wide)
            self.call("Vel_GotoFrameAdv", 0, 3)
            self.assertEqual([list(self.plane(getter)) for getter in GETTERS],
                             [[177] * wide + [255] * wide, [152] * wide + [255] * wide, [127] * wide + [255] * wide])
            if end:
                end()
                self.assertEqual(self.krita.documents(), [self.document])
            self.assertFalse(self.krita.documents()[-1].modified(), "Krita would ask whether to save it")

    def set_frame(self, frame, *greys, way=None):
        if frame is not None:
            self.call("Vel_GotoFrameAdv", frame, 3)
        for setter, grey in zip(SETTERS, greys):
            if way is None:
                self.call(setter, QByteArray(bytes([grey]) * 6))
            else:
                self.call(setter, way(bytes([grey]) * 6), interface=NAME + ".Descriptors")

    def shot(self):
        """The roll's frames as (key, blue, green, red)."""
        return {time: tuple(pixels[:3]) for time, pixels in sorted(self.krita.documents()[-1].layers[0].keys.items())}

    def test_shoots_a_roll_on_which_equal_frames_are_held(self):
        before = dict(self.layer.keys)
        self.document.setFramesPerSecond(12)
        self.document.setXRes(150.0)
        self.document.setYRes(300.0)
        self.call("Vel_GotoFrameAdv", 3, 3)
        self.call("vel_CreateAnimAdv", 6, 2)
        self.assertEqual((self.call("vel_GetTotalFrames"), self.call("Vel_GetFrameRate")), (6, "12"))
        for frame, grey in enumerate([1, 1, 2, 2, 1, 1]):
            # A new roll begins at its first frame.
            self.set_frame(frame or None, grey, grey + 1, grey + 2)
        self.call("vel_StatusClose")
        self.assertEqual(self.shot(), {0: (3, 2, 1), 2: (4, 3, 2), 4: (3, 2, 1)})
        roll = self.krita.documents()[-1]
        self.assertTrue(roll.modified(), "it would go without a question")
        self.assertEqual((roll.xRes(), roll.yRes(), roll.layers[0].name()), (150.0, 300.0, "Roll"))
        self.call("Vel_GotoFrameAdv", 3, 3)
        self.assertEqual([self.plane(getter)[0] for getter in GETTERS], [2, 3, 4])
        self.assertEqual(self.layer.keys, before)

    def test_frames_of_a_roll_are_white_until_they_are_set_and_change_alone(self):
        white = (255, 255, 255)
        for end in (lambda: self.call("vel_StatusClose"), lambda: self.call("Vel_GotoFrame", 0), self.host.end):
            self.call("vel_CreateAnimAdv", 8, 2)
            for frame in (0, 1, 2):
                self.set_frame(frame, 5, 5, 5)
            end()
            self.assertEqual(self.shot(), {0: (5, 5, 5), 3: white})
        roll = self.krita.documents()[-1]
        roll.busy = True  # its slider comes later, the pixels must wait for it
        self.set_frame(1, 9, 9, 9)
        roll.busy = False
        self.call("Vel_GotoFrameAdv", 4, 3)
        self.assertEqual(self.plane(GETTERS[0]), bytes([255]) * 6)
        self.set_frame(None, 7)
        self.assertEqual(self.plane(GETTERS[0]), bytes([7]) * 6)
        self.assertTrue(roll.is_fresh, "on the canvas too")
        self.call(SETTERS[1], QByteArray(bytes([8]) * 6))
        for frame in (5, 6, 0, 1):
            self.set_frame(frame, 3, 3, 3)
        self.assertEqual(self.shot(), {0: (3, 3, 3), 1: (3, 3, 3), 2: (5, 5, 5), 3: white, 4: (255, 8, 7), 5: (3, 3, 3),
                                       7: white})
        self.set_frame(3, 6)
        self.call("vel_CreateAnimAdv", 2, 2)
        self.assertEqual(roll.layers[0].keys[3][:3], bytes([255, 255, 6]), "drawn before the next roll comes")

    def test_reads_the_tools_memory(self):
        def sealed(plane, seals=fcntl.F_SEAL_SHRINK | fcntl.F_SEAL_GROW):
            descriptor = os.memfd_create("tool", os.MFD_ALLOW_SEALING)
            os.write(descriptor, plane)
            fcntl.fcntl(descriptor, fcntl.F_ADD_SEALS, seals)
            shared = QDBusUnixFileDescriptor(descriptor)
            os.close(descriptor)
            return shared
        self.call("vel_CreateAnimAdv", 2, 2)
        self.set_frame(0, 1, 2, 3, way=sealed)
        self.assertEqual(self.shot(), {0: (3, 2, 1)})
        pipe = os.pipe()
        for words, memory in [("isn't sealed", sealed(bytes(6), fcntl.F_SEAL_GROW)), ("5 bytes where", sealed(bytes(5))),
                              ("can be sealed", QDBusUnixFileDescriptor(pipe[0])), ("is empty", sealed(b""))]:
            self.refused(words, "vel_SetRbuffer", memory, interface=NAME + ".Descriptors")
        for end in pipe:
            os.close(end)
        # Of more memories than it keeps, all the ones before are given back.
        taken, memories = TakenPlanes(), [sealed(bytes([n]) * 6) for n in range(17)]
        for number, memory in enumerate(memories):
            before = list(taken._mapped.values())
            self.assertEqual(taken.read(memory.fileDescriptor(), 5), bytes([number]) * 5)
            self.assertEqual([kept.closed for kept in before], [number == 16] * number)

    def test_refuses_in_words(self):
        for words, member, *given in [("5 bytes where", "vel_SetRbuffer", QByteArray(bytes(5))), ("No such", "vel_GetAppDir"),
                                      ("0 frames", "vel_CreateAnimAdv", 0, 2), ("No such", "Vel_GotoFrame", "1")]:
            self.refused(words, member, *given)
        with patch.object(roll.Roll, "_has_key", return_value=False):
            self.refused("made no frame 0", "vel_CreateAnimAdv", 2, 2)
        self.krita.documents()[-1].close()
        with patch.object(self.document, "projection", return_value=QImage()):
            self.refused("no picture of this frame", GETTERS[0])
        self.document.framesPerSecond = None
        self.refused("TypeError: ", "Vel_GetFrameRate")
        for setter in SETTERS[:2]:
            self.call(setter, QByteArray(bytes(6)))
        self.refused('"Frogs" stays as it is', SETTERS[2], QByteArray(bytes(6)))
        self.krita.open.clear()
        for member, *given in [("vel_GetTotalFrames",), ("Vel_GotoFrame", 1), ("vel_GetRbuffer",)]:
            self.refused('"Frogs" has been closed', member, *given)

    def test_a_roll_that_is_closed_leaves_the_drawing(self):
        self.call("vel_CreateAnimAdv", 2, 2)
        self.krita.documents()[-1].close()
        self.call("vel_CreateAnimAdv", 3, 2)
        self.assertEqual(self.call("vel_GetTotalFrames"), 3)
        self.call("Vel_GotoFrameAdv", 2, 2)
        self.assertEqual(self.plane(GETTERS[1]), bytes([255]) * 6)
        self.krita.documents()[-1].close()
        self.assertEqual((self.call("vel_GetTotalFrames"), self.plane(GETTERS[1])), (FRAMES, bytes([1]) * 6))
        self.call("vel_CreateAnimAdv", 2, 2)
        self.set_frame(0, 1, 2, 3)
        closed = self.krita.documents()[-1]
        closed.close()
        self.host.end()
        self.assertEqual(list(closed.layers[0].keys), [0], "nothing is made on it any more")

    def test_shows_progress(self):
        for member, *given in [("vel_StatusOpen", "Saving..."), ("vel_Status", 12.5), ("vel_StatusClose",)]:
            self.call(member, *given)
        self.host.end()
        self.assertEqual(self.status.mock_calls, [call.open("Saving..."), call.show(12.5), call.close(), call.close()])

        display = status.Status()
        display.show(5)
        display.open("Saving...")
        dialog = display._dialog
        for percent, shown in [(-1.0, 0), (49.6, 50), (150.0, 100)]:
            display.show(percent)
            self.assertEqual((dialog.labelText(), dialog.value(), dialog.isVisible()), ("Saving...", shown, True))
        display.open("Developing...")
        self.assertEqual((dialog.labelText(), dialog.value()), ("Developing...", 0))
        display.close()
        self.assertFalse(dialog.isVisible())
        display.open("Saving...")
        self.assertIsNot(display._dialog, dialog, "that one is deleted")

    def test_looks_for_the_program_beside_it_and_in_the_path(self):
        with tempfile.NamedTemporaryFile("w") as built, patch.object(tool, "BUILT_FILE", built.name), \
                patch.object(tool.shutil, "which", return_value=None) as which:
            for named, found in [("/bin/sh", "/bin/sh"), ("/etc/passwd", None), ("", None)]:
                pathlib.Path(built.name).write_text(named + "\n")
                if found:
                    self.assertEqual(tool.find_program(), found)
                else:
                    self.assertRaisesRegex(Refused, f"looked for at {named}.*in your path", tool.find_program)
            which.return_value = "/usr/bin/sheet"
            for file in (built.name, "/not/installed"):
                with patch.object(tool, "BUILT_FILE", file):
                    self.assertEqual(tool.find_program(), "/usr/bin/sheet")

    def test_tells_how_the_program_ended_or_why_it_was_not_started(self):
        ended = []
        with tempfile.TemporaryDirectory() as folder, patch.object(tool, "find_program") as program:
            program.return_value = os.path.join(folder, "sheet")
            self.assertRaisesRegex(Refused, "/sheet can't be started: No such file", tool.Tool, ended.append)
            pathlib.Path(folder, "sheet").write_text(
                # Its session is its own: it outlives the terminal that Krita was started in.
                "#!/bin/sh\nread -r _ _ _ _ _ session _ </proc/$$/stat\ntest $session = $$ && exit 3\n")
            self.assertRaisesRegex(Refused, "/sheet can't be started: Permission denied", tool.Tool, ended.append)
            os.chmod(program.return_value, 0o700)
            running = tool.Tool(ended.append)
            self.wait_until(lambda: ended)
            self.assertFalse(os.path.exists(f"/proc/{running.process_id}"))
        self.assertEqual(ended, [3])

    def test_answers_when_the_window_is_up(self):
        form = QObject()
        form.test, form.rate = self, None
        adaptor = Form(form)
        self.client.registerObject("/Form1", form)
        self.call("Vel_SendFormObject", QDBusObjectPath("/Form1"), 0)
        self.assertEqual(form.rate, "24")
        self.wait_until(lambda: adaptor.dressed == 1)
        adaptor.fails = True
        self.refused("can't come up", "Vel_SendFormObject", QDBusObjectPath("/Form1"), 0)
        self.assertEqual(adaptor.dressed, 1)
        self.service.forms.append((other := ("another tool", "/Form1")))
        self.assertEqual(self.service.forms, [(self.client.baseService(), "/Form1"), other])
        del self.client
        QDBusConnection.disconnectFromBus("client")
        self.wait_until(lambda: self.gone)
        self.assertEqual(self.service.forms, [other])

    def test_leaves_the_name_to_the_host_that_has_it(self):
        QDBusConnection.connectToBus(QDBusConnection.SessionBus, "client")
        first = QDBusConnection.connectToBus(QDBusConnection.SessionBus, "first")
        self.service.stop()
        self.assertTrue(first.registerService(NAME))
        self.assertEqual(str(self.service.start()),
                         f"{program_name(os.getpid())} (process {os.getpid()}) is the host already")
        sheet = extension.ExposureSheet(None)
        with patch("exposure_sheet.wire.program_name", side_effect=OSError), patch.object(extension, "say") as said:
            sheet.start()
        said.assert_called_once_with("The exposure sheet can't work with Krita: another program is the host already.")
        self.assertIsNone(self.service._connection.objectRegisteredAt(PATH), "it is in the way of the next one")
        first.unregisterService(NAME)
        with tempfile.TemporaryDirectory() as folder:
            program = os.path.join(folder, "a-sheet-of-a-long-name")
            os.symlink("/bin/sleep", program)
            with subprocess.Popen([program, "9"]) as sheet:
                self.wait_until(lambda: program_name(sheet.pid) == "a-sheet-of-a-long-name")
                sheet.kill()
        bus, self.service._connection = self.service._connection, QDBusConnection("none")
        self.assertEqual(str(self.service.start()), "there is no session bus")
        self.service._connection = bus
        QDBusConnection.disconnectFromBus("first")

    def test_writes_the_theme_that_fits(self):
        dark, light = QPalette(QColor(50, 50, 50)), QPalette(QColor(230, 230, 230))
        dark.setColor(QPalette.Highlight, QColor(200, 0, 10))
        keys = [key + "_Color" for key in (
            "Button_Fill Half_Shadow Half_Shine Ruler Scroll_Bar Scroll_Fill Shadow Shine Special_Action Special_Backdrop "
            "Special_Setting Special_Tool Tab_Highlight Textbox_Fill Textbox_Text").split()]
        with tempfile.TemporaryDirectory() as folder, patch.dict(os.environ, XDG_CONFIG_HOME=folder):
            self.assertEqual([os.path.basename(theme.wallpaper(p)) for p in (dark, light)], ["night.png", "slate.png"])
            self.assertEqual([theme.store(p) for p in (dark, dark, light, dark)], [True, False, True, True])
            settings = QSettings(os.path.join(folder, "vellumark.ini"), QSettings.IniFormat)
            settings.beginGroup("Startup")
            self.assertEqual((settings.value("Tab_Highlight_Color"), settings.value("Special_Backdrop_Color")),
                             (str(200 + 10 * 65536), str(50 * 65793)))
            flags = ["Borderless_" + name for name in ("Buttons", "Scrollers", "Strings", "Tabs")]
            self.assertEqual(sorted(settings.allKeys()), sorted(keys + flags))
            self.assertEqual([settings.value(flag) for flag in flags], ["0", "1", "1", "1"])

    def test_tells_why_a_sheet_does_not_begin_and_when_it_ended_too_soon(self):
        said, sheet, window = [], extension.ExposureSheet(None), MagicMock()
        self.service.stop()
        sheet.createActions(window)
        self.assertEqual(window.mock_calls, [call.createAction("exposure_sheet", "Exposure sheet", "tools/scripts"),
                                             call.createAction().triggered.connect(sheet.start)])
        with patch.multiple(extension, say=said.append, Host=DEFAULT, Tool=DEFAULT, theme=DEFAULT) as doubles, \
                patch.object(extension.Session, "_tell_document"):
            doubles["Tool"].side_effect = [Refused("It isn't there."), DEFAULT, DEFAULT, DEFAULT]
            sheet.start()
            self.assertFalse(self.client.interface().isServiceRegistered(NAME).value())
            for comes, status_of_end in [(True, 3), (False, 0), (False, 3)]:
                sheet.start()
                if comes:
                    sheet._session._tool_left("a tool that died at work")
                    self.assertEqual(doubles["Host"].return_value.end.call_count, 1)
                doubles["Tool"].call_args[0][0](status_of_end)
            self.assertEqual(doubles["Host"].return_value.end.call_count, 4)
            self.assertEqual(doubles["theme"].store.call_count, 4)
            self.krita.open.clear()
            sheet.start()
        self.assertEqual(said, ["It isn't there.", "The exposure sheet ended before it had a window (exit status 3).",
                                "Open or make the animation first that the exposure sheet shall work with."])
        with patch.object(extension.QMessageBox, "information") as shown:
            extension.say(said[0])
        shown.assert_called_once_with(None, "Exposure sheet", said[0])

    def test_shows_the_rolls_window_before_the_roll_is_in_it(self):
        krita = MagicMock()
        OPEN_WINDOW(krita, "roll")
        self.assertEqual([name for name, _, _ in krita.openWindow.return_value.mock_calls if name != "qwindow"],
                         ["qwindow().resize", "qwindow().show", "addView"])

    def test_makes_frames_on_the_timeline_of_the_rolls_window(self):
        window, made = QMainWindow(), []
        docker = QDockWidget(window, objectName="TimelineDocker")
        of_krita = MagicMock(**{"qwindow.return_value": window})
        self.assertRaisesRegex(Refused, "another timeline", TIMELINE, of_krita)
        view = type("KisAnimTimelineFramesView", (QTableView,), {})(docker)
        view.setModel(QStandardItemModel(3, 9, view))
        QToolButton(docker)  # one that opens a menu has no action
        for name in ("add_blank_frame", "add_duplicate_frame"):
            action = QAction(docker, objectName=name)
            QToolButton(docker).setDefaultAction(action)
            action.triggered.connect(lambda _, n=name: made.append((n, view.currentIndex())))
        # The window shows the roll's layers a little later.
        QTimer.singleShot(0, lambda: view.model().setVerticalHeaderLabels(["Mask", "Roll", "Below"]))
        TIMELINE(of_krita).make_key("Roll", 4, TIMELINE.BLANK)
        TIMELINE(of_krita).make_key("Below", 7, TIMELINE.DUPLICATE)
        at = view.model().index
        self.assertEqual(made, [("add_blank_frame", at(1, 4)), ("add_duplicate_frame", at(2, 7))])

    def test_is_taken_out_as_it_was_put_in(self):
        """The user's settings file before, and after uninstalling; None is no file."""
        for before, after in [(None, None), ("[gui]\nx=1\n", "[gui]\nx=1\n"),
                              ("[python]\nenable_other=true\n\n[gui]\nx=1\n",) * 2]:
            with self.subTest(before=before), tempfile.TemporaryDirectory() as home:
                variables = {"PATH": os.environ["PATH"], "HOME": home}
                settings = pathlib.Path(home, ".config", "kritarc")
                settings.parent.mkdir()
                if before is not None:
                    settings.write_text(before)
                for command in ("install", "install", "uninstall"):
                    subprocess.run([os.path.join(os.path.dirname(HERE), command)], env=variables, check=True,
                                   capture_output=True)
                    if command == "install":
                        self.assertIn("[python]\nenable_exposure_sheet=true\n", settings.read_text())
                self.assertEqual(settings.read_text() if settings.exists() else None, after)
                left = [name for _, _, names in os.walk(os.path.join(home, ".local")) for name in names]
                self.assertEqual((left, os.path.exists(os.path.join(home, ".local", "share", "krita"))), ([], False))


if __name__ == "__main__":
    APPLICATION = QApplication(sys.argv[:1])
    unittest.main(verbosity=2)
