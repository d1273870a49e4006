"""A raw dump: what its bytes are is asked for, and remembered."""

import unittest

from workbench import Workbench, temporary, zorffc

TITLE = "Raw dump dump.raw"


class RawDumps(unittest.TestCase):
    def test_layout_is_corrected_and_remembered(self):
        raw = temporary("dump.raw")
        zorffc("simulate", "--size", "80x60", "--format", "Mono8", "--output", raw)
        with Workbench(self, raw) as bench:
            dialog = bench.window("dialog", TITLE)
            dialog.find("spin button", "Width").type("80")
            dialog.find("push button", "Open").press()
            self.assertIn("80x480 in Mono8", bench.close_box())
            dialog.find("spin button", "Height").type("60")
            dialog.find("push button", "Open").press()
            bench.wait_until_gone("dialog", TITLE)
            bench.wait_for_frame(raw)
            self.assertIn("80 x 60", bench.field("Frame"))
            bench.quit(self)
        with Workbench(self, raw) as bench:
            dialog = bench.window("dialog", TITLE)
            self.assertEqual(dialog.find("combo box", "Format").name, "Mono8")
            self.assertEqual([dialog.find("spin button", name).text for name in ("Width", "Height")], ["80", "60"])
            dialog.find("push button", "Cancel").press()
            bench.wait_until_gone("dialog", TITLE)
            bench.quit(self)


if __name__ == "__main__":
    unittest.main()
