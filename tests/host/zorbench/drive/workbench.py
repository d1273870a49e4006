"""What the tests of the workbench share: its places, its menus, its dialogs."""

import os
import subprocess

from program import Program

ZORBENCH = os.environ["ZOR_ZORBENCH"]
ZORFFC = os.environ["ZOR_ZORFFC"]


def temporary(name):
    return os.path.join(os.environ["TMPDIR"], name)


def zorffc(*arguments):
    subprocess.run([ZORFFC, *arguments], check=True, stdout=subprocess.DEVNULL)


def content_of(path):
    with open(path, "rb") as file:
        return file.read()


def flat_frame():
    """A flat frame of a real camera where there is one beside the project, else a simulated one."""
    folder = os.environ["ZOR_FRAMES"]
    names = sorted(os.listdir(folder)) if os.path.isdir(folder) else []
    for name in names:
        if name.endswith(".pgm"):
            return os.path.join(folder, name)
    path = temporary("flat.pgm")
    zorffc("simulate", "--output", path)
    return path


class Workbench(Program):
    """The workbench, on the screen. Each test has settings of its own."""

    def __init__(self, test, *arguments):
        name = test.id().rpartition(".")[2]
        super().__init__([ZORBENCH, *arguments], os.path.join(os.environ["ZOR_KEEP"], name + ".png"), temporary(name))
        self._fields = {}

    def main_window(self):
        return self.window("frame")

    def menu_item(self, menu, item):
        """An item of a menu of the main window. The menu need not be open."""
        bar = self.main_window().child("menu bar")
        return bar.child("menu item", menu).child("popup menu").child("menu item", item)

    def open_dock(self, title, menu="View"):
        """Opens a dock by its entry in a menu."""
        self.menu_item(menu, title).press()
        # What is in a dock may have its name.
        dock = self.main_window().child("frame", title)
        self.wait_for(lambda: dock.is_showing, f"{dock} to open")
        return dock

    def field(self, name):
        """What a field of the status bar holds."""
        # While frames stream, each question waits for one of them to be shown, and a search asks many.
        if name not in self._fields:
            self._fields[name] = self.main_window().find("text", name)
        return self._fields[name].text

    def choose_file(self, title, button, path):
        """Answers a file dialog."""
        dialog = self.window("dialog", title)
        dialog.find("text", "File name:").type(path)
        dialog.find("push button", button).press()
        self.wait_until_gone("dialog", title)

    def close_box(self):
        """Closes the message box by its button. Returns what it said."""
        box = self.window("alert", "ZorBench")
        (said,) = [widget.name for widget in box.walk() if widget.role == "label"]
        box.find("push button", "OK").press()
        self.wait_until_gone("alert", "ZorBench")
        return said

    def open_file(self, path):
        self.menu_item("File", "Open\u2026").press()
        self.choose_file("Open", "Open", path)

    def save_frame(self, path):
        """Saves the current frame as a file that is not there."""
        self.menu_item("File", "Save frame\u2026").press()
        self.choose_file("Save frame", "Save", path)
        self.wait_for(lambda: os.path.exists(path), f"{path} to be saved")

    def connect_camera(self):
        """Connects to the first camera that is found. Its frames come then."""
        self.menu_item("Camera", "Connect").press()
        dialog = self.window("dialog", "Connect to a camera")
        connect = dialog.find("push button", "Connect")
        self.wait_for(lambda: connect.is_enabled, "the camera to be found")
        connect.press()
        self.wait_until_gone("dialog", "Connect to a camera")
        self.wait_for(lambda: self.field("Frame").startswith("Aravis "), "the first frame of the camera")

    def take_average(self, entry, title, frames):
        """Takes an average by its entry in the menu "Camera"."""
        self.menu_item("Camera", entry).press()
        dialog = self.window("dialog", title)
        dialog.find("spin button", "Frames").set_number(frames)
        dialog.find("push button", "Take").press()

    def wait_for_frame(self, path):
        self.wait_for(lambda: os.path.basename(path) in self.field("Frame"), f"{path} to be the current frame")

    def quit(self, test):
        """Ends the program by its menu; it ends well and has nothing to say."""
        self.menu_item("File", "Quit").press()
        test.assertEqual(self.end(), (0, ""))
