"""What the status bar says about the pixel under the cursor."""

import re
import unittest

from workbench import Workbench, content_of, flat_frame

PGM_HEADER = re.compile(rb"P5\s+(?:#.*\n)*(\d+)\s+(\d+)\s+(\d+)\s")


def sample(path, x, y):
    """A sample of a PGM file."""
    content = content_of(path)
    header = PGM_HEADER.match(content)
    width, _, limit = map(int, header.groups())
    size = 1 if limit < 256 else 2
    start = header.end() + size * (y * width + x)
    return int.from_bytes(content[start:start + size], "big")


class Pointer(unittest.TestCase):
    def test_place_and_value_are_those_of_the_file(self):
        frame = flat_frame()
        with Workbench(self, frame) as bench:
            bench.wait_for_frame(frame)
            self.assertEqual((bench.field("Position"), bench.field("Value")), ("", ""))
            bench.main_window().find("filler", "Frame view").point_at()
            bench.wait_for(lambda: bench.field("Position"), "a position")
            x, y = map(int, bench.field("Position").split(", "))
            self.assertEqual(bench.field("Value"), str(sample(frame, x, y)))
            bench.quit(self)


if __name__ == "__main__":
    unittest.main()
