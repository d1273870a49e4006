"""Files that are of no use: one clear message, and the window lives on."""

import os
import unittest

from workbench import Workbench, content_of, flat_frame, temporary


class BadFiles(unittest.TestCase):
    def setUp(self):
        self.good = flat_frame()
        self.short = temporary("short.pgm")
        with open(self.short, "wb") as file:
            file.write(content_of(self.good)[:-1])

    def check_box(self, bench, *parts):
        """There is one box, which says all of this."""
        said = bench.close_box()
        for part in parts:
            self.assertIn(part, said)
        self.assertEqual(len(bench.windows()), 1)

    def check_life(self, bench):
        """The window takes the next frame."""
        bench.open_file(self.good)
        bench.wait_for_frame(self.good)
        bench.quit(self)

    def test_short_picture_on_the_command_line(self):
        with Workbench(self, self.short) as bench:
            self.check_box(bench, self.short, "the file has")
            self.assertEqual(bench.field("Frame"), "")
            self.check_life(bench)

    def test_short_picture_from_the_menu_leaves_the_frame_before(self):
        with Workbench(self, self.good) as bench:
            bench.wait_for_frame(self.good)
            bench.open_file(self.short)
            self.check_box(bench, self.short, "the file has")
            self.assertIn(os.path.basename(self.good), bench.field("Frame"))
            self.check_life(bench)

    def test_text_among_the_plug_ins(self):
        library = temporary("x.so")
        with open(library, "w") as file:
            file.write("No library.\n")
        with Workbench(self, "--plugins", os.path.dirname(library)) as bench:
            self.check_box(bench, library, "is no plug-in")
            self.check_life(bench)

    def test_raw_dump_said_to_have_8_gigabytes(self):
        raw = temporary("short.raw")
        with open(raw, "wb") as file:
            file.write(bytes(1000))
        with Workbench(self, raw) as bench:
            dialog = bench.window("dialog", "Raw dump short.raw")
            dialog.find("spin button", "Height").type("4")
            dialog.find("spin button", "Pitch").type("2147483647")
            dialog.find("push button", "Open").press()
            said = bench.close_box()
            self.assertIn(raw, said)
            self.assertIn("2147483647 bytes a line is above the limit", said)
            dialog.find("push button", "Cancel").press()
            bench.wait_until_gone("dialog", "Raw dump short.raw")
            self.check_life(bench)


if __name__ == "__main__":
    unittest.main()
