"""The windows as assistive programs see them."""

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

from .wait import until

# A program that is just starting is not there yet in all its parts; `until` copes with that.
GLib.log_set_handler("dbind", GLib.LogLevelFlags.LEVEL_WARNING, lambda *_: None, None)


def _settled(read, default):
    """`read()`, or `default` where the object went away meanwhile."""
    try:
        return read()
    except GLib.Error:
        return default


class Node:
    """One thing in a window, as it was when it was found."""

    def __init__(self, accessible):
        self._accessible = accessible
        self.role = accessible.get_role_name()
        self.name = accessible.get_name() or ""

    def __repr__(self):
        return f"{self.role} {self.name!r}"

    def children(self):
        found = []
        for index in range(_settled(self._accessible.get_child_count, 0)):
            child = _settled(lambda at=index: self._accessible.get_child_at_index(at), None)
            node = _settled(lambda each=child: Node(each), None) if child else None
            if node:
                found.append(node)
        return found

    def child(self, index):
        return Node(self._accessible.get_child_at_index(index))

    @property
    def child_count(self):
        return self._accessible.get_child_count()

    def walk(self, into=lambda node: True):
        """This one and all below it, but nothing below what `into` says no to."""
        yield self
        if into(self):
            for child in self.children():
                yield from child.walk(into)

    def has_state(self, state):
        return self._accessible.get_state_set().contains(state)

    @property
    def is_selected(self):
        return _settled(lambda: self.has_state(Atspi.StateType.SELECTED), False)

    @property
    def is_pressed(self):
        return _settled(lambda: self.has_state(Atspi.StateType.PRESSED), False)

    @property
    def is_sensitive(self):
        return _settled(lambda: self.has_state(Atspi.StateType.SENSITIVE), False)

    @property
    def is_focused(self):
        return _settled(lambda: self.has_state(Atspi.StateType.FOCUSED), False)

    @property
    def box(self):
        """Left, top, width and height within its window."""
        extents = self._accessible.get_extents(Atspi.CoordType.WINDOW)
        return extents.x, extents.y, extents.width, extents.height

    @property
    def middle(self):
        """Where a click on it goes, for the hands."""
        left, top, width, height = self.box
        return left + width // 2, top + height // 2

    @property
    def value(self):
        """What a bar tells."""
        return Atspi.Value.get_current_value(self._accessible)

    def press(self):
        """Does what a click on it does."""
        if not Atspi.Action.do_action(self._accessible, 0):
            raise AssertionError(f"{self} can't be pressed")

    def text(self):
        count = Atspi.Text.get_character_count(self._accessible)
        return Atspi.Text.get_text(self._accessible, 0, count)

    def selected_range(self):
        """Where the selected text begins and ends; nothing if none is selected."""
        if Atspi.Text.get_n_selections(self._accessible) == 0:
            return None
        found = Atspi.Text.get_selection(self._accessible, 0)
        return found.start_offset, found.end_offset

    def selection(self):
        """The selected text."""
        found = self.selected_range()
        return self.text()[found[0]:found[1]] if found else ""

    def set_text(self, text):
        if not Atspi.EditableText.set_text_contents(self._accessible, text):
            raise AssertionError(f"{self} takes no text")


class Windows:
    """The windows of one program."""

    def __init__(self, app):
        self._app = app

    def all(self):
        """The program's windows."""
        context = GLib.MainContext.default()
        while context.pending():
            context.iteration(False)
        desktop = Atspi.get_desktop(0)
        for index in range(desktop.get_child_count()):
            program = _settled(lambda at=index: desktop.get_child_at_index(at), None)
            if program and _settled(program.get_process_id, 0) == self._app.pid:
                program.set_cache_mask(Atspi.Cache.NONE)
                return _settled(lambda found=program: Node(found).children(), [])
        return []

    def nodes(self, role=None, name=None, window=None):
        """Everything of that role and name, in the window of that title or in all."""
        return [node for top in self.all() if window in (None, top.name) for node in top.walk()
                if role in (None, node.role) and name in (None, node.name)]

    def find(self, role, name, window=None):
        """The first thing of that role and name, as soon as there is one."""
        return until(lambda: self.nodes(role, name, window), f"{role} {name!r}",
                     lambda: self.nodes(window=window))[0]

    def list_of_tabs(self, window=None):
        """The list itself, found without a look at its many rows."""
        def above_rows(node):
            return node.role != "list"
        return until(lambda: [node for top in self.all() if window in (None, top.name)
                              for node in top.walk(above_rows)
                              if (node.role, node.name) == ("list", "Tabs")],
                     "the list of tabs")[0]

    def find_named(self, part, window=None):
        """The first control in whose name that text stands."""
        return until(lambda: [node for node in self.nodes(window=window)
                              if part in node.name and node.role != "label"],
                     f"something named {part!r}", lambda: self.nodes(window=window))[0]

    def press(self, role, name, window=None):
        self.find(role, name, window).press()

    def focused(self, window=None):
        """What has the keyboard, as far as it can be told."""
        return [node for node in self.nodes(window=window) if node.is_focused]

    def titles(self):
        return sorted(top.name for top in self.all())

    def tabs(self, window=None):
        """The titles of the pinned tabs and then of those in the list."""
        return [item.name for item in self._tab_items(window)]

    def pinned_tabs(self, window=None):
        return [item.name for item in self._items("Pinned tabs", window)]

    def selected_tabs(self, window=None):
        return [item.name for item in self._tab_items(window) if item.is_selected]

    def _tab_items(self, window):
        return self._items("Pinned tabs", window) + self._items("Tabs", window)

    def _items(self, name, window):
        return [item for tabs in self.nodes("list", name, window) for item in tabs.walk()
                if item.role == "list item"]
