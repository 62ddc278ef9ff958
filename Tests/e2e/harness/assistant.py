"""The assistant's panel of one window, by its names in the accessibility tree."""

from .case import PRIVATE
from .wait import until, until_equal

BUTTON = "Ask Kesto about this page (Ctrl+J)"
PANEL = "Kesto"
TEXT_ROLES = "label", "status bar", "alert", "notification"
PROMPT, PRIVATE_PROMPT = "Ask, @ a tab, or / for skills", "Ask anything"


class Assistant:
    """What a person sees of the assistant, and what the hands do to it."""

    def __init__(self, windows, hands, title="Orvu"):
        self._windows = windows
        self._hands = hands
        self._title = title
        self._prompt = PRIVATE_PROMPT if title == PRIVATE else PROMPT

    # The panel.

    def panels(self):
        return self._windows.nodes("panel", PANEL, self._title)

    def nodes(self, role=None, name=None):
        """What stands in the panel."""
        return [node for panel in self.panels() for node in panel.walk()
                if role in (None, node.role) and name in (None, node.name)]

    def find(self, role, name):
        return until(lambda: self.nodes(role, name), f"{role} {name!r} in the panel", self.nodes)[0]

    def press(self, role, name):
        self.find(role, name).press()

    def wait_until_open(self):
        """Waits until what is typed goes into the field."""
        until(lambda: [node for node in self.fields() if node.is_focused],
              "the assistant's field to have the keyboard", self.nodes)

    def wait_until_closed(self):
        until(lambda: not self.panels(), "the assistant's panel to go", self.nodes)

    def open(self):
        self._hands.press("ctrl+j", title=self._title)
        self.wait_until_open()

    # The field.

    def fields(self):
        return self.nodes("text", self._prompt)

    def text(self):
        return until(self.fields, "the assistant's field", self.nodes)[0].text()

    def wait_for_text(self, text):
        until_equal(self.text, text, "the field's text")

    def write(self, text):
        self._hands.type_on(text)
        self.wait_for_text(text)

    def ask(self, text):
        """Types a question where the keyboard is, and sends it."""
        self.write(text)
        self._hands.go_on("Return")

    # What it says.

    def texts(self):
        """The texts of the panel, from top to bottom."""
        return [node.name for node in self.nodes() if node.role in TEXT_ROLES]

    def wait_for_words(self, text):
        until(lambda: text in self.texts(), f"the words {text!r}", self.texts)

    def wait_for_no_words(self, text):
        until(lambda: text not in self.texts(), f"the words {text!r} to go", self.texts)

    def buttons(self):
        return [node.name for node in self.nodes("push button")]

    def rows(self):
        """The names of what can be pressed at the field, but for its own button."""
        return [node.name for panel in self.panels() for node in panel.children()[-1].walk()
                if node.role == "push button" and node.name != "Send"]

    def wait_for_rows(self, *names):
        until_equal(self.rows, list(names), "what can be pressed at the field")
