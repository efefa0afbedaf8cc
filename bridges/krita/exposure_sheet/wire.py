"""The host on the session bus, and the tool's windows as the host holds them."""

import os
import traceback

from PyQt5.QtCore import Q_CLASSINFO, QByteArray, QObject, pyqtSlot
from PyQt5.QtDBus import (QDBusAbstractAdaptor, QDBusConnection, QDBusMessage, QDBusObjectPath,
                          QDBusPendingCallWatcher, QDBusPendingReply, QDBusServiceWatcher, QDBusUnixFileDescriptor)

from . import members
from .planes import SharedPlane, TakenPlanes
from .words import Refused

NO_TIME_LIMIT = 0x7FFFFFFF


def member(name, types, result, run):
    """A slot of an adaptor. A failure is answered with an error in words and goes no further: an exception that left
    a slot would end Krita."""
    def call(adaptor, *arguments):
        *given, message = arguments
        try:
            return run(adaptor.parent(), *given)
        except Refused as failure:
            adaptor.parent().refuse(message, str(failure))
        except Exception as failure:  # pylint: disable=broad-except
            traceback.print_exc()
            adaptor.parent().refuse(message, f"{type(failure).__name__}: {failure}")
        return members.NOTHING[result]() if result else None

    options = {"result": result} if result else {}
    return pyqtSlot(*types, QDBusMessage, name=name, **options)(call)


def program_name(process):
    """What a user knows a process by. The system itself keeps the first 15 bytes of a name."""
    with open(f"/proc/{process}/comm", encoding="utf-8", errors="replace") as file:
        short = file.read().strip()
    with open(f"/proc/{process}/cmdline", encoding="utf-8", errors="replace") as file:
        names = [os.path.basename(word) for word in file.read().split("\0")]
    return next((name for name in names if short and name.startswith(short)), short)


class MainInterface(QDBusAbstractAdaptor):
    Q_CLASSINFO("D-Bus Interface", members.INTERFACE)

    for _name, _types, _result, _routine in members.MEMBERS:
        locals()[f"{_routine}_{len(locals())}"] = member(
            _name, _types, _result, lambda service, *given, r=_routine: getattr(service.host, r)(*given))
    for _name, _channel in members.GETTERS:
        locals()[_name] = member(_name, (), QByteArray, lambda service, c=_channel: QByteArray(service.host.plane(c)))
    for _name, _channel in members.SETTERS:
        locals()[_name] = member(_name, (QByteArray,), None,
                                 lambda service, plane, c=_channel: service.host.set_plane(c, bytes(plane)))

    @pyqtSlot(QDBusObjectPath, int, QDBusMessage, name="Vel_SendFormObject")
    def send_form_object(self, path, _kind, message):
        self.parent().take_form(path.path(), message)


class DescriptorInterface(QDBusAbstractAdaptor):
    """The faster way for planes: shared memory instead of bytes."""

    Q_CLASSINFO("D-Bus Interface", members.DESCRIPTORS)

    for _name, _channel in members.GETTERS:
        locals()[_name] = member(_name, (), QDBusUnixFileDescriptor,
                                 lambda service, c=_channel: service.lend_plane(c))
    for _name, _channel in members.SETTERS:
        locals()[_name] = member(_name, (QDBusUnixFileDescriptor,), None,
                                 lambda service, descriptor, c=_channel: service.read_plane(c, descriptor))


class Service(QObject):
    """Has the host's name on the bus from start() to stop()."""

    def __init__(self, host, on_tool_gone):
        """on_tool_gone: called with the unique bus name of a tool that has left."""
        super().__init__()
        self.host = host
        self.forms = []  # (the tool's unique name, the window's path), in the order of their coming
        self._connection = QDBusConnection.connectToBus(QDBusConnection.SessionBus, "exposure-sheet-host")
        self._lent, self._taken = {}, TakenPlanes()
        self._calls = set()
        self._on_tool_gone = on_tool_gone
        self._tools = QDBusServiceWatcher(self)
        self._tools.setConnection(self._connection)
        self._tools.setWatchMode(QDBusServiceWatcher.WatchForUnregistration)
        self._tools.serviceUnregistered.connect(self._forget)
        MainInterface(self)
        DescriptorInterface(self)

    def start(self):
        """Takes the name; otherwise tells why it can't."""
        if not self._connection.isConnected():
            return Refused("there is no session bus")
        # First the object, then the name: who finds the name finds the members.
        self._connection.registerObject(members.PATH, self)
        if self._connection.registerService(members.SERVICE):
            return None
        self._connection.unregisterObject(members.PATH)
        return Refused(f"{self._owner()} is the host already")

    def _owner(self):
        process = self._connection.interface().servicePid(members.SERVICE).value()
        try:
            name = program_name(process)
        except OSError:
            return "another program"
        return f"{name} (process {process})"

    def stop(self):
        self._connection.unregisterService(members.SERVICE)
        self._connection.unregisterObject(members.PATH)
        for plane in self._lent.values():
            plane.close()
        self._lent.clear()
        self._taken.close()

    def refuse(self, message, words):
        message.setDelayedReply(True)
        self._connection.send(message.createErrorReply(members.ERROR, words))

    # Planes.

    def lend_plane(self, channel):
        plane = self.host.plane(channel)
        lent = self._lent.get(channel)
        if lent is None or lent.size != len(plane):
            if lent is not None:
                lent.close()
            lent = self._lent[channel] = SharedPlane(len(plane))
        lent.write(plane)
        return QDBusUnixFileDescriptor(lent.descriptor)

    def read_plane(self, channel, descriptor):
        self.host.set_plane(channel, self._taken.read(descriptor.fileDescriptor(), self.host.plane_size()))

    # Windows.

    def take_form(self, path, message):
        """Shows the tool's window and answers when it is up. The tool calls back while the window loads, so the
        answer comes later, from the event loop."""
        tool = message.service()
        if (tool, path) not in self.forms:
            self.forms.append((tool, path))
            self._tools.addWatchedService(tool)
        message.setDelayedReply(True)
        # The message itself lives only as long as this call.
        kept = QDBusMessage(message)

        def shown(error):
            self._connection.send(kept.createErrorReply(members.ERROR, error) if error else kept.createReply())
            # The frame painter keeps the colours of its design until its host asks it to read the settings.
            if not error:
                self.call_form((tool, path), "PrefsCallback")
        self.call_form((tool, path), "Show", shown)

    def call_form(self, form, routine, then=lambda error: None):
        """Calls a window's routine; then gets the error's words, or nothing."""
        call = QDBusMessage.createMethodCall(*form, members.FORM, routine)
        watcher = QDBusPendingCallWatcher(self._connection.asyncCall(call, NO_TIME_LIMIT), self)
        self._calls.add(watcher)

        def finished():
            self._calls.discard(watcher)
            reply = QDBusPendingReply(watcher)
            then(reply.error().message() or reply.error().name() if reply.isError() else "")
            watcher.deleteLater()
        watcher.finished.connect(finished)

    def _forget(self, tool):
        self._tools.removeWatchedService(tool)
        self.forms = [form for form in self.forms if form[0] != tool]
        self._on_tool_gone(tool)
