"""What a widget can do, asked for directly: Atspi waits for the end of an action, and an action that opens a dialog
may end with the dialog."""

from binding import Gio, GLib
from waiting import SECONDS


def connect():
    """A connection to the accessibility bus."""
    session = Gio.bus_get_sync(Gio.BusType.SESSION)
    (address,) = session.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None, None,
                                   Gio.DBusCallFlags.NONE, -1, None)
    flags = Gio.DBusConnectionFlags
    return Gio.DBusConnection.new_for_address_sync(
        address, flags.AUTHENTICATION_CLIENT | flags.MESSAGE_BUS_CONNECTION, None, None)


CONNECTION = connect()


def start(node, name):
    """Starts an action of an Atspi.Accessible and does not wait for its end."""
    place = (node.app.bus_name, node.path, "org.a11y.atspi.Action")
    (actions,) = CONNECTION.call_sync(*place, "GetActions", None, None, Gio.DBusCallFlags.NONE, int(1000 * SECONDS),
                                      None)
    index = [action[0] for action in actions].index(name)
    CONNECTION.call(*place, "DoAction", GLib.Variant("(i)", (index,)), None, Gio.DBusCallFlags.NONE, -1, None, None)
    CONNECTION.flush_sync()
