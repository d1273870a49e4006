"""The close button that a window manager draws. On the tests' screen there is no window manager, and an assistive
client has no way to close a window."""

import ctypes

CLIENT_MESSAGE = 33


class ClientMessage(ctypes.Structure):
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                ("display", ctypes.c_void_p), ("window", ctypes.c_ulong), ("message_type", ctypes.c_ulong),
                ("format", ctypes.c_int), ("data", ctypes.c_long * 5), ("rest_of_an_event", ctypes.c_long * 24)]


# A window may go away while it is asked. By default the library would end the process.
IGNORE = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)(lambda display, error: 0)


def library():
    x11 = ctypes.CDLL("libX11.so.6")
    x11.XSetErrorHandler(IGNORE)
    x11.XOpenDisplay.restype = ctypes.c_void_p
    x11.XDefaultRootWindow.restype = ctypes.c_ulong
    x11.XInternAtom.restype = ctypes.c_ulong
    return x11


def windows(x11, display):
    """Titles and numbers of the windows that stand on the screen itself."""
    root = x11.XDefaultRootWindow(display)
    ignored = ctypes.c_ulong()
    numbers = ctypes.POINTER(ctypes.c_ulong)()
    count = ctypes.c_uint()
    x11.XQueryTree(display, ctypes.c_ulong(root), ctypes.byref(ignored), ctypes.byref(ignored),
                   ctypes.byref(numbers), ctypes.byref(count))
    for number in numbers[:count.value]:
        title = ctypes.c_char_p()
        if x11.XFetchName(display, ctypes.c_ulong(number), ctypes.byref(title)):
            yield title.value.decode("latin-1"), number


def is_there(title):
    """Whether there is a window with this title, also of a program that answers nobody."""
    x11 = library()
    display = ctypes.c_void_p(x11.XOpenDisplay(None))
    titles = [name for name, _ in windows(x11, display)]
    x11.XCloseDisplay(display)
    return title in titles


def press_close_button(title):
    """Asks the window with this title to close."""
    x11 = library()
    display = ctypes.c_void_p(x11.XOpenDisplay(None))
    window = dict(windows(x11, display))[title]
    event = ClientMessage(type=CLIENT_MESSAGE, window=window, format=32,
                          message_type=x11.XInternAtom(display, b"WM_PROTOCOLS", 0))
    event.data[0] = x11.XInternAtom(display, b"WM_DELETE_WINDOW", 0)
    x11.XSendEvent(display, ctypes.c_ulong(window), 0, ctypes.c_long(0), ctypes.byref(event))
    x11.XCloseDisplay(display)
