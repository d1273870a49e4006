"""The binding of AT-SPI, in the version that the driver is written for."""

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, Gio, GLib
