"""Nothing that a person typed is lost: pages that ask before they are left."""

import os
import signal

from harness.case import BrowserTest
from harness.dialogs import LEAVE, LEAVES, STAY, Dialogs, form_page
from harness.saved import TWO_PROFILES
from harness.wait import until_equal

HOST = "127.0.0.1"
LOST = "What you typed here may be lost."


class LeavingTest(BrowserTest):
    def setUp(self):
        super().setUp()
        self.dialogs = Dialogs(self.windows, self.hands)

    def form(self, name="form"):
        return self.server.url(form_page(self.server, name))

    def type_into(self, name="form"):
        """Types into the page in front."""
        self.hands.click()
        self.hands.type_on("a")
        self.server.wait_for_report(f"{name}-a")

    def open_typed(self, *names):
        """Starts the program with these pages alone, each with something typed into it; the last
        one is in front."""
        self.start_with_only(*(self.form(name) for name in names))
        for number, name in enumerate(names, 1):
            self.app.action(f"selectTab{number}")
            self.wait_for_selected(name)
            self.type_into(name)

    def wait_for_question(self):
        self.dialogs.wait_for(HOST, LEAVES, LOST)

    def stay(self):
        self.wait_for_question()
        self.dialogs.press(STAY)
        self.dialogs.wait_until_gone()

    def leave(self):
        self.wait_for_question()
        self.dialogs.press(LEAVE)
        self.dialogs.wait_until_gone()

    # Going elsewhere.

    def test_who_stays_keeps_the_address_the_session_and_the_text(self):
        self.open_typed("form")
        for host in (HOST, "other.localhost"):
            self.server.page("/next")
            self.notch.go_to(self.server.url("/next", host))

            self.stay()

            self.notch.wait_for_address(self.server.url("/form"))
            self.wait_until_loaded()
            self.assertEqual(self.windows.nodes("push button", "Stop"), [])
            self.wait_for_session(self.server.url("/form"))
        self.app.action("newEmptyTab")  # saves the session anew
        self.wait_for_session(self.server.url("/form"))
        self.app.action("closeTab")
        self.wait_for_selected("form")
        self.hands.type("z")
        self.server.wait_for_report("form-z")

    def test_who_leaves_goes(self):
        self.open_typed("form")
        for host in (HOST, "other.localhost"):
            self.server.page("/next")
            self.notch.go_to(self.server.url("/next", host))

            self.leave()

            self.wait_for_visit(self.server.url("/next", host))
            self.notch.go_to(self.server.url("/form"))
            self.wait_for_tabs("form")
            self.type_into()

    def test_return_and_escape_both_stay(self):
        self.open_typed("form")
        for key in ("Return", "Escape"):
            self.app.action("reload")
            self.wait_for_question()

            self.hands.press(key)

            self.dialogs.wait_until_gone()
            self.wait_until_loaded()
        self.assertEqual(self.server.asked("/form"), 1)

    def test_a_page_that_nobody_touched_is_left_at_once(self):
        self.start_with_only(self.form())

        self.notch.go_to(self.server.page("/next"))

        self.wait_for_visit(self.server.url("/next"))
        self.assertEqual(self.dialogs.cards(), [])

    def test_a_page_that_goes_elsewhere_without_end_asks_only_so_often(self):
        self.server.script_page("/loop", "addEventListener('beforeunload', event => "
                                "event.preventDefault()); onkeydown = () => { fetch('/report/key');"
                                "setInterval(() => location.href = '/next?' + Math.random(), 50); };")
        self.server.page("/next")
        self.start_with_only(self.server.url("/loop"))
        self.hands.click()
        self.hands.type_on("a")
        self.server.wait_for_report("key")
        for _ in range(2):
            self.wait_for_question()
            self.hands.press("Escape")
        self.dialogs.click("No more from this page")

        self.dialogs.wait_until_gone()
        self.notch.wait_for_address(self.server.url("/loop"))
        self.app.action("closeTab")
        self.leave()

        self.wait_for_tabs("New tab")

    # Closing.

    def test_every_road_that_closes_a_tab_asks(self):
        self.open_typed("form")
        self.app.action("newEmptyTab")
        self.wait_for_tabs("form", "New tab")
        self.app.action("selectTab1")
        self.wait_for_selected("form")
        for road in (lambda: self.hands.press("ctrl+w"),
                     lambda: self.app.action("closeTab"),
                     lambda: self.app.action("park"),
                     lambda: self.windows.press("push button", "Close form")):
            road()
            self.stay()
            self.wait_for_tabs("form", "New tab")
        self.assertIsNone(self.saved.document("browserShelf"))

        self.app.action("closeTab")
        self.leave()

        self.wait_for_tabs("New tab")

    def test_a_tab_behind_comes_to_the_front_to_ask(self):
        self.open_typed("form")
        self.open(self.server.page("/other"))
        self.wait_for_selected("other")

        self.windows.press("push button", "Close form")

        self.wait_for_question()
        self.wait_for_selected("form")
        self.dialogs.press(LEAVE)
        self.wait_for_tabs("other")

    def test_a_window_asks_for_each_page_in_turn(self):
        self.open_typed("one", "two")
        self.open(self.server.page("/calm"))

        self.app.action("performClose")
        self.wait_for_selected("one")
        self.wait_for_question()
        self.dialogs.press(LEAVE)
        self.wait_for_selected("two")
        self.stay()
        self.wait_for_tabs("one", "two", "calm")
        self.app.action("performClose")
        for name in ("one", "two"):
            self.wait_for_selected(name)
            self.wait_for_question()
            self.dialogs.press(LEAVE)

        until_equal(self.app.windows, [], "the windows")

    def test_quitting_asks_in_all_windows_and_ends_only_then(self):
        self.open_typed("form")

        self.app.app_action("terminate")
        self.stay()
        self.app.check_runs()
        self.app.app_action("terminate")
        self.wait_for_question()
        self.app.app_action("terminate")
        self.wait_for_question()
        self.dialogs.press(LEAVE)

        self.app.wait_for_end(0)

    def test_a_window_that_changes_its_profile_asks(self):
        self.save_beforehand(TWO_PROFILES)
        self.open_typed("form")

        self.app.action("profile2")
        self.stay()
        self.wait_for_tabs("form")
        self.app.action("profile2")
        self.leave()

        self.wait_for_tabs("New tab")

    def test_closing_a_group_asks(self):
        self.open_typed("form")
        self.open(self.server.page("/other"))
        self.app.action("selectTab1")
        self.app.action("newGroup")
        self.app.action("selectTab2")
        header = self.windows.find("push button", "127.0.0.1 group, 1 tabs")

        self.hands.click(3, at=header.middle)
        self.windows.press("menu item", "Close Group")
        self.stay()
        self.wait_for_tabs("form", "other")

    # Pages that do not answer.

    def test_a_page_that_was_touched_and_asks_nothing_closes_at_once(self):
        self.server.script_page("/plain", "onkeydown = () => fetch('/report/plain-a');")
        self.start_with_only(self.server.url("/plain"))
        self.open(self.server.page("/other"))
        self.app.action("selectTab1")
        self.type_into("plain")

        self.app.action("closeTab")

        self.wait_for_tabs("other")
        self.assertEqual(self.dialogs.cards(), [])

    def test_a_page_that_hangs_does_not_keep_its_tab(self):
        self.open_typed("form")
        self.open(self.server.page("/other"))
        self.app.action("selectTab1")
        self.wait_for_selected("form")
        for pid in self.app.page_processes():
            os.kill(pid, signal.SIGSTOP)

        self.app.action("closeTab")

        self.wait_for_tabs("other")
        self.app.quit()
