"""What the tests of the FFC utility in the workbench share."""

import os
import unittest

from workbench import content_of, temporary, zorffc

TITLE = "Line 3, lens B"
CAMERA = "CAM-12"


def computed(frame, *options):
    """What the command line writes for the frame."""
    path = temporary("computed.ffc")
    zorffc("compute", frame, "--title", TITLE, "--camera", CAMERA, "--output", path, *options)
    return content_of(path)


class UtilityCase(unittest.TestCase):
    """Saves what the utility has computed, and compares it with what the command line writes."""

    def open_utility(self, bench):
        item = bench.menu_item("Plug-ins", "FFC Utility")
        item.press()
        utility = bench.window("dialog", " FFC Utility")
        bench.wait_for(lambda: item.is_checked, "the mark of the open utility")
        return utility

    def save(self, bench, utility, name):
        """Saves the coefficients to a file that is not there. Returns what it held."""
        path = temporary(name)
        utility.beside("Title:").type(TITLE)
        utility.beside("Camera:").type(CAMERA)
        utility.find("push button", "Save").press()
        bench.choose_file("Save Flat Field Coefficients", "Save", path)
        # What is written to the file comes before the answer to what is asked for next.
        bench.wait_for(lambda: os.path.exists(path) and bench.windows(), "the saved file")
        content = content_of(path)
        os.remove(path)
        return content

    def compare(self, saved, before, after):
        """The header holds the day, which may have changed while the test ran."""
        if saved != before:
            self.assertEqual(saved.splitlines(), after.splitlines())
