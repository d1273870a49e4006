"""Widgets as an assistive client sees them: role, name, states, and what can be done with them."""

import actions
import devices
from binding import Atspi, GLib
from waiting import SECONDS, wait_for


def be_patient(seconds):
    """How long a question to a program may take. It answers late while it computes."""
    Atspi.set_timeout(int(1000 * seconds), int(1000 * seconds))


be_patient(SECONDS)


class Widget:
    """One place in the tree. Once it has gone away, asking for anything raises GLib.Error."""

    def __init__(self, node):
        self._node = node

    @property
    def role(self):
        return Atspi.role_get_name(self._node.get_role())

    @property
    def name(self):
        return self._node.get_name()

    @property
    def label(self):
        """The text of the label that belongs to it, "" without one."""
        for relation in self._node.get_relation_set():
            if relation.get_relation_type() == Atspi.RelationType.LABELLED_BY:
                return relation.get_target(0).get_name()
        return ""

    @property
    def title(self):
        """What it is found by. The name of a combo box is its current item."""
        return self.label if self.role == "combo box" else self.name

    def __str__(self):
        return f'{self.role} "{self.title}"'

    def _has(self, state):
        return self._node.get_state_set().contains(state)

    @property
    def is_showing(self):
        return self._has(Atspi.StateType.SHOWING)

    @property
    def is_enabled(self):
        return self._has(Atspi.StateType.ENABLED)

    @property
    def is_checked(self):
        return self._has(Atspi.StateType.CHECKED)

    @property
    def is_active(self):
        """Whether a window gets the keys."""
        return self._has(Atspi.StateType.ACTIVE)

    @property
    def has_text(self):
        return "Text" in self._node.get_interfaces()

    @property
    def text(self):
        """What a field holds."""
        return self._node.get_text(0, -1)

    def children(self):
        """Without the items of a list, a table or a tree, which are no widgets."""
        if self._has(Atspi.StateType.MANAGES_DESCENDANTS):
            return []
        nodes = [self._node.get_child_at_index(i) for i in range(self._node.get_child_count())]
        return [Widget(node) for node in nodes if node]

    @property
    def place(self):
        """Left, top, width and height on the screen."""
        area = self._node.get_extents(Atspi.CoordType.SCREEN)
        return area.x, area.y, area.width, area.height

    def walk(self):
        """This one and all below it, from the top down."""
        yield self
        for child in self.children():
            yield from child.walk()

    def child(self, role, title=None):
        """The only one right below this one, whether it shows or not."""
        return wait_for(lambda: only(self.children(), role, title), f'one {role} "{title}" right below {self}')

    def find(self, role, title=None):
        """The only one anywhere below this one that shows."""
        return wait_for(lambda: only(filter(lambda widget: widget.is_showing, self.walk()), role, title),
                        f'one {role} "{title}" in {self}')

    def beside(self, label):
        """What follows a label, for a field that has no name of its own."""
        def follower():
            for widget in self.walk():
                row = widget.children()
                for left, right in zip(row, row[1:]):
                    if left.role == "label" and left.name == label:
                        return right
            return None
        return wait_for(follower, f'a label "{label}" with a field beside it in {self}')

    def press(self):
        """Presses a button, or chooses a menu item. What that opens may come after this returns."""
        self._start("Press")

    def toggle(self):
        self._start("Toggle")

    def _start(self, action):
        wait_for(lambda: self.is_enabled, f"{self} to be enabled")
        actions.start(self._node, action)

    def point_at(self):
        """Moves the mouse to the middle."""
        left, top, width, height = self.place
        devices.move_mouse(left + width // 2, top + height // 2)

    def choose(self, name):
        """Chooses an item of a combo box."""
        self._start("ShowMenu")
        (view,) = [child for child in self.children() if child.role == "list"]
        nodes = [view._node.get_child_at_index(i) for i in range(view._node.get_child_count())]
        item = only(map(Widget, nodes), "list item", name)
        # An item may say that it is wider than the list that opens.
        left, top, _, height = item.place
        x, y = left + height // 2, top + height // 2

        def is_marked():
            # The open list marks what the mouse moves over.
            devices.move_mouse(x + 1, y)
            devices.move_mouse(x, y)
            return item._has(Atspi.StateType.SELECTED)
        wait_for(is_marked, f"{item} to be under the mouse")
        devices.click(x, y)
        wait_for(lambda: self.name == name, f'{self} to say "{name}"')

    def type(self, text):
        """Replaces what a field holds."""
        self._node.set_text_contents(text)
        wait_for(lambda: self.text == text, f'{self} to hold "{text}"')

    def paste(self):
        """Puts what was copied into a field. Returns what the field then holds."""
        self.type("")
        Atspi.EditableText.paste_text(self._node, 0)
        return wait_for(lambda: self.text, f"{self} to hold what was copied")

    def set_number(self, number):
        """Of a spin button."""
        Atspi.Value.set_current_value(self._node, number)
        wait_for(lambda: Atspi.Value.get_current_value(self._node) == number, f"{self} to be {number}")

    def dump(self, depth=0):
        """One line for each widget, for the one who looks why something was not found."""
        try:
            text = f" holds {self.text!r}" if self.has_text and self.role != "label" else ""
            states = " ".join(state.value_nick for state in self._node.get_state_set().get_states())
            children = self.children()
            line = f'{"  " * depth}{self.role} "{self.name}"{text} [{states}]\n'
        except GLib.Error as error:
            return f'{"  " * depth}? {error.message}\n'
        return line + "".join(child.dump(depth + 1) for child in children)


def only(widgets, role, title=None):
    """The widget of this role and title, None when there is none or more than one."""
    found = [widget for widget in widgets if widget.role == role and title in (None, widget.title)]
    return found[0] if len(found) == 1 else None
