"""Small pictures of what is on the screen."""

import os

import screen

SCREEN = os.environ["ZOR_DRIVE_SCREEN"]
FOLDER = os.environ["ZOR_PICTURES"]


def keep(widget, name):
    """Keeps what shows a widget as a picture of the tour, when it does not change any more."""
    write(name, *screen.still(SCREEN, widget.place))


def keep_moving(widget, name):
    """The same of a widget that changes all the time."""
    write(name, *screen.seen(SCREEN, widget.place))


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
