"""The notch by keys and clicks: how it opens and closes, what it offers, and where that leads."""

from harness.case import BrowserTest
from harness.notch import ADDRESS, EMPTY, FIELD
from harness.server import TELLS_CLICKS, TELLS_KEYS
from harness.suggestions import results_page
from harness.wait import until

ASK = "Ask Kesto “{}”"


class OpeningTest(BrowserTest):
    def start_at(self, *paths):
        self.pages = self.server.pages(*paths)
        self.start_and_open(*self.pages)

    def check_replaces_address(self):
        """The whole address is selected, so that the first letter takes its place."""
        self.notch.wait_until_open()
        self.notch.wait_for_text(self.pages[-1])
        self.hands.type_on("x")
        self.notch.wait_for_text("x")

    def test_at_rest_it_names_the_page(self):
        self.app.start()
        self.assertEqual(self.notch.resting().name, EMPTY)
        page = self.server.page("/page?words=a%20b")

        self.open(page)

        self.notch.wait_for_address(page)

    def test_closed_notch_keeps_its_field_and_rows_out_of_reach(self):
        self.start_at("/page")
        self.notch.write("page")
        self.notch.wait_for_button(ASK.format("page"))

        self.hands.go_on("Escape")

        self.notch.wait_until_closed()
        self.assertEqual(self.notch.fields(), [])
        self.assertEqual(self.windows.nodes("list", "Suggestions"), [])
        rows = [name for name in self.notch.buttons() if name.startswith("Ask Kesto “")]
        self.assertEqual(rows, [])

    def test_open_notch_takes_the_place_of_the_resting_row(self):
        self.start_at("/page")

        self.notch.open()

        self.assertEqual([name for name in self.notch.buttons() if name.startswith(ADDRESS)], [])

    def test_click_on_the_resting_notch_opens_it(self):
        self.start_at("/page")
        self.notch.wait_for_address(self.pages[0])

        self.hands.click(at=self.notch.resting().middle)

        self.check_replaces_address()

    def test_pressing_the_resting_notch_as_assistive_programs_do_opens_it(self):
        self.start_at("/page")
        self.notch.wait_for_address(self.pages[0])

        self.notch.resting().press()

        self.check_replaces_address()

    def test_control_l_opens_it(self):
        self.start_at("/page")

        self.hands.press("ctrl+l")

        self.check_replaces_address()

    def test_control_l_in_an_open_notch_begins_anew(self):
        self.start_at("/page")
        self.notch.write("half a thought")
        self.hands.go_on("shift+Tab")
        until(lambda: not self.windows.find("text", FIELD).is_focused, "the keyboard elsewhere")

        self.hands.go_on("ctrl+l")

        self.check_replaces_address()

    def test_tab_key_goes_round_in_the_open_notch(self):
        self.start_at("/page")
        self.notch.write("half a thought")
        first, last = "Search “half a thought”", "GitHub"

        for key, name in [("Tab", first), ("shift+Tab", FIELD), ("shift+Tab", last),
                          ("Tab", FIELD)]:
            self.hands.go_on(key)
            self.wait_for_focus(name)

    def test_area_key_leaves_the_open_notch_and_closes_it(self):
        self.start_at("/page")
        self.notch.write("half a thought")

        self.hands.go_on("F6")

        self.notch.wait_until_closed()
        self.wait_for_focus("New tab")

    def test_control_t_opens_it_empty_in_a_new_tab(self):
        self.start_at("/page")
        self.notch.write("left behind")
        self.hands.go_on("Escape")

        self.hands.press("ctrl+t")

        self.notch.wait_until_open()
        self.notch.wait_for_text("")
        self.wait_for_tabs("New tab", "page", "New tab")
        self.wait_for_selected("New tab")

    def test_escape_leaves_text_and_page(self):
        self.start_at("/page")
        self.notch.write("half a thought")

        self.hands.go_on("Escape")

        self.notch.wait_until_closed()
        self.notch.wait_for_address(self.pages[0])
        self.assertEqual(self.saved.session(), self.pages)
        self.assertEqual(self.server.asked("/page"), 1)

    def test_escape_gives_the_keyboard_back_to_the_page(self):
        self.start_and_open(self.server.script_page("/listening", TELLS_KEYS))
        self.hands.click()
        self.notch.write("x")
        self.hands.go_on("Escape")
        self.notch.wait_until_closed()

        self.hands.go_on("k")

        self.server.wait_for_report("key-k")
        self.assertEqual([key for key in self.server.reports("key-") if key != "Control"], ["k"])

    def test_click_beside_closes_it_and_does_not_reach_the_page(self):
        self.start_and_open(self.server.script_page("/clicked", TELLS_CLICKS))
        self.notch.open()

        self.hands.click(at=(640, 790))

        self.notch.wait_until_closed()
        self.hands.click(at=(640, 790))
        self.server.wait_for_report("click")
        self.assertEqual(self.server.reports(), ["click"])

    def test_double_click_left_of_the_resting_row_goes_to_the_bar(self):
        self.check_bar_is_hit_beside(-70)

    def test_double_click_right_of_the_resting_row_goes_to_the_bar(self):
        self.check_bar_is_hit_beside(+110)

    def check_bar_is_hit_beside(self, distance):
        self.start_at("/page")
        self.notch.wait_for_address(self.pages[0])
        width = self.hands.size()[0]

        self.hands.double_click(self.beside(distance))

        until(lambda: self.hands.size()[0] > width, "the window to fill the screen")
        self.assertFalse(self.notch.is_open())

    def beside(self, distance):
        """A place so far to the left or the right of the address, beyond the buttons there."""
        left, top, wide, high = self.notch.resting().box
        return (left + distance if distance < 0 else left + wide + distance), top + high // 2

    def test_another_tab_leaves_the_notch_open_with_its_text_selected(self):
        self.start_at("/one", "/two")
        self.notch.write("typed")

        self.hands.go_on("ctrl+1")

        self.wait_for_selected("New tab")
        self.notch.wait_for_text("typed")
        self.hands.type_on("x")
        self.notch.wait_for_text("x")


class KeysTest(BrowserTest):
    trusts_test_authority = True

    def setUp(self):
        super().setUp()
        self.google = results_page(self.proxy)
        self.example = self.proxy.site("example.org")
        self.example.page("/", "Example")
        self.app.start()

    def test_text_of_a_site_leads_there(self):
        self.notch.write("example.org")
        self.notch.wait_for_button("Go to example.org")

        self.hands.go_on("Return")

        self.wait_for_visit("https://example.org/")
        self.notch.wait_until_closed()
        self.notch.wait_for_address("https://example.org/")

    def test_words_are_searched(self):
        self.notch.write("two words")
        self.notch.wait_for_button("Search “two words”")
        self.notch.wait_for_button(ASK.format("two words"))

        self.hands.go_on("Return")

        self.wait_for_visit("https://www.google.com/search?q=two%20words")

    def test_primary_row_can_be_clicked(self):
        self.notch.write("two words")

        self.hands.click(at=self.notch.wait_for_button("Search “two words”").middle)

        self.wait_for_visit("https://www.google.com/search?q=two%20words")
        self.notch.wait_until_closed()

    def test_bang_searches_its_own_site(self):
        self.proxy.site("en.wikipedia.org").page("/w/index.php", "Wikipedia")

        self.notch.write("!w cats & dogs")
        self.notch.wait_for_button("Search Wikipedia for “cats & dogs”")
        self.hands.go_on("Return")

        self.wait_for_visit("https://en.wikipedia.org/w/index.php?search=cats%20%26%20dogs")

    def test_chip_searches_its_site(self):
        self.proxy.site("en.wikipedia.org").page("/w/index.php", "Wikipedia")
        self.notch.write("cats")

        self.hands.click(at=self.notch.wait_for_button("Wikipedia").middle)

        self.wait_for_visit("https://en.wikipedia.org/w/index.php?search=cats")
        self.notch.wait_until_closed()

    def test_return_in_an_empty_field_does_nothing(self):
        self.hands.press("ctrl+l")
        self.notch.wait_until_open()
        self.notch.wait_for_button(ASK.format(""))

        self.hands.go_on("Return")
        self.hands.type_on("x")

        self.notch.wait_for_text("x")
        self.assertEqual(self.saved.session(), [])

    def test_tab_and_right_complete_a_known_host_and_go_nowhere(self):
        self.notch.go_to("example.org")
        self.wait_for_visit("https://example.org/")
        for key in ("Tab", "Right"):
            with self.subTest(key):
                self.notch.write("exa")
                self.notch.wait_for_button("Go to example.org")

                self.hands.go_on(key)

                self.notch.wait_for_text("example.org")
                self.assertEqual(self.saved.visited(), ["https://example.org/"])
                self.hands.go_on("Escape")
                self.notch.wait_until_closed()

    def test_beginning_of_a_known_host_leads_to_it(self):
        self.notch.go_to("example.org")
        self.wait_for_visit("https://example.org/")
        self.example.forget()
        self.notch.write("exam")
        self.notch.wait_for_button("Go to example.org")

        self.hands.go_on("Return")

        self.example.wait_for("/")
        self.assertNotIn("CONNECT www.google.com:443", self.proxy.asked())

    def test_right_moves_the_caret_where_nothing_can_be_completed(self):
        self.notch.write("ab")

        self.hands.go_on("Left", "Right", "Left")
        self.hands.type_on("x")

        self.notch.wait_for_text("axb")

    def test_control_return_goes_nowhere(self):
        self.notch.write("what is this")

        self.hands.go_on("ctrl+Return")
        self.hands.press("ctrl+l")

        self.notch.wait_until_open()
        self.assertEqual(self.google.asked("/search"), 0)
        self.assertEqual(self.saved.session(), [])
        self.app.check_runs()
