"""The library in the place of the page: what stands in it, and that what is deleted is gone."""

import json
import time

from harness.case import PRIVATE, BrowserTest
from harness.dialogs import LEAVES, STAY, Dialogs, form_page
from harness.library import Library
from harness.wait import until, until_equal

NO_PAGES = "No pages yet. Pages you visit show up here for 30 days."
NO_BOOKMARKS = "No bookmarks yet. Press Ctrl+D, or click the star in the notch, to keep a page."
NO_CLOSED = "Tabs you close in this window show up here."
DAY = 86400
SINCE_2001 = 978307200  # seconds from 1970 to there


def visits(count, days=1):
    """So many visits of as many pages, the newest last, over some days."""
    now = time.time() - SINCE_2001
    return json.dumps([{"id": f"00000000-0000-4000-8000-{number:012d}",
                        "url": f"https://page{number}.example/", "title": f"Page {number}",
                        "date": now - (count - number) * days * DAY / count}
                       for number in range(count)]).encode()


def shown(stored):
    """Their titles as the library has them: the last day first, and each day from its morning on."""
    entries = json.loads(stored)
    return [entry["title"] for entry in
            sorted(entries, key=lambda entry: -((entry["date"] + SINCE_2001) // DAY))]


class LibraryTest(BrowserTest):
    def setUp(self):
        super().setUp()
        self.library = Library(self.windows, self.hands)

    def start_with_pages(self, *paths):
        """Starts with these pages visited, the last one in front."""
        self.start_with_only(*(self.server.page(path) for path in paths))

    def open_history(self):
        self.hands.press("ctrl+y")
        self.library.wait_until_open("History")

    def page(self, path):
        return self.server.page(path)

    # Opening and closing.

    def test_keys_open_its_sections_and_escape_goes_back_to_the_page(self):
        self.start_with_pages("/bees", "/wasps")
        self.open_history()
        self.library.wait_for_titles("bees", "wasps")
        self.assertEqual(self.library.headers(), ["Today"])
        self.hands.press("ctrl+alt+b")
        self.library.wait_until_open("Bookmarks")
        until(lambda: self.library.says(NO_BOOKMARKS), "the words of an empty list")
        self.assertEqual(self.library.section(), ["Bookmarks"])
        self.library.press("Recently closed")
        until(lambda: self.library.titles() == ["New tab"] or self.library.says(NO_CLOSED),
              "the closed tabs")
        self.hands.press("Escape")

        self.library.wait_until_closed()

    def test_the_button_at_its_foot_goes_back(self):
        self.start_with_pages("/bees")
        self.open_history()
        self.library.press("Back to the page")

        self.library.wait_until_closed()
        self.wait_until_loaded()

    def test_whatever_brings_a_page_to_the_front_closes_it(self):
        self.start_with_pages("/bees", "/wasps")
        for act in (lambda: self.hands.press("ctrl+1"), lambda: self.hands.press("ctrl+t"),
                    lambda: self.notch.go_to(self.page("/ants"))):
            self.open_history()
            act()
            self.library.wait_until_closed()

    def test_the_page_is_as_it_was(self):
        page = self.server.script_page(
            "/field", "addEventListener('keydown', event => fetch('/report/' + event.key))")
        self.start_with_only(page)
        self.open_history()
        self.hands.press("Escape")
        self.library.wait_until_closed()
        self.hands.press("x")

        self.server.wait_for_report("x")

    def test_a_page_that_goes_elsewhere_meanwhile_is_there_afterwards(self):
        other = self.page("/wasps")
        self.start_with_only(self.server.script_page(
            "/bees", f"addEventListener('message', () => location = '{other}');"
                     "setTimeout(() => postMessage(1), 1500)"))
        self.open_history()
        self.wait_for_visit(other)
        self.library.wait_for_titles("bees", "wasps")
        self.hands.press("Escape")
        self.library.wait_until_closed()

        self.wait_for_tabs("wasps")
        self.wait_until_loaded()

    def test_a_page_that_asks_before_it_is_left_is_seen(self):
        dialogs = Dialogs(self.windows, self.hands)
        self.start_with_only(self.server.url(form_page(self.server, "form")))
        self.hands.click()
        self.hands.type_on("a")
        self.server.wait_for_report("form-a")
        self.open_history()
        self.app.action("performClose")
        dialogs.wait_for("127.0.0.1", LEAVES, "What you typed here may be lost.")

        self.assertFalse(self.library.is_open())
        dialogs.press(STAY)
        dialogs.wait_until_gone()

    def test_the_key_of_the_search_bar_goes_to_its_search(self):
        self.start_with_pages("/bees")
        self.open_history()
        self.hands.press("Down")
        self.wait_for_row_focus("bees")
        self.hands.press("ctrl+f")
        until(lambda: self.library.search().is_focused, "the search to have the keyboard")
        self.hands.press("Escape")
        self.library.wait_until_closed()

        self.assertEqual(self.windows.nodes("text", "Find in page"), [])

    # Going to a page.

    def test_a_click_opens_in_this_tab_and_closes_it_in_this_window_alone(self):
        self.start_with_pages("/bees", "/wasps")
        self.app.app_action("newWindow")
        until_equal(self.app.windows, [1, 2], "the windows")
        self.app.action("showHistory", window=2)
        self.app.action("showHistory", window=1)
        until(lambda: len(self.windows.nodes("text", "Search history")) == 2, "both libraries")
        self.app.action("performClose", window=2)
        until_equal(self.app.windows, [1], "the windows")
        self.library.wait_for_titles("bees", "wasps")
        self.hands.click(at=self.library.row("wasps").middle)

        self.library.wait_until_closed()
        self.wait_for_tabs("wasps", "wasps")

    def test_a_middle_click_and_control_return_open_a_new_tab(self):
        self.start_with_pages("/bees", "/wasps")
        self.open_history()
        self.hands.click(2, at=self.library.row("bees").middle)
        self.library.wait_until_closed()
        self.wait_for_tabs("bees", "wasps", "bees")
        self.open_history()
        self.hands.press("Down", "ctrl+Return")

        self.library.wait_until_closed()
        until_equal(lambda: len(self.windows.tabs()), 4, "the number of tabs")

    # Searching, and going about by key.

    def test_the_search_finds_titles_and_addresses_in_any_case(self):
        stored = visits(30)
        self.save_beforehand({"browserVisits": stored})
        self.app.start()
        self.open_history()
        self.hands.type_on("PAGE 2")
        self.library.wait_for_titles(*(title for title in shown(stored) if "Page 2" in title))
        self.hands.press("ctrl+a")
        self.hands.type_on("page7.example")
        self.library.wait_for_titles("Page 7")
        self.hands.press("ctrl+a")
        self.hands.type_on("no such page")
        until(lambda: self.library.says(NO_PAGES), "the words of an empty list")
        self.hands.press("Escape")

        until(lambda: len(self.library.titles()) > 1, "all pages again")
        self.assertTrue(self.library.is_open())

    def test_arrows_go_about_delete_deletes_and_letters_go_to_the_search(self):
        stored = visits(200, days=0.001)
        rows = shown(stored)
        self.save_beforehand({"browserVisits": stored})
        self.app.start()
        self.open_history()
        self.hands.press("Down", "End")
        self.wait_for_row_focus(rows[-1])
        self.hands.press("Delete")
        self.wait_for_row_focus(rows[-2])
        until_equal(lambda: len(self.saved.visits()), 199, "the saved visits")
        self.hands.press("Home", "Down", "Down", "Up")
        self.wait_for_row_focus(rows[1])
        self.hands.press("Page_Down")
        self.wait_for_row_focus(rows[11])
        self.hands.type_on("ge 150")

        until_equal(lambda: self.library.search().text(), "ge 150", "the text of the search")
        self.library.wait_for_titles("Page 150")

    def wait_for_row_focus(self, title):
        until(lambda: [name for name in self.focus() if name.startswith(title + ",")],
              f"the keyboard on {title}", self.focus)

    def test_of_five_thousand_only_those_in_sight_have_rows(self):
        stored = visits(5000, days=20)
        self.save_beforehand({"browserVisits": stored})
        self.app.start()
        self.open_history()

        self.assertLess(len(self.library.rows()), 120)
        self.hands.press("Down", "End")
        self.wait_for_row_focus(shown(stored)[-1])

    # Menus, and what is deleted.

    def choose(self, row, line):
        self.hands.click(3, at=self.library.row(row).middle)
        self.windows.find("menu item", line)
        self.windows.press("menu item", line)

    def test_the_menu_of_a_visit_copies_opens_and_deletes(self):
        self.start_with_pages("/bees", "/wasps")
        self.open_history()
        self.choose("wasps", "Delete from History")
        self.library.wait_for_titles("bees")
        until_equal(self.saved.visited, [self.page("/bees")], "the saved visits")
        self.choose("bees", "Open in New Tab")

        self.library.wait_until_closed()
        self.wait_for_tabs("bees", "wasps", "bees")

    def test_a_bookmark_that_comes_while_it_is_open_shows_and_is_deleted(self):
        self.start_with_pages("/bees")
        self.hands.press("ctrl+alt+b")
        self.library.wait_until_open("Bookmarks")
        self.app.action("toggleBookmark")
        self.library.wait_for_titles("bees")
        self.choose("bees", "Delete Bookmark")

        until(lambda: self.library.says(NO_BOOKMARKS), "the words of an empty list")
        self.assertEqual(self.saved.bookmarks(), [])

    def test_history_is_cleared_after_its_question(self):
        self.start_with_pages("/bees")
        self.open_history()
        self.library.press("Clear History…")
        until(lambda: self.library.says("Clear history from"), "the question")
        self.hands.press("Escape")
        until(lambda: not self.library.says("Clear history from"), "the question to go")
        self.assertEqual(len(self.saved.visits()), 1)
        self.library.press("Clear History…")
        until(lambda: self.library.says("Clear history from"), "the question")
        self.library.press("All time")

        until(lambda: self.library.says(NO_PAGES), "the words of an empty list")
        self.assertEqual(self.saved.visits(), [])

    def test_today_alone_can_be_cleared(self):
        self.save_beforehand({"browserVisits": visits(3, days=9)})
        self.start_with_pages("/bees")
        self.open_history()
        until(lambda: "bees" in self.library.titles(), "the page of today")
        self.library.press("Clear History…")
        until(lambda: self.library.says("Clear history from"), "the question")
        self.library.press("Today")

        until(lambda: "bees" not in self.library.titles(), "the page of today to go")
        self.assertGreater(len(self.saved.visits()), 1)

    def test_closed_tabs_stand_there(self):
        self.start_with_pages("/bees", "/wasps")
        self.app.action("closeTab")
        self.wait_for_tabs("wasps")
        self.app.action("showRecentlyClosed")
        self.library.wait_until_open("Recently closed")

        until(lambda: "bees" in self.library.titles(), "the closed tab", self.library.titles)

    def test_a_private_window_keeps_its_own_and_writes_nothing(self):
        self.start_with_pages("/bees")
        self.open_privately(self.page("/secret"), "secret")
        library = Library(self.windows, self.hands, PRIVATE)
        self.app.action("showHistory", window=2)
        library.wait_until_open("History")

        self.assertNotIn("bees", library.titles())
        self.assertEqual(self.saved.visited(), [self.page("/bees")])
