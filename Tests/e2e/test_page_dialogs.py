"""What pages ask the person: alert, confirm, prompt and the passwords of servers."""

import time

from harness.case import PRIVATE, BrowserTest
from harness.dialogs import (ASKS, CANCEL, OK, SAYS, SIGN_IN, SILENCE, WANTS_PASSWORD, Dialogs)
from harness.server import TELLS_CLICKS, TELLS_KEYS
from harness.wait import until, until_equal

HOST = "127.0.0.1"
PASSWORD = "sesame-9f3c1e77"


class PageDialogsTest(BrowserTest):
    def setUp(self):
        super().setUp()
        self.dialogs = Dialogs(self.windows, self.hands)

    def asking(self, name, expression, host=HOST):
        """A page that reports what comes of an expression; gives its address."""
        self.server.script_page(f"/{name}", "setTimeout(async () => { fetch('/report/' + "
                                f"encodeURIComponent('{name}-' + ({expression}))); }}, 0);")
        return self.server.url(f"/{name}", host)

    def start_asking(self, name, expression):
        self.app.start(self.asking(name, expression))

    def wait_for_report(self, report):
        self.server.wait_for_report(report)
        self.dialogs.wait_until_gone()


class ScriptDialogsTest(PageDialogsTest):
    def test_an_alert_names_its_host_and_goes_by_return(self):
        self.start_asking("alert", "alert('Good morning')")
        self.dialogs.wait_for(HOST, SAYS, "Good morning")
        self.assertEqual(self.dialogs.buttons(), [OK])
        self.assertEqual(self.server.reports(), [])
        self.dialogs.button(OK)

        self.hands.press("Return")

        self.wait_for_report("alert-undefined")

    def test_escape_answers_as_cancel(self):
        self.start_asking("confirm", "confirm('Sure?')")
        self.dialogs.wait_for(HOST, ASKS, "Sure?")

        self.hands.press("Escape")

        self.wait_for_report("confirm-false")

    def test_return_answers_with_the_default_button(self):
        self.start_asking("confirm", "confirm('Sure?')")
        self.dialogs.button(OK)

        self.hands.press("Return")

        self.wait_for_report("confirm-true")

    def test_a_click_answers(self):
        self.start_asking("confirm", "confirm('Sure?')")
        self.dialogs.wait_for(HOST, ASKS, "Sure?")

        self.dialogs.click(CANCEL)

        self.wait_for_report("confirm-false")

    def test_a_prompt_takes_what_is_typed_and_gives_the_keyboard_back(self):
        self.server.script_page("/prompt", "fetch('/report/said-' + prompt('Name?', 'nobody'));"
                                + TELLS_KEYS)
        self.app.start(self.server.url("/prompt"))
        self.dialogs.wait_for(HOST, ASKS, "Name?")
        self.dialogs.button(OK)
        self.assertEqual(self.dialogs.field("Answer").text(), "nobody")
        self.hands.take()
        self.wait_for_focus("Answer")

        self.hands.type_on("somebody")
        self.hands.go_on("Return")

        self.wait_for_report("said-somebody")
        self.hands.type_on("x")
        self.server.wait_for_report("key-x")

    def test_the_page_gets_neither_keys_nor_clicks_meanwhile(self):
        self.server.script_page("/page", TELLS_KEYS + TELLS_CLICKS + "alert('Wait');")
        self.app.start(self.server.url("/page"))
        self.dialogs.wait_for(HOST, SAYS, "Wait")

        self.hands.click(at=(300, 120))
        self.hands.type("x")
        self.dialogs.press(OK)
        self.dialogs.wait_until_gone()
        self.hands.type("y")

        self.server.wait_for_report("key-y")
        self.assertEqual(self.server.reports(), ["key-y"])

    def test_a_text_that_plays_the_heading_does_not_change_it(self):
        self.start_asking("alert", r"alert('\u202e\nwww.bank.example\n\nThe page says:')")

        self.dialogs.wait_for(HOST, SAYS, "\nwww.bank.example\n\nThe page says:")

        self.assertIn(HOST, self.dialogs.labels())
        self.assertNotIn("www.bank.example", self.dialogs.labels())

    def test_a_long_text_leaves_the_buttons_in_the_window(self):
        self.start_asking("alert", r"alert('word\n'.repeat(3000) + 'x'.repeat(2e6))")
        self.hands.shrink()

        left, top, width, height = self.dialogs.button(OK).box

        self.assertLess(left + width, 900)
        self.assertLess(top + height, 560)

    def test_a_frame_of_another_site_speaks_under_the_pages_name(self):
        self.server.script_page("/frame", "alert('framed')")
        frame = self.server.url("/frame", "other.localhost")

        self.app.start(self.server.page("/page", body=f"<iframe src='{frame}'></iframe>"))

        self.dialogs.wait_for(HOST, SAYS, "framed")

    def test_other_tabs_and_the_window_go_on(self):
        quiet = self.server.script_page("/quiet", TELLS_KEYS)
        self.start_and_open(quiet)
        self.app.hand_over(self.asking("alert", "alert('Wait')"))
        self.dialogs.wait_for(HOST, SAYS, "Wait")

        self.app.action("selectTab2")
        self.dialogs.wait_until_gone()
        self.hands.type("x")
        self.server.wait_for_report("key-x")
        self.notch.go_to(self.server.page("/other"))
        self.wait_for_tabs("New tab", "other", "alert")
        self.app.action("selectTab3")

        self.dialogs.wait_for(HOST, SAYS, "Wait")

    def test_a_tab_in_the_background_that_asks_waits_until_it_is_shown(self):
        self.server.script_page("/late", "addEventListener('visibilitychange', () => setTimeout("
                                "() => fetch('/report/late-' + confirm('Late?')), 50));")
        self.start_and_open(self.server.page("/quiet"), self.server.url("/late"))
        self.app.action("selectTab2")
        self.assertEqual(self.dialogs.cards(), [])
        self.app.action("newEmptyTab")
        self.app.action("closeTab")
        self.app.action("selectTab3")

        self.dialogs.wait_for(HOST, ASKS, "Late?")
        self.dialogs.press(OK)

        self.server.wait_for_report("late-true")

    def test_a_dialog_stands_over_its_own_page_of_a_pair(self):
        self.start_and_open(self.server.script_page("/quiet", TELLS_CLICKS + TELLS_KEYS))
        self.app.hand_over(self.asking("alert", "alert('Mine')"))
        self.dialogs.wait_for(HOST, SAYS, "Mine")

        self.app.action("toggleSideBySide")
        self.windows.find("separator", "Resize the two pages")
        self.dialogs.wait_for(HOST, SAYS, "Mine")
        until(lambda: self.dialogs.button(OK).box[0] < 700, "the card over the first page")
        self.hands.click(at=(1100, 500))
        self.server.wait_for_report("click")
        self.dialogs.click(OK)

        self.wait_for_report("alert-undefined")

    def test_in_a_private_window_it_is_the_same(self):
        self.app.start()
        dialogs = Dialogs(self.windows, self.hands, PRIVATE)
        self.open_private_window().go_to(self.asking("confirm", "confirm('Sure?')"))
        dialogs.wait_for(HOST, ASKS, "Sure?")

        dialogs.click(OK)

        self.server.wait_for_report("confirm-true")

    def test_another_address_ends_the_dialog(self):
        self.start_asking("alert", "alert('Wait')")
        self.dialogs.wait_for(HOST, SAYS, "Wait")

        self.notch.go_to(self.server.page("/next"))

        self.dialogs.wait_until_gone()
        self.wait_for_visit(self.server.url("/next"))

    def test_a_tab_a_window_and_the_program_go_with_their_dialogs(self):
        self.start_asking("one", "alert('One')")
        self.dialogs.wait_for(HOST, SAYS, "One")
        self.app.action("closeTab")
        self.dialogs.wait_until_gone()
        self.app.hand_over(self.asking("two", "confirm('Two')"))
        self.dialogs.wait_for(HOST, ASKS, "Two")
        self.app.action("performClose")
        until_equal(self.app.windows, [], "the windows")
        self.app.hand_over(self.asking("three", "prompt('Three')"))
        self.dialogs.wait_for(HOST, ASKS, "Three")

        self.app.quit()

    def test_a_page_process_that_dies_takes_its_dialog_along(self):
        self.start_asking("alert", "alert('Wait')")
        self.dialogs.wait_for(HOST, SAYS, "Wait")
        self.server.page("/alert", "calm")

        self.app.kill_page_processes()

        self.dialogs.wait_until_gone()
        self.wait_for_tabs("New tab", "calm")


class FloodTest(PageDialogsTest):
    FLOOD = "(() => { for (let i = 1; i <= 1000; ++i) alert('Flood ' + i); return 'over'; })()"
    ENDLESS = "(() => { for (let i = 1; true; ++i) alert('Flood ' + i); })()"

    def silence(self):
        """Answers the first two, and the third with silence."""
        for number in (1, 2):
            self.dialogs.wait_for(HOST, SAYS, f"Flood {number}")
            self.assertEqual(self.dialogs.buttons(), [OK])
            self.dialogs.press(OK)
        self.dialogs.wait_for(HOST, SAYS, "Flood 3")
        self.assertEqual(self.dialogs.buttons(), [OK, SILENCE])
        self.dialogs.click(SILENCE)

    def slowest_answer(self, times=60):
        """The longest time that the window takes to answer, in seconds."""
        slowest = 0
        for _ in range(times):
            begin = time.monotonic()
            self.app.action("endEditing", window=2)
            slowest = max(slowest, time.monotonic() - begin)
        return slowest

    def test_the_third_offers_silence_and_a_thousand_more_show_nothing(self):
        self.start_asking("flood", self.FLOOD)

        self.silence()

        self.wait_for_report("flood-over")

    def test_keys_on_their_way_do_not_answer_what_comes_next(self):
        self.start_asking("flood", self.FLOOD)
        self.dialogs.wait_for(HOST, SAYS, "Flood 1")
        self.dialogs.button(OK)

        self.hands.press(*["Return"] * 12)

        until(lambda: self.number() > 1, "the next one", self.dialogs.cards)
        self.dialogs.button(OK)
        self.assertIn(self.number(), (2, 3))

    def number(self):
        """Which dialog of the flood shows."""
        return int(until(self.dialogs.cards, "a card")[0].rsplit(" ", 1)[1])

    def test_silence_ends_with_the_document(self):
        self.start_asking("flood", self.FLOOD)
        self.silence()
        self.wait_for_report("flood-over")

        self.notch.go_to(self.asking("next", "alert('Next')"))

        self.dialogs.wait_for(HOST, SAYS, "Next")

    def test_a_flood_leaves_the_window_answering(self):
        self.app.start(self.server.page("/still"))
        self.open_private_window()
        still = self.slowest_answer()
        self.app.hand_over(self.asking("endless", self.ENDLESS))
        self.silence()
        self.dialogs.wait_until_gone()

        flooded = self.slowest_answer()

        print(f"slowest answer: still {still * 1000:.0f} ms, flooded {flooded * 1000:.0f} ms")
        self.assertLess(flooded, max(1.0, 20 * still))
        self.app.action("closeTab")
        self.wait_for_tabs("New tab", "still", window="Orvu")


class SignInTest(PageDialogsTest):
    def locked(self, path, realm="Staff only"):
        """A page behind a password; gives its address."""
        def answer(handler):
            if handler.headers.get("Authorization"):
                handler.reply(200, "text/html", f"<title>inside{path[1:]}</title>in")
            else:
                handler.reply(401, "text/html", "<title>outside</title>out",
                              [("WWW-Authenticate", f'Basic realm="{realm}"')])
        self.server.answers[path] = answer
        return self.server.url(path)

    WARNING = "What you enter goes over the network unencrypted."

    def wait_for_card(self, host=HOST, realm="Staff only"):
        self.dialogs.wait_for(host, WANTS_PASSWORD, f"It says: “{realm}” {self.WARNING}")

    def sign_in(self):
        self.wait_for_card()
        self.dialogs.button(SIGN_IN)
        self.hands.take()
        self.wait_for_focus("User name")
        self.hands.type_on("ann")
        self.hands.go_on("Tab")
        self.wait_for_focus("Password")
        self.hands.type_on(PASSWORD)
        self.hands.go_on("Return")

    def test_a_person_signs_in_by_key_and_nothing_of_it_is_kept(self):
        self.app.start(self.locked("/door"))

        self.sign_in()

        self.wait_for_tabs("New tab", "insidedoor")
        self.app.quit()
        self.assertEqual(self.home.files_with(PASSWORD), [])
        self.assertEqual(self.home.files_with("YW5uOnNlc2FtZS05ZjNjMWU3Nw"), [])
        self.app.start(self.locked("/door"))
        self.wait_for_card()

    def test_who_cancels_sees_what_the_server_shows(self):
        self.app.start(self.locked("/door"))
        self.wait_for_card()

        self.hands.press("Escape")

        self.wait_for_tabs("New tab", "outside")

    def test_a_frame_of_another_host_asks_in_that_hosts_name(self):
        self.locked("/frame", "bank.example")
        frame = self.server.url("/frame", "other.localhost")

        self.app.start(self.server.page("/page", body=f"<iframe src='{frame}'></iframe>"))

        self.wait_for_card("other.localhost", "bank.example")

    def test_many_pictures_behind_one_password_ask_once(self):
        for number in range(12):
            self.locked(f"/picture{number}")
        body = "".join(f"<img src='/picture{number}'>" for number in range(12))
        self.app.start(self.server.page("/page", body=body))

        self.sign_in()

        self.dialogs.wait_until_gone()
        self.wait_for_visit(self.server.url("/page"))
        self.assertEqual(self.dialogs.cards(), [])
