"""From the flat frame to the coefficient file, as an operator goes."""

import unittest

from close_button import press_close_button
from utility import UtilityCase, computed
from workbench import Workbench, flat_frame, temporary, zorffc


class Workflow(UtilityCase):
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
