"""The window of the settings."""

from .wait import until, until_equal

TITLE = "Orvu Settings"
SWITCHES = {
    "Reopen your tabs when Orvu starts": "restoreTabs",
    "Show search suggestions as you type": "searchSuggestions",
    "Kesto answers beside search results": "searchAnswers",
    "Block well-known trackers": "blockTrackers",
    "Let Kesto read pages when you ask": "kestoReadsPages",
    "Narrow tab column in new windows": "narrowTabs",
}
# Those that are off where nothing is stored.
OFF = {"narrowTabs"}


class SettingsWindow:
    """What it shows, and what the hands do about it."""

    def __init__(self, windows, hands):
        self._windows = windows
        self._hands = hands

    def nodes(self, role=None, name=None):
        return self._windows.nodes(role, name, TITLE)

    def wait_until_open(self):
        until(self.is_open, "the settings")

    def wait_until_closed(self):
        until(lambda: not self.is_open(), "the settings to go")

    def is_open(self):
        return TITLE in self._windows.titles()

    def labels(self):
        """What is written in it, from top to bottom."""
        return [node.name for node in self.nodes("label")]

    def switches(self):
        """Each switch with whether it is on."""
        return {node.name: node.is_on for node in self.nodes() if node.name in SWITCHES
                and node.role != "label"}

    def switch(self, name):
        return until(lambda: [node for node in self.nodes(None, name) if node.role != "label"],
                     f"the switch {name!r}")[0]

    def press(self, name):
        self._windows.press("push button", name, TITLE)

    def engine(self):
        """The search engine that is chosen."""
        return [node.name.removeprefix("Search engine: ") for node in self.nodes("push button")
                + self.nodes("toggle button") if node.name.startswith("Search engine: ")
                and node.is_pressed]

    def choose_engine(self, name):
        self.press(f"Search engine: {name}")

    def wait_for_label(self, text):
        until(lambda: text in self.labels(), f"the words {text!r}", self.labels)

    def wait_for_no_label(self, text):
        until_equal(lambda: text in self.labels(), False, f"the words {text!r}")
