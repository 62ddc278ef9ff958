"""The badge at the head of the notch, its panel, and what pages ask for."""

from .wait import until, until_equal

INFO, SEARCH = "Site info", "Search"
CLEAR, CLEARED = "Clear Cookies and Site Data", "Cleared"
ALLOW, REFUSE = "Allow", "Don't Allow"
HEAD = 60  # points from the window's upper edge

# What a page asks with. It reports all that comes of it, below its own name.
CAPTURE = """
const report = text => fetch('/report/NAME-' + text);
const ask = constraints => navigator.mediaDevices.getUserMedia(constraints).then(stream => {
    for (const track of stream.getTracks()) {
        report('got-' + track.kind);
        track.onended = () => report('ended-' + track.kind);
    }
}, error => report(error.name));
"""


def capture_page(pages, name, wants="camera"):
    """A page that asks when it has loaded and at each click; gives its address' path."""
    constraints = {"camera": "{video: true}", "microphone": "{audio: true}",
                   "both": "{video: true, audio: true}"}[wants]
    script = CAPTURE.replace("NAME", name) + (
        f"const again = () => ask({constraints}); onload = again; onclick = again;")
    pages.script_page(f"/{name}", script)
    return f"/{name}"


class Site:
    """What one window shows of its page's site, and what the hands do about it."""

    def __init__(self, windows, hands, title="Orvu"):
        self._windows = windows
        self._hands = hands
        self._title = title

    def _nodes(self, role=None, name=None):
        return self._windows.nodes(role, name, self._title)

    # The badge.

    def badges(self):
        return [node for node in self._nodes("push button")
                if node.name in (INFO, SEARCH) and node.is_above(HEAD)]

    def wait_for_badge(self, name):
        until(lambda: [node.name for node in self.badges()] == [name], f"the badge {name!r}",
              self.badges)
        return self.badges()[0]

    # The panel.

    def is_open(self):
        return bool(self._nodes("push button", CLEAR) + self._nodes("push button", CLEARED))

    def open(self):
        """Opens the panel with the pointer."""
        self._hands.click(at=self.wait_for_badge(INFO).middle, title=self._title)
        self.wait_until_open()

    def wait_until_open(self):
        until(self.is_open, "the site's panel", self._nodes)

    def wait_until_closed(self):
        until(lambda: not self.is_open(), "the site's panel to close")

    def texts(self):
        """The texts of the open panel, from the top."""
        button = (self._nodes("push button", CLEAR) + self._nodes("push button", CLEARED))[0]
        def holder(node):
            return any(child.name == button.name for child in node.children())
        panel = [node for node in self._nodes() if node.role != "frame" and holder(node)][0]
        return [node.name for node in panel.walk() if node.role == "label"]

    def choose(self, kind, choice):
        self._windows.press("push button", f"{kind}: {choice}", self._title)
        self.wait_for_choice(kind, choice)

    def wait_for_choice(self, kind, choice):
        until_equal(lambda: self.chosen(kind), [choice], f"what is chosen for the {kind}")

    def chosen(self, kind):
        return [node.name.removeprefix(f"{kind}: ") for node in self._nodes("push button")
                if node.name.startswith(f"{kind}: ") and node.is_pressed]

    # The question.

    def questions(self):
        return [node.name for node in self._nodes() if " wants to " in node.name
                and node.role != "label"]

    def wait_for_question(self, *texts):
        until_equal(self.questions, list(texts), "the questions of pages")

    def answer(self, name):
        """Presses a button of the question as soon as it can be pressed."""
        def button():
            found = [node for node in self._nodes("push button", name) if node.is_sensitive]
            return found[0] if found else None
        self._hands.click(at=until(button, f"a button {name!r}").middle, title=self._title)
        self.wait_for_question()
