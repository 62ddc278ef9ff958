"""The column of tabs, by pointer and by key."""

import json

from harness.case import BrowserTest
from harness.wait import until, until_equal

HOSTILE = {
    "markup": "<b>bold</b> & <i>more",
    "right-to-left": "\u202Eevil \u05E9\u05DC\u05D5\u05DD",
    "combining": "e" + "\u0301" * 500,
    "lines": "first\nsecond\r\n\tthird",
    "long": "word " * 2000,
}
TAB_MENU = ["Open Side by Side", "Add to New Group", "Remove from Group", "Pin Tab",
            "Park on the Shelf", "Duplicate Tab", "Close Tab"]


class ColumnTest(BrowserTest):
    def start_with(self, *names):
        """Starts with one page for each name and no other; the last one is in front."""
        self.urls = [self.server.page(f"/{name}", name) for name in names]
        self.start_with_only(*self.urls)
        self.app.action("selectTab9")
        self.wait_for_selected(names[-1])
        self.wait_for_tabs(*names)

    def group(self, number, name):
        """Puts the tab of that number into a group of that name."""
        self.app.action(f"selectTab{number}")
        self.app.action("toggleGroup")
        self.rename_by_key("127.0.0.1", name)
        self.header(name)

    def header(self, name, count=1):
        return self.windows.find("push button", f"{name} group, {count} tabs")

    def row(self, title):
        return self.windows.find("push button", title)

    def focus_list(self, first):
        """Leads the keyboard from the address into the list, whose Tab stop is `first`."""
        self.app.action("editAddress")
        self.notch.wait_until_open()
        self.hands.press("F6")
        self.wait_for_focus("New tab")
        self.go_by_key_to(first, most=6)

    def menu_lines(self):
        return [item.name for item in self.windows.nodes("menu item")]

    def open_menu(self, title):
        """Opens the context menu of a row or a tile with the pointer."""
        self.click_on("push button", title, button=3)
        self.windows.find("menu item", "Close Tab")

    def rename_by_key(self, previous, name, end="Return"):
        self.open_field(previous)
        self.replace_text(name)
        self.hands.go_on(end)
        until_equal(lambda: self.windows.nodes("text", "Group name"), [], "the fields for a name")

    def replace_text(self, text):
        self.hands.go_on("ctrl+a")
        self.hands.type_on(text)

    def choose_for_group(self, name, item):
        """Presses an item of a group's context menu."""
        self.hands.click(button=3, at=self.header(name).middle)
        self.windows.press("menu item", item)

    def open_field(self, previous):
        self.choose_for_group(previous, "Rename…")
        self.wait_for_focus("Group name")

    # Tabs.

    def test_click_on_a_row_selects_its_tab(self):
        self.start_with("one", "two", "three")

        self.hands.click(at=self.row("one").middle)

        self.wait_for_selected("one")

    def test_close_button_of_a_row_under_the_pointer_closes_its_tab(self):
        self.start_with("one", "two", "three")

        self.hands.hover(self.row("one").middle)
        self.hands.click(at=self.row("Close one").middle)

        self.wait_for_tabs("two", "three")
        self.wait_for_selected("three")

    def test_middle_button_closes_the_tab_under_the_pointer(self):
        self.start_with("one", "two")

        self.hands.click(button=2, at=self.row("one").middle)

        self.wait_for_tabs("two")

    def test_new_tab_button_opens_a_tab_in_front(self):
        self.start_with("one")

        self.windows.press("push button", "New tab")

        self.wait_for_tabs("one", "New tab")
        self.wait_for_selected("New tab")

    # The menu of a tab.

    def test_tab_menu_by_pointer_has_its_lines_and_closes_with_escape(self):
        self.start_with("one", "two")

        self.open_menu("one")
        self.assertEqual(self.menu_lines(), TAB_MENU)
        self.hands.go_on("Escape")

        until_equal(self.menu_lines, [], "the menu")
        self.wait_for_tabs("one", "two")

    def test_open_side_by_side_is_greyed_for_the_tab_in_front_alone(self):
        self.start_with("one", "two")

        self.open_menu("two")
        self.assertFalse(self.windows.find("menu item", "Open Side by Side").is_sensitive)
        self.hands.go_on("Escape")
        until_equal(self.menu_lines, [], "the menu")
        self.open_menu("one")
        self.assertTrue(self.windows.find("menu item", "Open Side by Side").is_sensitive)
        self.windows.press("menu item", "Open Side by Side")

        self.wait_for_selected("one")

    def test_pinned_tab_stands_as_a_tile_with_a_menu_of_its_own(self):
        self.start_with("one", "two")

        self.open_menu("one")
        self.windows.press("menu item", "Pin Tab")
        until_equal(self.windows.pinned_tabs, ["one"], "the tiles")
        until_equal(self.saved.pinned, self.urls[:1], "the saved pins")
        self.click_on("list item", "one", button=3)
        self.windows.press("menu item", "Unpin Tab")

        until_equal(self.windows.pinned_tabs, [], "the tiles")
        self.wait_for_tabs("one", "two")

    def test_tab_menu_works_by_key(self):
        self.start_with("one", "two", "three")
        self.focus_list("three")

        self.hands.go_on("Up")
        self.wait_for_focus("two")
        self.hands.go_on("shift+F10")
        self.windows.find("menu item", "Pin Tab")
        self.hands.go_on("Escape")
        self.wait_for_focus("two")
        self.hands.go_on("Menu")
        self.windows.find("menu item", "Pin Tab")
        self.hands.go_on("Up", "Return")

        self.wait_for_tabs("one", "three")

    # Groups.

    def test_group_is_renamed_with_return(self):
        self.start_with("one", "two")
        self.group(1, "Bees")

        self.rename_by_key("Bees", "Maps & <b>")

        self.header("Maps & <b>")
        self.wait_for_focus("Maps & <b> group, 1 tabs")
        until_equal(self.saved.grouped, {"Maps & <b>": self.urls[:1]}, "the saved groups")

    def test_escape_and_a_blank_name_leave_the_name_as_it_was(self):
        self.start_with("one", "two")
        self.group(1, "Bees")

        self.rename_by_key("Bees", "Other", end="Escape")
        self.header("Bees")
        self.rename_by_key("Bees", "   ")

        self.header("Bees")
        self.assertEqual(self.saved.grouped(), {"Bees": self.urls[:1]})

    def test_double_click_edits_the_name_and_leaves_the_group_open(self):
        self.start_with("one", "two")
        self.group(1, "Bees")

        self.double_click_for_focus(lambda: self.header("Bees").middle, "Group name")
        self.replace_text("Maps")
        self.hands.go_on("Return")

        self.header("Maps")
        self.wait_for_tabs("one", "two")

    def test_leaving_the_field_keeps_what_was_typed(self):
        self.start_with("one", "two")
        self.group(1, "Bees")

        self.open_field("Bees")
        self.replace_text("Maps")
        self.hands.go_on("ctrl+l")

        self.header("Maps")

    def test_f2_renames_the_focused_group(self):
        self.start_with("one", "two")
        self.group(1, "Bees")
        self.app.action("selectTab1")
        self.wait_for_selected("one")
        self.focus_list("one")

        self.hands.go_on("Up")
        self.wait_for_focus("Bees group, 1 tabs")
        self.hands.go_on("F2")
        self.wait_for_focus("Group name")
        self.hands.type_on("Maps")
        self.hands.go_on("Return")

        self.wait_for_focus("Maps group, 1 tabs")

    def test_click_collapses_a_group_and_the_return_key_opens_it_again(self):
        self.start_with("one", "two")
        self.group(1, "Bees")

        self.hands.click(at=self.header("Bees").middle)
        self.wait_for_tabs("two")
        self.app.action("selectTab2")
        self.wait_for_selected("two")
        self.focus_list("two")
        self.hands.go_on("Home")
        self.wait_for_focus("Bees group, 1 tabs")
        self.hands.go_on("Return")

        self.wait_for_tabs("one", "two")
        self.wait_for_focus("Bees group, 1 tabs")

    def test_group_menu_ungroups_and_closes(self):
        self.start_with("one", "two", "three")
        self.group(1, "Bees")
        self.group(2, "Maps")

        self.choose_for_group("Bees", "Ungroup")
        until_equal(self.saved.grouped, {"Maps": self.urls[1:2]}, "the saved groups")
        self.choose_for_group("Maps", "Close Group")

        self.wait_for_tabs("one", "three")

    def test_submenu_moves_a_tab_to_a_group(self):
        self.start_with("one", "two")
        self.group(1, "a_b")

        self.open_menu("two")
        self.windows.press("menu item", "Move to Group")
        self.windows.press("menu item", "a_b")

        self.header("a_b", 2)
        until_equal(self.saved.grouped, {"a_b": self.urls}, "the saved groups")

    # The shelf.

    def test_shelf_parks_and_brings_back(self):
        self.start_with("one", "two")

        self.windows.press("push button", "Shelf")
        self.windows.press("menu item", "Park This Tab on the Shelf")
        self.wait_for_tabs("one")
        until_equal(self.saved.shelf, self.urls[1:], "the saved shelf")
        self.windows.press("push button", "Shelf, 1 tab")
        self.windows.press("menu item", "two")

        self.wait_for_tabs("one", "two")
        self.windows.find("push button", "Shelf")

    # The width.

    def test_narrow_column_is_one_windows_own(self):
        self.start_with("one")
        self.app.app_action("newWindow")
        until(lambda: len(self.windows.nodes("push button", "Narrow tabs")) == 2, "two columns")

        self.windows.press("push button", "Narrow tabs")

        until(lambda: [len(self.windows.nodes("push button", name))
                       for name in ("Narrow tabs", "Show tab titles")] == [1, 1],
              "one narrow column")
        widths = sorted(tabs.box[2] for tabs in self.windows.nodes("list", "Tabs"))
        self.assertLess(widths[0], 52 + 20)
        self.assertGreaterEqual(widths[1], 228)
        self.assertIsNone(self.saved.value("narrowTabs"))
        self.windows.press("push button", "Show tab titles")
        until(lambda: len(self.windows.nodes("push button", "Narrow tabs")) == 2, "two columns")

    def test_new_window_starts_as_the_setting_says(self):
        self.save_beforehand({"narrowTabs": 1})
        self.app.start()

        self.windows.find("push button", "Show tab titles")

    # The keyboard.

    def test_closing_the_focused_row_leads_to_its_neighbour(self):
        self.start_with("one", "two", "three")
        self.focus_list("three")

        self.hands.go_on("Up")
        self.wait_for_focus("two")
        self.hands.go_on("Delete")
        self.wait_for_tabs("one", "three")
        self.wait_for_focus("three")
        self.hands.go_on("Delete")

        self.wait_for_tabs("one")
        self.wait_for_focus("one")

    def test_return_and_space_select_the_focused_row(self):
        self.start_with("one", "two", "three")
        self.focus_list("three")

        self.hands.go_on("Home", "Return")
        self.wait_for_selected("one")
        self.focus_list("one")
        self.hands.go_on("Down", "space")

        self.wait_for_selected("two")

    def test_tab_leads_through_the_column(self):
        self.start_with("one", "two", "three")
        self.open_menu("one")
        self.windows.press("menu item", "Pin Tab")
        until_equal(self.windows.pinned_tabs, ["one"], "the tiles")
        self.app.action("editAddress")
        self.notch.wait_until_open()
        self.hands.press("F6")

        for name in ("New tab", "one", "three", "Close three", "Switch to Personal (Alt+1)",
                     "New profile", "Narrow tabs"):
            self.wait_for_focus(name)
            self.hands.go_on("Tab")

    def test_five_hundred_tabs_are_reached_by_key(self):
        self.start_with("first")
        self.focus_list("first")
        rows = self.windows.find("list", "Tabs")
        first = rows.child(0)
        top = first.box[1]
        for _ in range(499):
            self.app.action("newEmptyTab")
        until_equal(lambda: rows.child_count, 500, "the number of rows")
        self.app.action("selectTab1")
        until(lambda: first.is_selected, "the first tab in front")
        self.hands.press("F6", "F6", "Tab")
        until(lambda: rows.child(0).child(0).is_focused, "the keyboard on the first row")

        self.hands.go_on(*["Down"] * 40)
        until(lambda: rows.child(40).child(0).is_focused, "the keyboard 40 rows further down")
        self.check_in_sight(rows.child(40))
        self.hands.go_on("End")
        until(lambda: rows.child(499).child(0).is_focused, "the keyboard on the last row")
        self.check_in_sight(rows.child(499))
        self.assertLess(first.box[1], 0)
        self.hands.go_on("Delete")
        until_equal(lambda: rows.child_count, 499, "the number of rows")
        until(lambda: rows.child(498).child(0).is_focused, "the keyboard on the row before")
        self.hands.go_on("Home")

        until_equal(lambda: first.box[1], top, "the top of the list")
        self.assertTrue(first.child(0).is_focused)

    def check_in_sight(self, row):
        _, top, _, height = row.box
        until(lambda: 0 < row.box[1] and row.box[1] + height < self.hands.size()[1],
              f"{row} in sight, not at {top}", lambda: row.box)

    def test_tab_that_comes_to_the_front_comes_into_sight(self):
        self.start_with("first")
        for _ in range(59):
            self.app.action("newEmptyTab")
        until(lambda: self.row("first").box[1] < 0, "the list to scroll down",
              lambda: self.row("first").box)

        self.hands.press("ctrl+Tab")

        self.wait_for_selected("first")
        until(lambda: self.row("first").box[1] > 0, "the list to scroll up",
              lambda: self.row("first").box)

    def test_tab_keys_go_round_in_the_order_of_the_column(self):
        self.start_with("one", "two", "three")
        self.group(3, "Bees")

        for key, name in (("ctrl+Tab", "one"), ("ctrl+Tab", "two"), ("ctrl+Page_Down", "three"),
                          ("ctrl+shift+Tab", "two"), ("ctrl+Page_Up", "one")):
            self.hands.press(key)
            self.wait_for_selected(name)

    # Titles.

    def test_hostile_titles_stay_in_their_rows(self):
        self.start_with("plain")
        for name, title in HOSTILE.items():
            url = self.server.script_page(f"/{name}", f"document.title = {json.dumps(title)}")
            self.app.start_again(url)
            self.server.wait_for(f"/{name}")

        until(lambda: self.shown("markup") and self.shown("long"), "the titles",
              self.windows.tabs)

        self.assertIn("first second third", self.windows.tabs())
        self.assertTrue(all(len(title) <= 301 for title in self.windows.tabs()))
        self.assertGreaterEqual(self.windows.find("list", "Tabs").box[2], 228)
        self.assertLess(self.windows.find("list", "Tabs").box[2], 228 + 20)
        self.picture("hostile-titles")
        self.app.check_runs()

    def shown(self, name):
        begin = HOSTILE[name][:20]
        return [title for title in self.windows.tabs() if title.startswith(begin)]
