"""Pictures of the window in each of its states, from the real program with real pages. A person
looks at them; what is asserted is that each was made and that something is on it."""

from harness.case import PRIVATE
from harness.pictures import PictureTest


class PicturesTest(PictureTest):
    def start_with_groups(self):
        """A pinned tab, two groups of which one has two tabs, and one tab in none."""
        self.start_with("docs", "trains", "weather", "forum", "bread", "bees")
        self.select(2)
        self.app.action("togglePin")  # trains
        self.select(1)
        self.select(2)
        self.app.action("toggleGroup")  # docs
        self.select(4)
        self.app.action("toggleGroup")  # forum
        self.windows.find_named("group, 1 tabs")
        self.select(9)  # bees

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

    def test_groups_and_tiles(self):
        self.start_with_groups()
        self.shoot("groups-open")
        self.windows.find_named("group, 1 tabs").press()
        self.shoot("groups-one-collapsed")
        self.windows.press("push button", "Narrow tabs")
        self.shoot("narrow-column")

    def test_pair(self):
        self.start_with("weather", "docs", "bees")
        self.app.action("toggleSideBySide")
        self.shoot("pair")
        self.windows.press("push button", "Narrow tabs")
        self.hands.resize(900, 560)
        self.shoot("pair-900x560-narrow-column")

    def test_private_window(self):
        self.start_with("docs", "bees")
        self.open_private_window()
        self.shoot("private-new-tab", PRIVATE, beside=60)
        self.type_address(self.urls["forum"], PRIVATE)
        self.wait_for_tabs("How do you keep your knives sharp?", window=PRIVATE)
        self.shoot("private", PRIVATE)

    def test_menus(self):
        self.start_with_groups()
        self.open_more_menu()
        self.shoot("more-menu")
        self.hands.press("Escape")
        self.app.action("park")
        self.windows.find_named("Shelf").press()
        self.shoot("shelf-menu")

    def test_context_menu_and_hover(self):
        self.start_with_groups()
        row = self.windows.find("list item", "Rye bread without kneading")
        self.hands.click(button=3, at=row.middle)
        self.windows.find_named("Duplicate Tab")
        self.shoot("tab-menu", rest=False)
        self.hands.press("Escape")
        self.hands.hover(row.middle)
        self.shoot("row-hovered", rest=False)

    def test_focus_is_seen(self):
        self.start_with_groups()
        self.hands.press("F6", "F6", "Tab", "Tab", "Down")
        self.shoot("keyboard-in-the-column")
