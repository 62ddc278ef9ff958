"""Pictures of the reader in its themes, sizes and widths. A person looks at them."""

from harness import articles
from harness.case import PRIVATE
from harness.pictures import PictureTest
from harness.wait import until_equal


class ReaderPicturesTest(PictureTest):
    def setUp(self):
        super().setUp()
        self.urls["story"] = articles.serve(self.server, "/story", articles.STORY)
        self.urls["hebrew"] = articles.serve(self.server, "/hebrew", articles.HEBREW_STORY)

    def read(self):
        self.app.action("toggleReader")
        self.windows.find("push button", "Text size and theme")

    def press(self, name):
        self.windows.press("push button", name)

    def step(self, name, size):
        self.press(name)
        until_equal(lambda: self.saved.value("readerSize"), size, "the size")

    def test_themes(self):
        self.start_with("story")
        self.read()
        self.shoot("reader-paper")
        self.press("Text size and theme")
        self.press("white theme")
        self.shoot("reader-white-controls")
        self.press("night theme")
        self.shoot("reader-night")

    def test_sizes(self):
        self.start_with("story")
        self.read()
        self.press("Text size and theme")
        for size in range(19, 27):
            self.step("Larger text", size)
        self.shoot("reader-largest")
        for size in range(25, 13, -1):
            self.step("Smaller text", size)
        self.shoot("reader-smallest")
        self.hands.resize(900, 560)
        self.shoot("reader-smallest-900x560")

    def test_right_to_left(self):
        self.start_with("hebrew")
        self.read()
        self.shoot("reader-right-to-left")

    def test_narrow_pane(self):
        self.start_with("bees", "story")
        self.select(2)
        self.app.action("toggleSideBySide")
        self.read()
        self.shoot("reader-pane")
        self.hands.resize(900, 560)
        self.shoot("reader-pane-900x560")

    def test_private_window(self):
        self.start_with("bees")
        self.open_privately(self.urls["story"], "Harbour Post")
        self.hands.press("ctrl+shift+r", title=PRIVATE)
        self.windows.find("push button", "Text size and theme", PRIVATE)
        self.shoot("reader-private", PRIVATE)
