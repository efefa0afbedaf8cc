"""A small double of the interface that Krita documents for its scripts: documents of one animated layer, 8-bit sRGB."""

from PyQt5.QtCore import QObject, Qt
from PyQt5.QtGui import QColor, QImage


class Extension(QObject):
    pass


class Answering:
    """Answers name() with what it was made with, or with what setName() was given since; so with its other facts."""

    def __init__(self, **facts):
        self.facts = facts

    def __getattr__(self, member):
        fact = member[3].lower() + member[4:] if member.startswith("set") else member
        if fact not in self.__dict__.get("facts", ()):
            raise AttributeError(member)
        return (lambda: self.facts[fact]) if fact == member else lambda value: self.facts.update({fact: value})


class Layer(Answering):
    def __init__(self, document):
        super().__init__(name="Background", visible=True)
        self.document, self.is_animated = document, False
        self.keys = {0: b"\xff\xff\xff\xff" * (document.width() * document.height())}

    def enableAnimation(self):
        self.is_animated = True

    def hasKeyframeAtTime(self, time):
        return time in self.keys

    def shown_at(self, time):
        return self.keys[max((key for key in self.keys if key <= time), default=min(self.keys))]

    def setPixelData(self, data, x, y, width, height):
        time = self.document.currentTime()
        self.keys[max(key for key in self.keys if key <= time)] = bytes(data)
        self.document.is_fresh = False


class Document(Answering):
    """Changes of the current time take effect when Krita has come to rest, as in Krita."""

    def __init__(self, width, height, name, *space):
        super().__init__(
            width=width, height=height, name=name, fileName="", xRes=space[-1] if space else 72.0, yRes=72.0,
            colorModel="RGBA", colorDepth="U8", colorProfile="sRGB", framesPerSecond=24, fullClipRangeStartTime=1,
            fullClipRangeEndTime=100, currentTime=0, modified=False, activeNode=None)
        self._next = None
        self.busy, self.locked, self.is_fresh = False, False, True
        self.went = []
        self.layers = [Layer(self)]

    def setCurrentTime(self, time):
        assert not self.locked, "waits for ever"
        self.went.append(time)
        self._next = time
        if not self.busy:
            self.waitForDone()

    def waitForDone(self):
        if self._next is not None:
            self.facts["currentTime"], self._next, self.is_fresh = self._next, None, True

    def tryBarrierLock(self):
        self.locked = not self.busy
        return self.locked

    def unlock(self):
        self.locked = False

    def topLevelNodes(self):
        return self.layers

    def rootNode(self):
        return self

    def createNode(self, name, kind):
        return Layer(self)

    def addChildNode(self, layer, above):
        self.layers.append(layer)
        self.facts["modified"] = True

    def refreshProjection(self):
        self.is_fresh = True

    def pixelData(self, x, y, width, height):
        return self.layers[0].shown_at(self.currentTime())

    def projection(self, x, y, width, height):
        assert self._next is None, "the picture of either frame"
        picture = QImage(self.width(), self.height(), QImage.Format_ARGB32)
        picture.fill(Qt.transparent)
        # What a script draws isn't seen before the projection is refreshed.
        for layer in self.layers if self.is_fresh else []:
            pixels = layer.shown_at(self.currentTime())
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
    open = []

    @classmethod
    def instance(cls):
        return cls()

    def documents(self):
        return list(self.open)

    def createDocument(self, *shape):
        self.open.append(Document(*shape))
        return self.open[-1]

    def activeDocument(self):
        return self.open[0] if self.open else None

    def activeWindow(self):
        return None
