"""Pictures of the library. A person looks at them."""

import json

from harness.case import PRIVATE
from harness.library import Library
from harness.pictures import PictureTest
from test_library import visits

TITLES = ["Bees and how they dance", "A page with a very long title " * 12, "", "Ünïcödé ✓ 日本語"]


def visits_with_titles():
    entries = json.loads(visits(60, days=4))
    for number, entry in enumerate(entries):
        entry["title"] = TITLES[number % len(TITLES)]
    return json.dumps(entries).encode()


class LibraryPicturesTest(PictureTest):
    def open_history(self, title="Orvu"):
        library = Library(self.windows, self.hands, title)
        self.app.action("showHistory", window=2 if title == PRIVATE else 1)
        library.wait_until_open("History")
        return library

    def test_history_search_and_question(self):
        self.save_beforehand({"browserVisits": visits_with_titles()})
        self.start_with("bees")
        library = self.open_history()
        self.shoot("library-history")
        self.hands.press("Down", "Down")
        self.shoot("library-row", rest=False)
        self.hands.resize(2560, 1440)
        self.shoot("library-2560x1440")
        self.hands.resize(900, 560)
        self.shoot("library-small")
        library.press("Clear History…")
        self.windows.find("push button", "All time")
        self.shoot("library-question")

    def test_empty_and_private(self):
        self.start_with("bees")
        self.app.action("showBookmarks")
        Library(self.windows, self.hands).wait_until_open("Bookmarks")
        self.shoot("library-empty")
        self.open_private_window()
        self.open_history(PRIVATE)
        self.shoot("library-private", title=PRIVATE)


class LargeLibraryPicturesTest(PictureTest):
    """The same where everything is twice as large."""

    environment = {"GDK_SCALE": "2"}

    def test_history(self):
        self.save_beforehand({"browserVisits": visits_with_titles()})
        self.start_with("bees")
        Library(self.windows, self.hands)
        self.app.action("showHistory")
        Library(self.windows, self.hands).wait_until_open("History")
        self.shoot("library-large")
