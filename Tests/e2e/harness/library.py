"""The library of a window: history, bookmarks and closed tabs."""

from .wait import until, until_equal

SEARCHES = "Search history", "Search bookmarks", "Search recently closed"
ROW_ROLES = "list item", "push button"


class Library:
    """What it shows, and what the hands do about it."""

    def __init__(self, windows, hands, title="Orvu"):
        self._windows = windows
        self._hands = hands
        self._title = title

    def _lists(self):
        return self._windows.nodes("list", "Library", self._title)

    def search(self):
        """The field of the search; nothing while the library is closed."""
        return next((node for name in SEARCHES
                     for node in self._windows.nodes("text", name, self._title)), None)

    def is_open(self):
        return self.search() is not None

    def wait_until_open(self, section):
        until(lambda: self._windows.nodes("text", f"Search {section.lower()}", self._title),
              f"the library's {section}")
        until(lambda: self.search().is_focused, "its search to have the keyboard",
              lambda: self._windows.focused(self._title))

    def wait_until_closed(self):
        until(lambda: not self.is_open(), "the library to close")

    def rows(self):
        """What its rows say, from top to bottom: those that have widgets."""
        return [node.name for node in self._rows()]

    def _rows(self):
        rows = [node for each in self._lists() for node in each.walk()
                if node.role in ROW_ROLES and node.name]
        return sorted(rows, key=lambda node: node.box[1])

    def titles(self):
        return [name.split(",")[0] for name in self.rows()]

    def wait_for_titles(self, *titles):
        until_equal(self.titles, list(titles), "the rows of the library")

    def row(self, title):
        return until(lambda: [node for node in self._rows() if node.name.startswith(title + ",")],
                     f"a row {title!r}", self.rows)[0]

    def headers(self):
        return [node.name for each in self._lists() for node in each.children()
                if node.role == "label"]

    def press(self, name):
        """Presses one of its buttons."""
        self._windows.press("push button", name, self._title)

    def section(self):
        """The section that is marked."""
        return [node.name for node in self._windows.nodes("push button", None, self._title)
                if node.name in ("History", "Bookmarks", "Recently closed") and node.is_pressed]

    def says(self, text):
        return bool(self._windows.nodes("label", text, self._title))
