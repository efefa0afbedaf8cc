"""The menu item, and what stands behind it from the start of the sheet to its end."""

from krita import Extension, Krita
from PyQt5.QtWidgets import QApplication, QMessageBox

from . import theme
from .host import Host
from .status import Status
from .tool import Tool
from .wire import Service
from .words import Refused, tr

ACTION = "exposure_sheet"
MESSAGE_MILLISECONDS = 6000


class ExposureSheet(Extension):
    def __init__(self, parent):
        super().__init__(parent)
        self._session = None

    def setup(self):
        pass

    def createActions(self, window):
        action = window.createAction(ACTION, tr("Exposure sheet"), "tools/scripts")
        action.triggered.connect(self.start)

    def start(self):
        """Starts the sheet on the active document; while it runs, gives it that document and brings it forward."""
        document = Krita.instance().activeDocument()
        try:
            if self._session is not None:
                self._session.come_forward(document)
            elif document is None:
                raise Refused(tr("Open or make the animation first that the exposure sheet shall work with."))
            else:
                self._session = Session(document, self._ended)
        except Refused as refusal:
            say(str(refusal))

    def _ended(self, words):
        self._session = None
        if words:
            say(words)


class Session:
    """One run of the tool, with the host on the bus for as long."""

    def __init__(self, document, on_end):
        """on_end: called once with what the user has to know, or nothing."""
        self._on_end = on_end
        self._host = Host(document, Status())
        self._service = Service(self._host, self._tool_left)
        failure = self._service.start()
        if failure:
            raise Refused(tr("The exposure sheet can't work with Krita: {0}.").format(failure))
        theme.store()
        self._has_come = False
        try:
            self._tool = Tool(self._tool_ended)
        except Refused:
            self._service.stop()
            raise
        QApplication.instance().paletteChanged.connect(self._dress)
        self._tell_document()

    def come_forward(self, document):
        if document is not None:
            self._host.take(document)
            self._tell_document()
        for form in self._service.forms[:1]:
            self._service.call_form(form, "Show")

    def _tell_document(self):
        view = Krita.instance().activeWindow().activeView()
        text = tr("The exposure sheet works with {0}").format(self._host.working_on())
        view.showFloatingMessage(text, Krita.instance().icon("document-multiple"), MESSAGE_MILLISECONDS, 1)

    def _dress(self, *_):
        if theme.store():
            for form in self._service.forms:
                self._service.call_form(form, "PrefsCallback")

    def _tool_left(self, _name):
        """A tool that died at work can't close its progress display any more."""
        self._has_come = True
        if not self._service.forms:
            self._host.end()

    def _tool_ended(self, status):
        QApplication.instance().paletteChanged.disconnect(self._dress)
        never_came = not self._has_come and not self._service.forms
        self._host.end()
        self._service.stop()
        self._on_end(tr("The exposure sheet ended before it had a window (exit status {0}).").format(status)
                     if status and never_came else "")


def say(text):
    window = Krita.instance().activeWindow()
    QMessageBox.information(window.qwindow() if window else None, tr("Exposure sheet"), text)
