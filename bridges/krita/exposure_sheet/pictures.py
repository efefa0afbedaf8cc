"""What a document looks like, as three planes of sRGB on white."""

from krita import Krita
from PyQt5.QtGui import QImage

from .words import Refused


def pixels(image):
    """The bytes of a picture: red, green, blue and opacity of each pixel, row after row; none of no picture."""
    if image.isNull():
        return b""
    image = image.convertToFormat(QImage.Format_RGBA8888)
    return image.constBits().asstring(image.sizeInBytes())


def channels(rgba):
    return rgba[0::4], rgba[1::4], rgba[2::4]


def bgra(red, green, blue):
    """The planes as opaque pixels in the order in which an 8-bit layer of Krita's holds them."""
    data = bytearray(b"\xff") * (4 * len(red))
    data[0::4], data[1::4], data[2::4] = blue, green, red
    return bytes(data)


class Renderer:
    """Renders one document. What is transparent is laid on white by Krita itself, in the document's own colour
    space, so that every pixel is the one that Krita's export gives; that needs a second document, out of sight."""

    def __init__(self, document):
        self._document = document
        self._ground = None

    def planes(self):
        """Red, green and blue of the document's current time."""
        width, height = self._document.width(), self._document.height()
        rgba = pixels(self._document.projection(0, 0, width, height))
        if len(rgba) != 4 * width * height or not rgba:
            raise Refused("Krita has no picture of this frame")
        if rgba[3::4].count(b"\xff") < width * height:
            rgba = pixels(self._on_white(width, height))
        return channels(rgba)

    def _on_white(self, width, height):
        document = self._document
        shape = (width, height, document.colorModel(), document.colorDepth(), document.colorProfile())
        if self._ground is None or self._ground.shape != shape:
            self.close()
            self._ground = Ground(shape)
        return self._ground.under(document)

    def close(self):
        """Gives the second document back, if there is one."""
        if self._ground is not None:
            self._ground.close()
            self._ground = None


class Ground:
    """A white document of that size and colour space, with a layer on which a picture is laid."""

    def __init__(self, shape):
        self.shape = shape
        width, height, *space = shape
        # Its first layer is white.
        self._document = Krita.instance().createDocument(width, height, "white ground", *space, 72.0)
        self._layer = self._document.createNode("picture", "paintlayer")
        self._document.rootNode().addChildNode(self._layer, None)

    def under(self, document):
        width, height = self.shape[:2]
        self._layer.setPixelData(document.pixelData(0, 0, width, height), 0, 0, width, height)
        self._document.refreshProjection()
        self._document.waitForDone()
        # Nobody shall be asked whether it is to be saved, nor find it again as a rescued drawing.
        self._document.setModified(False)
        return self._document.projection(0, 0, width, height)

    def close(self):
        self._document.setModified(False)
        self._document.close()
