"""The window in which another browser's bookmarks and history are brought over."""

from .wait import until, until_equal

TITLE = "Import from Another Browser"


class ImportWindow:
    """What it shows, and what the hands do about it."""

    def __init__(self, windows, hands):
        self._windows = windows
        self._hands = hands

    def nodes(self, role=None, name=None):
        return self._windows.nodes(role, name, TITLE)

    def is_open(self):
        return TITLE in self._windows.titles()

    def wait_until_open(self):
        until(self.is_open, "the window of importing")
        until(self.nodes, "what is in it")

    def wait_until_closed(self):
        until(lambda: not self.is_open(), "the window of importing to go")

    def labels(self):
        """What is written in it, from top to bottom."""
        return [node.name for node in self.nodes("label")]

    def _rows(self):
        return [node for node in self.nodes() if node.role in ("push button", "toggle button")
                and node.name.endswith((", Found", ", Needs access"))]

    def rows(self):
        """The browsers, each with what its row says of it."""
        return [node.name for node in self._rows()]

    def picked(self):
        return [node.name.split(",")[0] for node in self._rows() if node.is_pressed]

    def pick(self, name):
        until(lambda: [node for node in self._rows() if node.name.startswith(name + ",")],
              f"a row of {name}")[0].press()
        until_equal(self.picked, [name], "the browser that is picked")

    def choices(self):
        """What can be brought, each with whether it is wanted."""
        return {node.name: node.is_on for node in self.nodes("check box")}

    def button(self, name):
        return until(lambda: self.nodes("push button", name), f"the button {name!r}")[0]

    def wait_for_message(self, text):
        until(lambda: text in self.labels(), f"the words {text!r}", self.labels)
