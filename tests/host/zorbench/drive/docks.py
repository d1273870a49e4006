"""The docks of the menu "View", each opened there and used."""

import os
import unittest

import devices
import screen
from workbench import Workbench, temporary

SCREEN = os.environ["ZOR_DRIVE_SCREEN"]
WIDTH, HEIGHT = 16, 8


def counted_frame():
    """A frame as large as a hex pixel dump, in which each pixel has a code of its own."""
    path = temporary("counted.pgm")
    with open(path, "wb") as file:
        file.write(b"P5 %d %d 255\n" % (WIDTH, HEIGHT) + bytes(range(WIDTH * HEIGHT)))
    return path


def seen(place):
    return screen.seen(SCREEN, place)


def table(*lines):
    return [line.split("\t") for line in lines]


class Docks(unittest.TestCase):
    def copied(self, bench, widget):
        """What "Copy" in a widget's context menu copies: its lines, each as its fields."""
        left, top, width, height = widget.place
        x, y = left + width * 3 // 4, top + height // 2
        # The menu is no part of the tree. "Copy" is its first entry; the mouse does not cover this much of it.
        copy = (x + 24, y + 4, 16, 10)
        without_menu = seen(copy)
        devices.right_click(x, y)
        bench.wait_for(lambda: seen(copy) != without_menu, "the context menu")
        devices.click(*copy[:2])
        devices.move_mouse(x, y)
        bench.wait_for(lambda: seen(copy) == without_menu, "the end of the context menu")

        # A field that takes any text.
        bench.menu_item("File", "Open\u2026").press()
        dialog = bench.window("dialog", "Open")
        text = dialog.find("text", "File name:").paste()
        dialog.find("push button", "Cancel").press()
        bench.wait_until_gone("dialog", "Open")
        return table(*text.split("\n"))

    def test_hex_dump_is_copied(self):
        frame = counted_frame()
        with Workbench(self, frame) as bench:
            bench.wait_for_frame(frame)
            codes = bench.open_dock("Hex pixel dump").find("table", "Hex pixel dump")
            head = ["", *map(str, range(WIDTH))]
            rows = [[str(y), *(f"{y * WIDTH + x:02X}" for x in range(WIDTH))] for y in range(HEIGHT)]
            self.assertEqual(self.copied(bench, codes), [head, *rows])
            bench.quit(self)

    def test_figures_of_a_rectangle_are_copied(self):
        frame = counted_frame()
        with Workbench(self, frame) as bench:
            bench.wait_for_frame(frame)
            figures = bench.open_dock("Inspect").find("table", "Figures of the inspected region")
            view = bench.main_window().find("filler", "Frame view")
            left, top, width, height = view.place
            with devices.held_key(devices.SHIFT_CODE):
                devices.drag((left + 2, top + 2), (left + width - 3, top + height - 3))
            bench.main_window().find("label", "16 x 8 pixels at 0, 0")
            self.assertEqual(self.copied(bench, figures),
                             table("\tY", "Mean\t63.50", "Minimum\t0", "Maximum\t127", "Deviation\t36.95",
                                   "Count\t128"))
            bench.quit(self)

    def test_histogram_is_logarithmic_on_request_and_copied(self):
        frame = counted_frame()
        with Workbench(self, frame) as bench:
            bench.wait_for_frame(frame)
            dock = bench.open_dock("Histogram")
            plot = dock.child("filler").child("frame", "Histogram")
            left, top, width, height = plot.place
            axis = (left, top, width // 5, height)
            linear = screen.still(SCREEN, axis)
            box = dock.find("check box", "Logarithmic")
            for is_on in (True, False):
                box.toggle()
                bench.wait_for(lambda: box.is_checked == is_on, "the box to change")
                bench.wait_for(lambda: (seen(axis) != linear) == is_on, "the other axis")
            rows = [[str(code), "1" if code < WIDTH * HEIGHT else "0"] for code in range(256)]
            self.assertEqual(self.copied(bench, plot), [["Code", "Y"], *rows])
            bench.quit(self)

    def test_simulator_follows_its_controls(self):
        with Workbench(self) as bench:
            dock = bench.open_dock("Simulator")
            dock.find("spin button", "Width").set_number(64)
            dock.find("spin button", "Height").set_number(48)
            dock.find("combo box", "Depth").choose("8 bits")
            bench.menu_item("File", "Start").press()
            bench.wait_for(lambda: bench.field("Frame").endswith("  64 x 48  Mono8"), "frames of 8 bits")
            for name in ("Vignetting", "Column pattern", "Row pattern"):
                dock.find("spin button", name).set_number(0)
            dock.find("spin button", "Level").set_number(2)
            bench.wait_for(lambda: bench.field("Judgement").startswith("Red: the mean is 2."), "a dark frame")
            bench.quit(self)


if __name__ == "__main__":
    unittest.main()
