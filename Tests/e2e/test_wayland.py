"""The program on a Wayland display, by a real keyboard's keys and a pointer, as an ordinary user."""

import os
import subprocess
from urllib.parse import unquote

from harness import process
from harness.case import PRIVATE
from harness.sway import SIZE
from harness.wait import until, until_equal
from harness.wayland_case import BLUE, WaylandTest

CONTENT, SMALLEST = (1280, 820), (900, 560)
HARD = "Who's there? A+B=C {x}_~ \"Q\" | 5 < 7 > 3: #1!"
FIELD = ("<textarea autofocus style='position:fixed;inset:200px;font-size:30px' "
         "oninput=\"fetch('/report/text-' + encodeURIComponent(value))\"></textarea>")
ASKS = "onclick = () => document.documentElement.requestFullscreen();"
TELLS_SIZE = ("const tell = () => fetch(`/report/size-${innerWidth}x${innerHeight}`);"
              "onresize = tell; tell();")
TELLS_KEYS = "onkeydown = event => fetch('/report/key-' + event.key);"


class StartTest(WaylandTest):
    def test_the_window_comes_in_its_own_size_with_its_page(self):
        self.start_filled(script=TELLS_SIZE)

        self.assertEqual(self.hands.size(), CONTENT)
        self.assertEqual(self.hands.window()["app_id"], "app.orvu.Orvu")
        width, height = self.page_card()[2:]
        self.server.wait_for_report(f"size-{width}x{height}")
        self.picture_at_rest("start")

    def test_pages_live_in_a_sandbox_where_there_can_be_one(self):
        self.start_with_only(self.server.page("/page"))
        own = os.readlink(f"/proc/{self.app.pid}/ns/user")

        pages = {os.readlink(f"/proc/{pid}/ns/user") for pid in self.app.page_processes()}

        self.assertNotEqual(os.stat(f"/proc/{self.app.pid}").st_uid, 0)
        self.assertTrue(pages)
        if self.user.has_sandbox:
            self.assertNotIn(own, pages)
        else:
            self.assertEqual(pages, {own})

    def test_a_display_that_is_named_by_its_whole_path_shows_pages_too(self):
        self.app.environment["WAYLAND_DISPLAY"] = str(self.display.socket)

        self.start_filled()

        self.app.check_runs()

    def test_a_dense_display_is_drawn_in_all_its_points(self):
        self.display.command("output * scale 2")
        self.addCleanup(self.display.command, "output * scale 1")

        self.start_with_only(self.filled_page(
            "/page", script="fetch('/report/points-' + devicePixelRatio)"))

        self.server.wait_for_report("points-2")
        self.wait_for_color((SMALLEST[0] // 2, SMALLEST[1] // 2), BLUE)
        self.picture_at_rest("dense")

    def test_a_window_fills_the_tile_that_it_is_given(self):
        self.start_filled(script=TELLS_SIZE)

        self.display.command("floating disable")

        until_equal(self.hands.size, SIZE, "the window's size")
        until(lambda: self.page_card()[2] > CONTENT[0], "the wide page", self.page_card)
        width, height = self.page_card()[2:]
        self.server.wait_for_report(f"size-{width}x{height}")
        self.wait_for_color((SIZE[0] - 60, SIZE[1] - 60), BLUE)
        self.picture_at_rest("tile")

    def test_a_window_takes_the_sizes_that_it_is_given_down_to_its_smallest(self):
        self.start_filled(script=TELLS_SIZE)

        for wanted, comes in (((1400, 900), (1400, 900)), ((300, 200), SMALLEST)):
            self.display.command("resize set {} {}".format(*wanted))
            until_equal(self.hands.size, comes, "the window's size")
            until_equal(lambda: self.windows.all()[0].box[2:], comes, "the content's size")
            width, height = self.page_card()[2:]
            self.server.wait_for_report(f"size-{width}x{height}")
            self.wait_for_color((comes[0] - 40, comes[1] - 40), BLUE)
        self.picture_at_rest("smallest")

    def test_the_bar_drags_the_window_along(self):
        self.start_filled()

        left, top, _, _ = self.hands.drag_window((280, 26), (-60, -40))

        until_equal(lambda: self.hands.area()[:2], (left - 60, top - 40), "the window's place")


class NotchTest(WaylandTest):
    def test_what_is_typed_comes_whole_and_leads_to_a_page(self):
        target = self.server.page("/Target")
        self.start_with_only(self.server.page("/page"))

        self.notch.write(HARD)
        until(lambda: any(HARD in row for row in self.notch.buttons()), "a row for the text",
              self.notch.buttons)
        self.picture("notch")
        self.hands.go_on("ctrl+a")
        self.hands.type_on(target)
        self.notch.wait_for_text(target)
        self.hands.go_on("Return")

        self.wait_for_visit(target)
        self.notch.wait_until_closed()
        self.notch.wait_for_address(target)

    def test_escape_gives_the_keyboard_back_to_the_page(self):
        self.start_filled(script=TELLS_KEYS)
        self.hands.click()

        self.notch.write("half")
        self.hands.go_on("Escape")
        self.notch.wait_until_closed()
        self.hands.type_on("K")

        self.server.wait_for_report("key-K")
        self.assertEqual(self.server.reports("key-h"), [])

    def test_a_click_opens_it_and_a_click_beside_it_closes_it(self):
        self.start_filled()

        self.hands.click(at=self.notch.resting().middle)
        self.notch.wait_until_open()
        self.hands.click(at=(1000, 700))

        self.notch.wait_until_closed()
        self.wait_for_blue()


class KeysTest(WaylandTest):
    def test_a_page_gets_every_character_that_is_typed(self):
        self.start_filled(body=FIELD)
        self.hands.click()

        self.hands.type_on(HARD)

        until(lambda: self.typed()[-1:] == [HARD], "the whole text", self.typed)
        self.picture_at_rest("page-typed")

    def typed(self):
        return [unquote(each) for each in self.server.reports("text-")]

    def test_keys_with_shift_reach_the_window(self):
        first, second = self.server.pages("/one", "/two")
        self.start_with_only(first, second)
        self.app.action("selectTab9")
        self.hands.click()

        self.hands.go_on("ctrl+w")
        self.wait_for_tabs("one")
        self.hands.go_on("ctrl+shift+t")
        self.wait_for_tabs("one", "two")
        self.wait_for_selected("two")
        self.hands.go_on("ctrl+shift+Tab")
        self.wait_for_selected("one")
        self.hands.go_on("ctrl+shift+n")

        until_equal(self.windows.titles, ["Orvu", PRIVATE], "the windows")

    def test_keys_with_shift_work_with_caps_lock_too(self):
        first, second = self.server.pages("/one", "/two")
        self.start_with_only(first, second)
        self.app.action("selectTab9")
        self.hands.press("Caps_Lock")
        self.addCleanup(self.hands.go_on, "Caps_Lock")

        self.hands.go_on("ctrl+w")
        self.wait_for_tabs("one")
        self.hands.go_on("ctrl+shift+t")

        self.wait_for_tabs("one", "two")

    def test_the_wheel_scrolls_and_with_control_zooms(self):
        self.start_filled(body="<div style='height:9000px'>long</div>",
                          script=TELLS_SIZE + "onscroll = () => fetch('/report/scrolled');")
        width = self.page_card()[2]
        self.server.wait_for_report(f"size-{width}x{self.page_card()[3]}")

        self.hands.click(button=5)
        self.server.wait_for_report("scrolled")
        self.hands.click(button=4, holding="ctrl")

        until(lambda: any(abs(each - width / 1.1) < 20 for each in self.widths()),
              "a tenth larger", self.widths)

    def widths(self):
        return [int(each.split("x")[0]) for each in self.server.reports("size-")]


class PrivateWindowTest(WaylandTest):
    def test_it_opens_by_key_takes_what_is_typed_and_keeps_nothing(self):
        ordinary, private = self.server.page("/ordinary"), self.filled_page("/private")
        self.start_with_only(ordinary)

        self.hands.press("ctrl+shift+n")
        until_equal(self.windows.titles, ["Orvu", PRIVATE], "the windows")
        until(lambda: self.hands.has_keyboard(PRIVATE), "the private window at the front")
        self.hands.go_on("ctrl+l")
        self.hands.type_on(private)
        self.hands.go_on("Return")
        self.wait_for_tabs("private", window=PRIVATE)
        self.wait_for_blue(PRIVATE)
        self.picture_at_rest("private")
        self.assertLess(max(self.color((230, 800), PRIVATE)), 80, "a dark window")
        self.hands.go_on("ctrl+shift+w")

        until_equal(self.windows.titles, ["Orvu"], "the windows")
        self.wait_for_session(ordinary)
        self.assertNotIn(private, self.saved.visited())


class FullScreenTest(WaylandTest):
    def wait_until_it_fills_the_display(self):
        until_equal(lambda: self.hands.area(), (0, 0, *SIZE), "the window's place")

    def test_the_window_fills_the_display_and_comes_back(self):
        self.start_filled()

        self.hands.press("F11")
        self.wait_until_it_fills_the_display()
        self.wait_for_color((SIZE[0] - 60, SIZE[1] - 60), BLUE)
        self.assertTrue(self.windows.nodes("list", "Tabs"), "the tabs stay")
        self.picture_at_rest("full-screen")
        self.hands.go_on("F11")

        until_equal(self.hands.size, CONTENT, "the window's size")
        self.wait_for_blue()

    def test_a_page_fills_the_display_alone_and_escape_leaves(self):
        self.start_filled("/film", script=ASKS + TELLS_SIZE)

        self.hands.click()
        self.wait_until_it_fills_the_display()
        self.server.wait_for_report("size-{}x{}".format(*SIZE))
        for corner in ((2, 2), (SIZE[0] - 3, SIZE[1] - 3)):
            until_equal(lambda at=corner: self.display.color(*at), BLUE, "the page's colour")
        self.picture_at_rest("page-full-screen")
        self.hands.go_on("Escape")

        until_equal(self.hands.size, CONTENT, "the window's size")
        until(lambda: self.windows.nodes("list", "Tabs"), "the tabs again")


class TwoWindowsTest(WaylandTest):
    def test_both_answer_and_the_end_of_one_leaves_the_other(self):
        first = self.filled_page("/first", script=TELLS_KEYS.replace("key-", "first-"))
        second = self.filled_page("/second", script=TELLS_KEYS.replace("key-", "second-"))
        self.start_with_only(first)
        self.hands.press("ctrl+n")
        until(lambda: len(self.hands.windows("Orvu")) == 2, "two windows")
        old, new = (each["id"] for each in self.hands.windows("Orvu"))
        self.hands.go_on("ctrl+l")
        self.hands.type_on(second)
        self.hands.go_on("Return")
        self.wait_for_visit(second)
        self.display.command(f"[con_id={new}] move absolute position 300 150")
        self.display.command(f"[con_id={old}] move absolute position 20 20")
        self.wait_until_at(new, (300, 150))
        self.wait_until_at(old, (20, 20))

        # The windows lie over each other, but for the ends where they are clicked.
        self.hands.click_on_display((1540, 900))
        until_equal(self.in_front, new, "the window in front")
        self.hands.type_on("S")
        self.server.wait_for_report("second-S")
        self.hands.click_on_display((280, 760))
        until_equal(self.in_front, old, "the window in front")
        for at in (1500, 900), (400, 700):
            until_equal(lambda place=at: self.display.color(*place), BLUE, "both pages' colour")
        self.hands.type_on("F")
        self.server.wait_for_report("first-F")
        self.picture_at_rest("two-windows")
        self.server.forget()
        self.hands.go_on("ctrl+shift+w")
        until_equal(lambda: [each["id"] for each in self.hands.windows("Orvu")], [new],
                    "the windows")
        self.hands.click_on_display((1540, 900))
        self.hands.type_on("T")

        self.server.wait_for_report("second-T")
        self.assertNotIn("T", self.server.reports("first-"))

    def test_an_address_from_another_program_brings_its_window_to_the_front(self):
        self.start_filled()
        self.hands.press("ctrl+shift+n")
        until(lambda: self.hands.has_keyboard(PRIVATE), "the private window at the front")

        self.app.environment["XDG_ACTIVATION_TOKEN"] = self.display.devices.activation_token()
        self.app.start_again(self.filled_page("/next"))

        until(self.hands.has_keyboard, "the ordinary window at the front")
        self.wait_for_tabs("page", "next", window="Orvu")

    def test_an_address_comes_with_whatever_token_its_start_was_given(self):
        self.start_with_only(self.server.page("/page"))

        for number, token in enumerate(("nobody's", "\udcff", "x" * 100_000, "")):
            self.app.environment["XDG_ACTIVATION_TOKEN"] = token
            self.app.start_again(self.server.page(f"/{number}"))
            self.windows.find("push button", f"Close {number}")

        self.app.check_runs()

    def wait_until_at(self, window, place):
        def rect():
            return [(each["rect"]["x"], each["rect"]["y"])
                    for each in self.hands.windows("Orvu") if each["id"] == window]
        until_equal(rect, [place], "the window's place")

    def in_front(self):
        return [each["id"] for each in self.hands.windows("Orvu") if each["focused"]][0]


class ClipboardTest(WaylandTest):
    def clipboard(self, *options):
        answer = subprocess.run(["wl-paste", "--no-newline", *options], capture_output=True,
                                text=True, check=False)
        return answer.stdout

    def fill_clipboard(self, text, *options):
        """Another program offers a text."""
        offering = process.spawn(["wl-copy", "--foreground", *options, text], **process.QUIET)
        self.addCleanup(process.stop, offering)
        until_equal(lambda: self.clipboard(*options), text, "the clipboard")

    def test_what_a_page_has_copied_other_programs_get(self):
        self.start_filled(body="Honey &amp; Käse")
        self.hands.click()

        self.hands.go_on("ctrl+a", "ctrl+c")

        until_equal(lambda: self.clipboard().strip(), "Honey & Käse", "the clipboard")

    def test_what_other_programs_offer_is_pasted_into_notch_and_page(self):
        self.start_filled(body=FIELD)
        self.fill_clipboard("Honey & Käse")

        self.hands.press("ctrl+k")
        self.notch.wait_until_open()
        self.hands.go_on("ctrl+v")
        self.notch.wait_for_text("Honey & Käse")
        self.hands.go_on("Escape")
        self.notch.wait_until_closed()
        self.hands.click()
        self.hands.go_on("ctrl+v")

        until(lambda: [unquote(each) for each in self.server.reports("text-")][-1:]
              == ["Honey & Käse"], "the page's text")

    def test_selected_text_is_pasted_with_the_middle_button(self):
        self.start_filled(body=FIELD)
        self.fill_clipboard("wax", "--primary")

        self.hands.click(button=2)

        self.server.wait_for_report("text-wax")
        self.hands.go_on("ctrl+a")
        self.hands.type_on("comb")
        self.hands.go_on("ctrl+a")
        until_equal(lambda: self.clipboard("--primary"), "comb", "the selected text")
