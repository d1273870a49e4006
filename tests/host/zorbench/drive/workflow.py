"""From the flat frame to the coefficient file, as an operator goes."""

import os
import unittest

from close_button import press_close_button
from workbench import Workbench, content_of, flat_frame, temporary, zorffc

TITLE = "Line 3, lens B"
CAMERA = "CAM-12"


def computed(frame, *options):
    """What the command line writes for the frame."""
    path = temporary("computed.ffc")
    zorffc("compute", frame, "--title", TITLE, "--camera", CAMERA, "--output", path, *options)
    return content_of(path)


class Workflow(unittest.TestCase):
    def open_utility(self, bench):
        item = bench.menu_item("Plug-ins", "FFC Utility")
        item.press()
        utility = bench.window("dialog", " FFC Utility")
        bench.wait_for(lambda: item.is_checked, "the mark of the open utility")
        return utility

    def save(self, bench, utility, name):
        """Saves the coefficients. Returns what the file holds."""
        path = temporary(name)
        utility.beside("Title:").type(TITLE)
        utility.beside("Camera:").type(CAMERA)
        utility.find("push button", "Save").press()
        bench.choose_file("Save Flat Field Coefficients", "Save", path)
        # What is written to the file comes before the answer to what is asked for next.
        bench.wait_for(lambda: os.path.exists(path) and bench.windows(), "the saved file")
        return content_of(path)

    def compare(self, saved, before, after):
        """The header holds the day, which may have changed while the test ran."""
        if saved != before:
            self.assertEqual(saved.splitlines(), after.splitlines())

    def test_saved_file_is_that_of_the_command_line(self):
        frame = flat_frame()
        before = computed(frame)
        with Workbench(self) as bench:
            bench.open_file(frame)
            utility = self.open_utility(bench)
            saved = self.save(bench, utility, "saved.ffc")
            self.compare(saved, before, computed(frame))

            press_close_button(" FFC Utility")
            bench.wait_until_gone("dialog", " FFC Utility")
            self.assertFalse(bench.menu_item("Plug-ins", "FFC Utility").is_checked)
            bench.quit(self)

    def test_open_utility_follows_the_next_frame(self):
        first = flat_frame()
        second = temporary("second.pgm")
        zorffc("simulate", "--seed", "7", "--output", second)
        before = computed(second, "--precision", "12")
        with Workbench(self, first) as bench:
            bench.wait_for_frame(first)
            utility = self.open_utility(bench)
            bench.open_file(second)
            bench.wait_for_frame(second)
            utility.beside("Precision:").choose("12 bit")
            saved = self.save(bench, utility, "followed.ffc")
            self.compare(saved, before, computed(second, "--precision", "12"))
            # The utility is open at the end.
            bench.quit(self)


if __name__ == "__main__":
    unittest.main()
