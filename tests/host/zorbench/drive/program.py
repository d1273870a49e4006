"""A program at work on the screen, and its windows."""

import os
import subprocess
import sys

import screen
from binding import Atspi, GLib
from waiting import SECONDS, NotInTime, wait_for
from widgets import Widget, be_patient, only


class Program:
    """Starts a program; to be used in a `with` statement, which ends it. When the statement is left by a failure,
    the windows and what the program wrote go to standard error, and what the screen shows to `picture`. `settings` is
    the folder for what the program keeps from run to run."""

    def __init__(self, arguments, picture, settings):
        self._arguments = arguments
        self._picture = picture
        self._environment = dict(os.environ, XDG_CONFIG_HOME=settings)

    def __enter__(self):
        self._errors = open(os.path.join(os.environ["TMPDIR"], "errors"), "w+b")
        self._process = subprocess.Popen(self._arguments, stdin=subprocess.DEVNULL, stderr=self._errors,
                                         env=self._environment)
        return self

    def __exit__(self, kind, _error, _trace):
        if kind:
            print(self.evidence(), file=sys.stderr)
        self._process.kill()
        self._process.wait()
        self._errors.close()

    def wait_for(self, condition, what, seconds=SECONDS):
        """As waiting.wait_for; the end of the program ends the waiting."""
        def is_met():
            if self._process.poll() is not None:
                raise NotInTime(f"the program ended, with {self._process.returncode}, before {what}")
            return condition()
        return wait_for(is_met, what, seconds)

    def end(self):
        """Waits for the program to end by itself. Returns its exit code and what it wrote to standard error."""
        wait_for(lambda: self._process.poll() is not None, "the program to end")
        return self._process.returncode, self.errors()

    def errors(self):
        """What it wrote to standard error so far."""
        self._errors.seek(0)
        return self._errors.read().decode(errors="replace")

    def folder(self):
        """Its working directory."""
        return os.readlink(f"/proc/{self._process.pid}/cwd")

    def windows(self):
        """The windows that show."""
        desktop = Atspi.get_desktop(0)
        nodes = [desktop.get_child_at_index(i) for i in range(desktop.get_child_count())]
        own = [Widget(node) for node in nodes if node and node.get_process_id() == self._process.pid]
        return [window for application in own for window in application.children() if window.is_showing]

    def window(self, role, title=None):
        """The only window of this role and title."""
        return self.wait_for(lambda: only(self.windows(), role, title), f'one window {role} "{title}"')

    def wait_until_gone(self, role, title):
        """Until no window of this role and title shows."""
        def is_gone():
            return (role, title) not in [(window.role, window.title) for window in self.windows()]
        self.wait_for(is_gone, f'the window {role} "{title}" to close')

    def evidence(self):
        """What a failure leaves to be looked at."""
        screen.take_picture(os.environ["ZOR_DRIVE_SCREEN"], self._picture)
        state = "runs" if self._process.poll() is None else f"ended with {self._process.returncode}"
        be_patient(2)
        try:
            windows = "".join(window.dump() for window in self.windows())
        except GLib.Error as error:
            windows = f"{error.message}\n"
        be_patient(SECONDS)
        return f"The program {state}. Its windows:\n{windows}It wrote:\n{self.errors()}\nThe screen: {self._picture}"
