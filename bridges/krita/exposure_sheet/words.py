"""What the bridge says, and how a member fails."""

from PyQt5.QtCore import QCoreApplication


def tr(text):
    return QCoreApplication.translate("ExposureSheet", text)


class Refused(Exception):
    """A member that can't do its work; the text goes to the tool as the error's words."""
