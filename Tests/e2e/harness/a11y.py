"""The windows as assistive programs see them."""

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

from . import language
from .bus import Bus
from .wait import Gone, settled, until

ROOT = "/org/a11y/atspi/accessible/root"
CACHE = "/org/a11y/atspi/cache"
REGISTRY = "org.a11y.atspi.Registry"
PROPERTIES = "org.freedesktop.DBus.Properties"


def _interface(name):
    return f"org.a11y.atspi.{name}"


class _Program:
    """One program on the accessibility bus."""

    def __init__(self, bus, name):
        self._bus = bus
        self._name = name

    def call(self, path, interface, method, signature="()", *arguments):
        return self._call(path, _interface(interface), method, signature, *arguments)

    def read(self, path, interface, name):
        return self._call(path, PROPERTIES, "Get", "(ss)", _interface(interface), name)

    def _call(self, *arguments):
        try:
            return self._bus.call(self._name, *arguments)
        except GLib.Error as error:
            raise Gone(str(error)) from None

    def children(self, path):
        """The paths of what is directly below a path."""
        return [child for owner, child in self.call(path, "Accessible", "GetChildren")
                if owner == self._name]

    def tree(self):
        return _Tree(self)


class _Tree:
    """All that a program shows, as it was at one moment: read with one call, which is much quicker
    than going from thing to thing."""

    def __init__(self, program):
        self.program = program
        self._read()

    def tops(self):
        """The windows."""
        return self._nodes(self.program.children(ROOT))

    def below(self, path):
        """What is directly below a thing, in its order."""
        if path not in self._items:
            return []  # it went away meanwhile
        count = self._items[path][1]
        places = self._by_place.get(path, {})
        found = [places.get(place, []) for place in range(count)]
        if all(len(each) == 1 for each in found):
            return self._nodes(each[0] for each in found)
        # The program tells only of what somebody has asked for before, and of hidden things too.
        return self._nodes(settled(lambda: self.program.children(path), []))

    def _nodes(self, paths):
        paths = list(paths)
        unknown = [path for path in paths if path not in self._items]
        if unknown:
            for path in unknown:
                self._reveal(path)
            self._read()
        return [Node(self, path, *self._items[path][2:]) for path in paths if path in self._items]

    def _reveal(self, path):
        """Asks for a thing and all below it, so that the program tells of them from now on."""
        for child in settled(lambda: self.program.children(path), []):
            if child not in self._items:
                self._reveal(child)

    def _read(self):
        items = self.program.call(CACHE, "Cache", "GetItems")
        self._items, self._by_place = {}, {}
        for (_, path), _, (_, above), place, count, _, name, role, _, states in items:
            self._items[path] = above, count, role, language.read(name), states
            self._by_place.setdefault(above, {}).setdefault(place, []).append(path)


class Node:
    """One thing in a window, with role, name and place as they were when it was found."""

    def __init__(self, tree, path, role, name, states):
        self._tree = tree
        self._program = tree.program
        self._path = path
        self._states = states
        self.role = Atspi.role_get_name(Atspi.Role(role))
        self.name = name

    def __repr__(self):
        return f"{self.role} {self.name!r}"

    def is_same(self, other):
        """Whether it is the thing of another look at the window."""
        return self._path == other._path

    def children(self):
        return self._tree.below(self._path)

    def walk(self):
        """This one and all below it."""
        yield self
        for child in self.children():
            yield from child.walk()

    # How it was when it was found.

    def had(self, state):
        return _contains(self._states, state)

    # How it is now.

    @property
    def child_count(self):
        return self._program.read(self._path, "Accessible", "ChildCount")

    def child(self, index):
        _, path = self._call("Accessible", "GetChildAtIndex", "(i)", index)
        return Node(self._tree, path, self._program.call(path, "Accessible", "GetRole"),
                    language.read(self._program.read(path, "Accessible", "Name")),
                    self._program.call(path, "Accessible", "GetState"))

    def description(self):
        """What is said of it beside its name."""
        return language.read(self._program.read(self._path, "Accessible", "Description"))

    @property
    def is_selected(self):
        return self._has(Atspi.StateType.SELECTED)

    @property
    def is_pressed(self):
        return self._has(Atspi.StateType.PRESSED)

    @property
    def is_on(self):
        """Whether a switch is on."""
        return self._has(Atspi.StateType.CHECKED)

    @property
    def is_active(self):
        """Whether a window is the one with the keyboard."""
        return self._has(Atspi.StateType.ACTIVE)

    @property
    def is_sensitive(self):
        return self._has(Atspi.StateType.SENSITIVE)

    @property
    def is_focused(self):
        return self._has(Atspi.StateType.FOCUSED)

    def _has(self, state):
        return settled(lambda: _contains(self._call("Accessible", "GetState"), state), False)

    @property
    def box(self):
        """Left, top, width and height within its window."""
        return self._call("Component", "GetExtents", "(u)", Atspi.CoordType.WINDOW)

    def is_above(self, height):
        """Whether it stands higher in its window than so many points from the upper edge."""
        return settled(lambda: self.box[1] < height, False)

    @property
    def middle(self):
        """Where a click on it goes, for the hands, once it has its place."""
        seen = []

        def rests():
            # A busy computer's frames are that far apart, and a layout comes with the next one.
            seen.append(self.box)
            return seen[-3:] == [seen[-1]] * 3 and min(seen[-1][2:]) > 0
        until(rests, f"{self} at its place", lambda: seen[-1], pause=0.06)
        left, top, width, height = seen[-1]
        return left + width // 2, top + height // 2

    @property
    def value(self):
        """What a bar tells."""
        return self._program.read(self._path, "Value", "CurrentValue")

    def text(self):
        count = self._program.read(self._path, "Text", "CharacterCount")
        return self._call("Text", "GetText", "(ii)", 0, count)

    def selected_range(self):
        """Where the selected text begins and ends; nothing if none is selected."""
        if self._call("Text", "GetNSelections") == 0:
            return None
        return self._call("Text", "GetSelection", "(i)", 0)

    def selection(self):
        """The selected text."""
        found = self.selected_range()
        return self.text()[found[0]:found[1]] if found else ""

    # What can be done to it.

    def press(self):
        """Does what a click on it does."""
        if not self._call("Action", "DoAction", "(i)", 0):
            raise AssertionError(f"{self} can't be pressed")

    def set_text(self, text):
        if not self._call("EditableText", "SetTextContents", "(s)", text):
            raise AssertionError(f"{self} takes no text")

    def _call(self, interface, method, signature="()", *arguments):
        return self._program.call(self._path, interface, method, signature, *arguments)


def _contains(states, state):
    """Whether a state is among those of an answer, which come as bits in two numbers."""
    return bool(states[state // 32] >> state % 32 & 1)


class Windows:
    """The windows of one program."""

    def __init__(self, app):
        self._app = app
        self._bus = None
        self._found = None, None

    def close(self):
        if self._bus:
            self._bus.close()

    def all(self):
        """The program's windows."""
        return settled(lambda: self._program().tree().tops(), [])

    def _program(self):
        """The program on the bus; `Gone` while it isn't there."""
        pid = self._app.pid
        if self._found[0] != pid:
            try:
                bus = self._bus_of_windows()
                self._found = pid, _Program(bus, self._name_of(pid, bus))
            except GLib.Error as error:
                raise Gone(str(error)) from None
        return self._found[1]

    def _bus_of_windows(self):
        if self._bus is None:
            self._bus = Bus(self._app.accessibility_address())
        return self._bus

    @staticmethod
    def _name_of(pid, bus):
        for name, _ in bus.call(REGISTRY, ROOT, _interface("Accessible"), "GetChildren"):
            if bus.process(name) == pid:
                return name
        raise Gone(f"process {pid} on the accessibility bus")

    def nodes(self, role=None, name=None, window=None):
        """Everything of that role and name, in the window of that title or in all."""
        return [node for top in self.all() if window in (None, top.name) for node in top.walk()
                if role in (None, node.role) and name in (None, node.name)]

    def find(self, role, name, window=None):
        """The first thing of that role and name, as soon as there is one."""
        return until(lambda: self.nodes(role, name, window), f"{role} {name!r}",
                     lambda: self.nodes(window=window))[0]

    def find_named(self, part, window=None):
        """The first control in whose name that text stands."""
        return until(lambda: [node for node in self.nodes(window=window)
                              if part in node.name and node.role != "label"],
                     f"something named {part!r}", lambda: self.nodes(window=window))[0]

    def wait_until_gone(self, role, name, window=None):
        until(lambda: not self.nodes(role, name, window), f"{role} {name!r} to go",
              lambda: self.nodes(window=window))

    def press(self, role, name, window=None):
        self.find(role, name, window).press()

    def focused(self, window=None):
        """What has the keyboard, as far as it can be told."""
        return [node for node in self.nodes(window=window)
                if node.had(Atspi.StateType.FOCUSED)]

    def titles(self):
        return sorted(top.name for top in self.all())

    def tabs(self, window=None):
        """The titles of the pinned tabs and then of those in the list."""
        return [item.name for item in self._tab_items(window)]

    def pinned_tabs(self, window=None):
        return [item.name for item in self._items("Pinned tabs", window)]

    def selected_tabs(self, window=None):
        return [item.name for item in self._tab_items(window)
                if item.had(Atspi.StateType.SELECTED)]

    def _tab_items(self, window):
        return self._items("Pinned tabs", window) + self._items("Tabs", window)

    def _items(self, name, window):
        return [item for tabs in self.nodes("list", name, window) for item in tabs.walk()
                if item.role == "list item"]
