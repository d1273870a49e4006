"""Frames of the simulator as a stream, with and without the utility on them."""

import re
import unittest

from utility import UtilityCase
from workbench import Workbench

SIDES = {"Width": 320, "Height": 240}


class Live(UtilityCase):
    def start(self, bench):
        """Starts the stream, of small frames."""
        dock = bench.open_dock("Simulator")
        for side, pixels in SIDES.items():
            dock.find("spin button", side).set_number(pixels)
        bench.menu_item("File", "Start").press()
        bench.wait_for(lambda: self.number(bench) is not None, "the first frame")

    def number(self, bench):
        """Of the current frame in the stream; None before the first."""
        match = re.match(r"Simulator (\d+)  320 x 240 ", bench.field("Frame"))
        return int(match.group(1)) if match else None

    def wait_for_frames(self, bench, count):
        goal = self.number(bench) + count
        bench.wait_for(lambda: self.number(bench) >= goal, f"{count} more frames")

    def stop(self, bench):
        stop = bench.menu_item("File", "Stop")
        stop.press()
        bench.wait_for(lambda: not stop.is_enabled, "the stream to stop")

    def test_frames_are_counted_until_the_stream_stops(self):
        with Workbench(self) as bench:
            self.assertFalse(bench.menu_item("File", "Stop").is_enabled)
            self.start(bench)
            self.assertFalse(bench.menu_item("File", "Start").is_enabled)
            self.wait_for_frames(bench, 10)
            bench.wait_for(lambda: float(bench.field("Frames per second")) > 0, "a rate")
            bench.wait_for(lambda: bench.field("Judgement").startswith("Green: "), "the judgement")
            self.stop(bench)
            last = self.number(bench)
            self.assertEqual(bench.field("Frames per second"), "")
            # The next run counts anew.
            bench.menu_item("File", "Start").press()
            bench.wait_for(lambda: self.number(bench) < last, "the first frames of the next run")
            bench.quit(self)

    def test_frames_that_come_too_fast_are_dropped(self):
        with Workbench(self) as bench:
            self.start(bench)
            self.open_utility(bench)
            bench.menu_item("File", "Live").press()
            bench.main_window().find("spin button", "Frame rate").set_number(1000)
            bench.wait_for(lambda: int(bench.field("Dropped")) > 10, "dropped frames")
            bench.quit(self)

    def test_utility_follows_while_live_is_on(self):
        with Workbench(self) as bench:
            self.start(bench)
            utility = self.open_utility(bench)
            first = self.save(bench, utility, "first.ffc")
            self.wait_for_frames(bench, 3)
            self.assertEqual(self.save(bench, utility, "same.ffc"), first)
            bench.menu_item("File", "Live").press()
            bench.wait_for(lambda: self.save(bench, utility, "next.ffc") != first, "gains of another frame")
            bench.menu_item("File", "Live").press()
            bench.wait_for(lambda: not bench.menu_item("File", "Live").is_checked, "the end of live")
            self.wait_for_frames(bench, 3)
            last = self.save(bench, utility, "last.ffc")
            self.wait_for_frames(bench, 3)
            self.assertEqual(self.save(bench, utility, "same.ffc"), last)
            self.assertIn(b"\n320,", last)
            self.stop(bench)
            bench.quit(self)


if __name__ == "__main__":
    unittest.main()
