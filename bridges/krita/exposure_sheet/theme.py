"""The tool's colours and wallpaper, taken from Krita's own colours."""

import os

from PyQt5.QtCore import QSettings, QStandardPaths
from PyQt5.QtGui import QColor
from PyQt5.QtWidgets import QApplication

WALLPAPERS = os.path.join(os.path.dirname(os.path.abspath(__file__)), "wallpapers")
DARK_WALLPAPER, LIGHT_WALLPAPER = "night.png", "slate.png"


def is_dark(palette):
    return palette.window().color().lightness() < 128


def wallpaper(palette=None):
    palette = palette or QApplication.palette()
    return os.path.join(WALLPAPERS, DARK_WALLPAPER if is_dark(palette) else LIGHT_WALLPAPER)


def mixed(one, other, share):
    """A colour on the way from one to the other; share 0 is the one, 1 the other."""
    return QColor(*(round(a + (b - a) * share) for a, b in zip(one.getRgb()[:3], other.getRgb()[:3])))


def colors(palette):
    """The tool's settings by key: colours as red + 256 green + 65536 blue, and the four flags."""
    button, window, base = palette.button().color(), palette.window().color(), palette.base().color()
    white, black = QColor(255, 255, 255), QColor(0, 0, 0)
    text, highlight = palette.text().color(), palette.highlight().color()
    looks = {
        "Shine_Color": mixed(button, white, 0.3 if is_dark(palette) else 0.7),
        "Shadow_Color": mixed(button, black, 0.6),
        "Half_Shine_Color": mixed(button, white, 0.15 if is_dark(palette) else 0.35),
        "Half_Shadow_Color": mixed(button, black, 0.3),
        "Button_Fill_Color": button if button.lightness() > 70 else mixed(button, white, 0.18),
        "Scroll_Fill_Color": mixed(window, black, 0.25 if is_dark(palette) else 0.12),
        "Scroll_Bar_Color": mixed(highlight, white, 0.25),
        "Tab_Highlight_Color": highlight,
        "Ruler_Color": mixed(window, text, 0.4),
        "Textbox_Fill_Color": base,
        "Textbox_Text_Color": text,
        "Special_Backdrop_Color": window,
        "Special_Tool_Color": mixed(button, QColor(200, 90, 90), 0.15),
        "Special_Setting_Color": mixed(button, QColor(90, 170, 180), 0.15),
        "Special_Action_Color": mixed(button, QColor(170, 160, 80), 0.15),
    }
    settings = {key: color.red() + 256 * color.green() + 65536 * color.blue() for key, color in looks.items()}
    flat = {"Borderless_Buttons": 0, "Borderless_Scrollers": 1, "Borderless_Strings": 1, "Borderless_Tabs": 1}
    return {**settings, **flat}


def store(palette=None):
    """Writes the colours to the settings that the tool reads; tells whether anything there has changed."""
    folder = QStandardPaths.writableLocation(QStandardPaths.GenericConfigLocation)
    settings = QSettings(os.path.join(folder, "vellumark.ini"), QSettings.IniFormat)
    settings.beginGroup("Startup")
    changed = False
    for key, value in colors(palette or QApplication.palette()).items():
        if settings.value(key) != str(value):
            settings.setValue(key, str(value))
            changed = True
    settings.endGroup()
    settings.sync()
    return changed
