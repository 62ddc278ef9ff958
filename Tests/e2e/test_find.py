"""Finding a text in the page: the bar, its keys and its buttons."""

from harness import articles
from harness.case import BrowserTest
from harness.server import TELLS_KEYS
from harness.wait import until, until_equal

FIELD = "Find in page"
SAYS_WHERE = """
document.addEventListener('selectionchange', () => {
    const selection = getSelection();
    if (!selection.rangeCount || selection.isCollapsed) return;
    fetch('/report/at-' + selection.getRangeAt(0).startContainer.parentElement.id);
});
addEventListener('scroll', () => fetch('/report/scrolled'), {once: true});
"""
FISH = ("<p id=one>One fish</p><p id=two>two FISH</p><div style='height:3000px'></div>"
        "<p id=three>red fish</p>")


class FindTest(BrowserTest):
    def start(self):
        self.server.script_page("/fish", SAYS_WHERE + TELLS_KEYS, FISH)
        self.start_with_only(self.server.url("/fish"))
        self.wait_for_selected("fish")

    def start_in_reader(self, html):
        """Starts with the article of a page; gives its text."""
        self.start_and_open(articles.serve(self.server, "/story", html))
        self.app.action("toggleReader")
        return self.windows.find("text", articles.TITLE)

    def fields(self):
        return self.windows.nodes("text", FIELD)

    def open_bar(self):
        self.hands.press("ctrl+f")
        self.wait_for_field()

    def wait_for_field(self):
        until(lambda: [node for node in self.fields() if node.is_focused],
              "the field to have the keyboard", lambda: self.windows.nodes())

    def wait_until_closed(self):
        self.windows.wait_until_gone("text", FIELD)

    def wait_for_status(self, *wanted):
        until_equal(self.status, list(wanted), "what the bar says")

    def status(self):
        return [node.name for node in self.windows.nodes()
                if node.name in ("Found", "No matches")]

    def places(self):
        """The paragraphs that stood out, in order."""
        return self.server.reports("at-")

    def wait_for_place(self, place):
        until(lambda: self.places()[-1:] == [place], f"a match in {place!r}", self.places)

    def test_typing_finds_and_return_goes_on_and_round(self):
        self.start()
        self.open_bar()
        self.assertEqual(self.status(), [])

        self.hands.type_on("fish")
        self.wait_for_status("Found")
        self.wait_for_place("one")
        self.hands.go_on("Return")
        self.wait_for_place("two")
        self.hands.go_on("Return")
        self.wait_for_place("three")
        self.server.wait_for_report("scrolled")
        self.hands.go_on("Return")
        self.wait_for_place("one")

    def test_shift_return_and_the_keys_for_the_next_match_go_both_ways(self):
        self.start()
        self.open_bar()
        self.hands.type_on("fish")
        self.wait_for_place("one")

        for key, place in (("shift+Return", "three"), ("F3", "one"), ("ctrl+g", "two"),
                           ("shift+F3", "one"), ("ctrl+shift+g", "three")):
            self.hands.go_on(key)
            self.wait_for_place(place)

    def test_buttons_go_both_ways_and_the_keyboard_stays_in_the_field(self):
        self.start()
        self.open_bar()
        self.hands.type_on("fish")
        self.wait_for_place("one")

        self.click_on("push button", "Next match")
        self.wait_for_place("two")
        self.click_on("push button", "Previous match")
        self.wait_for_place("one")
        self.wait_for_field()
        self.click_on("push button", "Close find")
        self.wait_until_closed()

    def test_no_match_is_said_and_each_change_searches_again(self):
        self.start()
        self.open_bar()

        self.hands.type_on("fishx")
        self.wait_for_status("No matches")
        self.hands.go_on("BackSpace")
        self.wait_for_status("Found")
        self.hands.go_on("ctrl+a", "BackSpace")
        self.wait_for_status()

    def test_escape_in_the_field_closes_it_and_the_page_has_the_keyboard(self):
        self.start()
        self.open_bar()
        self.hands.type_on("fish")

        self.hands.go_on("Escape")
        self.wait_until_closed()
        self.hands.go_on("x")

        self.server.wait_for_report("key-x")
        self.assertNotIn("key-Escape", self.server.reports())

    def test_escape_in_the_page_closes_it_as_well(self):
        self.start()
        self.open_bar()
        self.hands.click()
        until(lambda: not [node for node in self.fields() if node.is_focused],
              "the page to have the keyboard")

        self.hands.go_on("Escape")

        self.wait_until_closed()

    def test_escape_in_the_open_notch_closes_both(self):
        self.start()
        self.open_bar()
        self.notch.open()
        self.assertTrue(self.fields())

        self.hands.go_on("Escape")

        self.notch.wait_until_closed()
        self.wait_until_closed()

    def test_it_opens_empty_each_time_and_ctrl_f_again_selects_the_text(self):
        self.start()
        self.open_bar()
        self.hands.type_on("red")
        self.wait_for_place("three")
        self.hands.press("ctrl+f")
        self.hands.type_on("two")
        self.wait_for_place("two")
        self.hands.go_on("Escape")
        self.wait_until_closed()

        self.open_bar()

        self.assertEqual(self.fields()[0].text(), "")
        self.assertEqual(self.status(), [])

    def test_the_menu_opens_it(self):
        self.start()
        self.click_on("push button", "More")
        until(lambda: self.windows.nodes(None, "Find in Page…"), "the menu's item")
        self.hands.go_on("Escape")

        self.app.action("find")

        self.wait_for_field()

    def test_another_tab_is_searched_from_the_next_change_on(self):
        self.start()
        self.open(self.server.page("/birds", body="<p>A bird, two birds</p>"))
        self.app.action("selectTab1")
        self.wait_for_selected("fish")
        self.open_bar()
        self.hands.type_on("fish")
        self.wait_for_status("Found")

        self.app.action("selectTab2")
        self.wait_for_selected("birds")
        self.assertEqual(self.status(), ["Found"])
        self.windows.press("push button", "Next match")
        self.wait_for_status("No matches")
        self.app.action("selectTab1")
        self.windows.press("push button", "Next match")
        self.wait_for_status("Found")

    def test_side_by_side_it_does_not_show_and_waits_for_the_single_page(self):
        self.start()
        self.open(self.server.page("/birds"))
        self.app.action("toggleSideBySide")
        until(lambda: self.windows.nodes("push button", "Close side by side"), "the pair")

        self.hands.press("ctrl+f")
        self.app.action("toggleSideBySide")

        until(self.fields, "the bar over the single page")

    def test_an_empty_tab_has_nothing_to_find(self):
        self.start()
        self.app.action("newEmptyTab")
        self.open_bar()

        self.hands.type_on("fish")

        self.wait_for_status("No matches")

    def test_over_the_reader_it_searches_the_article_and_goes_round(self):
        text = self.start_in_reader("<nav>Harbour weather</nav>" + articles.STORY)
        self.open_bar()

        self.hands.type_on("weather")
        self.wait_for_status("Found")
        until_equal(text.selection, "weather", "what is selected")
        first = text.selected_range()
        self.hands.go_on("Return")
        self.hands.press("ctrl+f")
        self.hands.type_on("harbour")
        self.wait_for_status("No matches")
        self.hands.press("ctrl+f")
        self.hands.type_on("WEATHER")
        until_equal(text.selected_range, first, "the first match again")
        self.wait_for_status("Found")

    def test_over_the_reader_the_matches_follow_one_another(self):
        text = self.start_in_reader(articles.STORY)
        self.open_bar()
        self.hands.type_on("nobody")
        self.wait_for_status("Found")
        until_equal(text.selection, "Nobody", "what is selected")
        first = text.selected_range()

        self.hands.go_on("Return")
        until_equal(text.selection, "nobody", "what is selected")
        self.assertGreater(text.selected_range(), first)
        self.hands.go_on("Return")
        until_equal(text.selected_range, first, "the first match")
        self.hands.go_on("shift+Return")
        until_equal(text.selection, "nobody", "what is selected")
