"""The page area: one card or two, the new tab page, and the menu at the end of the bar."""

from harness.case import PRIVATE, BrowserTest
from harness.notch import FIELD
from harness.wait import until, until_equal

DIVIDER = "Resize the two pages"

# Tells of each click, of its life, and of its width.
TELL = """
const name = document.title;
addEventListener('click', () => fetch(`/report/${name}-clicked`));
const tell = () => fetch(`/report/${name}-width-${innerWidth}`);
addEventListener('resize', tell);
tell();
"""


class PairTest(BrowserTest):
    def start_pair(self):
        self.pages = [self.server.script_page(f"/{name}", TELL) for name in ("left", "right")]
        self.start_and_open(*self.pages)
        self.app.action("selectTab2")
        self.wait_for_selected("left")
        self.app.action("toggleSideBySide")
        self.windows.find("separator", DIVIDER)

    def divider(self):
        return self.windows.find("separator", DIVIDER)

    def divider_x(self):
        left, _, width, _ = self.divider().box
        return left + width / 2

    def wait_for_divider(self, x, what):
        until(lambda: abs(self.divider_x() - x) <= 4, f"the divider {what}", self.divider_x)

    def test_pair_shows_both_pages_without_loading_them_again(self):
        self.start_pair()

        self.windows.find("push button", "Close side by side")
        self.app.action("toggleSideBySide")
        self.windows.wait_until_gone("separator", DIVIDER)

        self.assertEqual([self.server.asked("/left"), self.server.asked("/right")], [1, 1])

    def test_divider_follows_the_pointer_and_stops_at_its_limits(self):
        self.start_pair()
        middle = self.divider_x()
        x, y = self.divider().middle

        self.hands.drag((x, y), (x - 150, y))
        self.wait_for_divider(middle - 150, "150 points to the left")
        x, y = self.divider().middle
        self.hands.drag((x, y), (40, y))
        until(lambda: self.divider_x() < middle - 190, "the divider at its left limit",
              self.divider_x)
        left = self.divider_x()
        x, y = self.divider().middle
        self.hands.drag((x, y), (x + 900, y))
        until(lambda: self.divider_x() > middle + 190, "the divider at its right limit",
              self.divider_x)

        self.assertAlmostEqual(self.divider_x() - middle, middle - left, delta=4)

    def test_drag_of_less_than_ten_points_moves_nothing(self):
        self.start_pair()
        middle = self.divider_x()
        x, y = self.divider().middle

        self.hands.drag((x, y), (x + 8, y))
        self.hands.drag((x, y), (x + 60, y))

        self.wait_for_divider(middle + 60, "60 points to the right")

    def test_new_pair_begins_in_the_middle(self):
        self.start_pair()
        middle = self.divider_x()
        x, y = self.divider().middle
        self.hands.drag((x, y), (x + 120, y))
        self.wait_for_divider(middle + 120, "120 points to the right")

        self.windows.press("push button", "Close side by side")
        self.windows.wait_until_gone("separator", DIVIDER)
        self.app.action("toggleSideBySide")

        self.wait_for_divider(middle, "in the middle")

    def test_divider_moves_by_the_arrow_keys(self):
        self.start_pair()
        middle = self.divider_x()
        self.hands.press("F6", "F6", "F6")  # past the address and the column
        until(lambda: self.divider().is_focused, "the keyboard on the divider",
              self.windows.focused)

        self.hands.press("Right", "Right")
        until(lambda: self.divider_x() > middle + 50, "the divider further right",
              self.divider_x)
        self.hands.press("Left", "Left", "Left")
        until(lambda: self.divider_x() < middle - 25, "the divider further left", self.divider_x)

    def test_click_into_a_page_brings_its_tab_to_the_front(self):
        self.start_pair()
        self.wait_for_selected("left")
        x, y = self.divider().middle

        self.hands.click(at=(x + 200, y))
        self.server.wait_for_report("right-clicked")
        self.wait_for_selected("right")
        self.hands.click(at=(x - 200, y))
        self.server.wait_for_report("left-clicked")
        self.wait_for_selected("left")

    def header(self, name):
        """The button in a pane's header: the row in the column is a list item's."""
        right_of_column = 240
        return until(lambda: [node for node in self.windows.nodes("push button", name)
                              if node.box[0] > right_of_column], f"the header {name!r}")[0]

    def test_click_on_a_header_brings_its_tab_to_the_front(self):
        self.start_pair()

        self.header("right").press()
        self.wait_for_selected("right")
        self.header("left").press()
        self.wait_for_selected("left")

    def test_closing_one_of_a_pair_leaves_the_other(self):
        self.start_pair()

        self.app.action("closeTab")

        self.windows.wait_until_gone("separator", DIVIDER)
        self.wait_for_selected("right")
        self.assertEqual(self.server.asked("/right"), 1)

    def test_narrow_window_keeps_both_pages_usable(self):
        self.start_pair()
        self.hands.shrink()
        until(lambda: self.divider_x() < 640, "the narrow window", self.divider_x)
        x, y = self.divider().middle

        self.hands.drag((x, y), (x - 400, y))

        until(lambda: abs(self.divider_x() - (10 + 228 + 10 + 260 + 7)) <= 2,
              "the first pane at 260 points", self.divider_x)


class NewTabPageTest(BrowserTest):
    def field(self):
        return self.windows.find("text", FIELD)

    def test_field_takes_what_is_typed_and_opens_it_in_its_tab(self):
        page = self.server.page("/typed", "Typed")
        self.app.start()
        self.wait_for_focus(FIELD)

        self.hands.type(page)
        self.hands.press("Return")

        self.wait_for_visit(page)
        self.wait_for_tabs("Typed")
        self.windows.wait_until_gone("text", FIELD)

    def test_empty_field_leads_nowhere(self):
        self.app.start()
        self.wait_for_focus(FIELD)

        self.hands.press("Return")
        self.hands.press("ctrl+t")

        self.wait_for_tabs("New tab", "New tab")
        self.assertEqual(self.saved.visits(), [])

    def test_text_of_one_empty_tab_is_not_that_of_another(self):
        self.app.start()
        self.wait_for_focus(FIELD)
        self.hands.type("half")
        until_equal(lambda: self.field().text(), "half", "the field")

        self.app.action("newEmptyTab")

        until_equal(lambda: self.field().text(), "", "the field of the other tab")

    def test_sites_visited_last_lead_back(self):
        page = self.server.page("/site", "Site")
        other = self.server.url("/site", "other.localhost")
        self.start_and_open(other, page)
        self.app.action("newEmptyTab")

        self.windows.press("push button", "other.localhost")

        self.wait_for_visit(other)
        self.wait_for_tabs("New tab", "Site", "Site", "Site")

    def test_private_window_shows_no_sites_of_others(self):
        page = self.server.page("/site", "Site")
        self.start_and_open(page)
        self.app.action("newEmptyTab")
        self.windows.find("push button", "127.0.0.1", "Orvu")

        self.open_private_window()

        self.windows.find("text", FIELD, PRIVATE)
        self.assertEqual(self.windows.nodes("push button", "127.0.0.1", PRIVATE), [])


class MenuTest(BrowserTest):
    def items(self):
        return [node.name for node in self.windows.nodes("menu item")]

    def test_menu_has_its_items_and_the_main_menu(self):
        self.start_and_open(self.server.page("/page"))

        self.open_more_menu()

        items = self.items()
        wanted = ["New Tab", "New Private Window", "Reopen Closed Tab", "Side by Side", "Reader",
                  "History", "Bookmarks", "Recently Closed", "Zoom In", "Zoom Out", "Actual Size", "Copy Link",
                  "Open in Default Browser", "Orvu",
                  "File", "Edit", "View", "Window"]
        self.assertEqual([each for each in items if each in wanted], wanted)

    def test_empty_tab_has_no_link_to_copy(self):
        self.app.start()

        self.open_more_menu()

        self.assertNotIn("Copy Link", self.items())

    def test_zoom_out_goes_below_the_limit_of_the_keys(self):
        self.app.start()
        page = self.server.script_page("/wide", TELL)
        self.open(page)
        widths = lambda: [int(each) for each in self.server.reports("wide-width-")]  # noqa: E731
        plain = until(widths, "the page's width")[-1]

        for _ in range(7):
            self.app.action("zoomOutFurther")

        until(lambda: abs(widths()[-1] - plain / 0.3) <= 5, "three tenths", widths)

    def test_link_is_copied_and_can_be_pasted(self):
        page = self.server.page("/copied")
        self.start_and_open(page)

        self.app.action("copyLink")
        self.app.action("newTab")
        self.hands.press("ctrl+v")

        self.notch.wait_for_text(page)


class BarTest(BrowserTest):
    def test_double_click_on_the_bar_fills_the_screen(self):
        self.app.start()
        plain = self.hands.size()

        self.hands.double_click((250, 12))

        until(lambda: self.hands.size()[0] > plain[0], "a window that fills the screen",
              self.hands.size)

    def test_double_click_on_the_bar_gives_the_screen_back(self):
        self.save_beforehand({"OrvuWindow": "1000 700 maximized"})
        self.app.start()
        until(lambda: self.hands.size()[0] > 1000, "a window that fills the screen",
              self.hands.size)

        self.hands.double_click((250, 12))

        until_equal(self.hands.size, (1000, 700), "the window's size")

    def test_key_moves_among_address_column_and_page(self):
        self.start_and_open(self.server.page("/page"))

        self.hands.press("F6")
        self.notch.wait_until_open()
        self.hands.press("F6")
        self.notch.wait_until_closed()
        until(self.windows.focused, "the keyboard in the column")
        self.hands.press("shift+F6")
        self.notch.wait_until_open()
