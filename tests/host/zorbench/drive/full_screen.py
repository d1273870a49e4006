"""The frame on the whole screen, and back."""

import unittest

import devices
from workbench import Workbench, flat_frame


class FullScreen(unittest.TestCase):
    def enter(self, bench):
        bench.menu_item("View", "Full screen").press()
        view = bench.window("filler", "Frame view")
        bench.wait_for(lambda: view.is_active and view.place == (0, 0, 1600, 1200), "the view to fill the screen")

    def wait_for_window(self, bench):
        bench.wait_until_gone("filler", "Frame view")
        bench.main_window().find("filler", "Frame view")
        self.assertFalse(bench.menu_item("View", "Full screen").is_checked)

    def test_key_and_button_lead_back(self):
        frame = flat_frame()
        with Workbench(self, frame) as bench:
            bench.wait_for_frame(frame)
            self.enter(bench)
            devices.press_key(devices.ESCAPE)
            self.wait_for_window(bench)

            self.enter(bench)
            # The button in the corner, which is no part of the tree.
            devices.click(17, 17)
            self.wait_for_window(bench)
            bench.quit(self)


if __name__ == "__main__":
    unittest.main()
