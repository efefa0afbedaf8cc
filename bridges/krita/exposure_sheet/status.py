"""The progress display."""

from krita import Krita
from PyQt5.QtCore import Qt
from PyQt5.QtWidgets import QProgressDialog

from .words import tr


class Status:
    """One dialog beside Krita's window. It stops nothing: the tool reads no answer from it."""

    def __init__(self):
        self._dialog = None

    def open(self, text):
        """Opens the display, or gives the open one another text."""
        if self._dialog is None:
            window = Krita.instance().activeWindow()
            self._dialog = QProgressDialog(window.qwindow() if window else None, Qt.Dialog)
            self._dialog.setWindowTitle(tr("Exposure sheet"))
            self._dialog.setCancelButton(None)
            self._dialog.setAutoClose(False)
            self._dialog.setAutoReset(False)
            self._dialog.setMinimumDuration(0)
            self._dialog.setRange(0, 100)
            self._dialog.setMinimumWidth(320)
        self._dialog.setLabelText(text)
        self._dialog.setValue(0)
        self._dialog.show()

    def show(self, percent):
        if self._dialog is not None:
            self._dialog.setValue(max(0, min(100, round(percent))))

    def close(self):
        if self._dialog is not None:
            self._dialog.close()
            self._dialog.deleteLater()
            self._dialog = None
