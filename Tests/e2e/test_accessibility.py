"""Each part of the window has a name that tells a person what it is."""

from harness import articles
from harness.case import BACK, FORWARD, PRIVATE, RELOAD, BrowserTest
from harness.wait import until_equal

CONTROLS = {"push button", "toggle button", "text", "entry", "list item", "list", "check box",
            "combo box", "menu item", "menu", "image", "slider", "scroll bar"}
BUTTONS = ["Close", "Minimise", "Zoom", BACK, FORWARD, RELOAD, "More", "New tab"]


class AccessibilityTest(BrowserTest):
    def nameless(self):
        """The controls without a name of their own."""
        return [node for node in self.windows.nodes()
                if node.role in CONTROLS and (not node.name.strip() or is_type_name(node.name))]

    def check_names(self, state):
        with self.subTest(state):
            self.assertEqual(self.nameless(), [])

    def open_two(self):
        self.start_and_open(self.server.page("/one", "Page one"),
                            self.server.page("/two", "Page two"))

    def test_everything_has_a_name_in_the_ordinary_window(self):
        self.open_two()
        self.check_names("pages")
        self.notch.write("page")
        self.notch.wait_for_row("Page one, 127.0.0.1, Switch to tab")
        self.check_names("open notch")
        self.app.action("newEmptyTab")
        self.windows.find("push button", "127.0.0.1")
        self.check_names("new tab page with a site")

    def test_everything_has_a_name_in_the_column(self):
        self.open_two()
        self.app.action("togglePin")
        self.app.action("selectTab2")
        self.app.action("toggleGroup")
        header = self.windows.find_named("group, 1 tabs")
        self.check_names("tile and group")
        header.press()
        self.check_names("group collapsed")
        self.windows.press("push button", "Narrow tabs")
        self.windows.find("push button", "Show tab titles")
        self.check_names("narrow column")

    def test_everything_has_a_name_in_a_pair(self):
        self.open_two()

        self.app.action("toggleSideBySide")

        self.windows.find("separator", "Resize the two pages")
        self.check_names("pair")

    def test_everything_has_a_name_in_the_reader(self):
        self.start_and_open(articles.serve(self.server, "/story", articles.STORY))

        self.app.action("toggleReader")
        self.windows.press("push button", "Text size and theme")

        self.windows.find("push button", "night theme")
        self.check_names("reader")

    def test_everything_has_a_name_in_a_private_window(self):
        self.app.start()

        self.open_private_window()

        self.windows.find("list", "Tabs", PRIVATE)
        self.check_names("private window")

    def test_everything_has_a_name_in_the_menus(self):
        self.open_two()
        self.open_more_menu()
        self.check_names("more menu")
        self.hands.press("Escape")
        self.app.action("park")
        self.windows.find_named("Shelf").press()
        self.windows.find_named("Park This Tab on the Shelf")
        self.check_names("shelf menu")
        self.hands.press("Escape")
        self.click_on("list item", "Page one", button=3)
        self.windows.find_named("Duplicate Tab")
        self.check_names("menu of a tab")

    def test_everything_has_a_name_in_the_panel_of_a_site(self):
        self.open_two()

        self.click_on("push button", "Site info")

        self.windows.find("push button", "Clear Cookies and Site Data")
        self.check_names("panel of a site")

    def test_buttons_and_notch_have_their_names(self):
        self.open_two()

        for name in BUTTONS:
            self.windows.find("push button", name)
        self.notch.resting()
        self.windows.find("push button", "Close Page two")

    def test_tabs_are_a_list_and_one_is_selected(self):
        self.open_two()
        self.wait_for_tabs("New tab", "Page one", "Page two")
        self.wait_for_selected("Page two")

        self.windows.press("push button", "Page one")

        self.wait_for_selected("Page one")

    def test_buttons_do_what_they_say(self):
        self.open_two()

        self.windows.press("push button", "Close Page two")
        self.wait_for_tabs("New tab", "Page one")
        self.windows.press("push button", "New tab")
        self.wait_for_tabs("New tab", "Page one", "New tab")
        self.windows.press("push button", "Close")
        self.app.check_runs()

    def test_empty_tab_offers_neither_way_nor_reload(self):
        self.app.start()
        self.windows.find("push button", RELOAD)

        until_equal(self.usable_buttons, [], "the buttons that can be pressed")
        self.open(self.server.page("/page"))
        until_equal(self.usable_buttons, [RELOAD], "the buttons that can be pressed")
        self.app.action("selectTab1")
        until_equal(self.usable_buttons, [], "the buttons that can be pressed")

    def usable_buttons(self):
        return [name for name in (BACK, FORWARD, RELOAD)
                for button in self.windows.nodes("push button", name) if button.is_sensitive]

    def test_back_and_forward_say_whether_they_lead_anywhere(self):
        target = self.server.page("/target")
        page = self.server.link_page("/links", "/target")
        self.start_and_open(page)
        self.assertFalse(self.windows.find("push button", BACK).is_sensitive)
        self.hands.click()
        self.wait_for_visit(target)

        self.windows.press("push button", BACK)

        self.wait_for_visit(page)
        self.assertFalse(self.windows.find("push button", BACK).is_sensitive)
        self.assertTrue(self.windows.find("push button", FORWARD).is_sensitive)


def is_type_name(name):
    return name.startswith(("Gtk", "gtkmm_", "Adw", "WebKit", "orvu_", "N4orvu"))
