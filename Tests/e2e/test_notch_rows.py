"""The candidates under the notch's field, and where each leads."""

import re

from harness.case import BrowserTest
from harness.suggestions import results_page
from harness.wait import until, until_equal

TAB, BOOKMARK, SEARCHED = "Switch to tab", "Bookmark", "Searched before"


class RowsTest(BrowserTest):
    trusts_test_authority = True

    def start_at(self, **sites):
        """Opens a page of each host, with its title; gives their addresses."""
        urls = [self.server.url(self.path(host, title), f"{host}.localhost")
                for host, title in sites.items()]
        self.start_and_open(*urls)
        return urls

    def path(self, host, title):
        self.server.page(f"/{host}", title)
        return f"/{host}"

    def go_down_to(self, name):
        self.notch.choose(name)
        self.hands.go_on("Return")
        self.notch.wait_until_closed()

    def close_bees(self):
        """Closes the first of two pages, which leaves the second in front."""
        self.app.action("selectTab2")
        self.app.action("closeTab")
        self.wait_for_tabs("New tab", "Departures")
        self.wait_for_selected("Departures")

    def row(self, pattern):
        """The one candidate whose name is like that."""
        found = until(lambda: [name for name in self.notch.rows() if re.fullmatch(pattern, name)],
                      f"a candidate like {pattern!r}", self.notch.rows)
        self.assertEqual(len(found), 1, found)
        return found[0]

    def test_open_tab_is_brought_to_the_front_and_not_loaded_again(self):
        self.start_at(bees="On bees", trains="Departures")
        self.notch.write("on be")

        self.go_down_to(f"On bees, bees.localhost, {TAB}")

        self.wait_for_selected("On bees")
        self.assertEqual([self.server.asked("/bees"), self.server.asked("/trains")], [1, 1])
        self.wait_for_tabs("New tab", "On bees", "Departures")

    def test_click_on_a_row_chooses_it(self):
        self.start_at(bees="On bees", trains="Departures")
        self.notch.write("on be")
        name = f"On bees, bees.localhost, {TAB}"
        self.notch.wait_for_row(name)

        self.click_on("list item", name)

        self.wait_for_selected("On bees")
        self.notch.wait_until_closed()

    def test_tab_in_front_is_not_offered(self):
        self.start_at(bees="On bees")

        self.notch.write("on be")

        self.row(r"On bees, bees\.localhost, \d+:\d\d.*")
        self.assertEqual([name for name in self.notch.rows() if name.endswith(TAB)], [])

    def test_bookmark_loads_in_the_tab_in_front(self):
        bees, trains = self.start_at(bees="On bees", trains="Departures")
        self.app.action("selectTab2")
        self.bookmark_page()
        self.assertEqual(self.saved.bookmarks(), [bees])
        self.close_bees()
        self.notch.write("on be")

        self.go_down_to(f"On bees, bees.localhost, {BOOKMARK}")

        self.wait_for_visit(bees)
        self.wait_for_session(bees)
        self.assertEqual(self.saved.visited(), [bees, trains, bees])

    def test_visit_loads_in_the_tab_in_front(self):
        bees, trains = self.start_at(bees="On bees", trains="Departures")
        self.close_bees()
        self.notch.write("on be")

        self.go_down_to(self.row(r"On bees, bees\.localhost, \d+:\d\d.*"))

        self.wait_for_visit(bees)
        self.wait_for_session(bees)
        self.assertEqual(self.saved.visited(), [bees, trains, bees])

    def test_past_search_is_searched_again(self):
        google = results_page(self.proxy)
        self.app.start()
        self.notch.go_to("knife sharpening")
        self.wait_for_visit("https://www.google.com/search?q=knife%20sharpening")
        google.forget()
        self.notch.write("kni")

        self.go_down_to(f"knife sharpening, {SEARCHED}")

        google.wait_for("/search")
        self.assertEqual(google.requests_for("/search")[0].query, [("q", "knife sharpening")])

    def test_past_search_behind_a_bang_goes_to_the_site_of_the_bang(self):
        results_page(self.proxy)
        wikipedia = self.proxy.site("en.wikipedia.org")
        wikipedia.page("/w/index.php", "Wikipedia")
        self.app.start()
        self.notch.go_to("knife")
        self.wait_for_visit("https://www.google.com/search?q=knife")
        self.notch.write("!w kni")

        self.go_down_to(f"knife, {SEARCHED}")

        wikipedia.wait_for("/w/index.php")
        self.assertEqual(wikipedia.requests_for("/w/index.php")[0].query, [("search", "knife")])

    def test_empty_field_offers_what_was_visited_earlier_today(self):
        self.start_at(bees="On bees", trains="Departures")

        self.hands.press("ctrl+t")
        self.notch.wait_until_open()

        until_equal(lambda: [name.split(",")[0] for name in self.notch.rows()],
                    ["Departures", "On bees"], "the candidates")
        self.assertIn("EARLIER TODAY", [label.upper() for label in self.notch.labels()])

    def test_empty_field_without_any_past_offers_nothing(self):
        self.app.start()

        self.notch.open()

        self.assertEqual(self.notch.rows(), [])

    def test_sections_stand_in_their_order_with_a_heading_each(self):
        bees, _ = self.start_at(bees="On bees", trains="Departures")
        self.app.action("selectTab2")
        self.bookmark_page()
        self.app.action("selectTab3")
        self.wait_for_selected("Departures")

        self.notch.write("bees")

        until(lambda: len(self.notch.rows()) == 3, "three candidates", self.notch.rows)
        self.assertEqual([name.rsplit(", ")[-1] for name in self.notch.rows()][:2],
                         [TAB, BOOKMARK])
        known = {"SEARCHES", "OPEN TABS", "BOOKMARKS", "HISTORY", "EARLIER TODAY"}
        headings = [label.upper() for label in self.notch.labels() if label.upper() in known]
        self.assertEqual(headings, ["OPEN TABS", "BOOKMARKS", "HISTORY"])

    def test_down_and_up_stop_at_their_ends(self):
        self.start_at(bees="On bees", bread="Bread")
        self.notch.write("localhost")
        until(lambda: len(self.notch.rows()) == 3, "three candidates", self.notch.rows)
        first, *_, last = self.notch.rows()

        self.assertEqual(self.notch.chosen(), [])
        self.hands.go_on("Up", "Down")
        until_equal(self.notch.chosen, [first], "the chosen candidate")
        self.hands.go_on(*["Down"] * 5)
        until_equal(self.notch.chosen, [last], "the chosen candidate")
        self.hands.go_on("Up", "Up", "Up", "Up")
        until_equal(self.notch.chosen, [], "the chosen candidate")

    def test_typing_drops_the_choice(self):
        self.start_at(bees="On bees", bread="Bread")
        self.notch.write("b")
        self.hands.go_on("Down")
        until(self.notch.chosen, "a chosen candidate", self.notch.rows)

        self.hands.type_on("r")

        self.notch.wait_for_text("br")
        until_equal(self.notch.chosen, [], "the chosen candidate")
