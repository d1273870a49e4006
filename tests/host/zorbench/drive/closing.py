"""The window can be closed at any time, and the program ends."""

import unittest

import close_button
from workbench import Workbench, temporary


class Closing(unittest.TestCase):
    def test_while_the_frame_of_the_command_line_loads(self):
        path = temporary("large.pgm")
        with open(path, "wb") as file:
            # Numbers as text take their time.
            file.write(b"P2 3000 3000 255\n" + b"100 " * 9000000)
        with Workbench(self, path) as bench:
            # A program that loads a file answers no assistive client.
            bench.wait_for(lambda: close_button.is_there("ZorBench"), "the window to be there")
            close_button.press_close_button("ZorBench")
            self.assertEqual(bench.end(), (0, ""))


if __name__ == "__main__":
    unittest.main()
