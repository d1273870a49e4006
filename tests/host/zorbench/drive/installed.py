"""The installed program: it works in its own folder, where the view looks for its picture, and has its plug-in."""

import os
import unittest

from workbench import ZORBENCH, Workbench


class Installed(unittest.TestCase):
    def test_picture_and_plug_in_are_found(self):
        prefix = os.path.dirname(os.path.dirname(os.path.realpath(ZORBENCH)))
        with Workbench(self) as bench:
            bench.menu_item("Plug-ins", "FFC Utility").press()
            bench.window("dialog", " FFC Utility")
            folder = bench.folder()
            self.assertEqual(folder, os.path.join(prefix, "lib", "ZorBench"))
            self.assertTrue(os.path.isfile(os.path.join(folder, "..", "ZorBench", "Resources", "ZoomFull.png")))
            bench.quit(self)


if __name__ == "__main__":
    unittest.main()
