"""Pictures of the page tools. A person looks at them."""

from harness.pictures import PictureTest
from harness.wait import until


class ToolPicturesTest(PictureTest):
    def test_find_bar(self):
        self.start_with("bees")
        self.hands.press("ctrl+f")
        until(lambda: self.windows.nodes("text", "Find in page"), "the bar")
        self.shoot("find-empty")
        self.hands.type_on("flight")
        until(lambda: self.windows.nodes(None, "Found"), "a match")
        self.shoot("find-found")
        self.hands.type_on("y")
        until(lambda: self.windows.nodes(None, "No matches"), "no match")
        self.shoot("find-none")

    def test_time_line(self):
        self.start_with("bees", "docs", "weather", "forum", "bread", "trains")
        self.hands.press("ctrl+shift+h")
        until(lambda: self.windows.nodes("list", "Latest visits"), "the time line")
        self.shoot("rewind", rest=False)
        self.hands.go_on("Tab")
        self.shoot("rewind-chosen", rest=False)
