"""The current frame saved as a file of each kind, and read back."""

import os
import unittest

from workbench import Workbench, content_of, temporary, zorffc

SIZE = "80x60"


class Saving(unittest.TestCase):
    def test_saved_files_hold_the_frame(self):
        frame = temporary("frame.pgm")
        back = temporary("back.pgm")
        zorffc("simulate", "--size", SIZE, "--output", frame)
        with Workbench(self, frame) as bench:
            bench.wait_for_frame(frame)
            for ending in (".pgm", ".png", ".tiff", ".raw"):
                with self.subTest(ending):
                    saved = temporary("saved" + ending)
                    bench.save_frame(saved)
                    layout = ["--format", "Mono12", "--size", SIZE] if ending == ".raw" else []
                    zorffc("convert", saved, back, *layout)
                    self.assertEqual(content_of(back), content_of(frame))
            bench.quit(self)

    def test_name_without_an_ending_gets_the_chosen_one(self):
        frame = temporary("plain.pgm")
        zorffc("simulate", "--size", SIZE, "--output", frame)
        with Workbench(self, frame) as bench:
            bench.wait_for_frame(frame)
            bench.menu_item("File", "Save frame\u2026").press()
            dialog = bench.window("dialog", "Save frame")
            dialog.beside("Files of type:").choose("PNG picture (*.png)")
            bench.choose_file("Save frame", "Save", temporary("named"))
            named = temporary("named.png")
            bench.wait_for(lambda: os.path.exists(named), "the saved file")
            self.assertEqual(content_of(named)[:8], b"\x89PNG\r\n\x1a\n")
            bench.quit(self)


if __name__ == "__main__":
    unittest.main()
