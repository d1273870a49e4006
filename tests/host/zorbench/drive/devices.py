"""Mouse and keyboard, for what no action does."""

from binding import Atspi

ESCAPE = 0xFF1B


def move_mouse(x, y):
    """To a place on the screen."""
    Atspi.generate_mouse_event(x, y, "abs")


def click(x, y):
    """With the left button."""
    Atspi.generate_mouse_event(x, y, "b1c")


def press_key(symbol):
    """Presses and releases a key, by its X key symbol. The window that has the focus gets it."""
    Atspi.generate_keyboard_event(symbol, "", Atspi.KeySynthType.SYM)
