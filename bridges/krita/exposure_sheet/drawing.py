"""A Krita document as an animation: frames counted from the clip's start."""

from krita import Krita
from PyQt5.QtCore import QElapsedTimer, QFileInfo, QTimer

from .pictures import Renderer
from .words import Refused, tr

# Milliseconds. Between two moves the sheet's calls get their answers: a walk through all its rows sends as many frames,
# of which Krita need draw only a few.
BETWEEN_MOVES, BETWEEN_LOOKS = 25, 4


def document_name(document):
    """What the user knows it by."""
    return QFileInfo(document.fileName()).fileName() or document.name() or tr("(not saved yet)")


class Drawing:
    """The user's document. Only its current time and its frame rate are ever changed."""

    def __init__(self, document):
        self.document = document
        self.name = document_name(document)
        self._renderer = Renderer(document)
        self._asked = None
        self._timer = QTimer(singleShot=True)
        self._timer.timeout.connect(self._follow)
        self._since_move = QElapsedTimer()

    def is_open(self):
        return any(self.document == document for document in Krita.instance().documents())

    def frame_count(self):
        return self.document.fullClipRangeEndTime() - self.document.fullClipRangeStartTime() + 1

    def within(self, frame):
        """The frame itself, or the end that it lies beyond."""
        return max(0, min(frame, self.frame_count() - 1))

    def time_of(self, frame):
        return self.document.fullClipRangeStartTime() + self.within(frame)

    def follow(self, frame):
        """Moves the time slider there as soon as Krita has drawn the frame before. A newer frame takes the place of
        one that Krita hasn't come to: frames are skipped, never queued."""
        self._asked = self.time_of(frame)
        self._follow()

    def _follow(self):
        if self._asked is None or not self.is_open():
            return
        rest = BETWEEN_MOVES - self._since_move.elapsed() if self._since_move.isValid() else 0
        if rest > 0:
            self._timer.start(rest)
            return
        # Only when Krita is idle is its current time what was last asked of it.
        if not self.document.tryBarrierLock():
            self._timer.start(BETWEEN_LOOKS)
            return
        self.document.unlock()
        if self.document.currentTime() != self._asked:
            self.document.setCurrentTime(self._asked)
            self._since_move.start()
        self._asked = None

    def go(self, frame):
        """Moves the time slider there and waits until the frame is drawn."""
        self._asked = None
        self.document.waitForDone()
        if self.document.currentTime() != self.time_of(frame):
            self.document.setCurrentTime(self.time_of(frame))
            self.document.waitForDone()

    def planes(self, frame):
        """The composited picture of that frame."""
        self.go(frame)
        return self._renderer.planes()

    def set_planes(self, frame, planes):
        raise Refused(f"frames can only be set on an animation that vel_CreateAnimAdv has made; "
                      f'"{self.name}" stays as it is')

    def rest(self):
        """Called when the tool has finished a run of frames."""
        self._renderer.close()

    def leave(self):
        """Called when the tool has gone: nothing is moved any more."""
        self._asked = None
        self._renderer.close()
