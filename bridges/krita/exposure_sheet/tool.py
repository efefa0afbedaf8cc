"""The exposure sheet's own process."""

import os
import shutil
import subprocess

from PyQt5.QtCore import QObject, QSocketNotifier

from .words import Refused

PROGRAM = "exposure-sheet"
# Written by the install script: where the program stands that belongs to this plug-in.
BUILT_FILE = os.path.join(os.path.dirname(os.path.abspath(__file__)), "program")


def find_program():
    try:
        with open(BUILT_FILE, encoding="utf-8") as file:
            built = file.read().strip()
    except OSError:
        built = ""
    if built and os.access(built, os.X_OK):
        return built
    found = shutil.which(PROGRAM)
    if found is None:
        places = f"{built} or in your path" if built else "in your path"
        raise Refused(f'The program "{PROGRAM}" isn\'t there; it was looked for at {places}.')
    return found


class Tool(QObject):
    """The running tool. It outlives Krita, so that it can tell its user that its host has gone."""

    def __init__(self, on_end):
        """on_end: called with the exit status when the process has ended."""
        super().__init__()
        program = find_program()
        try:
            self._process = subprocess.Popen([program], stdin=subprocess.DEVNULL, start_new_session=True)
        except OSError as failure:
            raise Refused(f"{program} can't be started: {failure.strerror}") from None
        self._on_end = on_end
        self._descriptor = os.pidfd_open(self._process.pid)
        self._notifier = QSocketNotifier(self._descriptor, QSocketNotifier.Read, self)
        self._notifier.activated.connect(self._ended)

    @property
    def process_id(self):
        return self._process.pid

    def _ended(self):
        self._notifier.setEnabled(False)
        os.close(self._descriptor)
        self._on_end(self._process.wait())
