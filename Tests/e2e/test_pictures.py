"""Pictures of the window in each of its states, from the real program with real pages. A person
looks at them; what is asserted is that each was made and that something is on it."""

import subprocess

from harness import sites
from harness.case import BrowserTest, artefacts
from harness.wait import until

SCREEN = (2700, 1560)


class PicturesTest(BrowserTest):
    display_traits = {"manager": "mutter", "size": SCREEN}

    def setUp(self):
        super().setUp()
        self.urls = sites.serve(self.server)

    def shoot(self, name, title="Orvu", beside=0):
        """Leaves a picture of the window with its shadow, and of what stands `beside` it."""
        window = self.hands.take(title)
        self.hands.rest(title)
        self.settle()
        file = artefacts() / f"window-{name}.png"
        self.display.picture_of(window, file, beside)
        self.assert_drawn(file)

    def settle(self):
        """Waits until the display has shown the same picture twice."""
        former = []

        def same():
            now = self.display.digest()
            former.append(now)
            return len(former) > 1 and former[-2] == now
        until(same, "the display to come to rest", pause=0.25)

    def assert_drawn(self, file):
        answer = subprocess.run(["identify", "-format", "%k %w %h", str(file)],
                                capture_output=True, text=True, check=True)
        colors, width, height = map(int, answer.stdout.split())
        self.assertGreater(colors, 100, f"the colours in {file}")
        self.assertGreater(width * height, 900 * 560, f"the size of {file}")

    def start_with(self, *names):
        self.app.start()
        self.open(*(self.urls[name] for name in names))
        self.app.action("selectTab1")
        self.app.action("closeTab")  # the empty one that every window begins with

    def test_ordinary_window(self):
        self.start_with("docs", "weather", "forum", "bread", "bees")
        self.shoot("ordinary")
        for size in ((900, 560), (1280, 820), (2560, 1440)):
            self.hands.resize(*size)
            self.shoot("{}x{}".format(*size))

    def test_new_tab_page(self):
        self.start_with("docs", "weather", "forum", "bread", "trains", "bees")
        self.app.action("newEmptyTab")
        self.shoot("new-tab-page")
        self.hands.resize(900, 560)
        self.shoot("new-tab-page-900x560")

    def test_pair(self):
        self.start_with("weather", "docs", "bees")
        self.app.action("toggleSideBySide")
        self.shoot("pair")

    def test_private_window(self):
        self.start_with("docs", "bees")
        self.app.app_action("newPrivateWindow")
        self.shoot("private-new-tab", "Orvu — Private", beside=60)
