"""Mouse and keyboard, for what no action does."""

import contextlib

from binding import Atspi

ESCAPE = 0xFF1B
SHIFT_CODE = 50


def move_mouse(x, y):
    """To a place on the screen."""
    Atspi.generate_mouse_event(x, y, "abs")


def click(x, y):
    """With the left button."""
    Atspi.generate_mouse_event(x, y, "b1c")


def right_click(x, y):
    Atspi.generate_mouse_event(x, y, "b3c")


def press_key(symbol):
    """Presses and releases a key, by its X key symbol. The window that has the focus gets it."""
    Atspi.generate_keyboard_event(symbol, "", Atspi.KeySynthType.SYM)


@contextlib.contextmanager
def held_key(code):
    """Holds a key, by its X key code, while the statement runs."""
    Atspi.generate_keyboard_event(code, "", Atspi.KeySynthType.PRESS)
    try:
        yield
    finally:
        Atspi.generate_keyboard_event(code, "", Atspi.KeySynthType.RELEASE)


def drag(start, end):
    """With the left button, from one place on the screen to another."""
    move_mouse(*start)
    Atspi.generate_mouse_event(*start, "b1p")
    # A drag begins with a movement, and ends where the last one was.
    move_mouse((start[0] + end[0]) // 2, (start[1] + end[1]) // 2)
    move_mouse(*end)
    Atspi.generate_mouse_event(*end, "b1r")
