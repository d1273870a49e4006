"""The camera inside the program, from "Connect" to a coefficient file."""

import re
import unittest

from utility import UtilityCase, computed
from workbench import Workbench, temporary

NAME = "Aravis Fake (1)"


class Camera(UtilityCase):
    def number(self, bench):
        """Of the current frame in the stream; None when it is not of the stream."""
        match = re.match(r"Aravis Fake \(1\) (\d+) ", bench.field("Frame"))
        return int(match.group(1)) if match else None

    def test_average_without_the_dark_becomes_gains(self):
        with Workbench(self, "--camera-interfaces", "fake") as bench:
            bench.connect_camera()
            dock = bench.main_window().child("frame", "Camera")
            dock.find("spin button", "Frame rate").set_number(60)
            bench.menu_item("File", "Stop").press()

            bench.take_average("Dark frame\u2026", "Dark frame", 4)
            subtract = bench.menu_item("Camera", "Subtract dark frame")
            bench.wait_for(lambda: subtract.is_checked, "the dark frame")
            # The lens of this camera cannot be covered: its dark frame is a picture, which would be missing.
            subtract.press()
            bench.wait_for(lambda: not subtract.is_checked, "the mark to go")
            bench.take_average("Average\u2026", "Average", 8)
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
            bench.connect_camera()
            dock = bench.main_window().child("frame", "Camera")
            bench.take_average("Average\u2026", "Average", 2)
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
