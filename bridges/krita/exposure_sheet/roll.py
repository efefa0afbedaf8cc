"""The animation that is shot: a new document with one animated layer, in a window of its own."""

import time

from krita import Krita
from PyQt5.QtCore import QEventLoop, Qt
from PyQt5.QtWidgets import QAbstractItemView, QApplication, QDockWidget, QToolButton

from .drawing import Drawing
from .pictures import bgra
from .words import Refused, tr

PATIENCE_SECONDS = 10


class Roll(Drawing):
    def __init__(self, like, frames):
        """A roll of so many white frames, of the size, resolution and rate of that document."""
        krita = Krita.instance()
        self.size = like.width(), like.height()
        document = krita.createDocument(*self.size, tr("Roll"), "RGBA", "U8", "", like.xRes())
        document.setYRes(like.yRes())
        document.setFramesPerSecond(like.framesPerSecond())
        document.setFullClipRangeStartTime(0)
        document.setFullClipRangeEndTime(frames - 1)
        self._layer = document.topLevelNodes()[0]
        self._layer.setName(tr("Roll"))
        self._layer.enableAnimation()
        self._timeline = Timeline(open_window(krita, document))
        super().__init__(document)
        self._make_key(0)
        self._last, self._picture = -1, None

    def set_planes(self, frame, planes):
        """Draws the frame, or lets the one before be held if both are the same."""
        follows = frame == self._last + 1
        if not follows:
            self._end_run()
            self._keep_what_follows(frame)
        if not (follows and planes == self._picture and not self._has_key(frame)):
            self._draw(frame, planes)
        self._last, self._picture = frame, planes

    def rest(self):
        self._end_run()
        super().rest()

    def leave(self):
        if self.is_open():
            self._end_run()
        super().leave()

    def _end_run(self):
        """Frames behind the last one that was set are white, not held. While one frame after the other is set there
        is no need for that."""
        behind = self._last + 1
        if 0 < behind < self.frame_count() and not self._has_key(behind):
            self._make_key(behind)
        self._picture = None

    def _keep_what_follows(self, frame):
        """A frame out of order changes itself alone: what was held over it goes on behind it."""
        if frame + 1 < self.frame_count() and not self._has_key(frame + 1):
            self._make_key(frame + 1, Timeline.DUPLICATE)

    def _has_key(self, frame):
        return self._layer.hasKeyframeAtTime(self.time_of(frame))

    def _make_key(self, frame, kind=None):
        self._asked = None
        self.document.setActiveNode(self._layer)
        self.document.waitForDone()
        self._timeline.make_key(self._layer.name(), self.time_of(frame), kind or Timeline.BLANK)
        self.document.waitForDone()
        if not self._has_key(frame):
            raise Refused(f"Krita made no frame {frame} on the new animation")

    def _draw(self, frame, planes):
        if not self._has_key(frame):
            self._make_key(frame)
        self.go(frame)
        self._layer.setPixelData(bgra(*planes), 0, 0, *self.size)
        # Written pixels alone leave what Krita has kept of the frame, on the canvas and for its playback, as it was.
        self._layer.setVisible(True)
        self.document.refreshProjection()
        self.document.setModified(True)


class Timeline:
    """The timeline of one window. Krita's interface for scripts can't make a frame; the actions on the timeline's
    tool bar can, and those of this window work on this window's document, whatever the user does elsewhere."""

    BLANK, DUPLICATE = "add_blank_frame", "add_duplicate_frame"

    def __init__(self, window):
        docker = window.qwindow().findChild(QDockWidget, "TimelineDocker")
        buttons = docker.findChildren(QToolButton) if docker is not None else []
        actions = [button.defaultAction() for button in buttons]
        self._actions = {action.objectName(): action for action in actions if action is not None}
        views = docker.findChildren(QAbstractItemView) if docker is not None else []
        self._view = next((view for view in views if view.inherits("KisAnimTimelineFramesView")), None)
        if self._view is None or not {self.BLANK, self.DUPLICATE} <= set(self._actions):
            raise Refused("this version of Krita has another timeline than the one that frames can be made on")

    def make_key(self, layer, moment, kind):
        """Makes a frame on that layer, which is the active one of its document."""
        self._view.setCurrentIndex(self._view.model().index(self._row_of(layer), moment))
        self._actions[kind].trigger()

    def _row_of(self, layer):
        model = self._view.model()
        end = time.monotonic() + PATIENCE_SECONDS
        while time.monotonic() < end:
            for row in range(model.rowCount()):
                if model.headerData(row, Qt.Vertical) == layer:
                    return row
            # The timeline learns from the event loop that the window's document has become another.
            QApplication.processEvents(QEventLoop.ExcludeUserInputEvents, 20)
        raise Refused(f'the layer "{layer}" of the new animation isn\'t on its timeline')


def open_window(krita, document):
    """Shows the document in a window beside the one that the user works in."""
    beside = krita.activeWindow()
    window = krita.openWindow()
    if beside is not None:
        window.qwindow().resize(beside.qwindow().size())
    # A document that is added to a window before that is shown gives it no title.
    window.qwindow().show()
    window.addView(document)
    return window
