"""Every control has the name that an assistive client finds it by."""

import os
import unittest

from workbench import Workbench, flat_frame, temporary

CONTROLS = {"check box", "check menu item", "combo box", "list", "menu item", "page tab", "push button",
            "radio button", "radio menu item", "slider", "spin button", "table", "text", "toggle button", "tree"}


def controls_below(widget):
    """What can be used or read. Items of menus show only while their menu is open."""
    for child in widget.children():
        if child.role in CONTROLS and (child.is_showing or child.role.endswith("menu item")):
            yield child
        # What a combo box is made of is not used by itself.
        if child.role != "combo box":
            yield from controls_below(child)


def docks(window):
    return [child for child in window.children() if child.role == "frame"]


class Names(unittest.TestCase):
    def check(self, controls):
        self.assertEqual([str(widget) for widget in controls if not widget.title.strip()], [])

    def test_controls_have_names(self):
        frame = flat_frame()
        with Workbench(self, frame) as bench:
            window = bench.main_window()
            bench.wait_for(lambda: os.path.basename(frame) in window.title, "the frame's name")
            for dock in docks(window):
                if not dock.is_showing:
                    bench.open_dock(dock.title, "Camera" if dock.title == "Camera" else "View")
            controls = docks(window) + list(controls_below(window))
            self.check(controls)
            names = [widget.title for widget in controls]
            for name in ("File", "Open\u2026", "Start", "Stop", "Live", "View", "Simulator", "Plug-ins", "FFC Utility",
                         "Frame rate", "Position", "Value", "Frame", "Frames per second", "Dropped", "Judgement"):
                self.assertIn(name, names)

    def test_controls_of_the_raw_dialog_have_names(self):
        raw = temporary("dump.raw")
        with open(raw, "wb") as file:
            file.write(bytes(100))
        with Workbench(self, raw) as bench:
            dialog = bench.window("dialog", "Raw dump dump.raw")
            controls = list(controls_below(dialog))
            self.check(controls)
            self.assertEqual(sorted(widget.title for widget in controls),
                             ["Cancel", "Format", "Height", "Open", "Packed order", "Pitch", "Width"])


if __name__ == "__main__":
    unittest.main()
