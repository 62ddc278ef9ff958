"""The notch above pages and in windows that make it hard for it."""

import json

from harness.case import PRIVATE, BrowserTest
from harness.suggestions import Suggestions, results_page
from harness.wait import until, until_equal


SWALLOW = """
for (const kind of ['keydown', 'keypress', 'keyup', 'beforeinput'])
  addEventListener(kind, event => { event.preventDefault(); event.stopImmediatePropagation() },
                   true);
fetch('/report/ready');
"""

# Puts a text of its own into the clipboard, whatever is copied.
COPY = """
addEventListener('copy', event => {
  event.clipboardData.setData('text/plain', TEXT);
  event.preventDefault();
  fetch('/report/copied');
});
"""

HOSTILE = {
    "long": "a" * 100_000,
    "long word of a site": "a." * 50_000 + "b",
    "many words": "ab " * 33_000,
    "combining marks": "e" + "\u0301" * 20_000,
    "right to left": "\u202eשלום \u2067عالم\u2069" * 500,
    "emoji": "👩‍👩‍👧‍👦🏳️‍🌈" * 2_000,
    "control characters": "a\x00b\x01c\x1b[31m\x7f\u2028d\n\te",
    "lone surrogates and others": "\ufffe\uffff\U0010ffff\ufeff",
    "bang": "!w " + "\u200b" * 10_000,
}


class PagesTest(BrowserTest):
    trusts_test_authority = True

    def test_page_that_swallows_all_keys_cannot_keep_it_from_opening(self):
        results_page(self.proxy)
        page = self.server.script_page("/greedy", SWALLOW)
        self.start_and_open(page)
        self.server.wait_for_report("ready")
        self.hands.click()

        self.notch.write("two words")
        self.hands.go_on("Escape")
        self.notch.wait_until_closed()
        self.notch.write("two words")
        self.hands.go_on("Return")

        self.wait_for_visit("https://www.google.com/search?q=two%20words")

    def test_page_that_takes_the_keyboard_leaves_the_open_notch_its_text(self):
        page = self.server.script_page(
            "/grabbing", "setInterval(() => document.querySelector('input').focus(), 20);"
            "oninput = () => fetch('/report/typed')", body="<input>")
        self.start_and_open(page)

        self.notch.write("mine alone")

        self.assertEqual(self.server.reports(), [])

    def test_page_that_finishes_loading_leaves_the_typed_text(self):
        slow, gate = self.server.slow("/slow")
        self.app.start()
        self.app.start_again(slow)
        self.server.wait_for("/slow")
        self.notch.write("half a")

        gate.set()
        self.wait_for_visit(slow)
        self.hands.type_on(" thought")

        self.notch.wait_for_text("half a thought")

    def test_smallest_window_shows_all_of_it(self):
        self.start_small_with_pages()

        self.notch.write("b")
        until(lambda: len(self.notch.rows()) >= 5, "the candidates", self.notch.rows)

        for name in ("Search “b”", "Ask Kesto “b”"):
            left, _, wide, _ = self.notch.wait_for_button(name).box
            self.assertGreaterEqual(left, 0, name)
            self.assertLessEqual(left + wide, 900, name)
        for item in self.windows.nodes("list item"):
            left, _, wide, _ = item.box
            self.assertGreaterEqual(left, 0, item)
            self.assertLessEqual(left + wide, 900, item)
        self.picture("notch-900x560")

    def test_smallest_window_brings_the_chosen_candidate_into_view(self):
        Suggestions(self.proxy).suggest("b", *(f"b{number}" for number in range(6)))
        self.start_small_with_pages()
        self.notch.write("b")
        until(lambda: len(self.notch.rows()) == 11, "the candidates", self.notch.rows)

        for row in self.notch.rows():
            self.hands.go_on("Down")
            until_equal(self.notch.chosen, [row], "the chosen candidate")
            until(lambda name=row: self.is_in_view(name), f"{row!r} in view",
                  lambda name=row: self.windows.find("list item", name).box)

    def is_in_view(self, row):
        _, top, _, high = self.windows.find("list item", row).box
        return top >= 0 and top + high <= 560

    def start_small_with_pages(self):
        """Starts in the smallest window with pages whose titles have something in common."""
        names = ("bees", "bread", "books", "birds")
        for name in names:
            self.server.page(f"/{name}", f"All about {name}")
        self.start_and_open(*(self.server.url(f"/{name}", f"{name}.localhost") for name in names))
        self.hands.shrink()

    def test_private_window_has_a_notch_of_its_own(self):
        page = self.server.page("/page", "A page")
        self.app.start()
        self.notch.write("in the ordinary window")
        self.hands.go_on("Escape")
        self.notch.wait_until_closed()
        notch = self.open_private_window()

        notch.go_to(page)
        notch.wait_for_address(page)

        self.assertFalse(self.notch.is_open())
        self.assertEqual([name for name in notch.buttons() if "ookmark" in name], [])
        self.wait_for_tabs("A page", window=PRIVATE)
        notch.write("words")
        notch.wait_for_button("Ask Kesto “words”")
        self.assertEqual(self.saved.visits(), [])

    def test_bookmark_button_marks_and_unmarks_the_page(self):
        page = self.server.page("/page")
        self.app.start()
        self.assertEqual([name for name in self.notch.buttons() if "ookmark" in name], [])
        self.open(page)

        self.bookmark_page()
        self.assertEqual(self.saved.bookmarks(), [page])
        self.windows.press("push button", "Remove bookmark")
        self.windows.find("push button", "Bookmark this page")

        self.assertEqual(self.saved.bookmarks(), [])

    def test_each_window_has_its_own_notch(self):
        self.app.start()
        self.notch.open()
        self.app.app_action("newWindow")
        until_equal(self.app.windows, [1, 2], "the windows")

        self.assertEqual(len(self.notch.fields()), 1)


class FullScreenTest(BrowserTest):
    def test_notch_opens_over_an_element_that_fills_the_window(self):
        page = self.server.script_page("/full", """
            onclick = () => document.documentElement.requestFullscreen();
            document.onfullscreenchange = () => fetch('/report/' + !!document.fullscreenElement)""")
        self.app.start(page)
        self.wait_for_selected("full")
        self.hands.click()
        self.server.wait_for_report("true")
        until(lambda: not self.notch.resting_rows(), "the closed notch to go")

        self.notch.open()
        self.hands.go_on("Escape")

        until(lambda: not self.notch.is_open(), "the notch to close")
        self.assertEqual(self.server.reports(), ["true"])


class ComposingTest(BrowserTest):
    def test_return_is_the_input_methods_while_it_composes(self):
        self.app.start()
        self.notch.open()

        self.hands.go_on("ctrl+shift+u", "4", "1", "Return")

        self.notch.wait_for_text("A")
        self.hands.go_on("Escape")
        self.notch.wait_until_closed()
        self.assertNotIn("CONNECT www.google.com:443", self.proxy.asked())


class HostileTextTest(BrowserTest):
    def copy(self, text):
        """Has a page put a text into the clipboard."""
        self.server.script_page("/copying", COPY.replace("TEXT", json.dumps(text)),
                                body="<p>something to copy")
        self.server.forget()
        self.app.start_again(self.server.url("/copying"))
        self.server.wait_for("/copying")
        self.wait_for_selected("copying")
        self.hands.click()
        self.hands.press("ctrl+a", "ctrl+c")
        self.server.wait_for_report("copied")

    def test_address_that_was_broken_over_lines_is_pasted_whole(self):
        self.app.start()
        self.copy("https://a.example/long-\n  path\n")
        self.notch.open()

        self.hands.go_on("ctrl+v")

        self.notch.wait_for_text("https://a.example/long-path")

    def test_pasted_text_of_any_kind_leaves_the_notch_quick(self):
        self.app.start()
        for kind, text in HOSTILE.items():
            with self.subTest(kind):
                self.copy(text)
                self.notch.open()
                self.hands.go_on("ctrl+a", "BackSpace", "ctrl+v")
                until(lambda: self.notch.text(), "the pasted text")

                self.hands.go_on("Down", "Up", "End", "Escape")

                until(lambda: not self.notch.is_open(), "the notch to close", deadline=3)
                self.app.check_runs()
                self.app.action("closeTab")
                self.app.action("newEmptyTab")
