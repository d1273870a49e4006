"""What a test that fails leaves behind: something to look at, and no process."""

import contextlib
import io
import os
import subprocess
import sys
import unittest

from waiting import NotInTime
from workbench import Workbench, content_of, temporary


class Failures(unittest.TestCase):
    def test_windows_and_screen_are_kept(self):
        said = io.StringIO()
        with contextlib.redirect_stderr(said), self.assertRaisesRegex(NotInTime, "waited in vain for a miracle"):
            with Workbench(self) as bench:
                bench.main_window()
                bench.wait_for(lambda: False, "a miracle", 0.1)
        self.assertIn('menu item "Quit"', said.getvalue())
        picture = said.getvalue().splitlines()[-1].partition(": ")[2]
        self.assertEqual(content_of(picture)[:8], b"\x89PNG\r\n\x1a\n")
        os.remove(picture)

    def test_end_of_the_program_ends_the_waiting(self):
        with contextlib.redirect_stderr(io.StringIO()), self.assertRaisesRegex(NotInTime, "ended, with 2, before"):
            with Workbench(self, "no such file") as bench:
                bench.main_window()

    def test_command_that_hangs_is_ended_with_all_that_it_started(self):
        pids = temporary("pids")
        session = os.path.join(os.path.dirname(__file__), "session.py")
        command = f"sleep 1000 & echo $! >>{pids}; setsid sh -c 'echo $$ >>{pids}; exec sleep 1000'"
        run = subprocess.run([sys.executable, "-B", session, "3", "sh", "-c", command], capture_output=True, text=True)
        self.assertEqual((run.returncode, run.stderr),
                         (1, "session.py: the command does not end within 3 seconds\n"))
        started = content_of(pids).split()
        self.assertEqual(len(started), 2)
        for pid in started:
            self.assertFalse(os.path.exists(os.path.join("/proc", pid.decode())))


if __name__ == "__main__":
    unittest.main()
