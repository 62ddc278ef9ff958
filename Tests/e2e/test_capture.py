"""The dots that stand wherever a page looks or listens, and what pages are never allowed."""

from harness.case import PRIVATE, BrowserTest
from harness.site import ALLOW, HEAD, INFO, capture_page
from harness.wait import until_equal

IN_USE = " in use. Stop"
CAMERA, MICROPHONE = f"Camera{IN_USE}", f"Microphone{IN_USE}"
BOTH = f"Camera and microphone{IN_USE}"
STOP_BOTH = "Stop Camera and Microphone"
REFUSED = "Not allowed by Orvu"
ASKS = {"camera": "your camera", "microphone": "your microphone",
        "both": "your camera and microphone"}


def gate_of(server):
    """Lets what pages fetch from "/gate" wait for the returned event."""
    gate = server.gate()

    def answer(handler):
        gate.wait()
        handler.reply(204)
    server.answers["/gate"] = answer
    return gate


class CaptureTest(BrowserTest):
    has_test_devices = True

    # What stands.

    def dots(self, window=None):
        return [node for node in self.windows.nodes("push button", window=window)
                if node.name.endswith(IN_USE)]

    def wait_for_dots(self, *names, window=None):
        until_equal(lambda: [node.name for node in self.dots(window)], list(names), "the dots")

    def dot_in_the_notch(self, window=None):
        return [dot for dot in self.dots(window) if dot.is_above(HEAD)][0]

    def dot_in_the_column(self):
        return [dot for dot in self.dots() if not dot.is_above(HEAD)][0]

    # What happens.

    def allow(self, name, wants, site=None):
        site = site or self.site
        site.wait_for_question(f"“127.0.0.1” wants to use {ASKS[wants]}")
        site.answer(ALLOW)
        for kind in {"camera": ["video"], "microphone": ["audio"]}.get(wants, ["audio", "video"]):
            self.server.wait_for_report(f"{name}-got-{kind}")

    def start_capturing(self, name="call", wants="both", *others):
        """Starts with other pages and, in front, one that uses what it wants."""
        page = self.server.url(capture_page(self.server, name, wants))
        self.start_with_only(*self.server.pages(*others), page)
        self.app.action("selectTab9")
        self.allow(name, wants)

    def wait_for_end(self, name="call", *kinds):
        for kind in kinds or ("audio", "video"):
            self.server.wait_for_report(f"{name}-ended-{kind}")

    def open_menu(self, title):
        self.click_on("push button", title, button=3)
        self.windows.find("menu item", "Close Tab")

    # The tab in front.

    def test_a_press_on_the_dot_of_the_badge_ends_what_the_page_captures(self):
        self.start_capturing()
        self.wait_for_dots(BOTH, BOTH)

        self.hands.click(at=self.dot_in_the_notch().middle)

        self.wait_for_end()
        self.wait_for_dots()
        self.assertFalse(self.notch.is_open())
        self.assertFalse(self.site.is_open())

    def test_a_press_on_the_dot_of_the_row_ends_it_and_the_page_may_ask_anew(self):
        self.start_capturing(wants="camera")
        self.wait_for_dots(CAMERA, CAMERA)

        self.hands.click(at=self.dot_in_the_column().middle)
        self.wait_for_dots()
        self.hands.click()

        self.allow("call", "camera")
        self.wait_for_dots(CAMERA, CAMERA)

    def test_a_site_that_is_allowed_has_to_ask_after_a_stop(self):
        self.start_and_open(self.server.page("/page"))
        self.site.open()
        self.site.choose("Camera", "Allow")
        self.hands.go_on("Escape")
        self.site.wait_until_closed()
        self.open(self.server.url(capture_page(self.server, "call")))
        self.wait_for_dots(CAMERA, CAMERA)

        self.dot_in_the_notch().press()
        self.wait_for_end("call", "video")
        self.hands.click()

        self.allow("call", "camera")

    def test_the_dot_of_the_badge_is_reached_and_pressed_by_key(self):
        self.start_capturing(wants="microphone")
        self.wait_for_dots(MICROPHONE, MICROPHONE)
        self.hands.press("F6")
        self.notch.wait_until_open()
        self.hands.go_on("Escape")
        self.notch.wait_until_closed()
        self.hands.press("shift+F6")
        self.go_by_key_to(INFO, "shift+Tab")

        self.hands.go_on("shift+Tab")
        self.wait_for_focus(MICROPHONE)
        self.hands.go_on("space")

        self.wait_for_end("call", "audio")
        self.wait_for_dots()
        self.wait_for_focus(INFO)

    def test_a_page_that_leaves_takes_its_dots_along(self):
        self.start_capturing()
        self.wait_for_dots(BOTH, BOTH)

        self.notch.go_to(self.server.page("/next"))

        self.wait_for_dots()

    # Tabs elsewhere.

    def test_a_tab_in_the_background_shows_its_dot_in_its_row_alone(self):
        self.start_capturing("call", "both", "/other")

        self.app.action("selectTab1")
        self.wait_for_selected("other")
        self.wait_for_dots(BOTH)
        self.assertFalse(self.dots()[0].is_above(HEAD))
        self.hands.click(at=self.dots()[0].middle)

        self.wait_for_end()
        self.wait_for_dots()
        self.wait_for_selected("other")

    def test_a_pinned_tile_shows_the_dot_in_the_narrow_column_too(self):
        self.start_capturing("call", "both", "/other")
        self.app.action("togglePin")
        until_equal(self.windows.pinned_tabs, ["call"], "the tiles")
        self.app.action("selectTab2")
        self.wait_for_selected("other")
        self.wait_for_dots(BOTH)

        self.windows.press("push button", "Narrow tabs")
        self.windows.find("push button", "Show tab titles")
        self.wait_for_dots(BOTH)
        self.hands.click(at=self.dots()[0].middle)

        self.wait_for_end()
        self.wait_for_dots()
        self.wait_for_selected("other")

    def test_a_row_of_the_narrow_column_shows_the_dot(self):
        self.start_capturing("call", "both", "/other")
        self.app.action("selectTab1")
        self.windows.press("push button", "Narrow tabs")
        self.windows.find("push button", "Show tab titles")
        self.wait_for_dots(BOTH)

        self.hands.click(at=self.dots()[0].middle)

        self.wait_for_end()
        self.wait_for_selected("other")

    def test_the_header_of_a_collapsed_group_speaks_for_its_tabs(self):
        self.start_capturing("call", "both", "/other")
        self.app.action("toggleGroup")
        header = self.windows.find("push button", "127.0.0.1 group, 1 tabs")
        self.app.action("selectTab1")
        self.wait_for_selected("other")
        self.wait_for_dots(BOTH)

        header.press()
        self.windows.wait_until_gone("push button", "call")
        self.wait_for_dots(BOTH)
        self.hands.click(at=self.dots()[0].middle)

        self.wait_for_end()
        self.wait_for_dots()

    def test_a_capture_that_begins_in_a_collapsed_group_is_shown_on_its_header(self):
        gate = gate_of(self.server)
        self.server.script_page(
            "/late", "fetch('/gate').then(() => navigator.mediaDevices.getUserMedia({video: true}))"
            ".then(() => fetch('/report/late-got-video'));")
        self.start_with_only(self.server.page("/other"), self.server.url("/late"))
        self.site.open()
        self.site.choose("Camera", "Allow")
        self.hands.go_on("Escape")
        self.site.wait_until_closed()
        self.app.action("selectTab9")
        self.app.action("toggleGroup")
        self.windows.press("push button", "127.0.0.1 group, 1 tabs")
        self.windows.wait_until_gone("push button", "late")
        self.wait_for_dots()

        gate.set()

        self.server.wait_for_report("late-got-video")
        self.wait_for_dots(CAMERA, CAMERA)

    def test_the_menus_of_tab_and_group_end_a_capture_by_key(self):
        self.start_capturing("call", "both", "/other")
        self.open_menu("call")
        self.windows.press("menu item", STOP_BOTH)
        self.wait_for_end()
        self.wait_for_dots()
        self.server.forget()
        self.hands.click()
        self.allow("call", "both")
        self.app.action("toggleGroup")
        header = self.windows.find("push button", "127.0.0.1 group, 1 tabs")

        self.hands.click(button=3, at=header.middle)
        self.windows.press("menu item", STOP_BOTH)

        self.wait_for_end()
        self.wait_for_dots()

    def test_both_pages_of_a_pair_show_their_dots(self):
        self.start_capturing("call", "both", "/other")
        self.app.action("toggleSideBySide")
        self.windows.find("separator", "Resize the two pages")
        self.wait_for_dots(BOTH, BOTH, BOTH)  # row, header of the page, notch

        self.app.action("selectTab1")
        self.wait_for_selected("other")
        self.wait_for_dots(BOTH, BOTH)
        self.dots()[-1].press()

        self.wait_for_end()
        self.wait_for_dots()

    def test_a_private_window_shows_its_own_dots_alone(self):
        self.start_and_open(self.server.page("/page"))
        private = self.open_private_site(
            self.server.url(capture_page(self.server, "call", "both")))
        self.allow("call", "both", private)

        self.wait_for_dots(BOTH, BOTH, window=PRIVATE)
        self.wait_for_dots(window="Orvu")
        self.dot_in_the_notch(PRIVATE).press()

        self.wait_for_end()

    def test_every_dot_and_the_menu_have_names(self):
        self.start_capturing("call", "camera", "/other")
        self.wait_for_dots(CAMERA, CAMERA)
        self.open_menu("call")
        self.windows.find("menu item", "Stop Camera")


class RefusalsTest(BrowserTest):
    def open_asking(self, script):
        self.server.script_page("/asks", script)
        self.start_and_open(self.server.url("/asks"))

    def refusals(self):
        texts = self.site.texts()
        return [texts[i - 1] for i, text in enumerate(texts) if text == REFUSED]

    def test_the_panel_says_what_the_page_was_refused_until_it_goes(self):
        self.open_asking("navigator.geolocation.getCurrentPosition(() => {}, "
                         "error => fetch('/report/place-' + error.code));")
        self.server.wait_for_report("place-1")
        self.site.open()

        until_equal(self.refusals, ["Location"], "what is said to be refused")
        self.hands.go_on("Escape")
        self.site.wait_until_closed()
        self.notch.go_to(self.server.page("/next"))
        self.wait_for_visit(self.server.url("/next"))
        self.site.open()
        self.assertEqual(self.refusals(), [])

    def test_a_click_does_not_let_a_page_hold_the_pointer_or_read_the_clipboard(self):
        self.open_asking(
            "onclick = () => { document.documentElement.requestPointerLock();"
            "navigator.clipboard.readText().catch(() => fetch('/report/no-text')); };"
            "document.onpointerlockerror = () => fetch('/report/no-lock');")

        self.hands.click()

        self.server.wait_for_report("no-text")
        self.server.wait_for_report("no-lock")
        self.site.open()
        until_equal(self.refusals, ["Holding the pointer", "Reading the clipboard"],
                    "what is said to be refused")

    def test_the_open_panel_follows_what_is_refused(self):
        gate = gate_of(self.server)
        self.open_asking("fetch('/gate').then(() => navigator.geolocation.getCurrentPosition("
                         "() => {}, () => fetch('/report/refused')));")
        self.site.open()
        self.assertEqual(self.refusals(), [])

        gate.set()

        self.server.wait_for_report("refused")
        until_equal(self.refusals, ["Location"], "what is said to be refused")

    def test_a_page_that_asks_without_end_holds_nobody_up(self):
        self.open_asking(
            "let sum = 0; const ask = () => { for (let i = 0; i < 50; ++i) navigator.geolocation"
            ".getCurrentPosition(() => {}, () => { if (++sum == 5000) fetch('/report/all'); }); };"
            "setInterval(ask, 10);")
        self.server.wait_for_report("all")

        self.site.open()
        until_equal(self.refusals, ["Location"], "what is said to be refused")
        self.hands.go_on("Escape")
        self.site.wait_until_closed()
        self.app.action("newEmptyTab")
        self.wait_for_tabs("New tab", "asks", "New tab")
