"""What a start with many saved tabs loads first, and that it takes keys at once."""

import json

from harness.case import BrowserTest
from harness.wait import until, until_equal
from harness.x11 import xdotool


class StartTest(BrowserTest):
    def save_session(self, *tabs):
        """Leaves saved tabs: an address, or an address and whether it is pinned."""
        self.save_beforehand({"browserSession": json.dumps(
            [{"url": url, "pinned": pinned} for url, pinned in tabs]).encode()})
        self.server.forget()

    def slow_pages(self, *names):
        """Pages that come when they are let; gives addresses and events by name."""
        pages = {name: self.server.slow(f"/{name}") for name in names}
        return ({name: url for name, (url, _) in pages.items()},
                {name: gate for name, (_, gate) in pages.items()})

    def pages_asked_for(self):
        return [path for path in self.server.asked_paths() if path != "/favicon.ico"]

    def wait_for_pages(self, *names):
        until_equal(lambda: sorted(self.pages_asked_for()), sorted(f"/{name}" for name in names),
                    "the pages that were asked for")

    def test_the_front_page_comes_first_then_the_pinned_ones_two_at_a_time(self):
        front = self.server.page("/front")
        urls, gates = self.slow_pages(*"abcd")
        self.save_session((front, False), (urls["c"], False), (urls["a"], True),
                          (urls["d"], False), (urls["b"], True))

        self.app.start()

        self.wait_for_pages("front", "a", "b")
        self.assertEqual(self.pages_asked_for()[0], "/front")
        gates["a"].set()
        self.wait_for_pages("front", "a", "b", "c")
        gates["c"].set()
        self.wait_for_pages("front", "a", "b", "c", "d")

    def test_a_tab_that_waits_shows_its_address_and_no_ring(self):
        front = self.server.page("/front")
        urls, _ = self.slow_pages(*"abc")
        self.save_session((front, False), *((url, False) for url in urls.values()))

        self.app.start()
        self.wait_for_pages("front", "a", "b")

        self.assertEqual(self.saved.session(), [front, *urls.values()])
        until_equal(lambda: self.windows.tabs()[1:], ["127.0.0.1"] * 3, "the tabs that wait")

    def test_a_tab_that_is_selected_starts_at_once(self):
        urls, gates = self.slow_pages("front", *"abcd")
        self.save_session(*((url, False) for url in urls.values()))
        self.app.start()
        self.wait_for_pages("front")

        self.app.action("selectTab5")

        self.server.wait_for("/d")
        self.assertEqual(self.server.asked("/c"), 0)
        for gate in gates.values():
            gate.set()
        self.wait_for_pages("front", *"abcd")

    def test_all_of_twenty_tabs_load(self):
        urls = self.server.pages(*[f"/page{number}" for number in range(20)])
        self.save_session(*((url, number % 5 == 4) for number, url in enumerate(urls)))

        self.app.start()

        self.server.wait_for(*[f"/page{number}" for number in range(20)])
        until_equal(lambda: sorted(self.windows.tabs()),
                    sorted(f"page{number}" for number in range(20)), "the tabs with their titles")
        self.assertEqual(self.saved.session(), urls)

    def test_keys_that_are_typed_early_arrive(self):
        urls = self.server.pages(*[f"/page{number}" for number in range(20)])
        self.save_session(*((url, False) for url in urls))
        text = "all that is typed while twenty tabs come back"

        self.app.start(window=False)
        until(lambda: xdotool("search", "--onlyvisible", "--pid", self.app.pid, "--name", "^Orvu$"),
              "the window")
        until(lambda: xdotool("getactivewindow", "getwindowname") == ["Orvu"], "the focus")
        self.hands.go_on("ctrl+l")
        self.hands.type_on(text)

        self.notch.wait_for_text(text)
        self.server.wait_for(*[f"/page{number}" for number in range(20)])
        self.assertEqual(self.notch.text(), text)
