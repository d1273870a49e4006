"""The camera inside the program, from "Connect" to a coefficient file."""

import re
import unittest

from utility import UtilityCase, computed
from workbench import Workbench, temporary

NAME = "Aravis Fake (1)"


class Camera(UtilityCase):
    def connect(self, bench):
        bench.menu_item("Camera", "Connect").press()
        dialog = bench.window("dialog", "Connect to a camera")
        connect = dialog.find("push button", "Connect")
        bench.wait_for(lambda: connect.is_enabled, "the camera to be found")
        connect.press()
        bench.wait_until_gone("dialog", "Connect to a camera")
        bench.wait_for(lambda: self.number(bench) is not None, "the first frame of the camera")

    def number(self, bench):
        """Of the current frame in the stream; None when it is not of the stream."""
        match = re.match(r"Aravis Fake \(1\) (\d+) ", bench.field("Frame"))
        return int(match.group(1)) if match else None

    def take(self, bench, entry, title, frames):
        bench.menu_item("Camera", entry).press()
        dialog = bench.window("dialog", title)
        dialog.find("spin button", "Frames").set_number(frames)
        dialog.find("push button", "Take").press()

    def test_average_without_the_dark_becomes_gains(self):
        with Workbench(self, "--camera-interfaces", "fake") as bench:
            self.connect(bench)
            dock = bench.main_window().child("frame", "Camera")
            dock.find("spin button", "Frame rate").set_number(200)
            bench.menu_item("File", "Stop").press()

            self.take(bench, "Dark frame\u2026", "Dark frame", 4)
            subtract = bench.menu_item("Camera", "Subtract dark frame")
            bench.wait_for(lambda: subtract.is_checked, "the dark frame")
            # The camera sends a ramp that moves: nothing of it is left without the ramp itself.
            subtract.press()
            bench.wait_for(lambda: not subtract.is_checked, "the mark to go")
            self.take(bench, "Average\u2026", "Average", 8)
            bench.wait_for(lambda: bench.field("Frame").startswith(f"Average of 8, {NAME}  512 x 512  Mono8"),
                           "the average")

            # What the utility saves is what the command line makes of the same frame.
            utility = self.open_utility(bench)
            frame = temporary("average.pgm")
            bench.save_frame(frame)
            before = computed(frame)
            saved = self.save(bench, utility, "average.ffc")
            self.compare(saved, before, computed(frame))

            # Then live.
            bench.menu_item("File", "Live").press()
            bench.menu_item("File", "Start").press()
            bench.wait_for(lambda: self.number(bench) is not None, "a frame of the camera")
            first = self.number(bench)
            bench.wait_for(lambda: self.number(bench) > first + 3, "further frames")
            bench.wait_for(lambda: self.save(bench, utility, "live.ffc") != saved, "gains of a live frame")
            self.assertEqual(bench.field("Incomplete"), "0")
            bench.menu_item("File", "Stop").press()
            bench.menu_item("Camera", "Disconnect").press()
            bench.wait_for(lambda: bench.menu_item("Camera", "Connect").is_enabled, "the camera to be given back")
            bench.quit(self)

    def test_what_is_set_is_seen_in_the_next_frames(self):
        with Workbench(self, "--camera-interfaces", "fake") as bench:
            self.connect(bench)
            dock = bench.main_window().child("frame", "Camera")
            self.take(bench, "Average\u2026", "Average", 2)
            bench.wait_for(lambda: bench.field("Frame").startswith("Average of 2"), "the average")
            dock.find("spin button", "Gain").set_number(2)
            bench.menu_item("File", "Start").press()
            bench.wait_for(lambda: self.number(bench) is not None, "a frame of the camera")
            self.assertEqual(bench.field("Notice"),
                             "The average was dropped: the gain is 2 and was 0; take another one.")
            bench.wait_for(lambda: not bench.menu_item("Camera", "Show average").is_enabled, "the average to go")
            # The camera is connected at the end.
            bench.quit(self)


if __name__ == "__main__":
    unittest.main()
