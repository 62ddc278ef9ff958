"""Pictures of the page tools. A person looks at them."""

from harness.pictures import PictureTest


class ToolPicturesTest(PictureTest):
    def test_find_bar(self):
        self.start_with("bees")
        self.hands.press("ctrl+f")
        self.windows.find("text", "Find in page")
        self.shoot("find-empty")
        self.hands.type_on("flight")
        self.windows.find(None, "Found")
        self.shoot("find-found")
        self.hands.type_on("y")
        self.windows.find(None, "No matches")
        self.shoot("find-none")

    def test_time_line(self):
        self.start_with("bees", "docs", "weather", "forum", "bread", "trains")
        self.hands.press("ctrl+shift+h")
        self.windows.find("list", "Latest visits")
        self.shoot("rewind", rest=False)
        self.hands.go_on("Tab")
        self.shoot("rewind-chosen", rest=False)
