"""The address notch of one window, by its names in the accessibility tree."""

from .wait import until, until_equal

FIELD = "Search, type a site, or ask Kesto"
SUGGESTIONS = "Suggestions"
EMPTY = "Search or type a site"
ADDRESS = "Address: "
LOWEST_FIELD = 60  # points from the window's upper edge


class Notch:
    """What a person sees of the notch, and what the hands do to it."""

    def __init__(self, windows, hands, title="Orvu"):
        self._windows = windows
        self._hands = hands
        self._title = title

    def _nodes(self, role, name=None):
        return self._windows.nodes(role, name, self._title)

    # At rest.

    def resting(self):
        """The row that names the page."""
        return until(self.resting_rows, "the notch at rest",
                     lambda: self._windows.nodes(window=self._title))[0]

    def resting_rows(self):
        return [node for node in self._nodes("push button")
                if node.name == EMPTY or node.name.startswith(ADDRESS)]

    def wait_for_address(self, url):
        self._windows.find("push button", ADDRESS + url, self._title)

    # Open.

    def fields(self):
        """The field, as long as the notch is open. The one of an empty tab is called like it,
        but doesn't stand at the window's edge."""
        return [node for node in self._nodes("text", FIELD) if node.is_above(LOWEST_FIELD)]

    def is_open(self):
        return bool(self.fields())

    def wait_until_open(self):
        """Waits until what is typed goes into the field."""
        until(lambda: [node for node in self.fields() if node.is_focused],
              "the notch's field to have the keyboard",
              lambda: self._windows.nodes(window=self._title))

    def wait_until_closed(self):
        until(lambda: not self.is_open(), "the notch to close")
        self.resting()

    def open(self):
        self._hands.press("ctrl+l", title=self._title)
        self.wait_until_open()

    def write(self, text):
        """Opens the notch and puts a text in the place of the address."""
        self.open()
        self._hands.type_on(text)
        self.wait_for_text(text)

    def go_to(self, text):
        """Opens the notch and enters a text."""
        self.write(text)
        self._hands.go_on("Return")
        self.wait_until_closed()

    def text(self):
        return until(self.fields, "the notch's field")[0].text()

    def wait_for_text(self, text):
        until_equal(self.text, text, "the notch's text")

    # Below the field.

    def buttons(self):
        return [node.name for node in self._nodes("push button")]

    def wait_for_button(self, name):
        return self._windows.find("push button", name, self._title)

    def _items(self):
        return [item for rows in self._nodes("list", SUGGESTIONS) for item in rows.walk()
                if item.role == "list item"]

    def rows(self):
        """The names of the candidates: title, site and hint."""
        return [item.name for item in self._items()]

    def chosen(self):
        return [item.name for item in self._items() if item.is_selected]

    def labels(self):
        return [node.name for node in self._nodes("label")]

    def wait_for_rows(self, *names):
        until_equal(self.rows, list(names), "the candidates")

    def wait_for_row(self, name):
        until(lambda: name in self.rows(), f"a candidate {name!r}", self.rows)

    def choose(self, name):
        """Goes down to a candidate by key."""
        self.wait_for_row(name)
        for _ in range(self.rows().index(name) + 1):
            self._hands.go_on("Down")
        until_equal(self.chosen, [name], "the chosen candidate")
