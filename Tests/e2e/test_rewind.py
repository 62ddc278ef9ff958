"""The time line of the day below the back button."""

import itertools
import json
import time
import uuid

from harness.case import BACK, PRIVATE, BrowserTest
from harness.server import TELLS_CLICKS, TELLS_KEYS
from harness.wait import until, until_equal

LATEST = "Latest visits"
DOTS = "Visits of today"
APPLE_EPOCH = 978307200  # seconds from 1970 to 2001


def title_of(row):
    return row.name.rsplit(", ", 1)[0]


class RewindTest(BrowserTest):
    def start_with(self, *names):
        self.urls = self.server.pages(*(f"/{name}" for name in names))
        self.start_with_only(*self.urls)
        self.app.action("selectTab9")
        self.wait_for_selected(names[-1])

    def is_open(self, window="Orvu"):
        return bool(self.windows.nodes("list", LATEST, window))

    def wait_until_open(self):
        self.windows.find("list", LATEST, "Orvu")

    def wait_until_closed(self):
        self.windows.wait_until_gone("list", LATEST, "Orvu")

    def wait_for_newest(self):
        until(lambda: self.rows()[0].is_focused, "the newest visit to have the keyboard")

    def rows(self):
        return [item for rows in self.windows.nodes("list", LATEST) for item in rows.walk()
                if item.role == "list item"]

    def titles(self):
        return [title_of(row) for row in self.rows()]

    def hovered(self):
        return [title_of(row) for row in self.rows() if row.is_selected]

    def hover_back(self):
        self.hands.hover(self.windows.find("push button", BACK).middle)

    def click(self, node, right, title):
        """Clicks on something in the time line, so far from its left end, that belongs to the visit
        of that title."""
        content = self.windows.find("panel", "Rewind today")
        boxes = []

        def stands():
            """It has just opened, and may still be on its way to its place."""
            boxes.append((content.box, node.box))
            return boxes[-1] if boxes[-2:-1] == boxes[-1:] else None

        until(stands, "the time line to stand still", lambda: boxes[-1:])
        left, top, _, height = node.box
        moves = itertools.count()

        def hovered():
            self.hands.hover_in_popover(content, (left - content.box[0] + right + next(moves) % 2,
                                                  top - content.box[1] + height // 2))
            return self.hovered()
        until_equal(hovered, [title], "the hovered visit")
        self.hands.click_here()

    def test_the_pointer_on_the_back_button_opens_it_even_while_there_is_no_way_back(self):
        self.start_with("a", "b", "c")
        self.assertFalse(self.windows.find("push button", BACK).is_sensitive)
        self.assertFalse(self.is_open())

        self.hover_back()

        self.wait_until_open()
        self.assertEqual(self.titles(), ["c", "b", "a"])
        self.assertEqual(len(self.windows.nodes("slider", DOTS)), 1)
        self.windows.find("label", "REWIND TODAY")

    def test_six_visits_have_five_rows(self):
        self.start_with("a", "b", "c", "d", "e", "f")

        self.hover_back()

        self.wait_until_open()
        self.assertEqual(self.titles(), ["f", "e", "d", "c", "b"])

    def test_it_takes_neither_pointer_nor_keyboard(self):
        self.server.script_page("/typed", TELLS_KEYS + TELLS_CLICKS)
        self.start_with("a", "b")
        self.open(self.server.url("/typed"))
        self.hands.click()
        self.server.wait_for_report("click")
        self.server.forget()

        self.hover_back()
        self.wait_until_open()
        self.hands.go_on("x")
        self.server.wait_for_report("key-x")
        self.assertTrue(self.is_open())
        self.hands.click(at=(900, 700))

        self.server.wait_for_report("click")
        self.wait_until_closed()

    def test_the_pointers_leaving_does_not_close_it_and_escape_does(self):
        self.start_with("a", "b")
        self.hover_back()
        self.wait_until_open()

        self.hands.hover((900, 700))
        self.windows.find("push button", "More")
        self.assertTrue(self.is_open())
        self.hands.go_on("Escape")

        self.wait_until_closed()

    def test_a_click_on_the_back_button_goes_back_and_closes_it(self):
        self.start_with("a")
        self.server.link_page("/link", "/next")
        self.server.page("/next")
        self.open(self.server.url("/link"))
        self.hands.click()
        self.wait_for_visit(self.server.url("/next"))
        until(lambda: self.windows.find("push button", BACK).is_sensitive, "a way back")
        self.hover_back()
        self.wait_until_open()

        self.click_on("push button", BACK)

        self.wait_for_selected("link")
        self.wait_until_closed()

    def test_a_row_goes_back_to_its_visit(self):
        self.start_with("a", "b", "c")
        self.hover_back()
        self.wait_until_open()

        self.windows.press("list item", self.rows()[2].name)

        self.wait_for_selected("a")
        self.wait_for_visit(self.urls[0])
        self.wait_until_closed()

    def test_a_click_with_the_pointer_goes_back(self):
        self.start_with("a", "b", "c")
        self.hover_back()
        self.wait_until_open()
        row = self.rows()[1]

        self.click(row, row.box[2] // 2, "b")

        self.wait_for_selected("b")
        self.wait_until_closed()

    def test_a_dot_goes_back_to_its_visit(self):
        self.start_with("a", "b", "c")
        self.hover_back()
        self.wait_until_open()

        self.click(self.windows.find("slider", DOTS), 5, "a")

        self.wait_for_selected("a")
        self.wait_until_closed()

    def test_keys_open_it_go_through_it_and_choose(self):
        self.start_with("a", "b", "c")

        self.hands.press("ctrl+shift+h")
        self.wait_until_open()
        self.wait_for_newest()
        self.hands.go_on("Tab", "Return")

        self.wait_for_selected("b")
        self.wait_until_closed()

    def test_arrow_keys_go_through_the_dots(self):
        self.start_with("a", "b", "c")
        self.hands.press("ctrl+shift+bracketleft")
        self.wait_until_open()
        self.wait_for_newest()

        self.hands.go_on("shift+Tab")
        until(lambda: self.windows.find("slider", DOTS).is_focused, "the dots' keyboard")
        self.hands.go_on("Home", "Right", "Return")

        self.wait_for_selected("b")
        self.wait_until_closed()

    def test_escape_gives_the_keyboard_back_to_the_page(self):
        self.server.script_page("/typed", TELLS_KEYS)
        self.start_with("a")
        self.open(self.server.url("/typed"))
        self.app.action("rewind")
        self.wait_until_open()
        self.wait_for_newest()

        self.hands.go_on("Escape")
        self.wait_until_closed()
        self.hands.go_on("x")

        self.server.wait_for_report("key-x")

    def test_a_new_visit_joins_it_while_it_is_open(self):
        self.start_with("a", "b")
        self.hover_back()
        self.wait_until_open()

        self.open(self.server.page("/later"))

        until_equal(self.titles, ["later", "b", "a"], "the latest visits")

    def test_another_window_in_front_closes_it(self):
        self.start_with("a", "b")
        self.hover_back()
        self.wait_until_open()

        self.app.app_action("newPrivateWindow")

        self.wait_until_closed()

    def test_a_list_of_the_page_that_closes_by_key_does_not_open_it(self):
        """The pointer, which was over the list, seems to come to where it never was."""
        visited = self.server.page("/visited")
        options = "".join(f"<option>{number}" for number in range(12))
        page = self.server.page("/page", body="<style>select { position: absolute; left: 100px;"
                                f" top: 100px; width: 300px }}</style><select>{options}</select>")
        self.start_and_open(visited, page)
        self.hands.click(at=(500, 175))  # the list opens below
        popup = until(lambda: [each for each in self.hands.windows("Orvu")
                               if each != self.hands.window("Orvu")], "the list on the display")[-1]
        self.hands.move_in(popup, (98, 30))

        for key in ("Down", "Return"):
            self.hands.go_on(key)
        until_equal(lambda: len(self.hands.windows("Orvu")), 1, "the windows on the display")
        self.hands.press("ctrl+t")
        self.wait_for_selected("New tab")

        self.assertFalse(self.is_open())

    def test_a_private_window_and_a_day_without_visits_have_none(self):
        self.start_with("a")
        self.open_private_window()
        back = self.windows.find("push button", BACK, PRIVATE)
        self.hands.hover(back.middle, title=PRIVATE)

        self.app.action("rewind", window=2)

        self.assertFalse(self.is_open(PRIVATE))

    def test_visits_of_yesterday_are_not_shown(self):
        self.start_with("today")
        self.app.quit()
        old = {"id": str(uuid.uuid4()).upper(), "url": self.server.url("/old"), "title": "old",
               "date": time.time() - APPLE_EPOCH - 86400 - 60}
        visits = [old, *self.saved.document("browserVisits")]
        self.saved.put({"browserVisits": json.dumps(visits).encode()})
        self.app.start()
        self.wait_for_selected("today")

        self.app.action("rewind")

        self.wait_until_open()
        self.assertNotIn("old", self.titles())
