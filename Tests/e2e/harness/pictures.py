"""What tests that leave pictures of windows stand on."""

import subprocess

from . import sites
from .case import BrowserTest, artefacts
from .wait import until

SCREEN = (2700, 1700)


class PictureTest(BrowserTest):
    """A window under a manager that composites, with real pages and nothing that moves."""

    display_traits = {"manager": "mutter", "size": SCREEN}

    def setUp(self):
        super().setUp()
        self.urls = sites.serve(self.server)

    def shoot(self, name, title="Orvu", beside=0, rest=True):
        """Leaves a picture of the window with its shadow, and of what stands `beside` it."""
        window = self.hands.window(title)
        if rest:
            self.hands.rest(title)
        self.settle()
        file = artefacts() / f"window-{name}.png"
        self.display.picture_of(window, file, beside)
        self.assert_drawn(file)

    def settle(self):
        """Waits until the display has shown the same picture twice."""
        previous = []

        def same():
            now = self.display.digest()
            previous.append(now)
            return len(previous) > 1 and previous[-2] == now
        until(same, "the display to come to rest", pause=0.25)

    def assert_drawn(self, file):
        answer = subprocess.run(["identify", "-format", "%k %w %h", str(file)],
                                capture_output=True, text=True, check=True)
        colors, width, height = map(int, answer.stdout.split())
        self.assertGreater(colors, 100, f"the colours in {file}")
        self.assertGreater(width * height, 900 * 560, f"the size of {file}")

    def select(self, number):
        self.app.action(f"selectTab{number}")

    def start_with(self, *names):
        # Nothing moves by itself: two pictures of one state are the same.
        settings = self.home.config / "gtk-4.0/settings.ini"
        settings.parent.mkdir(exist_ok=True)
        settings.write_text("[Settings]\ngtk-enable-animations=false\ngtk-cursor-blink=false\n")
        self.app.start()
        self.open(*(self.urls[name] for name in names))
        self.app.action("selectTab1")
        self.app.action("closeTab")  # the empty one that every window begins with
