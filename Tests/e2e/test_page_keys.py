"""Who gets a key: the page first, or the window whatever the page does."""

from harness import articles, readme
from harness.assistant import Assistant
from harness.case import PRIVATE, BrowserTest
from harness.display import HEIGHT, WIDTH
from harness.library import Library
from harness.settings import TITLE, SettingsWindow
from harness.wait import until, until_equal
from harness.x11 import xdotool

FIND, RESIZER = "Find in page", "Resize the two pages"
LATEST = "Latest visits"
# Those that are held down with others, and one that only shows who has the keyboard.
UNCOUNTED = ("ControlLeft", "ShiftLeft", "AltLeft", "KeyQ")
# Tells each key, also one with which the page goes, and keeps it where TAKES says so.
HEARS = """
addEventListener('keydown', event => {
    if (TAKES) event.preventDefault();
    fetch('/report/key-' + event.code, {keepalive: true});
});
"""
TELLS = """
const tell = () => fetch('/report/width-' + document.title + '-' + innerWidth);
addEventListener('resize', tell);
addEventListener('pageshow', () => fetch('/report/shown-' + document.title));
tell();
"""
WHOLE = "style='position:fixed;inset:0;width:100%;height:100%;border:0'"
# What has the keyboard in a page.
PLACES = {
    "page": "<h1>Nothing</h1>",
    "field": f"<input {WHOLE}>",
    "text": f"<textarea {WHOLE}></textarea>",
    "editable": f"<div contenteditable {WHOLE}>words</div>",
    "frame": f"<iframe {WHOLE} src=/within></iframe>",
    "foreign": f"<iframe {WHOLE} src='FOREIGN'></iframe>",
}
PAGE_FIRST = {"back", "forward", "rewind: the pages of today", "find in the page",
              "the next match", "the match before it", "print the page", "zoom in", "zoom out",
              "actual size", "how the page is built", "save the page among the downloads",
              "the page's source, in a tab of its own", "the history", "the bookmarks"}

# Keys of theirs that the engine scrolls with, and which a page is therefore not asked about.
NEVER_ASKED = {"Alt+Left", "Alt+Right"}


class PageKeysTest(BrowserTest):
    def setUp(self):
        super().setUp()
        self.commands = readme.commands()

    def hear(self, takes):
        return HEARS.replace("TAKES", "true" if takes else "false")

    def place(self, name, takes):
        """A page of that name in which something has the keyboard after a click."""
        hears = self.hear(takes)
        self.server.script_page("/within", hears, "<h1>within</h1>")
        body = PLACES[name].replace("FOREIGN", self.server.url("/within", "localhost"))
        return self.server.script_page(f"/{name}", TELLS + hears, body)

    def start_in_the_middle(self, name, takes):
        """Starts with a page of that name between two others of its tab."""
        before = self.server.script_page("/before", TELLS)
        after = self.server.script_page("/after", TELLS)
        place = self.place(name, takes)
        self.start_with_only(before)
        for each in (place, after):
            self.type_address(each)
            self.wait_for_visit(each)
        self.app.action("goBack")
        until_equal(lambda: self.shown()[-1:], [name], "the page that shows")
        self.wait_until_loaded()
        self.server.forget()

    def shown(self):
        return self.server.reports("shown-")

    def widths(self, name):
        return [int(each) for each in self.server.reports(f"width-{name}-")]

    def heard(self):
        """The keys of which a page told."""
        return [each for each in self.server.reports("key-") if each not in UNCOUNTED]

    def press(self, key):
        """Presses a key in the page, and waits until the page has heard it."""
        heard = len(self.heard())
        self.hands.click()
        self.hands.go_on(key.stroke)
        until_equal(lambda: self.heard()[heard:], [key.code], f"what the page heard of {key}")

    def offered(self, command):
        """The keys of a command that go to the page first."""
        return [key for key in self.commands[command] if key.label not in NEVER_ASKED]

    def press_over_page(self, key):
        self.hands.click()
        self.hands.go_on(key.stroke)

    # What the page leaves.

    def test_every_key_of_the_list_is_tried_here(self):
        self.assertEqual(set(self.commands), PAGE_FIRST | set(self.checks_of_the_window()))

    def check_left_keys(self, place):
        self.start_in_the_middle(place, takes=False)
        self.check_zoom(place)
        self.check_find()
        self.check_rewind()
        self.check_library()
        self.check_print()
        self.check_save()
        self.check_source()
        self.check_history(place)
        self.check_inspector()

    def check_zoom(self, place):
        for count, action in enumerate(("zoomIn", "actualSize"), 1):
            self.app.action(action)
            until(lambda wanted=count: len(self.widths(place)) == wanted, f"a width by {action}")
        plain = self.widths(place)[-1]
        self.server.forget()
        steps = [("zoom in", plain / 1.1), ("zoom out", plain), ("zoom out", plain / 0.9),
                 ("actual size", plain)]

        for number, (command, width) in enumerate(steps, 1):
            self.press(self.commands[command][0])
            until(lambda wanted=number: len(self.widths(place)) >= wanted, f"a width by {command}")
            self.assertAlmostEqual(self.widths(place)[-1], width, delta=1)

        self.assertEqual(len(self.widths(place)), len(steps))

    def check_find(self):
        for command in ("find in the page", "the next match", "the match before it"):
            for key in self.commands[command]:
                self.press(key)
                self.windows.find("text", FIND)
                self.hands.go_on("Escape")
                self.windows.wait_until_gone("text", FIND)

    def check_rewind(self):
        for key in self.commands["rewind: the pages of today"]:
            self.press(key)
            self.windows.find("list", LATEST)
            self.hands.go_on("Escape")
            self.windows.wait_until_gone("list", LATEST)

    def check_library(self):
        library = Library(self.windows, self.hands)
        for command, section in (("the history", "History"), ("the bookmarks", "Bookmarks")):
            for key in self.commands[command]:
                self.press(key)
                library.wait_until_open(section)
                self.hands.go_on("Escape")
                library.wait_until_closed()

    def check_print(self):
        self.press(self.commands["print the page"][0])
        until(lambda: self.hands.windows("Print"), "the dialog for printing")
        self.assertEqual(len(self.hands.windows("Print")), 1)
        self.hands.press("Escape", title="Print")
        until_equal(lambda: self.hands.windows("Print"), [], "the dialogs for printing")
        until(self.page_hears, "the keyboard to be back in the page")

    def saved_files(self):
        return [each.name for each in (self.home.folder / "Downloads").glob("*.mhtml")]

    def check_save(self):
        self.press(self.commands["save the page among the downloads"][0])
        until(lambda: len(self.saved_files()) == 1, "the saved page")

    def check_source(self):
        self.press(self.commands["the page's source, in a tab of its own"][0])
        until(lambda: len(self.windows.tabs()) == 2, "the tab of the source")
        self.app.action("closeTab")
        until(lambda: len(self.windows.tabs()) == 1, "the source's tab to go")
        self.wait_until_loaded()
        until(self.page_hears, "the keyboard to be back in the page")

    def page_hears(self):
        self.hands.click()
        self.hands.go_on("q")
        return "KeyQ" in self.server.reports("key-")

    def check_history(self, place):
        self.server.forget()
        expected = []
        for command, shown, opposite in (("forward", "after", "goBack"),
                                         ("back", "before", "goForward")):
            for key in self.commands[command]:
                if key.label in NEVER_ASKED:
                    self.press_over_page(key)
                else:
                    self.press(key)
                for action, page in ((None, shown), (opposite, place)):
                    if action:
                        self.app.action(action)
                    expected.append(page)
                    until_equal(self.shown, expected, "the pages that showed")
                    self.wait_until_loaded()

    def check_inspector(self):
        self.press(self.commands["how the page is built"][0])
        until_equal(lambda: len(self.app.page_processes()), 2, "the processes of page and inspector")

    # What the page takes.

    def check_taken_keys(self, place):
        self.start_in_the_middle(place, takes=True)
        for command in sorted(PAGE_FIRST):
            for key in self.offered(command):
                self.press(key)
        self.press(readme.Key("X"))  # the answers to all before it have come

        self.assertEqual((self.shown(), self.widths(place)), ([], []))
        self.notch.wait_for_address(self.server.url(f"/{place}"))
        self.assertEqual(self.windows.nodes("text", FIND), [])
        self.assertEqual(self.windows.nodes("list", LATEST), [])
        self.assertEqual(self.hands.windows("Print"), [])
        self.assertEqual(len(self.app.page_processes()), 1)
        self.assertEqual((self.saved_files(), len(self.windows.tabs())), ([], 1))

    # What is always the window's.

    def test_a_page_that_takes_every_key_hears_none_of_the_windows_own(self):
        self.start_with_greedy_story()

        for command, check in self.checks_of_the_window().items():
            for key in self.commands[command]:
                with self.subTest(command=command, key=key):
                    check(key)

        self.assertEqual(self.heard(), [])

    def start_with_greedy_story(self):
        other = self.server.script_page("/other", self.hear(True))
        story = articles.serve(self.server, "/story", articles.STORY.replace(
            "<h1>", f"<script>{TELLS}{self.hear(True)}</script><h1>"))
        self.start_with_only(other, story)
        self.both = ["other", "Harbour Post"]
        self.select_story()

    def select_story(self):
        self.app.action("selectTab9")
        self.wait_for_tabs(*self.both)
        self.wait_for_selected(self.both[1])
        self.wait_until_loaded()

    def checks_of_the_window(self):
        """What shows that a command did its work, in an order that ends with the program's end."""
        return {
            "open the notch: type an address or a search": self.check_notch,
            "the same, empty": self.check_notch,
            "a new tab": self.check_new_tab,
            "close the tab": self.check_close,
            "bring back the tab that was closed last": self.check_reopen,
            "the next tab of the column": self.check_other_tab,
            "the tab before it": self.check_other_tab,
            "the assistant's panel, and away": self.check_panel,
            "the tab at that place, the last one": self.check_place,
            "the profile at that place": self.check_profile,
            "two tabs side by side, and back to one": self.check_pair,
            "load the page anew": self.check_reload,
            "the reader: the article alone, and back": self.check_reader,
            "set or clear a bookmark": self.check_bookmark,
            "the keyboard goes on among address, column, divider, searches, question, answer, page "
            "and assistant":
                self.check_area,
            "the same, back": self.check_area,
            "a new window": self.check_new_window,
            "a new private window": self.check_private_window,
            "close the window": self.check_close_window,
            "full screen, and back": self.check_full_screen,
            "minimise the window": self.check_minimise,
            "the settings": self.check_settings,
            "quit": self.check_quit,
        }

    def check_notch(self, key):
        self.press_over_page(key)
        self.notch.wait_until_open()
        self.hands.go_on("Escape")
        self.notch.wait_until_closed()

    def check_new_tab(self, key):
        self.press_over_page(key)
        self.wait_for_tabs(*self.both, "New tab")
        self.hands.go_on("Escape")
        self.app.action("closeTab")
        self.select_story()

    def check_close(self, key):
        self.press_over_page(key)
        self.wait_for_tabs(self.both[0])
        self.app.action("reopenClosed")
        self.select_story()

    def check_reopen(self, key):
        self.app.action("closeTab")
        self.wait_for_tabs(self.both[0])
        self.press_over_page(key)
        self.wait_for_tabs(*self.both)
        self.select_story()

    def check_other_tab(self, key):
        self.press_over_page(key)
        self.wait_for_selected(self.both[0])
        self.select_story()

    def check_place(self, key):
        last = key.code in ("Digit8", "Digit9")
        self.press_over_page(key)
        self.app.action("editAddress")  # the key has been dealt with
        self.notch.wait_until_open()
        self.wait_for_selected(self.both[0 if key.code == "Digit1" else 1])
        self.hands.go_on("Escape")
        self.assertTrue(last or key.code == "Digit1")
        self.select_story()

    def check_profile(self, key):
        """There is one, so nothing happens; test_profiles.py has what happens with more."""
        self.press_over_page(key)

    def check_panel(self, key):
        kesto = Assistant(self.windows, self.hands)
        self.press_over_page(key)
        kesto.wait_until_open()
        self.press_over_page(key)
        kesto.wait_until_closed()

    def check_pair(self, key):
        self.press_over_page(key)
        self.windows.find("separator", RESIZER)
        self.press_over_page(key)
        self.windows.wait_until_gone("separator", RESIZER)

    def check_reload(self, key):
        before = self.server.asked("/story")
        self.press_over_page(key)
        self.server.wait_for("/story", times=before + 1)
        self.wait_until_loaded()

    def check_reader(self, key):
        self.press_over_page(key)
        self.windows.find("text", articles.TITLE)
        self.app.action("toggleReader")
        self.windows.wait_until_gone("text", articles.TITLE)

    def check_bookmark(self, key):
        story = [self.server.url("/story")]
        self.press_over_page(key)
        until_equal(self.saved.bookmarks, story, "the bookmarks")
        self.press_over_page(key)
        until_equal(self.saved.bookmarks, [], "the bookmarks")

    def check_area(self, key):
        self.hands.click()
        self.wait_for_focus("WebKitWebView")
        self.hands.go_on(key.stroke)
        until(lambda: self.focus() not in ([], ["WebKitWebView"]), "the keyboard elsewhere",
              self.focus)

    def check_new_window(self, key):
        self.press_over_page(key)
        until_equal(self.windows.titles, ["Orvu", "Orvu"], "the windows")
        self.app.action("performClose", window=self.app.windows()[-1])
        until_equal(self.windows.titles, ["Orvu"], "the windows")

    def check_private_window(self, key):
        self.press_over_page(key)
        until_equal(self.windows.titles, ["Orvu", PRIVATE], "the windows")
        self.app.action("performClose", window=self.app.windows()[-1])
        until_equal(self.windows.titles, ["Orvu"], "the windows")

    def check_close_window(self, key):
        self.app.app_action("newPrivateWindow")
        until_equal(self.windows.titles, ["Orvu", PRIVATE], "the windows")
        self.app.hand_over(self.server.url("/story"))
        self.hands.press(key.stroke, title=PRIVATE)
        until_equal(self.windows.titles, ["Orvu"], "the windows")

    def check_full_screen(self, key):
        plain = self.hands.size()
        self.press_over_page(key)
        until_equal(self.hands.size, (WIDTH, HEIGHT), "the window's size")
        self.hands.go_on(key.stroke)
        until_equal(self.hands.size, plain, "the window's size")

    def check_minimise(self, key):
        window = self.hands.window()
        self.press_over_page(key)
        until_equal(lambda: self.hands.windows("Orvu"), [], "the windows on the display")
        xdotool("windowactivate", "--sync", window)
        until_equal(lambda: self.hands.windows("Orvu"), [window], "the windows on the display")

    def check_settings(self, key):
        self.press_over_page(key)
        settings = SettingsWindow(self.windows, self.hands)
        settings.wait_until_open()
        self.hands.press("Escape", title=TITLE)
        settings.wait_until_closed()

    def check_quit(self, key):
        self.press_over_page(key)
        self.app.wait_for_end(0)


def _add_tests(place):
    def leaves(self):
        self.check_left_keys(place)

    def takes(self):
        self.check_taken_keys(place)
    setattr(PageKeysTest, f"test_what_a_{place}_leaves_does_the_windows_work_once", leaves)
    setattr(PageKeysTest, f"test_what_a_{place}_takes_leaves_the_window_as_it_was", takes)


for each_place in PLACES:
    _add_tests(each_place)
