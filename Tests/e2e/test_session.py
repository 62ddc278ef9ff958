"""What a window brings back after the program has ended."""

from harness.case import BrowserTest
from harness.wait import until_equal


class SessionTest(BrowserTest):
    def start_with(self, *names):
        """Starts with one tab for each name and no other."""
        self.urls = {name: self.server.page(f"/{name}", f"Page {name}") for name in names}
        self.start_with_only(*self.urls.values())
        self.wait_for_session(*self.urls.values())

    def do(self, *actions):
        for action in actions:
            self.app.action(action)

    def named(self, text):
        """The addresses of the pages with these one-letter names."""
        return [self.urls[name] for name in text]

    def restart(self):
        self.app.quit()
        self.server.forget()
        self.app.start()

    def test_tabs_pins_groups_and_shelf_come_back(self):
        self.start_with(*"abcde")
        self.do("selectTab1", "togglePin")
        self.do("selectTab2", "toggleGroup")
        self.do("selectTab3", "park")
        self.do("selectTab3", "closeTab", "reopenClosed")
        self.wait_for_visit(self.urls["d"])
        visits = self.saved.visits()

        self.restart()

        self.server.wait_for("/a", "/b", "/e", "/d")
        self.wait_for_selected("Page b")
        self.assertEqual(self.saved.session(), self.named("abed"))
        self.assertEqual(self.saved.pinned(), self.named("a"))
        self.assertEqual(self.saved.grouped(), {"127.0.0.1": self.named("b")})
        self.assertEqual(self.saved.shelf(), self.named("c"))
        self.assertEqual([url for url, _ in visits], self.named("abcded"))
        self.assertEqual(self.saved.visits()[:len(visits)], visits)
        self.assertEqual(self.server.asked("/c"), 0)
        until_equal(lambda: sorted(self.windows.tabs()),
                    ["Page a", "Page b", "Page d", "Page e"], "the list of tabs")
        self.picture("restored-session")

    def test_parked_tab_comes_back_from_the_shelf_of_a_former_run(self):
        self.start_with(*"ab")
        self.do("selectTab1", "park")
        self.restart()
        self.server.wait_for("/b")

        self.do("unpark")

        self.server.wait_for("/a")
        self.wait_for_session(*self.named("ba"))
        self.assertEqual(self.saved.shelf(), [])
        self.wait_for_selected("Page a")

    def test_removed_pins_and_groups_stay_removed(self):
        self.start_with(*"ab")
        self.do("togglePin", "toggleGroup")
        self.do("toggleGroup")
        self.restart()

        self.server.wait_for("/a", "/b")
        self.assertEqual(self.saved.pinned(), [])
        self.assertEqual(self.saved.grouped(), {})

    def test_closed_tabs_are_forgotten_with_the_program(self):
        self.start_with(*"ab")
        self.do("selectTab1", "closeTab")
        self.restart()
        self.server.wait_for("/b")

        self.do("reopenClosed")

        self.assertEqual(self.saved.session(), self.named("b"))

    def test_bookmark_comes_back(self):
        self.start_with(*"ab")
        self.do("selectTab2", "toggleBookmark")

        self.restart()

        self.assertEqual(self.saved.bookmarks(), self.named("b"))
        self.server.wait_for("/a", "/b")
        self.do("selectTab2", "toggleBookmark")
        until_equal(self.saved.bookmarks, [], "the bookmarks")

    def test_pair_of_tabs_is_not_kept_and_changes_nothing_that_is(self):
        self.start_with(*"abc")
        self.do("selectTab2", "toggleSideBySide")
        self.wait_for_selected("Page b")
        self.assertEqual(self.windows.tabs(), ["Page a", "Page b", "Page c"])

        self.do("togglePin", "togglePin")
        self.wait_for_session(*self.named("bac"))
        self.restart()

        self.server.wait_for("/a", "/b", "/c")
        self.wait_for_session(*self.named("bac"))
