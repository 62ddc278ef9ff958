"""The profiles at the foot of the column, and the sheet that makes and changes them."""

from .wait import until, until_equal

NEW = "New profile"
CANCEL, DELETE = "Cancel", "Delete"
GOES = "Its tabs, history, bookmarks, sign-ins and website data are removed from this computer."
THIS_WINDOW = "The profile of this window"


class Profiles:
    """What one window shows of profiles, and what the hands do about it."""

    def __init__(self, windows, hands, title="Orvu"):
        self._windows = windows
        self._hands = hands
        self._title = title

    def _nodes(self, role=None, name=None):
        return self._windows.nodes(role, name, self._title)

    def tiles(self):
        """The help texts of the tiles."""
        return [node.name for node in self._nodes("push button")
                if node.name.startswith("Switch to ")]

    def wait_for_tiles(self, *names):
        until_equal(self.tiles, [f"Switch to {name}" for name in names], "the profiles")

    def tile(self, name):
        found = until(lambda: [node for node in self._nodes("push button")
                               if node.name.startswith(f"Switch to {name}")],
                      f"the profile {name}")
        return found[0]

    def shown(self):
        """The tiles that say that they are the window's own."""
        return [node.name for node in self._nodes("push button")
                if node.name.startswith("Switch to ") and node.description() == THIS_WINDOW]

    def wait_until_shown(self, name):
        until(lambda: any(each.startswith(f"Switch to {name}") for each in self.shown()),
              f"a window with the profile {name}", self.shown)

    def open_menu(self, name):
        self._hands.click(3, at=self.tile(name).middle, title=self._title)

    def menu(self):
        return [node.name for node in self._nodes("menu item")
                if node.name.startswith(("Edit ", "Delete "))]

    def choose(self, line):
        """Presses a line of the menu that is open."""
        self._windows.press("menu item", line, self._title)

    # The sheet and the question.

    def sheet(self):
        return [node.name for node in self._nodes("dialog")]

    def wait_for_sheet(self, name):
        until(lambda: self.sheet() == [name], f"the sheet {name!r}", self.sheet)

    def wait_until_closed(self):
        until_equal(self.sheet, [], "the sheets")

    def button(self, name):
        return self._windows.find("push button", name, self._title)

    def icons(self):
        """The symbols that the sheet offers, by what they are looked for by."""
        return [node.name for table in self._nodes(None, "Icon") for node in table.children()]

    def count(self):
        return [node.name for node in self._nodes("label") if "TO CHOOSE FROM" in node.name]
