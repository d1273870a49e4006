"""The scenes of docs/tour.md, played in the built programs by scripts/tour. Each leaves its picture.

A new scene is a method of Tour whose name begins with "scene_". It starts the workbench itself, so that it can be
played alone, keeps its picture and quits.
"""

import os
import sys
import unittest

PROJECT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "../..")
sys.path.insert(0, os.path.join(PROJECT, "tests/host/zorbench/drive"))

import devices
import pictures
import screen
from utility import CAMERA, TITLE, UtilityCase, computed
from workbench import Workbench, temporary, zorffc

PRECISION = ("--precision", "12")
CORNER = (1599, 1199)


def at(widget, across, down):
    """A place on the screen: shares of a widget's width and height."""
    left, top, width, height = widget.place
    return round(left + across * width), round(top + down * height)


class Tour(UtilityCase):
    def setUp(self):
        self.flat = temporary("flat.pgm")
        zorffc("simulate", "--output", self.flat, "--seed", "7")
        devices.move_mouse(*CORNER)

    def open_flat(self, bench):
        bench.open_file(self.flat)
        bench.wait_for_frame(self.flat)
        bench.wait_for(lambda: bench.field("Judgement").startswith("Green: "), "the judgement")

    def scene_report(self):
        gains = temporary("flat.ffc")
        report = temporary("report.png")
        zorffc("compute", self.flat, "--title", TITLE, "--camera", CAMERA, *PRECISION, "--output", gains)
        zorffc("report", self.flat, "--ffc", gains, *PRECISION, "--output", report)
        pictures.write("report.png", *screen.read_png(report))

    def scene_frame(self):
        with Workbench(self) as bench:
            self.open_flat(bench)
            bench.main_window().find("filler", "Frame view").point_at()
            bench.wait_for(lambda: bench.field("Value"), "the value under the mouse")
            pictures.keep(bench.main_window(), "workbench.png")
            bench.quit(self)

    def scene_correction(self):
        before = computed(self.flat, *PRECISION)
        with Workbench(self) as bench:
            self.open_flat(bench)
            utility = self.open_utility(bench)
            utility.beside("Precision:").choose("12 bit")
            utility.find("check box", "Show Flat Y").toggle()
            utility.find("push button", "Update").press()
            utility.beside("Title:").type(TITLE)
            utility.beside("Camera:").type(CAMERA)
            devices.move_mouse(*CORNER)
            pictures.keep(utility, "dialog.png")
            saved = self.save(bench, utility, "saved.ffc")
            self.compare(saved, before, computed(self.flat, *PRECISION))
            bench.quit(self)

    def scene_live(self):
        with Workbench(self) as bench:
            window = bench.main_window()
            dock = bench.open_dock("Simulator")
            dock.find("spin button", "Frame rate").set_number(10)
            window.find("push button", "Start").press()
            window.find("check box", "Live").toggle()
            dock.find("spin button", "Level").set_number(97)
            bench.wait_for(lambda: bench.field("Judgement").startswith("Amber: "), "too much light")
            bench.wait_for(lambda: bench.field("Frame").startswith("Simulator 20 "), "the frame for the picture")
            # Frames come while it is taken, so that this picture differs a little from run to run.
            pictures.keep_moving(window, "live.png")
            dock.find("spin button", "Level").set_number(70)
            bench.wait_for(lambda: bench.field("Judgement").startswith("Green: "), "good light")
            utility = self.open_utility(bench)
            window.find("push button", "Stop").press()
            bench.wait_for(lambda: bench.field("Frames per second") == "", "the end of the stream")
            self.assertIn(b"\n1280,", self.save(bench, utility, "live.ffc"))
            bench.quit(self)

    def scene_camera(self):
        with Workbench(self, "--camera-interfaces", "fake") as bench:
            window = bench.main_window()
            bench.connect_camera()
            window.child("frame", "Camera").find("spin button", "Frame rate").set_number(200)
            bench.take_average("Average\u2026", "Average", 200)
            bench.wait_for(lambda: bench.field("Frame").startswith("Average of 200, Aravis Fake (1)"), "the average")
            devices.move_mouse(*CORNER)
            pictures.keep(window, "camera.png")
            utility = self.open_utility(bench)
            self.assertIn(b"\n512,", self.save(bench, utility, "camera.ffc"))
            bench.menu_item("Camera", "Disconnect").press()
            bench.quit(self)

    def scene_inspect(self):
        with Workbench(self) as bench:
            self.open_flat(bench)
            window = bench.main_window()
            for title in ("Inspect", "Histogram"):
                bench.open_dock(title)
            screen.still(pictures.SCREEN, window.place)
            view = window.find("filler", "Frame view")
            region = window.find("label", "Hold Shift and drag over the frame.")
            with devices.held_key(devices.SHIFT_CODE):
                devices.drag(at(view, 0.3, 0.6), at(view, 0.5, 0.8))
            bench.wait_for(lambda: " pixels at " in region.name, "the figures")
            devices.move_mouse(*CORNER)
            pictures.keep(window, "inspect.png")
            bench.quit(self)


if __name__ == "__main__":
    loader = unittest.TestLoader()
    loader.testMethodPrefix = "scene_"
    unittest.main(testLoader=loader)
