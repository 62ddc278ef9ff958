"""Pages that keep a person waiting: the window goes on, and late keys do no harm."""

from harness.case import BrowserTest
from harness.wait import until, until_equal

FIND = "Find in page"
# A page that tells its keys and does nothing more after "h" until the server answers.
HOLDS = """
addEventListener('keydown', event => {
    fetch('/report/key-' + event.key);
    if (event.key !== 'h') return;
    const request = new XMLHttpRequest();
    request.open('GET', '/held', false);
    request.send();
    fetch('/report/goes-on');
});
addEventListener('pageshow', () => fetch('/report/shown-' + document.title));
"""
FOREVER = "addEventListener('keydown', () => { fetch('/report/busy'); for (;;); });"
# Fills the screen at a click, and is busy for ever from then on.
FILM = """
onclick = () => document.documentElement.requestFullscreen();
document.onfullscreenchange = () => {
    const report = new XMLHttpRequest();
    report.open('GET', '/report/busy', false);
    report.send();
    for (;;);
};
"""


class HeldKeysTest(BrowserTest):
    """What a page is asked about comes back to the window late."""

    def start_held(self, *names):
        """Starts with tabs of which the first has a page that holds all keys back; gives what lets
        it go on."""
        held, gate = self.server.slow("/held")
        urls = [self.server.script_page(f"/{name}", HOLDS) for name in names]
        self.start_with_only(*urls)
        self.app.action("selectTab1")
        self.wait_for_selected(names[0])
        self.wait_until_loaded()
        self.server.forget()
        self.hands.click()
        self.hands.go_on("h")
        self.server.wait_for("/held")
        return gate

    def let_go(self, gate, *keys):
        """Lets the page go on, and waits until it has heard the keys and they have come back."""
        gate.set()
        for key in ("Control", *keys):
            self.server.wait_for_report(f"key-{key}")

    def test_letters_for_the_page_write_nothing_into_the_notch(self):
        gate = self.start_held("slow")
        self.hands.go_on("x", "y")
        self.notch.open()
        self.hands.type_on("abc")
        self.notch.wait_for_text("abc")

        self.let_go(gate, "x", "y")
        self.hands.type_on("d")

        self.notch.wait_for_text("abcd")

    def test_return_for_the_page_sends_no_half_typed_address_off(self):
        gate = self.start_held("slow")
        self.hands.go_on("Return")
        self.notch.open()
        self.hands.type_on("abc")
        self.notch.wait_for_text("abc")

        self.let_go(gate, "Enter")
        self.hands.type_on("d")

        self.notch.wait_for_text("abcd")
        self.assertTrue(self.notch.is_open())

    def test_a_command_that_the_page_held_back_takes_the_keyboard_from_nobody(self):
        gate = self.start_held("slow")
        self.hands.go_on("ctrl+f")
        self.notch.open()

        self.let_go(gate, "f")
        self.hands.type_on("abcd")

        self.notch.wait_for_text("abcd")
        self.assertEqual(self.windows.nodes("text", FIND), [])

    def test_what_was_pressed_in_one_tab_does_nothing_in_another(self):
        first, second = self.server.pages("/first", "/second")
        gate = self.start_held("slow", "other")
        self.app.action("selectTab2")
        for url in (first, second):
            self.type_address(url)
            self.wait_for_visit(url)
        self.type_address(self.server.url("/other"))
        until_equal(lambda: self.server.reports("shown-"), ["other"], "the page that shows")
        self.app.action("selectTab1")
        self.wait_for_selected("slow")
        self.hands.click()
        self.hands.go_on("x", "ctrl+bracketleft", "ctrl+Tab")
        self.wait_for_selected("other")

        self.let_go(gate, "[")
        self.hands.click()
        self.hands.go_on("z")
        self.server.wait_for_report("key-z")

        self.assertEqual(self.server.reports("key-").count("x"), 1)
        self.notch.wait_for_address(self.server.url("/other"))
        self.assertEqual(self.server.asked("/second"), 1)

    def test_what_is_typed_after_the_key_for_finding_is_what_is_found(self):
        gate = self.start_held("slow")
        self.hands.go_on("ctrl+f", "w", "o")

        self.let_go(gate, "f", "o")

        until_equal(lambda: [node.text() for node in self.windows.nodes("text", FIND)], ["wo"],
                    "the text to be found")

    def test_keys_go_to_the_page_again_after_all_that(self):
        gate = self.start_held("slow")
        self.hands.go_on("x")
        self.notch.open()
        self.let_go(gate, "x")
        self.hands.go_on("Escape")
        self.notch.wait_until_closed()

        for key in ("q", "r", "s"):
            self.hands.go_on(key)
            self.server.wait_for_report(f"key-{key}")
        self.hands.go_on("ctrl+f")

        self.windows.find("text", FIND)


class BusyPageTest(BrowserTest):
    def start_busy(self):
        self.server.script_page("/busy", FOREVER)
        self.start_with_only(self.server.page("/other"), self.server.url("/busy"))
        self.app.action("selectTab2")
        self.wait_for_selected("busy")
        self.hands.click()
        self.hands.go_on("h")
        self.server.wait_for_report("busy")

    def test_the_keys_of_tabs_and_notch_wait_for_no_page(self):
        self.start_busy()

        self.hands.go_on("ctrl+l")
        self.notch.wait_until_open()
        self.hands.go_on("Escape")
        self.notch.wait_until_closed()
        self.hands.go_on("ctrl+Tab")
        self.wait_for_selected("other")
        self.hands.go_on("ctrl+2")
        self.wait_for_selected("busy")
        self.hands.go_on("ctrl+d")
        until_equal(self.saved.bookmarks, [self.server.url("/busy")], "the bookmarks")
        self.hands.go_on("ctrl+alt+s")
        self.windows.find("separator", "Resize the two pages")
        self.hands.go_on("ctrl+alt+s")
        self.hands.go_on("ctrl+t")
        self.wait_for_tabs("other", "busy", "New tab")
        self.hands.go_on("Escape", "ctrl+w", "ctrl+w")
        self.wait_for_tabs("other")


class BusyFilmTest(BrowserTest):
    """A page that fills the screen and answers nothing any more."""

    def fill_the_screen(self):
        self.server.script_page("/film", FILM)
        self.start_with_only(self.server.page("/other"), self.server.url("/film"))
        self.app.action("selectTab2")
        self.wait_for_selected("film")
        self.plain = self.hands.size()
        self.hands.click()
        until_equal(lambda: self.windows.nodes("list", "Tabs"), [], "the lists of tabs")
        self.server.wait_for_report("busy")

    def wait_until_left(self):
        until(lambda: self.windows.nodes("list", "Tabs"), "the list of tabs again")
        until_equal(self.hands.size, self.plain, "the size of the window")

    def test_escape_leaves(self):
        self.fill_the_screen()

        self.hands.go_on("Escape")

        self.wait_until_left()

    def test_the_key_of_the_window_leaves(self):
        self.fill_the_screen()

        self.hands.go_on("F11")

        self.wait_until_left()

    def test_a_new_tab_comes_with_its_open_notch(self):
        self.fill_the_screen()

        self.hands.go_on("ctrl+t")

        self.wait_until_left()
        self.notch.wait_until_open()
        self.wait_for_tabs("other", "film", "New tab")

    def test_closing_the_tab_leaves(self):
        self.fill_the_screen()

        self.hands.go_on("ctrl+w")

        self.wait_until_left()
        self.wait_for_tabs("other")
