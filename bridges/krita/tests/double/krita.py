"""A small double of the interface that Krita documents for its scripts: documents of one animated layer, 8-bit sRGB."""

from PyQt5.QtCore import QObject, Qt
from PyQt5.QtGui import QColor, QImage


class Extension(QObject):
    pass


class Layer:
    def __init__(self, document):
        self.document = document
        self.keys = {0: b"\xff\xff\xff\xff" * (document.width() * document.height())}
        self._name = "Background"

    def name(self):
        return self._name

    def setName(self, name):
        self._name = name

    def enableAnimation(self):
        pass

    def setVisible(self, visible):
        pass

    def hasKeyframeAtTime(self, time):
        return time in self.keys

    def shown_at(self, time):
        return self.keys[max((key for key in self.keys if key <= time), default=min(self.keys))]

    def setPixelData(self, data, x, y, width, height):
        time = self.document.currentTime()
        self.keys[max(key for key in self.keys if key <= time)] = bytes(data)
        self.document.is_fresh = False


class Document:
    """Changes of the current time take effect when Krita has come to rest, as in Krita."""

    def __init__(self, width, height, name, *_):
        self._size, self._name, self._rate = (width, height), name, 24
        self._clip, self._time, self._next, self._resolution = [0, 100], 0, None, 72.0
        self.busy, self.is_fresh, self.is_modified = False, True, False
        self.went = []
        self.layers = [Layer(self)]

    def width(self):
        return self._size[0]

    def height(self):
        return self._size[1]

    def name(self):
        return self._name

    def fileName(self):
        return ""

    def xRes(self):
        return self._resolution

    yRes = xRes

    def setYRes(self, resolution):
        pass

    def colorModel(self):
        return "RGBA"

    def colorDepth(self):
        return "U8"

    def colorProfile(self):
        return "sRGB"

    def framesPerSecond(self):
        return self._rate

    def setFramesPerSecond(self, rate):
        self._rate = rate

    def fullClipRangeStartTime(self):
        return self._clip[0]

    def fullClipRangeEndTime(self):
        return self._clip[1]

    def setFullClipRangeStartTime(self, time):
        self._clip[0] = time

    def setFullClipRangeEndTime(self, time):
        self._clip[1] = time

    def currentTime(self):
        return self._time

    def setCurrentTime(self, time):
        self.went.append(time)
        self._next = time
        if not self.busy:
            self.waitForDone()

    def waitForDone(self):
        if self._next is not None:
            self._time, self._next, self.is_fresh = self._next, None, True

    def tryBarrierLock(self):
        return not self.busy

    def unlock(self):
        pass

    def topLevelNodes(self):
        return self.layers

    def rootNode(self):
        return self

    def createNode(self, name, kind):
        return Layer(self)

    def addChildNode(self, layer, above):
        self.layers.append(layer)

    def setActiveNode(self, layer):
        self.active = layer

    def refreshProjection(self):
        self.is_fresh = True

    def setModified(self, modified):
        self.is_modified = modified

    def pixelData(self, x, y, width, height):
        return self.layers[0].shown_at(self._time)

    def projection(self, x, y, width, height):
        picture = QImage(*self._size, QImage.Format_ARGB32)
        picture.fill(Qt.transparent)
        # What a script draws isn't seen before the projection is refreshed.
        for layer in self.layers if self.is_fresh else []:
            pixels = layer.shown_at(self._time)
            for place in range(width * height):
                blue, green, red, opacity = pixels[4 * place:4 * place + 4]
                below = QColor.fromRgba(picture.pixel(place % width, place // width))
                if layer is not self.layers[0]:
                    share = opacity / 255
                    red, green, blue = (round(under + (over - under) * share) for under, over in
                                        zip(below.getRgb(), (red, green, blue)))
                    opacity = max(opacity, below.alpha())
                picture.setPixelColor(place % width, place // width, QColor(red, green, blue, opacity))
        return picture

    def close(self):
        Krita.instance().open.remove(self)


class Krita:
    _instance = None

    def __init__(self):
        self.open = []

    @classmethod
    def instance(cls):
        cls._instance = cls._instance or cls()
        return cls._instance

    def documents(self):
        return list(self.open)

    def createDocument(self, *shape):
        self.open.append(Document(*shape))
        return self.open[-1]

    def activeDocument(self):
        return self.open[0] if self.open else None

    def activeWindow(self):
        return None
