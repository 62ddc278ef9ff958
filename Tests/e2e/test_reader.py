"""The reader: how it comes and goes, what it shows, and what is kept of it."""

import subprocess
import tempfile

from harness import articles
from harness.articles import TITLE
from harness.case import PRIVATE, BrowserTest
from harness.server import TELLS_KEYS
from harness.wait import until, until_equal

SMALLER, LARGER = "Smaller text", "Larger text"
OPENER, EXIT = "Text size and theme", "Exit Reader"
# Tells of each click and each key that reaches the page, and goes elsewhere when it is told to.
TELL = """<script>fetch('/go').then(answer => { if (answer.ok) location = '/elsewhere' });
for (const each of ['click', 'keydown', 'wheel'])
addEventListener(each, () => fetch('/report/' + each))</script>"""


class ReaderTest(BrowserTest):
    def open_story(self):
        """A window whose one page is the story."""
        self.story = articles.serve(self.server, "/story", articles.STORY + TELL)
        self.go = self.server.gate()
        self.server.answers["/go"] = self.answer_go
        self.start_with_only(self.story)
        self.wait_for_selected("Harbour Post")

    def answer_go(self, handler):
        self.go.wait()
        handler.reply(204)

    def texts(self, window=None, title=TITLE):
        return self.windows.nodes("text", title, window)

    def wait_for_reader(self, window=None, title=TITLE):
        return until(lambda: self.texts(window, title), "the reader",
                     lambda: self.windows.nodes(window=window))[0]

    def wait_for_page(self, window=None):
        until(lambda: not self.texts(window), "the page", lambda: self.windows.nodes(window=window))

    def read(self, window=1):
        self.app.action("toggleReader", window)
        return self.wait_for_reader()

    def exits(self):
        """The ways out of the reader: that of the notch, and that of the reader's own bar."""
        return sorted(self.windows.nodes("push button", EXIT), key=lambda node: node.box[1])

    def exit_of_bar(self):
        return self.exits()[-1]

    def press(self, *names, window=None):
        for name in names:
            self.windows.press("push button", name, window)

    def step(self, name, size):
        """Presses the button of a size, which then is the stored one. It must be another than
        before: a button that is pressed once more at once takes no notice."""
        self.press(name)
        self.wait_for_setting("readerSize", size)

    def wait_for_setting(self, key, value):
        until_equal(lambda: self.saved.value(key), value, key)


class ComingAndGoingTest(ReaderTest):
    def test_key_opens_the_reader_with_the_keyboard_in_it_and_ends_it(self):
        self.open_story()

        self.hands.press("ctrl+shift+r")
        self.wait_for_reader()
        until(lambda: TITLE in self.focus(), "the keyboard in the article", self.focus)
        self.hands.press("ctrl+shift+r")

        self.wait_for_page()

    def test_menu_offers_the_reader_and_the_way_out(self):
        self.open_story()
        for item, wait in (("Reader", self.wait_for_reader), (EXIT, self.wait_for_page)):
            self.windows.nodes("push button", "More")[-1].press()
            self.windows.find("menu item", item).press()
            wait()

    def test_button_of_the_notch_says_what_it_will_do(self):
        self.open_story()

        self.press("Reader")
        self.wait_for_reader()
        self.windows.wait_until_gone("push button", "Reader")
        self.exits()[0].press()

        self.wait_for_page()

    def test_empty_tab_has_no_button_and_no_reader(self):
        self.open_story()
        self.app.action("newEmptyTab")
        self.windows.wait_until_gone("push button", "Reader")

        self.app.action("toggleReader")

        self.assertEqual(self.texts(), [])

    def test_bar_of_the_reader_leads_out(self):
        self.open_story()
        self.read()

        self.exit_of_bar().press()

        self.wait_for_page()

    def test_article_is_shown_whole_and_in_its_order(self):
        self.open_story()

        text = self.read().text()

        self.assertEqual(text.split("\n")[:2], ["127.0.0.1 · 1 MIN", TITLE])
        parts = ["What the log tells", "Oil for forty nights", "Bread", "Nobody lives here",
                 "The second winter"]
        self.assertEqual(sorted(parts, key=text.index), parts)
        self.assertEqual(text.count(TITLE), 1)
        self.assertEqual(len(self.windows.nodes("document text", TITLE)), 1)

    def test_page_without_an_article_stays(self):
        self.start_and_open(self.server.page("/short"))

        self.app.action("toggleReader")
        self.hands.press("ctrl+shift+r")
        # The page answers in the order in which it was asked.
        self.app.start_again(self.server.url("/again"))
        self.server.wait_for("/again")

        self.assertEqual(self.windows.nodes("document text"), [])
        self.app.check_runs()

    def test_navigation_ends_the_reader_and_the_way_back_brings_it_again(self):
        self.open_story()
        self.read()

        self.notch.go_to(self.server.page("/other"))
        self.wait_for_page()
        self.wait_for_selected("other")
        self.app.action("goBack")

        self.wait_for_reader()

    def test_other_tabs_show_their_pages_and_the_tab_keeps_its_article(self):
        self.open_story()
        self.open(self.server.page("/other"))
        self.app.action("selectTab1")
        self.read()

        self.app.action("selectTab2")
        self.wait_for_page()
        self.app.action("selectTab1")
        self.wait_for_reader()
        self.app.action("closeTab")

        self.wait_for_page()
        self.wait_for_selected("other")

    def test_article_of_one_of_a_pair_stands_in_its_pane(self):
        self.open_story()
        self.open(self.server.page("/other"))
        self.app.action("toggleSideBySide")
        self.app.action("selectTab1")
        reader = self.read()
        divider = self.windows.find("separator", "Resize the two pages").box[0]
        self.assertGreater(reader.box[0], divider)
        self.app.action("selectTab2")
        self.wait_for_selected("other")

        self.hands.click(at=(divider + 60, 300))
        self.wait_for_selected("Harbour Post")
        self.app.action("selectTab2")
        self.wait_for_selected("other")
        self.exit_of_bar().press()

        self.wait_for_page()
        self.wait_for_selected("Harbour Post")

    def test_end_of_an_article_beside_leaves_the_keyboard_where_it_is(self):
        self.open_story()
        self.open(self.server.script_page("/typing", TELLS_KEYS))
        self.app.action("toggleSideBySide")
        self.app.action("selectTab1")
        self.read()
        self.app.action("selectTab2")
        self.wait_for_selected("typing")
        self.hands.go_on("a")
        self.server.wait_for_report("key-a")

        # The page below the article goes elsewhere by itself.
        self.server.page("/elsewhere")
        self.go.set()
        self.wait_for_page()
        self.hands.go_on("b")

        self.server.wait_for_report("key-b")
        self.wait_for_selected("typing")

    def test_parked_tab_takes_its_article_along(self):
        self.open_story()
        self.open(self.server.page("/other"))
        self.app.action("selectTab1")
        self.read()

        self.app.action("park")
        self.wait_for_page()
        self.app.action("unpark")
        self.wait_for_selected("Harbour Post")

        self.assertEqual(self.texts(), [])

    def test_private_window_leaves_no_article_behind(self):
        self.app.start()
        story = articles.serve(self.server, "/story", articles.STORY)
        self.open_privately(story, "Harbour Post")

        self.app.action("toggleReader", window=2)
        self.wait_for_reader(PRIVATE)
        self.app.action("performClose", window=2)
        until_equal(self.app.windows, [1], "the windows")
        self.app.quit()

        self.assertEqual(self.home.files_with("lamp on the island"), [])


class LookTest(ReaderTest):
    def test_sizes_end_at_their_limits_and_are_written_at_once(self):
        self.open_story()
        self.read()
        self.press(OPENER)

        for size in range(19, 27):
            self.step(LARGER, size)
        self.press(LARGER)
        self.step(SMALLER, 25)
        for size in range(24, 13, -1):
            self.step(SMALLER, size)
        self.press(SMALLER)

        self.step(LARGER, 15)

    def test_look_is_kept_over_a_new_start(self):
        self.open_story()
        self.read()
        self.press(OPENER, "night theme")
        self.wait_for_setting("readerTheme", "night")
        self.step(SMALLER, 17)
        self.app.quit()
        self.app.start()
        self.wait_for_selected("Harbour Post")

        self.read()
        self.press(OPENER)
        until(lambda: self.windows.find("push button", "night theme").is_selected, "the theme")

        self.step(SMALLER, 16)

    def test_unknown_stored_look_is_shown_and_left_by_the_first_press(self):
        self.open_story()
        self.app.quit()
        self.saved.put({"readerSize": 60.0, "readerTheme": "sepia"})
        self.app.start()
        self.wait_for_selected("Harbour Post")

        self.read()
        self.press(OPENER)
        until(lambda: self.windows.find("push button", "paper theme").is_selected, "the paper")
        self.assertEqual(self.saved.value("readerSize"), 60.0)

        self.step(SMALLER, 26)

    def test_second_window_follows(self):
        self.open_story()
        self.read()
        self.open_privately(self.story, "Harbour Post")
        self.app.action("toggleReader", window=2)
        self.wait_for_reader(PRIVATE)
        self.press(OPENER, window=PRIVATE)

        self.press(OPENER, "white theme", window="Orvu")

        until(lambda: self.windows.find("push button", "white theme", PRIVATE).is_selected,
              "the other window's theme")

    def test_controls_are_shown_and_hidden_by_their_button(self):
        self.open_story()
        self.read()
        self.assertEqual(self.windows.nodes("push button", LARGER), [])

        self.press(OPENER)
        for name in (SMALLER, LARGER, "paper theme", "white theme", "night theme"):
            self.windows.find("push button", name)
        self.press(OPENER)

        self.windows.wait_until_gone("push button", LARGER)

    def test_keyboard_reaches_the_bar(self):
        self.open_story()
        self.hands.press("ctrl+shift+r")
        self.wait_for_reader()

        self.hands.go_on("Tab", "space")

        self.windows.find("push button", LARGER)


class TextTest(ReaderTest):
    def part(self, file, box):
        """A mark of what a picture shows in a part of the window."""
        left, top, width, height = box
        crop = f"{width}x{height}+{left}+{top}"
        return subprocess.run(["convert", str(file), "-crop", crop, "-format", "%#", "info:"],
                              capture_output=True, text=True, check=True).stdout

    def look(self):
        """What the reader's text and its bar show, once nothing moves."""
        window = self.hands.window()
        left, top, width, height = self.exit_of_bar().box
        frame = 4  # around the window of a plain manager
        seen = []
        with tempfile.NamedTemporaryFile(suffix=".png") as file:
            def same():
                self.display.picture_of(window, file.name)
                # The scroll bar at the right fades by itself.
                text = self.part(file.name, (300 + frame, 100 + frame, 900, 600))
                # Without the edge, where the text shines through the bar's round end.
                bar_now = self.part(file.name, (left + frame, top + frame + 4, width - 4,
                                                height - 8))
                seen.append((text, bar_now))
                return len(seen) > 1 and seen[-2] == seen[-1]
            until(same, "the reader to come to rest", pause=0.1)
        return seen[-1]

    def other_look(self, previous):
        """What is shown if it is no longer the same text."""
        seen = self.look()
        return seen if seen[0] != previous else None

    def test_keys_scroll_the_text_under_the_bar(self):
        self.story = articles.serve(self.server, "/story", articles.long_story(60, 400))
        self.start_and_open(self.story)
        self.hands.press("ctrl+shift+r")
        self.wait_for_reader(title="A long one")
        start, bar = self.look()
        previous = start
        for key in ("Down", "Page_Down", "space", "End", "Up", "Page_Up", "shift+space"):
            self.hands.go_on(key)
            text, bar_now = until(lambda other=previous: self.other_look(other),
                                  f"another part of the text after {key}")
            self.assertEqual(bar_now, bar, key)
            previous = text

        self.hands.go_on("Home")

        until(lambda: self.look()[0] == start, "the beginning of the text")

    def test_everything_can_be_copied_at_once(self):
        self.open_story()
        self.hands.press("ctrl+shift+r")
        self.wait_for_reader()

        self.hands.go_on("ctrl+a", "ctrl+c")
        self.notch.open()
        self.hands.go_on("ctrl+a", "ctrl+v")

        until(lambda: TITLE in self.notch.text() and "The second winter" in self.notch.text(),
              "the copied text", self.notch.text)

    def test_edit_menu_copies_as_well(self):
        self.open_story()
        self.hands.press("ctrl+shift+r")
        self.wait_for_reader()

        self.app.action("selectAll")
        self.app.action("copy")
        self.notch.open()
        self.hands.go_on("ctrl+a", "ctrl+v")

        until(lambda: "The second winter" in self.notch.text(), "the copied text",
              self.notch.text)

    def test_text_can_not_be_changed(self):
        self.open_story()
        self.hands.press("ctrl+shift+r")
        before = self.wait_for_reader().text()

        self.hands.go_on("ctrl+a", "ctrl+x", "Delete", "x")
        self.app.action("cut")

        self.assertEqual(self.wait_for_reader().text(), before)

    def test_page_below_gets_neither_clicks_nor_keys(self):
        self.open_story()
        self.read()

        self.hands.click()
        self.hands.go_on("a", "Down", "Tab", "Tab", "Tab", "a")
        self.app.action("toggleReader")
        self.wait_for_page()
        self.hands.click()
        self.server.wait_for_report("click")

        self.assertEqual(self.server.reports(), ["click"])
