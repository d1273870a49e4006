"""Frames of the simulator, live in the utility."""

import unittest

from utility import UtilityCase, computed
from workbench import Workbench, temporary, zorffc


class Stream(UtilityCase):
    def test_live_utility_saves_what_the_command_line_writes(self):
        # Without noise all frames are alike. Small ones leave time for questions under a sanitizer as well.
        frame = temporary("stream.pgm")
        zorffc("simulate", "--size", "320x240", "--dark-noise", "0", "--no-shot-noise", "--level", "60", "--output",
               frame)
        before = computed(frame)
        with Workbench(self) as bench:
            window = bench.main_window()
            dock = bench.open_dock("Simulator")
            dock.find("spin button", "Width").set_number(320)
            dock.find("spin button", "Height").set_number(240)
            dock.find("spin button", "Dark noise").set_number(0)
            dock.find("check box", "Shot noise").toggle()
            utility = self.open_utility(bench)
            window.find("check box", "Live").toggle()
            window.find("push button", "Start").press()
            bench.wait_for(lambda: bench.field("Judgement").startswith("Green: mean 6"), "the judgement")
            # What is moved while the stream runs reaches the open utility.
            dock.find("spin button", "Level").set_number(60)
            bench.wait_for(lambda: bench.field("Judgement").startswith("Green: mean 5"), "the darker frame")
            bench.wait_for(lambda: float(bench.field("Frames per second") or 0) > 0, "frames")
            window.find("push button", "Stop").press()
            bench.wait_for(lambda: bench.field("Frames per second") == "", "the end of the stream")
            self.assertTrue(bench.field("Frame").startswith("Simulator "), bench.field("Frame"))
            saved = self.save(bench, utility, "stream.ffc")
            self.compare(saved, before, computed(frame))
            bench.quit(self)


if __name__ == "__main__":
    unittest.main()
