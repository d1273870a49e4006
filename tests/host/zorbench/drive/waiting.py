"""Conditions that come true sooner or later."""

import time

from binding import GLib

# Enough for a sanitizer on a busy machine. Nothing waits longer than it has to.
SECONDS = 30.0
INTERVAL = 0.02


class NotInTime(AssertionError):
    """A condition that did not come true."""


def wait_for(condition, what, seconds=SECONDS):
    """The first answer of the condition that counts as true. `what` completes "waited in vain for". A widget that
    goes away while it is asked is looked for again."""
    deadline = time.monotonic() + seconds
    while True:
        problem = ""
        try:
            answer = condition()
            if answer:
                return answer
        except GLib.Error as error:
            problem = f" ({error.message})"
        if time.monotonic() >= deadline:
            raise NotInTime(f"waited in vain for {what}{problem}")
        time.sleep(INTERVAL)
