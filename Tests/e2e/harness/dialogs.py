"""The dialogs of pages, as they stand over them."""

from .wait import until, until_equal

OK, CANCEL, LEAVE, STAY, SIGN_IN = "OK", "Cancel", "Leave", "Stay on Page", "Sign In"
SILENCE = "No more from this page"
SAYS = "The page, or something embedded in it, says:"
ASKS = "The page, or something embedded in it, asks:"
LEAVES = "Leave this page?"
WANTS_PASSWORD = "The server wants a name and a password."
CAPTIONS = (SAYS, ASKS, LEAVES, WANTS_PASSWORD)

# A page that wants to ask before it is left, and tells the keys that reach it.
FORM = """
addEventListener('beforeunload', event => event.preventDefault());
addEventListener('keydown', event => fetch('/report/NAME-' + event.key));
"""


def form_page(pages, name):
    """A page that asks before it is left, once somebody typed into it; gives its path."""
    script = FORM.replace("NAME", name)
    pages.script_page(f"/{name}", script, "<textarea style='position:fixed;inset:0;width:100%;"
                                          "height:100%' autofocus></textarea>")
    return f"/{name}"


class Dialogs:
    """What pages of one window ask, and what the hands do about it."""

    def __init__(self, windows, hands, title="Orvu"):
        self._windows = windows
        self._hands = hands
        self._title = title

    def _nodes(self, role=None, name=None):
        return self._windows.nodes(role, name, self._title)

    def cards(self):
        """The cards that show, as assistive technology speaks them."""
        return [node.name for node in self._nodes() if node.role != "label"
                and any(caption in node.name for caption in CAPTIONS)]

    def wait_for(self, asker, caption, text=""):
        """Waits for the card of that asker with those words, and no other."""
        wanted = f"{asker}. {caption}" + (f" {text}" if text else "")
        until_equal(self.cards, [wanted], "the cards of dialogs")

    def wait_until_gone(self):
        until_equal(self.cards, [], "the cards of dialogs")

    def labels(self):
        return [node.name for node in self._nodes("label")]

    def buttons(self):
        """The names of the buttons of the card."""
        names = (OK, CANCEL, LEAVE, STAY, SIGN_IN, SILENCE)
        return [node.name for node in self._nodes("push button") if node.name in names]

    def button(self, name):
        """A button of the card, as soon as it can be pressed."""
        def ready():
            found = [node for node in self._nodes("push button", name) if node.is_sensitive]
            return found[0] if found else None
        return until(ready, f"a button {name!r} that can be pressed", self._nodes)

    def press(self, name):
        self.button(name).press()

    def click(self, name):
        self._hands.click(at=self.button(name).middle, title=self._title)

    def field(self, name):
        return self._windows.find("text", name, self._title)
