"""What each member of the host does in Krita."""

import math

from PyQt5.QtCore import QDir, QFileInfo

from . import theme
from .drawing import Drawing
from .roll import Roll
from .words import Refused, tr

RED, GREEN, BLUE = range(3)


class Host:
    def __init__(self, document, status):
        """document: what the sheet works on. status: the progress display (open, show, close)."""
        self._status = status
        # The drawing, and behind it the rolls that were shot from it. The last one that is open is worked on.
        self._drawings = [Drawing(document)]
        self._start_at(0)

    # What is worked on.

    def take(self, document):
        """Works on this document from now on."""
        taken = next((drawing for drawing in self._drawings if drawing.document == document), None)
        if taken is None:
            taken = Drawing(document)
        else:
            self._drawings.remove(taken)
        self._drawings.append(taken)
        self._start_at(0)

    def drawing(self):
        newest = self._drawings[-1]
        if newest.is_open():
            return newest
        # A roll that was looked at and closed leaves the drawing that it was shot from.
        still_open = [drawing for drawing in self._drawings if drawing.is_open()]
        if not still_open:
            raise Refused(f'the document "{newest.name}" has been closed in Krita')
        self._drawings = still_open
        self._start_at(0)
        return still_open[-1]

    def _start_at(self, frame):
        self._frame = frame
        self._seen = None
        self._coming = {}

    def end(self):
        """Called when the tool has gone."""
        for drawing in self._drawings:
            drawing.leave()
        self._status.close()

    # Start.

    def app_dir(self):
        files = [drawing.document.fileName() for drawing in self._drawings]
        saved = [file for file in files if file]
        return QFileInfo(saved[-1]).absolutePath() if saved else QDir.homePath()

    def wallpaper(self):
        return theme.wallpaper()

    # Rate, size, length.

    def rate(self):
        return str(self.drawing().document.framesPerSecond())

    def set_rate(self, rate):
        """Krita counts whole frames a second; what is no rate leaves its own."""
        drawing = self.drawing()
        if math.isfinite(rate) and rate > 0:
            drawing.document.setFramesPerSecond(max(1, round(rate)))

    def width(self):
        return self.drawing().document.width() - 1

    def height(self):
        return self.drawing().document.height() - 1

    def total_frames(self):
        return self.drawing().frame_count()

    # Frames.

    def go_to_frame(self, frame):
        if not math.isfinite(frame):
            raise Refused(f"there is no frame {frame}")
        self._end_run()
        self.drawing().follow(round(frame))

    def go_to_buffer(self, frame, _kind):
        """The buffer members reach this frame now. It is waited for when it is asked for: one that is only written to
        needn't be drawn."""
        self._write()
        drawing = self.drawing()
        drawing.follow(frame)
        self._start_at(drawing.within(frame))

    def plane(self, channel):
        """A channel of the frame, x fastest. One rendering serves all three."""
        self._write()
        drawing = self.drawing()
        if self._seen is None:
            self._seen = drawing.planes(self._frame)
        return self._seen[channel]

    def plane_size(self):
        document = self.drawing().document
        return document.width() * document.height()

    def set_plane(self, channel, plane):
        if len(plane) != self.plane_size():
            raise Refused(f"{len(plane)} bytes where a plane has {self.plane_size()}")
        self._coming[channel] = plane
        if len(self._coming) == 3:
            self._write()

    def _write(self):
        """Draws what came for the frame; a channel that didn't come stays as it is."""
        if not self._coming:
            return
        coming, self._coming = self._coming, {}
        drawing = self.drawing()
        if len(coming) < 3:
            coming = {**dict(enumerate(drawing.planes(self._frame))), **coming}
        drawing.set_planes(self._frame, [coming[channel] for channel in (RED, GREEN, BLUE)])
        self._seen = None

    def create_animation(self, frames, _kind):
        if frames < 1:
            raise Refused(f"an animation of {frames} frames can't be made")
        self._write()
        roll = Roll(self.drawing().document, frames)
        self._drawings.append(roll)
        self._start_at(0)

    def _end_run(self):
        self._write()
        self.drawing().rest()

    # Progress.

    def status_open(self, text):
        self._status.open(tr(text))

    def status_show(self, percent):
        self._status.show(percent)

    def status_close(self):
        self._status.close()
        self._end_run()

    def working_on(self):
        """The name of the document, for the user."""
        return self.drawing().name

