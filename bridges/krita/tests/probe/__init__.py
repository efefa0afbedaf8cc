"""A plug-in for the check alone: makes documents, looks into Krita and notes what the host passed. It stands on the
session bus and evaluates expressions over the functions below."""

import hashlib
import itertools
import json
import os
import time

from exposure_sheet import host as bridge
from exposure_sheet.roll import Timeline
from krita import Extension, InfoObject, Krita
from PyQt5.QtCore import Q_CLASSINFO, QObject, QTimer, pyqtSlot
from PyQt5.QtDBus import QDBusAbstractAdaptor, QDBusConnection, QDBusMessage
from PyQt5.QtGui import QColor, QImage, QLinearGradient, QPainter
from PyQt5.QtWidgets import QAction, QApplication, QMenu

KRITA = Krita.instance()
LAYER = "Drawings"

passed = []
seen_times = []
watched = {}


class Probe(QDBusAbstractAdaptor):
    Q_CLASSINFO("D-Bus Interface", "Krita.Probe")

    @pyqtSlot(str, QDBusMessage, result=str)
    def Evaluate(self, expression, message):
        try:
            return json.dumps(eval(expression, globals()))  # pylint: disable=eval-used
        except Exception as failure:  # pylint: disable=broad-except
            message.setDelayedReply(True)
            BUS.send(message.createErrorReply("Krita.Probe.Failed", f"{expression}: {failure!r}"))
            return ""


def animation(width, height, frames, first=0, rate=12, space=("RGBA", "U8"), opaque=False):
    """Opens a document whose every frame but each fifth is another picture."""
    document = KRITA.createDocument(width, height, "Frogs", *space, "", 96.0)
    document.setFramesPerSecond(rate)
    document.setFullClipRangeStartTime(first)
    document.setFullClipRangeEndTime(first + frames - 1)
    # The layer that is there already: the timeline may take long to learn of another one.
    layer = document.topLevelNodes()[0]
    layer.setName(LAYER)
    layer.enableAnimation()
    window = KRITA.windows()[0]
    window.addView(document)
    document.setActiveNode(layer)
    document.waitForDone()
    timeline = Timeline(window)
    pattern = pictures(document, opaque)
    for frame in range(frames):
        if frame % 5 == 4:
            continue
        timeline.make_key(LAYER, first + frame, Timeline.BLANK)
        document.waitForDone()
        document.setCurrentTime(first + frame)
        document.waitForDone()
        layer.setPixelData(next(pattern), 0, 0, width, height)
    document.setCurrentTime(first)
    document.refreshProjection()
    document.waitForDone()
    document.setModified(False)
    watched["drawing"] = document
    return document.name()


def pictures(document, opaque):
    """A ball that leaps, in the document's colour space. Half of what is drawn is translucent, unless it is to be
    opaque."""
    width, height = document.width(), document.height()
    space = document.colorModel(), document.colorDepth(), document.colorProfile()
    scratch = KRITA.createDocument(width, height, "pixels", "RGBA", "U8", "", 96.0)
    layer = scratch.topLevelNodes()[0]
    srgb = scratch.colorProfile()
    for frame in itertools.count():
        picture = QImage(width, height, QImage.Format_ARGB32)
        picture.fill(QColor(255, 255, 255) if opaque else QColor(0, 0, 0, 0))
        paint(QPainter(picture), width, height, frame)
        layer.setColorSpace("RGBA", "U8", srgb)
        layer.setPixelData(picture.constBits().asstring(4 * width * height), 0, 0, width, height)
        layer.setColorSpace(*space)
        yield layer.pixelData(0, 0, width, height)


def paint(painter, width, height, frame):
    painter.setRenderHint(QPainter.Antialiasing)
    sky = QLinearGradient(0, 0, 0, height)
    sky.setColorAt(0, QColor(90, 150, 210, 200))
    sky.setColorAt(1, QColor(250, 240, 220, 20))
    painter.fillRect(0, 0, width, height, sky)
    painter.fillRect(0, height * 5 // 6, width, height, QColor(110, 150, 80))
    size, beat = height // 4, frame % 12 / 12
    left = (width + size) * frame // 48 - size // 2
    top = height * 5 // 6 - size - int(height * 2.2 * beat * (1 - beat))
    painter.setBrush(QColor(220, 90, 50))
    painter.drawEllipse(left, top, size, size)
    painter.end()


def export(which, folder, kind="png"):
    """Krita's own export of each frame of a document, as numbered pictures without transparency."""
    document = document_of(which)
    options = InfoObject()
    for name, value in {"alpha": False, "forceSRGB": True, "compression": 1, "downsample": False, "indexed": False,
                        "transparencyFillcolor": QColor(255, 255, 255)}.items():
        options.setProperty(name, value)
    os.makedirs(folder, exist_ok=True)
    was = document.currentTime()
    document.setBatchmode(True)
    first, last = document.fullClipRangeStartTime(), document.fullClipRangeEndTime()
    for moment in range(first, last + 1):
        document.setCurrentTime(moment)
        document.waitForDone()
        document.exportImage(os.path.join(folder, f"{moment - first:04}.{kind}"), options)
    document.setCurrentTime(was)
    document.waitForDone()
    return last - first + 1


def save(which, path):
    document_of(which).setBatchmode(True)
    return document_of(which).saveAs(path)


def show_timeline():
    docker = next(docker for docker in KRITA.dockers() if docker.objectName() == "TimelineDocker")
    if not docker.isVisible():
        docker.toggleViewAction().trigger()


def document_of(which):
    """The last drawing that was made, or the newest document of that name."""
    if which == "drawing":
        return watched["drawing"]
    return [document for document in KRITA.documents() if document.name() == which][-1]


def facts(which):
    document = document_of(which)
    layers = document.topLevelNodes()
    return {"size": [document.width(), document.height()], "rate": document.framesPerSecond(),
            "resolution": document.xRes(), "modified": document.modified(), "time": document.currentTime(),
            "clip": [document.fullClipRangeStartTime(), document.fullClipRangeEndTime()],
            "layers": [layer.name() for layer in layers],
            "keys": [moment for moment in range(document.fullClipRangeEndTime() + 1)
                     if layers[-1].hasKeyframeAtTime(moment)]}


def close(which):
    """By the item "Close" of its window's menu, without a question."""
    document = document_of(which)
    document.waitForDone()
    document.setModified(False)
    window, view = next((window, view) for window in KRITA.windows() for view in window.views()
                        if view.document() == document)
    window.showView(view)
    actions = [action for menu in window.qwindow().findChildren(QMenu) for action in menu.actions()]
    item = next(action for action in actions if action.objectName() == "file_close")
    QTimer.singleShot(0, item.trigger)
    return len(KRITA.documents())


def documents():
    return len(KRITA.documents())


def windows():
    return [[view.document().name() for view in window.views()] for window in KRITA.windows()]


# What is seen.

def menu_place(*titles):
    """The middle of a menu's item on the screen; the menus above it must be open."""
    menu = KRITA.activeWindow().qwindow().menuBar()
    for depth, title in enumerate(titles):
        action = next(action for action in menu.actions() if action.text().replace("&", "") == title)
        if depth < len(titles) - 1:
            menu = action.menu()
    place = menu.mapToGlobal(menu.actionGeometry(action).center())
    return [place.x(), place.y()]


def choose_theme(name):
    actions = KRITA.activeWindow().qwindow().findChildren(QAction)
    next(action for action in actions if action.text().replace("&", "") == name).trigger()


def watch_time():
    """From now on notes each change of the drawing's current time, and when it was seen."""
    seen_times.clear()

    def look():
        moment = watched["drawing"].currentTime()
        if not seen_times or seen_times[-1][1] != moment:
            seen_times.append([time.monotonic(), moment])
    watched["timer"] = QTimer(timeout=look, interval=3)
    watched["timer"].start()


def stop_watching():
    watched.pop("timer").stop()
    return seen_times


def note_passing():
    """Lets the host note the member, the frame, the channel and the digest of each plane that passes."""
    plane, set_plane = bridge.Host.plane, bridge.Host.set_plane

    def note(member, host, channel, data):
        passed.append([member, host._frame, channel, hashlib.sha256(data).hexdigest()])

    def noting_plane(host, channel):
        data = plane(host, channel)
        note("get", host, channel, data)
        return data

    def noting_set_plane(host, channel, data):
        note("set", host, channel, data)
        set_plane(host, channel, data)
    bridge.Host.plane, bridge.Host.set_plane = noting_plane, noting_set_plane


class ProbeExtension(Extension):
    def setup(self):
        pass

    def createActions(self, window):
        pass


note_passing()
BUS = QDBusConnection.connectToBus(QDBusConnection.SessionBus, "probe")
PLACE = QObject()
Probe(PLACE)
BUS.registerObject("/Probe", PLACE)
BUS.registerService("Krita.Probe")
KRITA.addExtension(ProbeExtension(KRITA))
