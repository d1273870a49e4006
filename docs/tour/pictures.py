"""Small pictures of what is on the screen."""

import os

import screen
from waiting import wait_for

SCREEN = os.environ["ZOR_DRIVE_SCREEN"]
FOLDER = os.environ["ZOR_PICTURES"]

# So many looks in a row, some hundredths of a second apart, show the same when a window has been painted.
LOOKS_ALIKE = 15


def seen(widget):
    """Width, height and red, green and blue bytes of what shows a widget."""
    width, _, rgb = screen.read_xwd(SCREEN)
    left, top, columns, rows = widget.place
    lines = (rgb[3 * (width * y + left):3 * (width * y + left + columns)] for y in range(top, top + rows))
    return columns, rows, b"".join(lines)


def wait_until_still(widget):
    """Until nothing changes on a widget any more."""
    alike = 0
    last = None

    def is_still():
        nonlocal alike, last
        now = seen(widget)
        alike = alike + 1 if now == last else 0
        last = now
        return alike >= LOOKS_ALIKE
    wait_for(is_still, f"{widget} to be still")


def keep(widget, name):
    """Keeps what shows a widget as a picture of the tour."""
    write(name, *seen(widget))


def write(name, width, height, rgb):
    """Writes a picture of the tour, in at most 256 colours. The eye sees no difference, and the noise of a frame takes
    much less room."""
    for step in (4, 8, 16, 32):
        coarse = rgb.translate(bytes(min(255, step * round(value / step)) for value in range(256)))
        pixels = list(zip(coarse[0::3], coarse[1::3], coarse[2::3]))
        colours = sorted(set(pixels))
        if len(colours) <= 256:
            break
    numbers = {colour: number for number, colour in enumerate(colours)}
    screen.write_png(os.path.join(FOLDER, name), width, height, bytes(map(numbers.get, pixels)),
                     b"".join(map(bytes, colours)))
