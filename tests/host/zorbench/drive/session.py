"""Runs a command on a screen and buses of its own, and ends whatever it leaves behind.

usage: session.py SECONDS COMMAND [ARGUMENT ...]

The command finds a screen, a D-Bus session whose accessibility bus starts when it is asked for, and an empty home.
Nothing of it can be reached over a network. The exit code is the command's, or 1 when the seconds are over.
"""

import ctypes
import os
import select
import shutil
import signal
import struct
import subprocess
import sys
import tempfile
import time

PR_SET_CHILD_SUBREAPER = 36
START_SECONDS = 30


def environment(folder):
    """What the command and all that it starts see: places of their own, and English."""
    values = dict(os.environ)
    for name in ("AT_SPI_BUS_ADDRESS", "WAYLAND_DISPLAY", "XDG_CURRENT_DESKTOP", "DESKTOP_SESSION", "LANGUAGE",
                 "QT_SCALE_FACTOR", "QT_STYLE_OVERRIDE", "QT_QPA_PLATFORMTHEME"):
        values.pop(name, None)
    places = {"HOME": "home", "XDG_CONFIG_HOME": "config", "XDG_CACHE_HOME": "cache", "XDG_DATA_HOME": "data",
              "XDG_RUNTIME_DIR": "run", "TMPDIR": "tmp"}
    for name, place in places.items():
        values[name] = os.path.join(folder, place)
        os.mkdir(values[name], 0o700)
    values.update(
        LC_ALL="C.UTF-8",
        QT_QPA_PLATFORM="xcb",
        QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1",
        GSETTINGS_BACKEND="memory",
        ATSPI_NO_CACHE="1",
        XAUTHORITY=os.path.join(folder, "xauthority"),
        ZOR_DRIVE_SCREEN=os.path.join(folder, "Xvfb_screen0"))
    return values


def write_cookie(path):
    """A key to the screen whatever its number: an X authority file with one entry."""
    def counted(content):
        return struct.pack(">H", len(content)) + content
    any_family = struct.pack(">H", 65535)
    with open(path, "wb") as file:
        file.write(any_family + counted(b"") + counted(b"") + counted(b"MIT-MAGIC-COOKIE-1") +
                   counted(os.urandom(16)))


def start_server(command, values, log):
    """Starts a server that writes one line when it is ready, to the descriptor whose number is the command's last
    argument. Returns its process and the line."""
    reader, writer = os.pipe()
    with open(log, "wb") as file:
        server = subprocess.Popen(command + [str(writer)], pass_fds=[writer], stdin=subprocess.DEVNULL, stdout=file,
                                  stderr=file, env=values)
    os.close(writer)
    line = b""
    deadline = time.monotonic() + START_SECONDS
    while not line.endswith(b"\n"):
        ready, _, _ = select.select([reader], [], [], max(0.0, deadline - time.monotonic()))
        part = os.read(reader, 1024) if ready else b""
        if not part:
            with open(log, errors="replace") as file:
                sys.exit(f"session.py: {command[0]} does not start\n{file.read()}")
        line += part
    os.close(reader)
    return server, line.decode().strip()


def start_screen(folder, values):
    """An X server on a display that is free, which keeps what it shows in a file."""
    server, number = start_server(
        ["Xvfb", "-screen", "0", "1600x1200x24", "-fbdir", folder, "-nolisten", "tcp", "-noreset", "-auth",
         values["XAUTHORITY"], "-displayfd"],
        values, os.path.join(folder, "screen.log"))
    values["DISPLAY"] = ":" + number
    return server


def start_bus(folder, values):
    """The session's bus, on a socket in the folder."""
    address = "--address=unix:path=" + os.path.join(values["XDG_RUNTIME_DIR"], "bus")
    _, values["DBUS_SESSION_BUS_ADDRESS"] = start_server(
        ["dbus-daemon", "--session", "--nofork", "--nosyslog", address, "--print-address"],
        values, os.path.join(folder, "bus.log"))


def children():
    """The processes whose parent is this one, those that lost theirs included."""
    found = []
    for entry in filter(str.isdigit, os.listdir("/proc")):
        try:
            with open(f"/proc/{entry}/stat", "rb") as file:
                # The name, in parentheses, may hold anything.
                parent = int(file.read().rpartition(b")")[2].split()[1])
        except (FileNotFoundError, ProcessLookupError):
            continue
        if parent == os.getpid():
            found.append(int(entry))
    return found


def end_children():
    """Kills all descendants: the children of a process that ends become this one's."""
    while True:
        for pid in children():
            os.kill(pid, signal.SIGKILL)
        try:
            os.waitpid(-1, 0)
        except ChildProcessError:
            return


def run(command, limit, values):
    process = subprocess.Popen(command, stdin=subprocess.DEVNULL, env=values)
    try:
        code = process.wait(limit)
    except subprocess.TimeoutExpired:
        return f"session.py: the command does not end within {limit:g} seconds"
    return code if code >= 0 else f"session.py: the command was ended by signal {-code}"


def main():
    ctypes.CDLL(None).prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0)
    signal.signal(signal.SIGTERM, lambda *_: sys.exit("session.py: ended from outside"))
    # The name of a socket in it must not be long.
    folder = tempfile.mkdtemp(prefix="zorbench-", dir="/tmp")
    screen = None
    try:
        values = environment(folder)
        write_cookie(values["XAUTHORITY"])
        screen = start_screen(folder, values)
        start_bus(folder, values)
        sys.exit(run(sys.argv[2:], float(sys.argv[1]), values))
    finally:
        if screen:
            # It removes its lock file, if it is let to.
            screen.terminate()
            try:
                screen.wait(10)
            except subprocess.TimeoutExpired:
                pass
        end_children()
        shutil.rmtree(folder, ignore_errors=True)


if __name__ == "__main__":
    main()
