"""Krita as the host of the exposure sheet: see Manual.html beside this file for what the user gets."""

from krita import Krita

from .extension import ExposureSheet

Krita.instance().addExtension(ExposureSheet(Krita.instance()))
